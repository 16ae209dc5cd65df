#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/retained.hpp"
#include "platform/log.hpp"
#include "platform/property_list.hpp"

namespace tandemtrim::platform {

std::shared_ptr<const Dictionary> dictionaryWithContentsOfFile(const std::optional<std::string>& path) {
  if (!path) return nullptr;
  const ObjectRef root =
      appkit::objectOf([[[NSDictionary alloc] initWithContentsOfFile:appkit::stringOf(*path)] autorelease]);
  if (!root) return nullptr;
  return {root, root->as<Dictionary>()};
}

void NSLog(std::string_view format, std::span<const std::string> list) {
  NSMutableArray* strings = [NSMutableArray arrayWithCapacity:list.size()];
  for (const auto& text : list) [strings addObject:appkit::stringOf(text)];
  ::NSLog(@"%@", [appkit::stringOf(format) stringByReplacingOccurrencesOfString:@"%@"
                                                                     withString:[strings description]]);
}

}  // namespace tandemtrim::platform
