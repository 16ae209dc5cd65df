#import "tests/adapters/appkit/support/print_session.h"

// Operations that GNUstep lacks: a session is any object, its settings are an empty dictionary.
extern "C" {

OSStatus PMCreateSession(PMPrintSession* session) {
  *session = reinterpret_cast<PMPrintSession>([[NSObject alloc] init]);
  return kPMNoError;
}

OSStatus PMCreatePrintSettings(PMPrintSettings* settings) {
  *settings = reinterpret_cast<PMPrintSettings>([[NSMutableDictionary alloc] init]);
  return kPMNoError;
}

OSStatus PMSessionDefaultPrintSettings(PMPrintSession /*session*/, PMPrintSettings settings) {
  [reinterpret_cast<NSMutableDictionary*>(settings) removeAllObjects];
  return kPMNoError;
}

OSStatus PMPrintSettingsCopyKeys(PMPrintSettings settings, CFArrayRef* keys) {
  *keys = reinterpret_cast<CFArrayRef>([[reinterpret_cast<NSDictionary*>(settings) allKeys] retain]);
  return kPMNoError;
}

OSStatus PMRelease(void* object) {
  [static_cast<id>(object) release];
  return kPMNoError;
}
}
