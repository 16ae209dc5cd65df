#pragma once

#import "adapters/appkit/foundation/toolkit.h"

@class MorvaTTViewControllerKV2;

namespace tandemtrim::platform::appkit {

/// Makes the objects of the bundle's nib of this name and connects them with their owner. The top-level
/// objects, or nil where there is no such nib. They come from the nib's file or, where the bundle was built
/// without a compiler for nibs, from code that is made of it.
NSArray* objectsOfNib(NSString* name, ::MorvaTTViewControllerKV2* owner);

}  // namespace tandemtrim::platform::appkit
