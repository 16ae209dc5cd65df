#pragma once

#include <memory>

#import "adapters/appkit/common_info.h"
#import "adapters/appkit/control_classes.h"
#include "view/view_controller.hpp"

// The outlets of one margin.
#define MARGIN_OUTLETS(Side)                                                         \
  @property(assign, nonatomic) IBOutlet MorvaTTTextLabelKV2* labelMargin##Side;      \
  @property(assign, nonatomic) IBOutlet MorvaTTTextLabelKV2* labelMarginLimit##Side; \
  @property(assign, nonatomic) IBOutlet MorvaTTTextBoxKV2* textBoxMargin##Side;      \
  @property(assign, nonatomic) IBOutlet MorvaTTStepperKV2* stepperMargin##Side;

/// The File's Owner of the nib: connects the controls to the core's view controller, which does the work.
/// Retains everything that its outlets are ever connected to.
@interface MorvaTTViewControllerKV2 : NSObject {
  std::shared_ptr<tandemtrim::MorvaTTViewControllerKV2> core_;
  std::unique_ptr<tandemtrim::platform::appkit::View> view_;
  MorvaTTCommonInfoKV2* commonInfo_;
  NSMutableArray* connected_;
}
/// Nil when the common info is nil or the tickets cannot be made. The common info must outlive the
/// controller.
- (id)initWithCommonInfo:(MorvaTTCommonInfoKV2*)commonInfo;
/// Nil if `core` is null.
- (id)initWithCore:(std::shared_ptr<tandemtrim::MorvaTTViewControllerKV2>)core
        commonInfo:(MorvaTTCommonInfoKV2*)commonInfo;

- (NSView*)panelViewWithNibName:(NSString*)nibName;
- (void)updateView;
- (BOOL)restoreNonPPDSettingsFromPrintSettings;
- (BOOL)saveNonPPDSettingsToPrintSettings;
- (NSMutableDictionary*)summaryInfoWithDispOrderKey:(NSString*)dispOrderKey;

- (IBAction)changeTandemTrimValid:(id)sender;
- (IBAction)setDefaultValue:(id)sender;
/// Corrects the text box that posts; ignores any other object.
- (void)controlTextDidChange:(NSNotification*)notification;

@property(readonly, nonatomic) MorvaTTCommonInfoKV2* commonInfo;
@property(assign, nonatomic) BOOL viewIsInited;
@property(assign, nonatomic) IBOutlet MorvaTTTextLabelKV2* labelDirection;
@property(assign, nonatomic) IBOutlet MorvaTTTextLabelKV2* labelPosition;
MARGIN_OUTLETS(Top)
MARGIN_OUTLETS(Bottom)
MARGIN_OUTLETS(Left)
MARGIN_OUTLETS(Right)
@property(assign, nonatomic) IBOutlet MorvaTTCheckBoxKV2* tandemTrimValid;
@property(assign, nonatomic) IBOutlet MorvaTTPopUpButtonKV2* directionPopUp;
@property(assign, nonatomic) IBOutlet MorvaTTPopUpButtonKV2* positionPopUp;
@property(assign, nonatomic) IBOutlet MorvaTTButtonKV2* defaultButton;
@property(assign, nonatomic) IBOutlet NSView* tandemTrimView;
@end
#undef MARGIN_OUTLETS
