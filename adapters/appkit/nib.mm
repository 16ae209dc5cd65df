#include "platform/nib.hpp"

#include "adapters/appkit/controllers.hpp"
#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/retained.hpp"
#import "adapters/appkit/view_controller.h"

namespace tandemtrim::platform {
namespace {

// The nib's top-level objects.
class ToolkitNib : public LoadedNib {
 public:
  [[nodiscard]] NSMutableArray* objects() const { return objects_.get(); }

 private:
  appkit::Retained<NSMutableArray> objects_{[NSMutableArray array]};
};

}  // namespace

bool loadNibNamed(std::string_view name, NibOwner& owner) {
  auto loaded = std::make_unique<ToolkitNib>();
  NSMutableArray* kept = loaded->objects();
  owner.keepLoadedNib(std::move(loaded));

  ::MorvaTTViewControllerKV2* controller = appkit::controllerOf(owner);
  NSNib* nib = [[[NSNib alloc] initWithNibNamed:appkit::stringOf(name)
                                         bundle:[NSBundle bundleForClass:[controller class]]] autorelease];
  NSArray* objects = nil;
  if (![nib instantiateWithOwner:controller topLevelObjects:&objects]) return false;
  [kept addObjectsFromArray:objects];
#if defined(GNUSTEP)
  // They come retained once for the owner, as no Mac since 10.8 does it.
  [objects makeObjectsPerformSelector:@selector(release)];
#endif
  return true;
}

}  // namespace tandemtrim::platform
