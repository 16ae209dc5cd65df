#include "host/dialog/settings/queue_defaults.hpp"

#include <gmock/gmock.h>

#include "host/dialog/printer_details.hpp"

namespace tandemtrim::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class AnOptionOfTheQueue : public testing::TestWithParam<Option> {};

TEST_P(AnOptionOfTheQueue, IsSentOnlyIfTheServerWouldUseAnotherValue) {
  const auto& [keyword, value] = GetParam();
  EXPECT_THAT(withoutQueueDefaults({GetParam()}, {}), IsEmpty());
  EXPECT_THAT(withoutQueueDefaults({GetParam()}, {{keyword, value}, {"other", "7"}}), IsEmpty());
  EXPECT_THAT(withoutQueueDefaults({GetParam()}, {{keyword, "7"}}), ElementsAre(GetParam()));
  EXPECT_THAT(withoutQueueDefaults({{keyword, "7"}}, {}), ElementsAre(Option{keyword, "7"}));
}

INSTANTIATE_TEST_SUITE_P(Dialog, AnOptionOfTheQueue,
                         testing::Values(Option{"copies", "1"}, Option{"number-up", "1"},
                                         Option{"number-up-layout", "lrtb"},
                                         Option{"orientation-requested", "3"},
                                         Option{"outputorder", "Normal"}, Option{"page-set", "all"}));

TEST(ThePortraitOrientation, IsSentIfTheJobWouldBeLandscapeOtherwise) {
  const Options portrait{{"orientation-requested", "3"}};
  EXPECT_EQ(withoutQueueDefaults(portrait, {{"Landscape", "true"}}), portrait);
  EXPECT_THAT(withoutQueueDefaults({{"number-up", "1"}}, {{"Landscape", "true"}}), IsEmpty());
}

TEST(OtherOptions, AreAlwaysSent) {
  const Options options{{"Glue", "1"}, {"MVTopMargin", "5"}};
  EXPECT_EQ(withoutQueueDefaults(options, {{"Glue", "1"}}), options);
}

TEST(TheDestination, IsTheInstanceThatTheDialogStartedWithOnlyForItsOwnPrinter) {
  EXPECT_EQ(destinationOn("Morva", "Morva/draft"), "Morva/draft");
  EXPECT_EQ(destinationOn("Morva", "Morva"), "Morva");
  for (const char* first : {"Morva2", "Morva2/draft", "Other/Morva/draft", ""})
    EXPECT_EQ(destinationOn("Morva", first), "Morva") << first;
}

}  // namespace
}  // namespace tandemtrim::host
