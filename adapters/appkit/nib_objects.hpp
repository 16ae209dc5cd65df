#pragma once

#import "adapters/appkit/foundation/toolkit.h"

@class MorvaTTViewControllerKV2;

namespace tandemtrim::platform::appkit {

/// Makes the objects of the bundle's nib of this name and connects them to their owner. Returns the top-level
/// objects, or nil if there is no such nib. They come from the nib's file or, if the bundle was built without
/// a compiler for nibs, from code that is generated from it.
NSArray* objectsOfNib(NSString* name, ::MorvaTTViewControllerKV2* owner);

}  // namespace tandemtrim::platform::appkit
