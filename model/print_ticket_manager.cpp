#include "model/print_ticket_manager.hpp"

#include <algorithm>
#include <array>
#include <utility>
#include <variant>

#include "model/ticket_names.hpp"
#include "plugin/setting_info/setting_names.hpp"

namespace tandemtrim {
namespace {

template <class Ticket>
using Slot = std::unique_ptr<Ticket>*;

// What one ticket is made from. The slot that receives it says its class.
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

// The entries are gathered as a whole before the first ticket is made: one that is missing raises with
// nothing stored.
bool MorvaTTPrintTicketManagerKV2::initialize(const std::shared_ptr<MorvaTTCommonInfoKV2>& commonInfo) {
  const auto& info = *commonInfo;
  const std::array<ConstructionEntry, 7> entries{
      textEntry(ticketValid_, info.defaultValid(), info.ticketKeyValid()),
      textEntry(ticketDirection_, info.defaultImageDirection(), info.ticketKeyImageDirection()),
      textEntry(ticketPosition_, info.defaultPosition(), info.ticketKeyPosition()),
      marginEntry(ticketMarginTop_, info, TTCINameMarginTop),
      marginEntry(ticketMarginBottom_, info, TTCINameMarginBottom),
      marginEntry(ticketMarginLeft_, info, TTCINameMarginLeft),
      marginEntry(ticketMarginRight_, info, TTCINameMarginRight),
  };
  return std::ranges::all_of(entries, [&](const auto& entry) { return makeTicket(entry, commonInfo); });
}

// In field order; the default order is the reverse.
MorvaTTPrintTicketManagerKV2::~MorvaTTPrintTicketManagerKV2() {
  ticketValid_.reset();
  ticketDirection_.reset();
  ticketPosition_.reset();
  ticketMarginTop_.reset();
  ticketMarginBottom_.reset();
  ticketMarginLeft_.reset();
  ticketMarginRight_.reset();
}

std::array<MorvaTTPrintTicketManagerKV2::NamedTicket, 7> MorvaTTPrintTicketManagerKV2::ticketTable() const {
  return {{
      {TTPTMNameValid, ticketValid()},
      {TTPTMNameDirection, ticketDirection()},
      {TTPTMNamePosition, ticketPosition()},
      {TTPTMNameMarginTop, ticketMarginTop()},
      {TTPTMNameMarginBottom, ticketMarginBottom()},
      {TTPTMNameMarginLeft, ticketMarginLeft()},
      {TTPTMNameMarginRight, ticketMarginRight()},
  }};
}

MorvaTTPrintTicketKV2* MorvaTTPrintTicketManagerKV2::ticketNamed(std::string_view ticketName) const {
  for (const auto& [name, ticket] : ticketTable()) {
    if (name == ticketName) return ticket;
  }
  return nullptr;
}

void MorvaTTPrintTicketManagerKV2::registerTargetInstances(const MorvaTTPrintTicketKV2::Controls& controls,
                                                           std::string_view ticketName) {
  if (auto* ticket = ticketNamed(ticketName)) ticket->registerTargetInstances(controls);
}

void MorvaTTPrintTicketManagerKV2::setTitleToValid(std::string_view title) { ticketValid_->setTitle(title); }

void MorvaTTPrintTicketManagerKV2::restoreAllTicketFailSafe() {
  for (const auto& [name, ticket] : ticketTable()) ticket->restoreTicketFailSafe();
}

std::optional<std::string> MorvaTTPrintTicketManagerKV2::restoreTicketFailSafe(std::string_view ticketName) {
  auto* ticket = ticketNamed(ticketName);
  if (ticket == nullptr) return std::nullopt;
  return ticket->restoreTicketFailSafe();
}

void MorvaTTPrintTicketManagerKV2::saveAllTicket() {
  for (const auto& [name, ticket] : ticketTable()) ticket->saveTicket();
}

// Restoring the defaults never switches the function on or off: the Valid ticket is left out.
void MorvaTTPrintTicketManagerKV2::setAllToDefaultExceptValid() {
  for (const auto& [name, ticket] : ticketTable()) {
    if (ticket != ticketValid()) ticket->setToDefault();
  }
}

void MorvaTTPrintTicketManagerKV2::setMarginValue(const platform::Object& value,
                                                  std::string_view ticketName) {
  const std::array<std::pair<std::string_view, MorvaTTPrintTicketMarginKV2*>, 4> table{{
      {TTPTMNameMarginTop, ticketMarginTop()},
      {TTPTMNameMarginBottom, ticketMarginBottom()},
      {TTPTMNameMarginLeft, ticketMarginLeft()},
      {TTPTMNameMarginRight, ticketMarginRight()},
  }};
  for (const auto& [name, ticket] : table) {
    if (name == ticketName) ticket->setMarginValue(value);
  }
}

}  // namespace tandemtrim
