#pragma once

#import <AppKit/AppKit.h>
#import <objc/runtime.h>

namespace host {

/// Replaces a method of a class until this object is destroyed.
class Replacing {
 public:
  Replacing(NSString* className, SEL method, IMP by, const char* types)
      : class_(NSClassFromString(className)), method_(method), types_(types) {
    class_replaceMethod(class_, method_, by, types_);
  }
  Replacing(const Replacing&) = delete;
  Replacing& operator=(const Replacing&) = delete;
  ~Replacing() { class_replaceMethod(class_, method_, before_, types_); }

  [[nodiscard]] IMP before() const { return before_; }

 private:
  Class const class_;
  SEL const method_;
  const char* const types_;
  IMP const before_ = class_getMethodImplementation(class_, method_);
};

}  // namespace host
