#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/bundle.hpp"
#include "platform/object.hpp"
#include "platform/print_settings.hpp"
#include "plugin/setting_info/host_callback.hpp"

namespace tandemtrim {

/// The setting information: the bundle's property list and the limits in the printer's PPD, read once at
/// construction, and access to the job's print settings and the user's language. Each value of the property
/// list is returned as the stored object itself, of any kind, or as null if the list lacks it. It stores
/// nothing in the print settings.
class MorvaTTCommonInfoKV2 {
 public:
  /// Reads the property list and the PPD's maxima. Null when the callback, the bundle or a readable property
  /// list is missing; std::invalid_argument when a side has no limit.
  [[nodiscard]] static std::shared_ptr<MorvaTTCommonInfoKV2> initWithCallback(
      std::shared_ptr<MorvaTTPdeCallbackKV2> callback, std::shared_ptr<platform::Bundle> bundle);

  MorvaTTCommonInfoKV2(const MorvaTTCommonInfoKV2&) = delete;
  MorvaTTCommonInfoKV2& operator=(const MorvaTTCommonInfoKV2&) = delete;
  virtual ~MorvaTTCommonInfoKV2();

  /// The key's text in the user's language; the key itself when the bundle's default string table lacks it.
  [[nodiscard]] std::string localizedString(std::string_view key) const;

  /// Defaults of the settings: texts.
  [[nodiscard]] platform::ObjectRef defaultValid() const;
  [[nodiscard]] platform::ObjectRef defaultImageDirection() const;
  [[nodiscard]] platform::ObjectRef defaultPosition() const;
  /// Defaults and bounds of the margins: numbers of millimetres. Null if `marginName` is not one of the four
  /// margin names.
  [[nodiscard]] platform::ObjectRef defaultMarginValue(std::string_view marginName) const;
  [[nodiscard]] platform::ObjectRef defaultMarginMin() const;
  [[nodiscard]] platform::ObjectRef defaultMarginMax() const;
  [[nodiscard]] platform::ObjectRef defaultMarginLimit() const;
  /// The largest margin that a side accepts on this printer, in millimetres: the PPD's maximum, or the
  /// property list's limit if the PPD does not state one, clamped to the list's minimum and maximum. Null if
  /// `marginName` is not one of the four margin names.
  [[nodiscard]] platform::ObjectRef marginLimit(std::string_view marginName) const;

  [[nodiscard]] platform::ObjectRef panelKindID() const;

  /// The print-settings keys under which the settings are stored.
  [[nodiscard]] platform::ObjectRef ticketKeyValid() const;
  [[nodiscard]] platform::ObjectRef ticketKeyImageDirection() const;
  [[nodiscard]] platform::ObjectRef ticketKeyPosition() const;
  [[nodiscard]] platform::ObjectRef ticketKeyMargin(std::string_view marginName) const;

  /// The tokens in the localised range text that are replaced by the two bounds.
  [[nodiscard]] platform::ObjectRef minLabelForIntegerValueRange() const;
  [[nodiscard]] platform::ObjectRef maxLabelForIntegerValueRange() const;

  /// The job's print settings or null, requested from the host at each call; they belong to the host.
  [[nodiscard]] platform::PrintSettings* currentPrintSettings() const;

  /// Whether tickets may be made with it; always true in this class.
  [[nodiscard]] virtual bool isReady() const { return true; }

  [[nodiscard]] const std::shared_ptr<const platform::Dictionary>& settingInfoDictionary() const;
  [[nodiscard]] platform::Dictionary& marginInfoDictionary() { return *marginInfoDictionary_; }
  [[nodiscard]] const std::shared_ptr<platform::Bundle>& bundle() const { return bundle_; }
  [[nodiscard]] const std::shared_ptr<MorvaTTPdeCallbackKV2>& callback() const { return callback_; }

  /// Internal: the value of the first PPD attribute of this keyword. Nullopt when there is no PPD file, no
  /// such attribute, or a value that is not UTF-8.
  [[nodiscard]] std::optional<std::string> TTCIPpdFindAttribute(std::string_view keyword) const;
  /// Internal: whether the margin info dictionary has this name.
  [[nodiscard]] bool TTCIIsValidMarginName(std::string_view marginName) const;
  /// Internal: fills the margin info dictionary.
  void TTCIRegisterMarginInfo();
  /// Internal: the candidate itself if it is between the property list's minimum and maximum, else the bound
  /// that it violates; the minimum for null. Null if that bound is missing.
  [[nodiscard]] platform::ObjectRef TTCIVerifyMarginLimit(const platform::ObjectRef& candidate) const;

 protected:
  MorvaTTCommonInfoKV2() = default;
  /// The steps of initWithCallback, which returns null if this returns false.
  bool initialize(std::shared_ptr<MorvaTTPdeCallbackKV2> callback, std::shared_ptr<platform::Bundle> bundle);

 private:
  [[nodiscard]] platform::ObjectRef setting(std::string_view mainKey, std::string_view subKey) const;

  std::shared_ptr<const platform::Dictionary> settingInfoDictionary_;
  std::unique_ptr<platform::Dictionary> marginInfoDictionary_;
  std::shared_ptr<platform::Bundle> bundle_;
  std::shared_ptr<MorvaTTPdeCallbackKV2> callback_;
};

}  // namespace tandemtrim
