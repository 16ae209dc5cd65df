// The part of macOS's framework that the sources use, as its public documentation describes it.
#pragma once

#include <stdint.h>

// The first macOS that has the declared function or class.
#define SINCE(version) __attribute__((availability(macos, introduced = version)))

typedef unsigned char Boolean;
typedef int32_t OSStatus;
typedef double CFTimeInterval;
typedef const void* CFTypeRef;
typedef const struct __CFString* CFStringRef;
