#import "adapters/appkit/foundation/margin_info.h"

#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/raise.hpp"

namespace appkit = tandemtrim::platform::appkit;
namespace platform = tandemtrim::platform;

namespace {

// Without the copy, a caller that changes its object later would change what Foundation sees, but not the
// core.
platform::ObjectRef copyOf(id entry) { return appkit::objectOf([[entry copy] autorelease]); }

}  // namespace

@implementation MorvaTTMarginInfoKV2

// Does not call an initialiser of the base class: that is a class cluster, whose initialisers return an
// object of another class.
- (id)initWithCore:(std::shared_ptr<platform::Dictionary>)core {
  core_ = std::move(core);
  // Makes the number objects of the PPD's limits here, so that each call returns the same ones.
  appkit::guardedInit(self, [&] {
    for (auto& [name, entry] : *core_) entry = copyOf(appkit::foundationObjectOf(entry));
  });
  return self;
}

- (NSUInteger)count {
  return core_->size();
}

- (id)objectForKey:(id)name {
  if (![name isKindOfClass:[NSString class]]) return nil;
  return appkit::guarded(
      [&] { return appkit::foundationObjectOf(platform::find(*core_, appkit::textOf(name))); });
}

- (NSEnumerator*)keyEnumerator {
  return appkit::guarded([&] { return [[appkit::foundationDictionaryOf(*core_) allKeys] objectEnumerator]; });
}

- (void)setObject:(id)entry forKey:(id)name {
  if (entry == nil || ![name isKindOfClass:[NSString class]])
    [NSException raise:NSInvalidArgumentException
                format:@"margin information needs a string as its key, and an entry"];
  appkit::guarded([&] { core_->insert_or_assign(appkit::textOf(name), copyOf(entry)); });
}

- (void)removeObjectForKey:(id)name {
  if (![name isKindOfClass:[NSString class]]) return;
  appkit::guarded([&] { core_->erase(appkit::textOf(name)); });
}

#if defined(GNUSTEP)
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id*)objects
                                    count:(NSUInteger)count {
  return [[self allKeys] countByEnumeratingWithState:state objects:objects count:count];
}
#endif

@end
