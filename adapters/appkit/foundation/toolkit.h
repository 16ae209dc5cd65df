// The toolkit and the printing system's declarations, on macOS from its own headers, elsewhere from GNUstep's
// and from what GNUstep lacks.
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
