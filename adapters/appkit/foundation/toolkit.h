// The declarations of the toolkit and the printing system: on macOS from its own headers, elsewhere from
// GNUstep's and, for what GNUstep lacks, compatibility.h.
#pragma once

#if defined(GNUSTEP)
#import <AppKit/AppKit.h>
#import <Foundation/Foundation.h>

#import "adapters/appkit/gnustep/compatibility.h"
#else
#import <ApplicationServices/ApplicationServices.h>
#import <Cocoa/Cocoa.h>
#import <PrintCore/PDEPluginInterface.h>
#endif
