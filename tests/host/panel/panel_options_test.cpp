#include "host/panel/panel_options.hpp"

#include <gmock/gmock.h>

#include "tests/host/dialog/sample_ppd.hpp"

namespace tandemtrim::host {
namespace {

using testing::IsEmpty;

const std::string kPlaces =
    "*OpenUI *Place/Place: PickOne\n*Place Left/Left: \"\"\n*Place Right/Right: \"\"\n";

TEST(ThePrintersDefaults, AreThoseOfItsPpdUnlessTheQueueHasOthers) {
  const test::SamplePpd ppd(kPlaces + "*DefaultPlace: Left\n*CloseUI: *Place\n");
  EXPECT_EQ(printersDefaults({"Place", "Absent"}, ppd.get(), {}), (Options{{"Place", "Left"}}));
  EXPECT_EQ(printersDefaults({"Place"}, ppd.get(), {{"place", "Right"}, {"Other", "1"}}),
            (Options{{"Place", "Right"}}));
  EXPECT_EQ(printersDefaults({"Place"}, nullptr, {{"Place", "Right"}}), (Options{{"Place", "Right"}}));
}

TEST(ThePrintersDefaults, AreChoicesThatThePpdHas) {
  const test::SamplePpd ppd(kPlaces + "*DefaultPlace: Middle\n*CloseUI: *Place\n");
  EXPECT_THAT(printersDefaults({"Place"}, ppd.get(), {}), IsEmpty());
}

}  // namespace
}  // namespace tandemtrim::host
