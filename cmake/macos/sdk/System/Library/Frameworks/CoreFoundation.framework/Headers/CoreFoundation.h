// What the sources use of macOS's framework, as its public documentation describes it.
#pragma once

#include <stdint.h>

// Since when the system has what a declaration names.
#define SINCE(version) __attribute__((availability(macos, introduced = version)))

typedef unsigned char Boolean;
typedef int32_t OSStatus;
typedef double CFTimeInterval;
typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
