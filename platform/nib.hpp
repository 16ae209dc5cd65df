#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls.hpp"

namespace tandemtrim::platform {

/// What a loader made from a nib: the views and controls, alive as long as this is.
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

  /// The outlets that the owner has, by name.
  [[nodiscard]] virtual std::vector<std::string_view> outletNames() const = 0;
  /// Connects an outlet. A name that the owner does not have, or an object that is none or of another class,
  /// connects nothing.
  virtual void setOutlet(std::string_view name, NibObject* object) = 0;
  /// Runs an action of the owner's; a name that it does not have does nothing.
  virtual void performAction(std::string_view name, NibObject* sender) = 0;
  /// The owner's text for this key in the user's language, or the key itself when there is none.
  [[nodiscard]] virtual std::string localizedString(std::string_view key) const { return std::string(key); }

  /// Leaves a loaded nib with its owner, so that it lives exactly as long as the panel that shows it; a nib
  /// that is loaded again joins the earlier ones, whose controls may still be referred to. The loader calls
  /// it before it connects the first outlet.
  void keepLoadedNib(std::unique_ptr<LoadedNib> nib) { nibs_.push_back(std::move(nib)); }

  /// The platform's own object that its nibs are connected to in the owner's stead; null where there is none.
  /// The owner only points to it.
  [[nodiscard]] void* platformObject() const { return platformObject_; }
  void setPlatformObject(void* object) { platformObject_ = object; }

 private:
  void* platformObject_ = nullptr;
  std::vector<std::unique_ptr<LoadedNib>> nibs_;
};

/// Instantiates the named nib and connects its objects to the owner's outlets and their actions to the owner.
/// False when there is no such nib; what could be connected is. Each platform defines it.
bool loadNibNamed(std::string_view name, NibOwner& owner);

}  // namespace tandemtrim::platform
