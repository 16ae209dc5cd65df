#include "model/print_ticket_manager.hpp"

#include <algorithm>
#include <utility>
#include <variant>
#include <vector>

#include "model/ticket_names.hpp"
#include "plugin/setting_info/settings.hpp"

namespace tandemtrim {
namespace {

template <class Ticket>
using Slot = std::unique_ptr<Ticket>*;

// The parameters of one ticket. The slot's type determines the ticket's class.
struct ConstructionEntry {
  std::variant<Slot<MorvaTTPrintTicketValidKV2>, Slot<MorvaTTPrintTicketPopUpKV2>,
               Slot<MorvaTTPrintTicketMarginKV2>>
      instancePointer;
  std::string defaultValue;
  std::string ticketKey;
};

template <class Ticket>
ConstructionEntry textEntry(std::unique_ptr<Ticket>& slot, const platform::ObjectRef& defaultValue,
                            const platform::ObjectRef& ticketKey) {
  return {&slot, platform::requiredText(defaultValue, "the default of a setting"),
          platform::requiredText(ticketKey, "the print-settings key of a setting")};
}

ConstructionEntry marginEntry(std::unique_ptr<MorvaTTPrintTicketMarginKV2>& slot,
                              const MorvaTTCommonInfoKV2& info, std::string_view marginName) {
  auto defaultValue =
      platform::requiredDecimalText(info.defaultMarginValue(marginName), "the default of a margin");
  return {&slot, std::move(defaultValue),
          platform::requiredText(info.ticketKeyMargin(marginName), "the print-settings key of a margin")};
}

bool makeTicket(const ConstructionEntry& entry, const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo) {
  return std::visit(
      [&]<class Ticket>(Slot<Ticket> slot) {
        *slot = Ticket::initWithDefaultValue(entry.defaultValue, entry.ticketKey, commonInfo);
        return *slot != nullptr;
      },
      entry.instancePointer);
}

}  // namespace

std::unique_ptr<MorvaTTPrintTicketManagerKV2> MorvaTTPrintTicketManagerKV2::initWithCommonInfo(
    const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo) {
  if (!commonInfo) return nullptr;
  auto made = std::unique_ptr<MorvaTTPrintTicketManagerKV2>(new MorvaTTPrintTicketManagerKV2);
  if (!made->initialize(commonInfo)) return nullptr;
  return made;
}

// All entries are gathered before the first ticket is made, so that a missing default or key raises before
// anything is stored.
bool MorvaTTPrintTicketManagerKV2::initialize(const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo) {
  const auto& info = *commonInfo;
  std::vector<ConstructionEntry> entries{
      textEntry(ticketValid_, info.defaultValid(), info.ticketKeyValid()),
      textEntry(ticketDirection_, info.defaultImageDirection(), info.ticketKeyImageDirection()),
      textEntry(ticketPosition_, info.defaultPosition(), info.ticketKeyPosition()),
  };
  for (std::size_t side = 0; side < kSides; ++side)
    entries.push_back(marginEntry(ticketMargins_.at(side), info, kMargins[side].marginName));
  return std::ranges::all_of(entries, [&](const auto& entry) { return makeTicket(entry, commonInfo); });
}

// Destroys the tickets in field order; the default order is the reverse.
MorvaTTPrintTicketManagerKV2::~MorvaTTPrintTicketManagerKV2() {
  ticketValid_.reset();
  ticketDirection_.reset();
  ticketPosition_.reset();
  for (auto& ticket : ticketMargins_) ticket.reset();
}

std::array<MorvaTTPrintTicketKV2*, kSettings.size()> MorvaTTPrintTicketManagerKV2::tickets() const {
  std::array<MorvaTTPrintTicketKV2*, kSettings.size()> all{ticketValid(), ticketDirection(),
                                                           ticketPosition()};
  std::ranges::transform(ticketMargins_, all.begin() + kFirstMargin,
                         [](const auto& ticket) { return ticket.get(); });
  return all;
}

MorvaTTPrintTicketKV2* MorvaTTPrintTicketManagerKV2::ticketNamed(std::string_view ticketName) const {
  for (std::size_t setting = 0; setting < kSettings.size(); ++setting) {
    if (kTicketNames.at(setting) == ticketName) return tickets().at(setting);
  }
  return nullptr;
}

void MorvaTTPrintTicketManagerKV2::registerTargetInstances(const MorvaTTPrintTicketKV2::Controls& controls,
                                                           std::string_view ticketName) {
  if (auto* ticket = ticketNamed(ticketName)) ticket->registerTargetInstances(controls);
}

void MorvaTTPrintTicketManagerKV2::setTitleToValid(std::string_view title) { ticketValid_->setTitle(title); }

void MorvaTTPrintTicketManagerKV2::restoreAllTicketFailSafe() {
  for (auto* ticket : tickets()) ticket->restoreTicketFailSafe();
}

std::optional<std::string> MorvaTTPrintTicketManagerKV2::restoreTicketFailSafe(std::string_view ticketName) {
  auto* ticket = ticketNamed(ticketName);
  if (ticket == nullptr) return std::nullopt;
  return ticket->restoreTicketFailSafe();
}

void MorvaTTPrintTicketManagerKV2::saveAllTicket() {
  for (auto* ticket : tickets()) ticket->saveTicket();
}

// Restoring the defaults never switches the function on or off: the Valid ticket is left out.
void MorvaTTPrintTicketManagerKV2::setAllToDefaultExceptValid() {
  for (auto* ticket : tickets()) {
    if (ticket != ticketValid()) ticket->setToDefault();
  }
}

void MorvaTTPrintTicketManagerKV2::setMarginValue(const platform::Object& value,
                                                  std::string_view ticketName) {
  for (std::size_t side = 0; side < kSides; ++side) {
    if (marginsOf(kTicketNames)[side] == ticketName) ticketMargins_.at(side)->setMarginValue(value);
  }
}

}  // namespace tandemtrim
