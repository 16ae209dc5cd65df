#include "adapters/appkit/foundation/host_callback.hpp"

#include "adapters/appkit/foundation/foundation.hpp"
#include "adapters/appkit/foundation/retained.hpp"

namespace tandemtrim::platform::appkit {
namespace {

// A value that is not a text becomes its description; the panel stores only texts under its keys.
std::optional<std::string> textOfValue(id value) {
  if (value == nil) return std::nullopt;
  return textOf([value description]);
}

// The print settings behind a handle of the printing system, which belongs to the host.
class HostPrintSettings : public PrintSettings {
 public:
  OSStatus PMPrintSettingsGetValue(std::string_view key, std::optional<std::string>& value) const override {
    CFTypeRef stored = nullptr;
    const OSStatus status = ::PMPrintSettingsGetValue(handle, (CFStringRef)stringOf(key), &stored);
    if (status == kNoError) value = textOfValue((id)stored);
    return status;
  }
  OSStatus PMPrintSettingsSetValue(std::string_view key, const std::optional<std::string>& value,
                                   bool locked) override {
    return ::PMPrintSettingsSetValue(handle, (CFStringRef)stringOf(key),
                                     (CFTypeRef)(value ? stringOf(*value) : nil), locked);
  }

  PMPrintSettings handle = nullptr;
};

class Callback : public HostCallback {
 public:
  explicit Callback(id host) : host_(host) {}

  // Requests the handle from the host at each call.
  PrintSettings* printSettings() override {
    settings_.handle = [(id<PDEPlugInCallbackProtocol>)host() printSettings];
    return settings_.handle == nullptr ? nullptr : &settings_;
  }
  ppd_file_s* ppdFile() override { return [(id<PDEPlugInCallbackProtocol>)host() ppdFile]; }
  [[nodiscard]] id host() const { return host_.get(); }

 private:
  Retained<NSObject> host_;
  HostPrintSettings settings_;
};

}  // namespace

std::shared_ptr<HostCallback> hostCallbackOf(id host) {
  return host == nil ? nullptr : std::make_shared<Callback>(host);
}

id hostOf(const std::shared_ptr<HostCallback>& callback) {
  return static_cast<const Callback&>(*callback).host();
}

PMPrintSettings handleOf(const PrintSettings* settings) {
  return settings == nullptr ? nullptr : static_cast<const HostPrintSettings*>(settings)->handle;
}

}  // namespace tandemtrim::platform::appkit
