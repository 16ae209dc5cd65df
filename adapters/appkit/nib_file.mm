#include "adapters/appkit/nib_objects.hpp"
#import "adapters/appkit/view_controller.h"

namespace tandemtrim::platform::appkit {

NSArray* objectsOfNib(NSString* name, ::MorvaTTViewControllerKV2* owner) {
  NSNib* nib = [[[NSNib alloc] initWithNibNamed:name
                                         bundle:[NSBundle bundleForClass:[owner class]]] autorelease];
  NSArray* objects = nil;
  if (![nib instantiateWithOwner:owner topLevelObjects:&objects]) return nil;
#if defined(GNUSTEP)
  // GNUstep returns them retained once for the owner; macOS has not done so since 10.8.
  [objects makeObjectsPerformSelector:@selector(release)];
#endif
  return objects;
}

}  // namespace tandemtrim::platform::appkit
