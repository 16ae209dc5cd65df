// The part of macOS's framework that the sources use, as its public documentation describes it.
#pragma once

#import <CoreFoundation/CoreFoundation.h>

typedef struct OpaquePMPrintSettings* PMPrintSettings;

extern "C" {
OSStatus PMPrintSettingsGetValue(PMPrintSettings printSettings, CFStringRef key, CFTypeRef* value)
    SINCE(10.5);
OSStatus PMPrintSettingsSetValue(PMPrintSettings printSettings, CFStringRef key, CFTypeRef value,
                                 Boolean locked) SINCE(10.5);
}
