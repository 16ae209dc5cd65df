#import "adapters/appkit/view_controller.h"

#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/raise.hpp"

namespace appkit = tandemtrim::platform::appkit;
namespace platform = tandemtrim::platform;

namespace {

// The core's object of a panel's control; null for any other object.
platform::NibObject* componentOf(id object) {
  return [object respondsToSelector:@selector(component)] ? [object component] : nullptr;
}

}  // namespace

// An outlet by its name, the class of its control and the name of its setter. Nil clears it; an object of
// another class leaves it unchanged.
#define OUTLET(Class, name, setter)                                             \
  -(Class*)name {                                                               \
    return appkit::toolkitObjectOf(core_->name());                              \
  }                                                                             \
  -(void)setter : (Class*)control {                                             \
    appkit::guarded([&] {                                                       \
      auto* component = dynamic_cast<tandemtrim::Class*>(componentOf(control)); \
      if (control != nil && component == nullptr) return;                       \
      [self keep:control];                                                      \
      core_->setter(component);                                                 \
    });                                                                         \
  }

#define MARGIN_OUTLETS(Side)                                                     \
  OUTLET(MorvaTTTextLabelKV2, labelMargin##Side, setLabelMargin##Side)           \
  OUTLET(MorvaTTTextLabelKV2, labelMarginLimit##Side, setLabelMarginLimit##Side) \
  OUTLET(MorvaTTTextBoxKV2, textBoxMargin##Side, setTextBoxMargin##Side)         \
  OUTLET(MorvaTTStepperKV2, stepperMargin##Side, setStepperMargin##Side)

@implementation MorvaTTViewControllerKV2

- (id)initWithCommonInfo:(MorvaTTCommonInfoKV2*)commonInfo {
  return [self
      initWithCore:appkit::guardedInit(self,
                                       [&]() -> std::shared_ptr<tandemtrim::MorvaTTViewControllerKV2> {
                                         return tandemtrim::MorvaTTViewControllerKV2::initWithCommonInfo(
                                             commonInfo == nil ? nullptr : [commonInfo core]);
                                       })
        commonInfo:commonInfo];
}

- (id)initWithCore:(std::shared_ptr<tandemtrim::MorvaTTViewControllerKV2>)core
        commonInfo:(MorvaTTCommonInfoKV2*)commonInfo {
  self = [super init];
  if (self == nil || !core) {
    [self release];
    return nil;
  }
  core_ = std::move(core);
  commonInfo_ = commonInfo;
  appkit::guardedInit(self, [&] {
    connected_ = [[NSMutableArray alloc] init];
    core_->setPlatformObject(self);
  });
  return self;
}

// A view may outlive its controller in the host's window; its controls then have no target.
- (void)dealloc {
  if (core_) {
    [[self tandemTrimValid] setTarget:nil];
    [[self defaultButton] setTarget:nil];
  }
  // Releases the last reference to the core, whose destructor unsubscribes this object.
  core_.reset();
  [connected_ release];
  [super dealloc];
}

- (NSView*)panelViewWithNibName:(NSString*)nibName {
  return appkit::guarded(
      [&] { return appkit::toolkitObjectOf(core_->panelViewWithNibName(appkit::textOf(nibName))); });
}

- (void)updateView {
  appkit::guarded([&] { core_->updateView(); });
}

- (BOOL)restoreNonPPDSettingsFromPrintSettings {
  return appkit::guarded([&] { return core_->restoreNonPPDSettingsFromPrintSettings(); });
}

- (BOOL)saveNonPPDSettingsToPrintSettings {
  return appkit::guarded([&] { return core_->saveNonPPDSettingsToPrintSettings(); });
}

- (NSMutableDictionary*)summaryInfoWithDispOrderKey:(NSString*)dispOrderKey {
  return appkit::guarded([&] {
    return appkit::foundationDictionaryOf(core_->summaryInfoWithDispOrderKey(appkit::textOf(dispOrderKey)));
  });
}

- (void)changeTandemTrimValid:(id)sender {
  (void)sender;
  appkit::guarded([&] { core_->changeTandemTrimValid(nullptr); });
}

- (void)setDefaultValue:(id)sender {
  (void)sender;
  appkit::guarded([&] { core_->setDefaultValue(nullptr); });
}

- (void)controlTextDidChange:(NSNotification*)notification {
  appkit::guarded([&] {
    core_->controlTextDidChange(
        {platform::NSControlTextDidChangeNotification, componentOf([notification object])});
  });
}

- (MorvaTTCommonInfoKV2*)commonInfo {
  return commonInfo_;
}

- (BOOL)viewIsInited {
  return core_->viewIsInited();
}

- (void)setViewIsInited:(BOOL)inited {
  core_->setViewIsInited(inited);
}

// Retains an outlet's object until this object is deallocated.
- (void)keep:(id)object {
  if (object != nil) [connected_ addObject:object];
}

OUTLET(MorvaTTTextLabelKV2, labelDirection, setLabelDirection)
OUTLET(MorvaTTTextLabelKV2, labelPosition, setLabelPosition)
MARGIN_OUTLETS(Top)
MARGIN_OUTLETS(Bottom)
MARGIN_OUTLETS(Left)
MARGIN_OUTLETS(Right)
OUTLET(MorvaTTCheckBoxKV2, tandemTrimValid, setTandemTrimValid)
OUTLET(MorvaTTPopUpButtonKV2, directionPopUp, setDirectionPopUp)
OUTLET(MorvaTTPopUpButtonKV2, positionPopUp, setPositionPopUp)
OUTLET(MorvaTTButtonKV2, defaultButton, setDefaultButton)

- (NSView*)tandemTrimView {
  return appkit::toolkitObjectOf(core_->tandemTrimView());
}

- (void)setTandemTrimView:(NSView*)view {
  if (view != nil && ![view isKindOfClass:[NSView class]]) return;
  appkit::guarded([&] {
    [self keep:view];
    view_ = view == nil ? nullptr : std::make_unique<appkit::View>(view);
    core_->setTandemTrimView(view_.get());
  });
}

@end
