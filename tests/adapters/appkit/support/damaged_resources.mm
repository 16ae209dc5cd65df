#import "tests/adapters/appkit/support/damaged_resources.h"

namespace host {

NSString* const kSettingInfo = @"TandemTrimKV2-SettingInfo.plist";

DamagedResources::DamagedResources()
    : folder_([NSTemporaryDirectory() stringByAppendingPathComponent:@"damaged/TandemTrim.bundle"]) {
  NSFileManager* files = [NSFileManager defaultManager];
  NSString* good = [NSString stringWithUTF8String:std::getenv("TANDEM_TRIM_BUNDLE")];
  [files removeItemAtPath:[folder_ stringByDeletingLastPathComponent] error:nullptr];
  [files createDirectoryAtPath:[folder_ stringByDeletingLastPathComponent]
      withIntermediateDirectories:YES
                       attributes:nil
                            error:nullptr];
  [files copyItemAtPath:good toPath:folder_ error:nullptr];
}

NSString* DamagedResources::resource(NSString* name) {
  return [folder_ stringByAppendingPathComponent:[@"Contents/Resources" stringByAppendingPathComponent:name]];
}

void DamagedResources::write(NSString* name, NSData* content) {
  [content writeToFile:resource(name) atomically:NO];
}

void DamagedResources::remove(NSString* name) {
  [[NSFileManager defaultManager] removeItemAtPath:resource(name) error:nullptr];
}

void DamagedResources::change(NSString* mainKey, NSString* key, id value) {
  NSMutableDictionary* info = [NSMutableDictionary dictionaryWithContentsOfFile:resource(kSettingInfo)];
  NSMutableDictionary* part = [NSMutableDictionary dictionaryWithDictionary:[info objectForKey:mainKey]];
  [part removeObjectForKey:key];
  if (value != nil) [part setObject:value forKey:key];
  [info setObject:part forKey:mainKey];
  write(kSettingInfo, [NSPropertyListSerialization dataFromPropertyList:info
                                                                 format:NSPropertyListXMLFormat_v1_0
                                                       errorDescription:nullptr]);
}

void DamagedResources::useNoPpd() {
  [host release];
  host = [[TestHost alloc] initWithPPD:nil];
}

NSBundle* DamagedResources::bundle() { return openBundle(folder_, NSTemporaryDirectory()); }

NSArray* DamagedResources::panels() {
  [plugin initWithBundle:bundle()];
  return [plugin PDEPanelsForType:kPrintDialogType withHostInfo:host];
}

}  // namespace host
