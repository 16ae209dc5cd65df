#include <gtest/gtest.h>

#include "platform/nib.hpp"

namespace tandemtrim::test {
namespace {

class Owner : public platform::NibOwner {
 public:
  [[nodiscard]] std::vector<std::string_view> outletNames() const override { return {"tandemTrimView"}; }
  void setOutlet(std::string_view name, platform::NibObject*) override { ADD_FAILURE() << name; }
  void performAction(std::string_view, platform::NibObject*) override {}
};

TEST(GtkNibWithoutAScreen, IsNotLoaded) {
  Owner owner;
  EXPECT_FALSE(platform::loadNibNamed("TandemTrim", owner));
}

}  // namespace
}  // namespace tandemtrim::test
