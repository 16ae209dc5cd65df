#include "platform/nib.hpp"

#include "adapters/appkit/controllers.hpp"
#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/retained.hpp"
#include "adapters/appkit/nib_objects.hpp"

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

  NSArray* objects = appkit::objectsOfNib(appkit::stringOf(name), appkit::controllerOf(owner));
  if (objects == nil) return false;
  [kept addObjectsFromArray:objects];
  return true;
}

}  // namespace tandemtrim::platform
