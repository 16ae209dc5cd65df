#import "adapters/appkit/gnustep/compatibility.h"

// The cell's represented object is otherwise unused by text fields and steppers, and lives as long as they
// do.
@implementation NSControl (Identifier)

- (NSString*)identifier {
  return [[self cell] representedObject];
}

- (void)setIdentifier:(NSString*)identifier {
  [[self cell] setRepresentedObject:[[identifier copy] autorelease]];
}

@end
