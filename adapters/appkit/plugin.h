#pragma once

#import "adapters/appkit/foundation/toolkit.h"

/// The bundle's principal class, which macOS's print dialog instantiates by its name. It does not declare the
/// system's protocol, because from macOS 13 on the dialog would then expect an initialiser that returns an
/// object.
@interface MorvaTTPdePluginKV2 : NSObject {
  NSBundle* bundle_;
}
/// Stores the bundle; NO for nil. The host calls it on an allocated object, and no other initialiser.
- (BOOL)initWithBundle:(NSBundle*)bundle;
/// A list of one new panel for the print dialog's type. It has the only reference to the panel. Nil for any
/// other type, without a host, or when the panel cannot be made.
- (NSArray*)PDEPanelsForType:(NSString*)type withHostInfo:(id)host;
- (NSBundle*)bundle;
@end
