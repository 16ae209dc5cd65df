#include "platform/notifications.hpp"

#include "adapters/appkit/controllers.hpp"
#include "adapters/appkit/controls.hpp"
#import "adapters/appkit/view_controller.h"

namespace tandemtrim::platform {
namespace {

// The toolkit's default centre. It calls the observer's controlTextDidChange:, which has the same effect as
// the selector.
class ToolkitCenter : public NotificationCenter {
 public:
  void addObserver(const void* observer, Selector /*selector*/, std::string_view /*name*/,
                   NibObject* object) override {
    NSString* posted = ::NSControlTextDidChangeNotification;
    [[NSNotificationCenter defaultCenter] addObserver:appkit::controllerOf(observer)
                                             selector:@selector(controlTextDidChange:)
                                                 name:posted
                                               object:appkit::toolkitObjectOf(object)];
  }
  void removeObserver(const void* observer) override {
    [[NSNotificationCenter defaultCenter] removeObserver:appkit::controllerOf(observer)];
  }
  // The toolkit ends all of the observer's subscriptions to the object. There is one for each box, since
  // every loaded nib has its own boxes.
  void removeObserver(const void* observer, std::string_view /*name*/, NibObject* object) override {
    NSString* posted = ::NSControlTextDidChangeNotification;
    [[NSNotificationCenter defaultCenter] removeObserver:appkit::controllerOf(observer)
                                                    name:posted
                                                  object:appkit::toolkitObjectOf(object)];
  }
};

}  // namespace

NotificationCenter& defaultCenter() {
  static ToolkitCenter center;
  return center;
}

}  // namespace tandemtrim::platform
