// A plug-in in its host, with a bundle whose resources a test damages.
#pragma once

#import "tests/adapters/appkit/support/hosted_panel_test.h"

namespace host {

extern NSString* const kSettingInfo;

class DamagedResources : public HostedPanelTest {
 protected:
  DamagedResources();

  [[nodiscard]] NSString* resource(NSString* name);
  void write(NSString* name, NSData* content);
  void remove(NSString* name);
  /// Changes one entry of the setting info; nil removes it.
  void change(NSString* mainKey, NSString* key, id value);
  /// Makes a new host whose printer has no PPD file.
  void useNoPpd();
  /// The damaged bundle as it is now.
  [[nodiscard]] NSBundle* bundle();
  /// The panels of a plug-in with that bundle.
  [[nodiscard]] NSArray* panels();

 private:
  NSString* folder_;
};

}  // namespace host
