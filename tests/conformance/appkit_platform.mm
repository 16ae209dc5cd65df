#include <algorithm>
#include <stdexcept>
#include <utility>

#import "tests/adapters/appkit/support/host.h"
#import "tests/adapters/appkit/support/user.h"
#include "tests/conformance/platform.hpp"

namespace tandemtrim::conformance {
namespace {

NSString* stringOf(const std::string& text) { return [NSString stringWithUTF8String:text.c_str()]; }
std::string textOf(NSString* string) { return string == nil ? "" : [string UTF8String]; }

std::optional<std::string> optionalTextOf(id string) {
  if (string == nil) return std::nullopt;
  return textOf(string);
}

std::vector<std::string> textsOf(NSArray* strings) {
  std::vector<std::string> texts;
  for (NSString* string in strings) texts.push_back(textOf(string));
  return texts;
}

// A panel of the bundle. The first request for its view shows it in a separate window.
class WindowPanel : public Panel {
 public:
  explicit WindowPanel(NSArray* panels) : panels_([panels retain]) {}
  WindowPanel(const WindowPanel&) = delete;
  WindowPanel& operator=(const WindowPanel&) = delete;
  ~WindowPanel() override {
    @autoreleasepool {
      [window_ close];
      [panels_ release];
    }
  }

  std::string panelName() override { return textOf([panel() panelName]); }
  std::optional<std::string> panelKind() override { return optionalTextOf([panel() panelKind]); }
  bool panelView() override {
    NSView* view = [panel() panelView];
    if (view != nil && window_ == nil) window_ = host::showInWindow(view);
    return view != nil;
  }
  const void* viewIdentity() override { return [panel() panelView]; }
  Summary summaryInfo() override {
    Summary summary;
    NSDictionary* info = [panel() summaryInfo];
    for (NSString* title in info) {
      id value = [info objectForKey:title];
      if ([title isEqualToString:@"Summary Display Order"]) {
        summary.order = textsOf(value);
      } else {
        summary.rows[textOf(title)] = textOf(value);
      }
    }
    return summary;
  }
  void emptySummary() override {
    [static_cast<NSMutableDictionary*>([panel() summaryInfo]) removeAllObjects];
  }
  void willShow() override { [panel() willShow]; }
  bool shouldHide() override { return [panel() shouldHide]; }
  bool shouldShowHelp() override { return [panel() shouldShowHelp]; }
  bool shouldPrint() override { return [panel() shouldPrint]; }
  std::vector<std::string> supportedPPDOptionKeys() override {
    return textsOf([panel() supportedPPDOptionKeys]);
  }
  const void* keywordsIdentity() override { return [panel() supportedPPDOptionKeys]; }
  bool save() override { return [panel() saveValuesAndReturnError:&error_] && error_ == nil; }
  bool restore() override { return [panel() restoreValuesAndReturnError:&error_] && error_ == nil; }

  void updateView() override { [[panel() viewController] performSelector:@selector(updateView)]; }
  void setViewIsInited(bool inited) override {
    [[panel() viewController] setValue:[NSNumber numberWithBool:inited] forKey:@"viewIsInited"];
  }
  Accepted verifyValue(const std::string& textBox, int value) override {
    id box = controlAt(textBox);
    NSNumber* given = [NSNumber numberWithInt:value];
    id accepted = [box performSelector:@selector(verifyValue:) withObject:given];
    if (accepted == given) return Accepted::itself;
    if (accepted == [box valueForKey:@"min"]) return Accepted::minimum;
    return accepted == [box valueForKey:@"max"] ? Accepted::maximum : Accepted::another;
  }
  const void* minimumIdentity(const std::string& textBox) override {
    return [controlAt(textBox) valueForKey:@"min"];
  }

