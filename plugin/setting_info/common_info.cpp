#include "plugin/setting_info/common_info.hpp"

#include <stdexcept>
#include <utility>

#include "platform/integer_text.hpp"
#include "platform/property_list.hpp"
#include "plugin/setting_info/ppd_attribute.hpp"
#include "plugin/setting_info/settings.hpp"

namespace tandemtrim {

using platform::Dictionary;
using platform::ObjectRef;

namespace {

// The property list's sub key for a side; empty if the name is not a margin name.
std::string_view marginSubKey(std::string_view marginName) {
  for (const auto& margin : kMargins) {
    if (margin.marginName == marginName) return margin.subKey;
  }
  return {};
}

// The object two levels down in a dictionary of dictionaries, or null.
ObjectRef findAtPath(const Dictionary& root, std::string_view mainKey, std::string_view subKey) {
  const ObjectRef main = platform::find(root, mainKey);
  const auto* dictionary = main ? main->as<Dictionary>() : nullptr;
  return dictionary == nullptr ? nullptr : platform::find(*dictionary, subKey);
}

}  // namespace

std::shared_ptr<MorvaTTCommonInfoKV2> MorvaTTCommonInfoKV2::initWithCallback(
    std::shared_ptr<MorvaTTPdeCallbackKV2> callback, std::shared_ptr<platform::Bundle> bundle) {
  auto made = std::shared_ptr<MorvaTTCommonInfoKV2>(new MorvaTTCommonInfoKV2);
  if (!made->initialize(std::move(callback), std::move(bundle))) return nullptr;
  return made;
}

bool MorvaTTCommonInfoKV2::initialize(std::shared_ptr<MorvaTTPdeCallbackKV2> callback,
                                      std::shared_ptr<platform::Bundle> bundle) {
  if (!callback || !bundle) return false;
  bundle_ = std::move(bundle);
  settingInfoDictionary_ = platform::dictionaryWithContentsOfFile(
      bundle_->pathForResource(TTCISettingInfoName, TTCIPlistResourceType));
  marginInfoDictionary_ = std::make_unique<Dictionary>();
  callback_ = std::move(callback);
  if (!settingInfoDictionary_) return false;
  TTCIRegisterMarginInfo();
  return true;
}

// Destroys the fields in their order; the default order is the reverse.
MorvaTTCommonInfoKV2::~MorvaTTCommonInfoKV2() {
  settingInfoDictionary_.reset();
  marginInfoDictionary_.reset();
  bundle_.reset();
  callback_.reset();
}

std::string MorvaTTCommonInfoKV2::localizedString(std::string_view key) const {
  return bundle_->localizedStringForKey(key, "", std::nullopt);
}

ObjectRef MorvaTTCommonInfoKV2::setting(std::string_view mainKey, std::string_view subKey) const {
  return findAtPath(*settingInfoDictionary_, mainKey, subKey);
}

ObjectRef MorvaTTCommonInfoKV2::defaultValid() const {
  return setting(TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyValid);
}

ObjectRef MorvaTTCommonInfoKV2::defaultImageDirection() const {
  return setting(TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyImageDirection);
}

ObjectRef MorvaTTCommonInfoKV2::defaultPosition() const {
  return setting(TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyPosition);
}

ObjectRef MorvaTTCommonInfoKV2::defaultMarginValue(std::string_view marginName) const {
  const auto subKey = marginSubKey(marginName);
  return subKey.empty() ? nullptr : setting(TTCIPlistMainKeyDefaultValue, subKey);
}

ObjectRef MorvaTTCommonInfoKV2::defaultMarginMin() const {
  return setting(TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyMarginMin);
}

ObjectRef MorvaTTCommonInfoKV2::defaultMarginMax() const {
  return setting(TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyMarginMax);
}

ObjectRef MorvaTTCommonInfoKV2::defaultMarginLimit() const {
  return setting(TTCIPlistMainKeyDefaultValue, TTCIPlistSubKeyMarginLimit);
}

ObjectRef MorvaTTCommonInfoKV2::marginLimit(std::string_view marginName) const {
  return findAtPath(*marginInfoDictionary_, marginName, TTCILimitKey);
}

ObjectRef MorvaTTCommonInfoKV2::panelKindID() const {
  return setting(TTCIPlistMainKeyId, TTCIPlistSubKeyPanelKind);
}

ObjectRef MorvaTTCommonInfoKV2::ticketKeyValid() const {
  return setting(TTCIPlistMainKeyTicketKey, TTCIPlistSubKeyValid);
}

ObjectRef MorvaTTCommonInfoKV2::ticketKeyImageDirection() const {
  return setting(TTCIPlistMainKeyTicketKey, TTCIPlistSubKeyImageDirection);
}

ObjectRef MorvaTTCommonInfoKV2::ticketKeyPosition() const {
  return setting(TTCIPlistMainKeyTicketKey, TTCIPlistSubKeyPosition);
}

ObjectRef MorvaTTCommonInfoKV2::ticketKeyMargin(std::string_view marginName) const {
  const auto subKey = marginSubKey(marginName);
  return subKey.empty() ? nullptr : setting(TTCIPlistMainKeyTicketKey, subKey);
}

ObjectRef MorvaTTCommonInfoKV2::minLabelForIntegerValueRange() const {
  return setting(TTCIPlistMainKeyWording, TTCIPlistSubKeyMinLabelForValueRange);
}

ObjectRef MorvaTTCommonInfoKV2::maxLabelForIntegerValueRange() const {
  return setting(TTCIPlistMainKeyWording, TTCIPlistSubKeyMaxLabelForValueRange);
}

platform::PrintSettings* MorvaTTCommonInfoKV2::currentPrintSettings() const {
  return callback_->printSettings();
}

const std::shared_ptr<const Dictionary>& MorvaTTCommonInfoKV2::settingInfoDictionary() const {
  return settingInfoDictionary_;
}

std::optional<std::string> MorvaTTCommonInfoKV2::TTCIPpdFindAttribute(std::string_view keyword) const {
  return ppdAttribute(callback_->ppdFile(), keyword);
}

bool MorvaTTCommonInfoKV2::TTCIIsValidMarginName(std::string_view marginName) const {
  return marginInfoDictionary_->contains(marginName);
}

void MorvaTTCommonInfoKV2::TTCIRegisterMarginInfo() {
  for (const auto& margin : kMargins) {
    const auto ppdValue = TTCIPpdFindAttribute(margin.ppdKey);
    const auto candidate =
        ppdValue ? platform::makeObject(platform::integerValue(*ppdValue)) : defaultMarginLimit();
    auto limit = TTCIVerifyMarginLimit(candidate);
    if (!limit) throw std::invalid_argument("no margin limit for " + std::string(margin.marginName));
    marginInfoDictionary().insert_or_assign(
        std::string(margin.marginName),
        platform::makeObject(Dictionary{{std::string(TTCILimitKey), std::move(limit)}}));
  }
}

ObjectRef MorvaTTCommonInfoKV2::TTCIVerifyMarginLimit(const ObjectRef& candidate) const {
  const auto minimum = defaultMarginMin();
  return candidate ? platform::heldBetween(candidate, minimum, defaultMarginMax()) : minimum;
}

}  // namespace tandemtrim
