#import "adapters/appkit/control_classes.h"

#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/raise.hpp"

namespace appkit = tandemtrim::platform::appkit;
namespace platform = tandemtrim::platform;

namespace {

// The component of a control, made at the first call.
template <class Component, class Control>
Component* componentOf(std::unique_ptr<Component>& component, Control* control) {
  if (!component) component = std::make_unique<Component>(control);
  return component.get();
}

// A number for the core. Nil becomes 0, the value that a message to nil returns.
platform::ObjectRef numberOf(id object) { return appkit::objectOf(object == nil ? @0 : object); }

}  // namespace

// The operations that are the same in all classes of the nib.
#define COMPONENT_OPERATIONS                                                               \
  -(platform::NibObject*)component {                                                       \
    return appkit::guarded([&] { return componentOf(component_, self); });                 \
  }                                                                                        \
  -(void)changeState : (id)flag {                                                          \
    appkit::guarded([&] { componentOf(component_, self)->changeState(*numberOf(flag)); }); \
  }

@implementation MorvaTTCheckBoxKV2
COMPONENT_OPERATIONS
@end

@implementation MorvaTTPopUpButtonKV2
COMPONENT_OPERATIONS

#if defined(GNUSTEP)
// GNUstep's cell releases its menu before it deselects the selected item.
- (void)dealloc {
  [self selectItem:nil];
  [super dealloc];
}
#endif
@end

@implementation MorvaTTButtonKV2
COMPONENT_OPERATIONS
@end

@implementation MorvaTTStepperKV2
COMPONENT_OPERATIONS
@end

@implementation MorvaTTTextLabelKV2
COMPONENT_OPERATIONS
@end

@implementation MorvaTTTextBoxKV2
COMPONENT_OPERATIONS

- (NSNumber*)min {
  return appkit::guarded([&] { return appkit::foundationObjectOf(componentOf(component_, self)->min()); });
}

- (void)setMin:(NSNumber*)min {
  appkit::guarded([&] { componentOf(component_, self)->setMin(appkit::objectOf([[min copy] autorelease])); });
}

- (NSNumber*)max {
  return appkit::guarded([&] { return appkit::foundationObjectOf(componentOf(component_, self)->max()); });
}

- (void)setMax:(NSNumber*)max {
  appkit::guarded([&] { componentOf(component_, self)->setMax(appkit::objectOf([[max copy] autorelease])); });
}

- (void)setValueRange:(NSNumber*)min max:(NSNumber*)max {
  [self setMin:min];
  [self setMax:max];
}

- (NSNumber*)verifyValue:(NSNumber*)value {
  return appkit::guarded([&] {
    const auto given = numberOf(value);
    return appkit::foundationObjectOf(componentOf(component_, self)->verifyValue(*given));
  });
}

- (void)takeIntValueFrom:(id)sender {
  [self setStringValue:[[NSNumber numberWithInt:[sender intValue]] description]];
}

@end

@implementation MorvaTTPanelViewKV2

#if !defined(GNUSTEP)
- (void)awakeFromNib {
  [super awakeFromNib];
  [self setAppearance:[NSAppearance appearanceNamed:NSAppearanceNameAqua]];
}
#endif

- (BOOL)isOpaque {
  return YES;
}

- (void)drawRect:(NSRect)rect {
  [[NSColor windowBackgroundColor] set];
  NSRectFill(rect);
}

@end
