#pragma once

#import "adapters/appkit/view_controller.h"
#include "plugin/panel.hpp"

/// The panel for macOS's print dialog, which finds these operations by their names: forwards to the core's.
/// Errors that the core raises leave as the toolkit's exceptions.
@interface MorvaTTPdePanelKV2 : NSObject {
  std::shared_ptr<tandemtrim::MorvaTTPdePanelKV2> core_;
  MorvaTTViewControllerKV2* viewController_;
  MorvaTTCommonInfoKV2* commonInfo_;
  NSMutableArray* supportedOptions_;
}
/// Nil when an argument or anything that the panel is made of is missing.
- (id)initWithCallback:(id)callback bundle:(NSBundle*)bundle;
/// Nil for none.
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
