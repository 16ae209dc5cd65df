// A print job's session and settings, as the print system declares them.
#pragma once

#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#if defined(GNUSTEP)
#include <cstdint>

// GNUstep lacks these. print_session.mm defines the first five functions, tandemtrim_print_settings the
// others.
using Boolean = unsigned char;
using OSStatus = std::int32_t;
using CFTypeRef = const void*;
using CFStringRef = const struct __CFString*;  // NOLINT(bugprone-reserved-identifier)
using CFArrayRef = const struct __CFArray*;    // NOLINT(bugprone-reserved-identifier)
using PMPrintSession = struct OpaquePMPrintSession*;
using PMPrintSettings = struct OpaquePMPrintSettings*;
enum : OSStatus { kPMNoError = 0 };

extern "C" {
OSStatus PMCreateSession(PMPrintSession* session);
OSStatus PMCreatePrintSettings(PMPrintSettings* settings);
OSStatus PMSessionDefaultPrintSettings(PMPrintSession session, PMPrintSettings settings);
OSStatus PMPrintSettingsCopyKeys(PMPrintSettings settings, CFArrayRef* keys);
OSStatus PMRelease(void* object);
OSStatus PMPrintSettingsGetValue(PMPrintSettings settings, CFStringRef key, CFTypeRef* value);
OSStatus PMPrintSettingsSetValue(PMPrintSettings settings, CFStringRef key, CFTypeRef value, Boolean locked);
}
#else
#import <ApplicationServices/ApplicationServices.h>
#endif
