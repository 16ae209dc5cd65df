#import "adapters/appkit/gnustep/compatibility.h"

// The two print-settings operations, on a dictionary. A value belongs to the dictionary; the caller does not
// release it.

static NSMutableDictionary* entries(PMPrintSettings printSettings) {
  return reinterpret_cast<NSMutableDictionary*>(printSettings);
}

extern "C" {

OSStatus PMPrintSettingsGetValue(PMPrintSettings printSettings, CFStringRef key, CFTypeRef* value) {
  if (printSettings == nullptr) return kPMInvalidPrintSettings;
  if (key == nullptr || value == nullptr) return kPMInvalidParameter;
  *value = [entries(printSettings) objectForKey:(NSString*)key];
  return *value == nullptr ? kPMKeyOrValueNotFound : kPMNoError;
}

OSStatus PMPrintSettingsSetValue(PMPrintSettings printSettings, CFStringRef key, CFTypeRef value,
                                 Boolean locked) {
  if (printSettings == nullptr) return kPMInvalidPrintSettings;
  if (key == nullptr || locked) return kPMInvalidParameter;
  if (value == nullptr) {
    [entries(printSettings) removeObjectForKey:(NSString*)key];
  } else {
    [entries(printSettings) setObject:(id)value forKey:(NSString*)key];
  }
  return kPMNoError;
}
}
