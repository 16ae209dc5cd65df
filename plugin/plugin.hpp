#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "platform/extension.hpp"

namespace tandemtrim {

/// The bundle's principal class: it keeps its bundle and makes a new panel for each request.
class MorvaTTPdePluginKV2 : public platform::Plugin {
 public:
  bool initWithBundle(std::shared_ptr<platform::Bundle> bundle) override;

  /// A list of one panel for platform::kPrintDialogExtensionType; null for any other type, without a
  /// callback, or when the panel cannot be made. Exceptions raised while the panel is made reach the caller.
  [[nodiscard]] std::unique_ptr<platform::PanelList> PDEPanelsForType(
      std::optional<std::string_view> type, std::shared_ptr<platform::HostCallback> hostInfo) override;

  [[nodiscard]] const std::shared_ptr<platform::Bundle>& bundle() const { return bundle_; }

 private:
  std::shared_ptr<platform::Bundle> bundle_;
};

}  // namespace tandemtrim
