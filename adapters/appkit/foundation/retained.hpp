#pragma once

#include <utility>

#import "adapters/appkit/foundation/toolkit.h"

namespace tandemtrim::platform::appkit {

/// A counted reference to an object of the toolkit, or nil.
template <class Class>
class Retained {
 public:
  Retained() = default;
  explicit Retained(Class* object) : object_([object retain]) {}
  Retained(const Retained& other) : Retained(other.object_) {}
  Retained(Retained&& other) noexcept : object_(std::exchange(other.object_, nil)) {}
  Retained& operator=(const Retained&) = delete;
  ~Retained() { [object_ release]; }

  [[nodiscard]] Class* get() const { return object_; }

 private:
  Class* object_ = nil;
};

}  // namespace tandemtrim::platform::appkit
