#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// The attribute of this name in a message, or null.
ipp_attribute_t* findAttribute(const MessageHandle& message, const std::string& name);

/// What a message says by the attribute of this name: its first value. None when there is no such attribute,
/// or it has no value or values of another type, as anything may come from a network.
std::optional<std::string> textIn(const MessageHandle& message, const std::string& name);
std::optional<int> integerIn(const MessageHandle& message, const std::string& name);
std::optional<int> enumIn(const MessageHandle& message, const std::string& name);
std::optional<bool> booleanIn(const MessageHandle& message, const std::string& name);

/// The texts that all attributes of this name hold, as the names of several printers.
std::vector<std::string> textsIn(const MessageHandle& message, const std::string& name);

/// The only value of an attribute, where that is a text.
std::optional<std::string> onlyText(ipp_attribute_t* attribute);

/// All values of an attribute of any type as one text, as libcups writes them.
std::string attributeText(ipp_attribute_t* attribute);

/// Throws std::bad_alloc for a request that lacks something, since libcups found no memory for it and would
/// crash when it sends it.
void refuseIncomplete(const MessageHandle& request);

/// Has a request answered with the attributes of these names alone.
void requestAttributes(const MessageHandle& request, const std::vector<std::string>& names);

/// The groups of a request for a job, in the order in which the protocol wants them.
inline constexpr std::array kJobGroups{IPP_TAG_OPERATION, IPP_TAG_JOB, IPP_TAG_SUBSCRIPTION};

/// Adds to a request for a job the attributes that libcups makes of its options, of these groups.
void encodeOptions(const MessageHandle& request, const Options& options,
                   std::span<const ipp_tag_t> groups = kJobGroups);

}  // namespace tandemtrim::host
