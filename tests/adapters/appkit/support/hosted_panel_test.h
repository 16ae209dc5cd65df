// A plug-in in its host, for tests that know it only by its documentation.
#pragma once

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#import "tests/adapters/appkit/support/host.h"
#import "tests/adapters/appkit/support/user.h"

namespace host {

inline std::string textOf(NSString* string) { return string == nil ? "nil" : [string UTF8String]; }

/// The language of this run, as its table's folder names it.
NSString* language();
/// The text of a key in that language's table.
NSString* localized(NSString* key);

/// The name of the toolkit's exception that the work raises, or empty.
template <class Work>
std::string exceptionOf(Work work) {
  @try {
    work();
  } @catch (NSException* exception) {
    return textOf([exception name]);
  }
  return {};
}

/// One job on the sample printer, a plug-in with its bundle, and a panel on request.
class HostedPanelTest : public testing::Test {
 protected:
  HostedPanelTest();
  ~HostedPanelTest() override;
  HostedPanelTest(const HostedPanelTest&) = delete;
  HostedPanelTest& operator=(const HostedPanelTest&) = delete;

  /// Requests a panel; its view is not requested yet.
  void open();
  /// Requests a panel and shows it in a window, as a print dialog does.
  void show();
  /// The same, with the function switched on.
  void showOn();
  /// Releases the panel and closes its window.
  void close();

  [[nodiscard]] NSString* stored(NSString* key) { return [[host settings] objectForKey:key]; }
  void store(NSString* key, NSString* value) { [[host settings] setObject:value forKey:key]; }
  bool save();

  /// The views of a class below the panel's view, by the class's name, from top to bottom.
  [[nodiscard]] NSArray* views(NSString* className);
  [[nodiscard]] id view(NSString* className) { return [views(className) objectAtIndex:0]; }
  /// The text box or stepper of a side.
  [[nodiscard]] NSTextField* box(NSString* side) { return identified(@"MorvaTTTextBoxKV2", side); }
  [[nodiscard]] NSStepper* stepper(NSString* side) { return identified(@"MorvaTTStepperKV2", side); }
  /// The one view of a class that has this title or, for a menu, offers it.
  [[nodiscard]] id titled(NSString* className, NSString* title);
  /// The pop-up that has an item of this value.
  [[nodiscard]] NSPopUpButton* menu(NSString* value);
  [[nodiscard]] NSButton* checkBox() { return view(@"MorvaTTCheckBoxKV2"); }
  [[nodiscard]] NSButton* defaultButton() { return view(@"MorvaTTButtonKV2"); }

  TestHost* host;
  id<HostedPlugin> plugin;
  id<HostedPanel> panel = nil;
  NSWindow* window = nil;

 private:
  [[nodiscard]] id identified(NSString* className, NSString* side);

  NSArray* panels_ = nil;
};

}  // namespace host
