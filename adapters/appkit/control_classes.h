#pragma once

#include <memory>

#import "adapters/appkit/controls.hpp"
#import "adapters/appkit/foundation/toolkit.h"

/// The common interface of the panel's controls: they change when the function is switched on or off.
@protocol ViewComponent
@required
/// `flag` is a boolean number: true when the function is on, so that the control is enabled. Nil is false.
- (void)changeState:(id)flag;
@end

/// A control of the panel that has a counterpart in the core.
@protocol MorvaTTComponentKV2 <ViewComponent>
- (tandemtrim::platform::NibObject*)component;
@end

// The classes that the nib instantiates.

@interface MorvaTTCheckBoxKV2 : NSButton <MorvaTTComponentKV2> {
  std::unique_ptr<tandemtrim::platform::appkit::CheckBox> component_;
}
@end

@interface MorvaTTPopUpButtonKV2 : NSPopUpButton <MorvaTTComponentKV2> {
  std::unique_ptr<tandemtrim::platform::appkit::PopUpButton> component_;
}
@end

@interface MorvaTTButtonKV2 : NSButton <MorvaTTComponentKV2> {
  std::unique_ptr<tandemtrim::platform::appkit::Button> component_;
}
@end

@interface MorvaTTStepperKV2 : NSStepper <MorvaTTComponentKV2> {
  std::unique_ptr<tandemtrim::platform::appkit::Stepper> component_;
}
@end

@interface MorvaTTTextLabelKV2 : NSTextField <MorvaTTComponentKV2> {
  std::unique_ptr<tandemtrim::platform::appkit::TextLabel> component_;
}
@end

/// A margin's text box with its range in whole millimetres. Both bounds are inclusive; nil counts as 0.
@interface MorvaTTTextBoxKV2 : NSTextField <MorvaTTComponentKV2> {
  std::unique_ptr<tandemtrim::platform::appkit::TextBox> component_;
}
@property(copy, nonatomic) NSNumber* min;
@property(copy, nonatomic) NSNumber* max;
- (void)setValueRange:(NSNumber*)min max:(NSNumber*)max;
/// The very object given if it is in the range, else the very bound that it violates; the minimum is checked
/// first. Nil counts as 0.
- (NSNumber*)verifyValue:(NSNumber*)value;
/// The action of the box's stepper. Writes ASCII digits, as margins are stored; the toolkit's own action
/// writes those of the user's region.
- (IBAction)takeIntValueFrom:(id)sender;
@end

/// The panel's view. It is light even in a dark dialog, since its labels are black or light grey.
@interface MorvaTTPanelViewKV2 : NSView
@end
