#include "tests/model/ticket_test.hpp"

namespace tandemtrim::test {
namespace {

using testing::ElementsAre;
using testing::NotNull;

// A ticket whose class overrides every operation that a ticket calls on itself.
template <class Base>
class Overriding : public Base {
 public:
  static std::unique_ptr<Overriding> initWithDefaultValue(std::optional<std::string> defaultValue,
                                                          std::optional<std::string> key,
                                                          std::shared_ptr<MorvaTTCommonInfoKV2> info) {
    return Base::template make<Overriding>(std::move(defaultValue), std::move(key), std::move(info));
  }

  [[nodiscard]] std::optional<std::string> TTPTPrintSettings(std::string_view key) const override {
    log.push_back("read " + std::string(key));
    return stored;
  }
  bool TTPTSetPrintSettings(std::string_view key, const std::optional<std::string>& value) override {
    log.push_back("write " + std::string(key) + '=' + value.value_or("(none)"));
    return true;
  }
  [[nodiscard]] const std::string& key() const override { return otherKey; }
  [[nodiscard]] const std::string& defaultValue() const override { return otherDefault; }
  [[nodiscard]] const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo() const override {
    ++commonInfoCalls;
    return Base::commonInfo();
  }
  [[nodiscard]] MorvaTTPrintTicketKV2::Controls& targetInstances() override { return otherControls; }

  mutable Log log;
  mutable int commonInfoCalls = 0;
  std::optional<std::string> stored;
  std::string otherKey = "OtherKey";
  std::string otherDefault = "other default";
  MorvaTTPrintTicketKV2::Controls otherControls;
};

template <class Base>
class DynamicDispatch : public CoreTest {
 protected:
  std::unique_ptr<Overriding<Base>> makeTicket() {
    return Overriding<Base>::initWithDefaultValue("fallback", "MVKey", makeCommonInfo());
  }
  Log log;
  RecordingTextBox box{"box", log};
  RecordingCheckBox checkBox{"check box", log};
  RecordingPopUp menu{"menu", log, 0};

  // The control that suits the class of the ticket.
  platform::Control* control() {
    if constexpr (std::is_same_v<Base, MorvaTTPrintTicketValidKV2>) return &checkBox;
    if constexpr (std::is_same_v<Base, MorvaTTPrintTicketPopUpKV2>) return &menu;
    return &box;
  }
};

using TicketClasses = testing::Types<MorvaTTPrintTicketKV2, MorvaTTPrintTicketValidKV2,
                                     MorvaTTPrintTicketPopUpKV2, MorvaTTPrintTicketMarginKV2>;
TYPED_TEST_SUITE(DynamicDispatch, TicketClasses);

TYPED_TEST(DynamicDispatch, ReachesTheOverridesWhenATicketStoresItsDefault) {
  const auto ticket = this->makeTicket();
  ASSERT_THAT(ticket, NotNull());
  EXPECT_THAT(ticket->log, ElementsAre("read OtherKey", "write OtherKey=other default"));
  EXPECT_GT(ticket->commonInfoCalls, 0);
  EXPECT_TRUE(this->settings().log.empty());
}

TYPED_TEST(DynamicDispatch, ReachesTheOverridesInARestore) {
  const auto ticket = this->makeTicket();
  ticket->log.clear();
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "other default");
  ticket->stored = "stored";
  EXPECT_EQ(ticket->restoreTicketFailSafe(), "stored");
  EXPECT_THAT(ticket->log, ElementsAre("read OtherKey", "read OtherKey"));
}

TYPED_TEST(DynamicDispatch, ReachesTheOverriddenListOfControls) {
  const auto ticket = this->makeTicket();
  ticket->registerTargetInstances({this->control()});
  EXPECT_THAT(ticket->otherControls, ElementsAre(this->control()));
  this->log.clear();
  ticket->log.clear();
  ticket->restoreTicketFailSafe();
  ticket->setToDefault();
  EXPECT_EQ(this->log.size(), 2U);
  ticket->saveTicket();
  EXPECT_THAT(ticket->log, ElementsAre("read OtherKey", testing::StartsWith("write OtherKey=")));
}

TYPED_TEST(DynamicDispatch, ReachesTheOverriddenDefaultInAReset) {
  const auto ticket = this->makeTicket();
  ticket->registerTargetInstances({this->control()});
  ticket->setToDefault();
  EXPECT_THAT(this->log, ElementsAre(testing::EndsWith("=other default")));
}

}  // namespace
}  // namespace tandemtrim::test
