#import "adapters/appkit/gnustep/compatibility.h"

// The identifier is the cell's represented object, which text fields and steppers do not use otherwise, and
// which lives as long as they do.
@implementation NSControl (Identifier)

- (NSString*)identifier {
  return [[self cell] representedObject];
}

- (void)setIdentifier:(NSString*)identifier {
  [[self cell] setRepresentedObject:[[identifier copy] autorelease]];
}

@end
