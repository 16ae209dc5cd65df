#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.hpp"

namespace tandemtrim::platform {

/// A loaded nib; it owns the views and controls that were made from it.
class LoadedNib {
 public:
  virtual ~LoadedNib() = default;
};

/// The object that a nib is connected to.
class NibOwner {
 public:
  NibOwner() = default;
  NibOwner(const NibOwner&) = delete;
  NibOwner& operator=(const NibOwner&) = delete;
  virtual ~NibOwner() = default;

  /// The names of the owner's outlets.
  [[nodiscard]] virtual std::vector<std::string_view> outletNames() const = 0;
  /// Connects an outlet. Ignored if the owner has no such outlet, or the object is null or of another class.
  virtual void setOutlet(std::string_view name, NibObject* object) = 0;
  /// Runs an action of the owner; an unknown name is ignored.
  virtual void performAction(std::string_view name, NibObject* sender) = 0;
  /// The owner's text for this key in the user's language, or the key itself when there is no text.
  [[nodiscard]] virtual std::string localizedString(std::string_view key) const { return std::string(key); }

  /// Keeps a loaded nib alive as long as this owner. Earlier nibs are kept too, as their controls may still
  /// be in use. The loader must call this before it connects the first outlet.
  void keepLoadedNib(std::unique_ptr<LoadedNib> nib) { nibs_.push_back(std::move(nib)); }

  /// The platform's object to which its nibs connect instead of the owner; null if they connect to the owner.
  /// It does not belong to the owner.
  [[nodiscard]] void* platformObject() const { return platformObject_; }
  void setPlatformObject(void* object) { platformObject_ = object; }

 private:
  void* platformObject_ = nullptr;
  std::vector<std::unique_ptr<LoadedNib>> nibs_;
};

/// Instantiates the named nib and connects its objects to the owner's outlets and their actions to the owner.
/// Returns false if there is no such nib. Connects what it can. Each platform defines it.
bool loadNibNamed(std::string_view name, NibOwner& owner);

}  // namespace tandemtrim::platform
