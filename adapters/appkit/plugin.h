#pragma once

#import "adapters/appkit/foundation/toolkit.h"

/// The bundle's principal class, which macOS's print dialog makes by its name. It does not declare the
/// system's protocol: with that the dialog, from macOS 13 on, expects an initialiser that returns an object.
@interface MorvaTTPdePluginKV2 : NSObject {
  NSBundle* bundle_;
}
/// Keeps the bundle; NO for nil. It runs on an object that the host has allocated, and is all there is to
/// initialise.
- (BOOL)initWithBundle:(NSBundle*)bundle;
/// A list of one new panel for the print dialog's type. It holds the only reference to the panel. Nil for any
/// other type, without a host, or when the panel cannot be made.
- (NSArray*)PDEPanelsForType:(NSString*)type withHostInfo:(id)host;
- (NSBundle*)bundle;
@end
