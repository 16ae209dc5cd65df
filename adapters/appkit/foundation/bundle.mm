#include "adapters/appkit/foundation/bundle.hpp"

#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/retained.hpp"

namespace tandemtrim::platform::appkit {
namespace {

class Bundle : public platform::Bundle {
 public:
  explicit Bundle(NSBundle* bundle) : bundle_(bundle) {}

  [[nodiscard]] std::optional<std::string> pathForResource(std::string_view name,
                                                           std::string_view type) const override {
    NSString* path = [bundle_.get() pathForResource:stringOf(name) ofType:stringOf(type)];
    if (path == nil) return std::nullopt;
    return textOf(path);
  }
  [[nodiscard]] std::string localizedStringForKey(std::string_view key, std::string_view value,
                                                  std::optional<std::string_view> table) const override {
    return textOf([bundle_.get() localizedStringForKey:stringOf(key)
                                                 value:stringOf(value)
                                                 table:table ? stringOf(*table) : nil]);
  }
  [[nodiscard]] NSBundle* toolkitBundle() const { return bundle_.get(); }

 private:
  Retained<NSBundle> bundle_;
};

}  // namespace

std::shared_ptr<platform::Bundle> bundleOf(NSBundle* bundle) {
  return bundle == nil ? nullptr : std::make_shared<Bundle>(bundle);
}

NSBundle* toolkitBundleOf(const std::shared_ptr<platform::Bundle>& bundle) {
  return static_cast<const Bundle&>(*bundle).toolkitBundle();
}

}  // namespace tandemtrim::platform::appkit