  Look look(const std::string& outlet) override {
    Look look;
    id control = controlAt(outlet);
    look.enabled = [control isEnabled];
    if ([control isKindOfClass:[NSPopUpButton class]]) {
      look.text = textOf([control titleOfSelectedItem]);
      look.chosen = optionalTextOf([[control selectedItem] representedObject]);
    } else if ([control isKindOfClass:[NSButton class]]) {
      look.text = textOf([control title]);
      look.state = static_cast<int>([control state]);
    } else {
      look.text = textOf([control stringValue]);
    }
    if ([control isKindOfClass:[NSStepper class]]) {
      look.min = [static_cast<NSStepper*>(control) minValue];
      look.max = [static_cast<NSStepper*>(control) maxValue];
    }
    if ([control isKindOfClass:[NSTextField class]]) look.color = colorNameOf([control textColor]);
    return look;
  }
  std::vector<Choice> choices(const std::string& menu) override {
    std::vector<Choice> choices;
    for (NSMenuItem* item in [controlAt(menu) itemArray])
      choices.push_back({textOf([item title]), optionalTextOf([item representedObject])});
    return choices;
  }
  bool replaceText(const std::string& outlet, const std::string& text) override {
    return user::replaceText(controlAt(outlet), stringOf(text));
  }
  bool replaceTextAtOnce(const std::string& outlet, const std::string& text) override {
    return replaceText(outlet, text);
  }
  bool type(const std::string& outlet, const std::string& keys) override {
    return user::type(controlAt(outlet), stringOf(keys));
  }
  bool backspace(const std::string& outlet) override { return user::backspace(controlAt(outlet)); }
  bool click(const std::string& outlet) override { return user::click(controlAt(outlet)); }
  bool step(const std::string& outlet, int steps) override { return user::step(controlAt(outlet), steps); }
  bool choose(const std::string& outlet, const std::string& value) override {
    NSPopUpButton* menu = controlAt(outlet);
    return user::choose(menu, [menu indexOfItemWithRepresentedObject:stringOf(value)]);
  }
  void setMixed(const std::string& outlet) override {
    NSButton* box = controlAt(outlet);
    [box setAllowsMixedState:YES];
    [box setState:NSMixedState];
  }

 private:
  [[nodiscard]] id<HostedPanel> panel() const { return [panels_ objectAtIndex:0]; }
  [[nodiscard]] id controlAt(const std::string& outlet) const {
    return [[panel() viewController] performSelector:NSSelectorFromString(stringOf(outlet))];
  }
  static std::string colorNameOf(NSColor* color) {
    if ([color isEqual:[NSColor blackColor]]) return "blackColor";
    return [color isEqual:[NSColor lightGrayColor]] ? "lightGrayColor" : textOf([color description]);
  }

  NSArray* panels_;
  NSWindow* window_ = nil;
  NSError* error_ = nil;
};

class BundleDialog : public Dialog {
 public:
  explicit BundleDialog(const Scene& scene) {
    const auto ppd = scene.writePpd();
    host_ = [[TestHost alloc] initWithPPD:ppd ? stringOf(*ppd) : nil];
    keysOfEveryJob_ = allKeys();
    NSString* bundle = stringOf(scene.writeBundle());
    plugin_ = host::newPlugin();
    if (![plugin_ initWithBundle:host::openBundle(bundle, [bundle stringByDeletingLastPathComponent])])
      throw std::runtime_error("the plug-in refuses the bundle");
    for (const auto& [key, value] : scene.stored) store(key, value);
  }
  BundleDialog(const BundleDialog&) = delete;
  BundleDialog& operator=(const BundleDialog&) = delete;
  ~BundleDialog() override {
    [static_cast<id>(plugin_) release];
    [host_ release];
  }

  std::unique_ptr<Panel> panelForType(std::optional<std::string> type, bool withCallback) override {
    @autoreleasepool {
      NSArray* panels = [plugin_ PDEPanelsForType:type ? stringOf(*type) : nil
                                     withHostInfo:withCallback ? host_ : nil];
      return panels == nil ? nullptr : std::make_unique<WindowPanel>(panels);
    }
  }
  std::size_t panelCount() override {
    return [[plugin_ PDEPanelsForType:host::kPrintDialogType withHostInfo:host_] count];
  }

  std::optional<std::string> stored(const std::string& key) override {
    CFTypeRef value = nullptr;
    const auto status = PMPrintSettingsGetValue([host_ printSettings], (CFStringRef)stringOf(key), &value);
    return status == kPMNoError ? optionalTextOf((id)value) : std::nullopt;
  }
  void store(const std::string& key, const std::optional<std::string>& value) override {
    NSString* string = value ? stringOf(*value) : nil;
    if (PMPrintSettingsSetValue([host_ printSettings], (CFStringRef)stringOf(key), string, 0) != kPMNoError)
      throw std::runtime_error("the print settings do not take " + key);
  }
  // Without the keys that the print system sets for every job.
  std::vector<std::string> storedKeys() override {
    std::vector<std::string> keys;
    for (auto& key : allKeys()) {
      if (std::ranges::count(keysOfEveryJob_, key) == 0) keys.push_back(std::move(key));
    }
    return keys;
  }

 private:
  [[nodiscard]] std::vector<std::string> allKeys() const {
    CFArrayRef keys = nullptr;
    if (PMPrintSettingsCopyKeys([host_ printSettings], &keys) != kPMNoError) return {};
    return textsOf([(NSArray*)keys autorelease]);
  }

  TestHost* host_;
  std::vector<std::string> keysOfEveryJob_;
  id<HostedPlugin> plugin_;
};

}  // namespace

std::unique_ptr<Dialog> openDialog(const Scene& scene) { return std::make_unique<BundleDialog>(scene); }

std::size_t longestText() { return std::string::npos; }

}  // namespace tandemtrim::conformance
