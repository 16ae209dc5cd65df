#pragma once

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/cups/connection/cups_handles.hpp"
#include "host/job/options.hpp"

namespace tandemtrim::host {

/// Whether an answer reports an error; true also for null.
bool isError(const MessageHandle& answer);

/// The attribute of this name in a message, or null.
ipp_attribute_t* findAttribute(const MessageHandle& message, const std::string& name);

/// The first value of the attribute of this name. nullopt if there is no such attribute, or it has no value
/// or one of another type: anything may come from a network.
std::optional<std::string> textIn(const MessageHandle& message, const std::string& name);
std::optional<int> integerIn(const MessageHandle& message, const std::string& name);
std::optional<int> enumIn(const MessageHandle& message, const std::string& name);
std::optional<bool> booleanIn(const MessageHandle& message, const std::string& name);

/// The texts of all attributes of this name, such as the names of several printers.
std::vector<std::string> textsIn(const MessageHandle& message, const std::string& name);

/// The value of an attribute that has exactly one, if that is a text.
std::optional<std::string> onlyText(ipp_attribute_t* attribute);

/// All values of an attribute of any type as one text, as libcups writes them; empty for null.
std::string attributeText(ipp_attribute_t* attribute);

/// Throws std::bad_alloc for a request that lacks a part for which libcups had no memory; sending it would
/// crash.
void refuseIncomplete(const MessageHandle& request);

/// Limits the answer to the attributes of these names.
void requestAttributes(const MessageHandle& request, const std::vector<std::string>& names);

/// The groups of attributes in a request for a job, in the protocol's order.
inline constexpr std::array kJobGroups{IPP_TAG_OPERATION, IPP_TAG_JOB, IPP_TAG_SUBSCRIPTION};

/// Adds those of the options that belong to these groups to a request for a job, as libcups encodes them.
void encodeOptions(const MessageHandle& request, const Options& options,
                   std::span<const ipp_tag_t> groups = kJobGroups);

}  // namespace tandemtrim::host
