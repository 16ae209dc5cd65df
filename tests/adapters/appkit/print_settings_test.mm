#include <gmock/gmock.h>

#import "adapters/appkit/foundation/toolkit.h"

namespace tandemtrim::platform::appkit {
namespace {

class PrintSettingsOverADictionary : public testing::Test {
 protected:
  NSMutableDictionary* const entries = [NSMutableDictionary dictionary];
  PMPrintSettings const settings = reinterpret_cast<PMPrintSettings>(entries);
  CFStringRef const key = (CFStringRef)(@"MVTopMargin");
  CFTypeRef const untouched = &entries;
  CFTypeRef value = untouched;
};

TEST_F(PrintSettingsOverADictionary, ReturnTheSameObjectThatWasSet) {
  NSString* const stored = [NSString stringWithFormat:@"%d", 12];
  EXPECT_EQ(PMPrintSettingsSetValue(settings, key, (CFTypeRef)stored, NO), kPMNoError);
  EXPECT_EQ(PMPrintSettingsGetValue(settings, key, &value), kPMNoError);
  EXPECT_EQ((id)value, stored);
}

TEST_F(PrintSettingsOverADictionary, LoseAKeyThatIsSetToNull) {
  [entries setObject:@"12" forKey:@"MVTopMargin"];
  EXPECT_EQ(PMPrintSettingsSetValue(settings, key, nullptr, NO), kPMNoError);
  EXPECT_EQ(PMPrintSettingsGetValue(settings, key, &value), kPMKeyOrValueNotFound);
  EXPECT_EQ(value, nullptr);
}

TEST_F(PrintSettingsOverADictionary, RefuseNullArgumentsAndLocks) {
  EXPECT_EQ(PMPrintSettingsGetValue(nullptr, key, &value), kPMInvalidPrintSettings);
  EXPECT_EQ(PMPrintSettingsGetValue(settings, nullptr, &value), kPMInvalidParameter);
  EXPECT_EQ(PMPrintSettingsGetValue(settings, key, nullptr), kPMInvalidParameter);
  EXPECT_EQ(PMPrintSettingsSetValue(nullptr, key, key, NO), kPMInvalidPrintSettings);
  EXPECT_EQ(PMPrintSettingsSetValue(settings, nullptr, key, NO), kPMInvalidParameter);
  EXPECT_EQ(PMPrintSettingsSetValue(settings, key, key, YES), kPMInvalidParameter);
  EXPECT_EQ(value, untouched);
  EXPECT_EQ([entries count], 0U);
}

}  // namespace
}  // namespace tandemtrim::platform::appkit
