#pragma once

#import "adapters/appkit/view_controller.h"
#include "plugin/panel.hpp"

/// The panel for macOS's print dialog, which finds these operations by their names. Forwards them to the
/// core's panel, whose exceptions it turns into the toolkit's.
@interface MorvaTTPdePanelKV2 : NSObject {
  std::shared_ptr<tandemtrim::MorvaTTPdePanelKV2> core_;
  MorvaTTViewControllerKV2* viewController_;
  MorvaTTCommonInfoKV2* commonInfo_;
  NSMutableArray* supportedOptions_;
}
/// Nil when an argument is nil or a part of the panel cannot be made.
- (id)initWithCallback:(id)callback bundle:(NSBundle*)bundle;
/// Nil if `core` is null.
- (id)initWithCore:(std::shared_ptr<tandemtrim::MorvaTTPdePanelKV2>)core;

- (NSString*)panelName;
- (id)panelKind;
- (NSView*)panelView;
- (NSDictionary*)summaryInfo;
- (void)willShow;
- (BOOL)shouldHide;
- (BOOL)shouldShowHelp;
/// The same list at each call; it belongs to the panel.
- (NSArray*)supportedPPDOptionKeys;
- (BOOL)shouldPrint;
- (BOOL)saveValuesAndReturnError:(NSError**)error;
- (BOOL)restoreValuesAndReturnError:(NSError**)error;

- (MorvaTTViewControllerKV2*)viewController;
- (MorvaTTCommonInfoKV2*)commonInfo;
@end
