#include "host/cups/connection/attributes.hpp"

#include <array>
#include <functional>
#include <new>
#include <utility>

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::string kName = "it";

TEST(AReply, IsAnErrorIfItsStatusSaysSoOrItIsMissing) {
  for (const auto& [status, isWrong] : {std::pair(IPP_STATUS_OK, false),
                                        {IPP_STATUS_OK_CONFLICTING, false},
                                        {IPP_STATUS_ERROR_BAD_REQUEST, true},
                                        {IPP_STATUS_ERROR_INTERNAL, true}}) {
    const MessageHandle answer(ippNew());
    ippSetStatusCode(answer.get(), status);
    EXPECT_EQ(isError(answer), isWrong) << status;
  }
  EXPECT_TRUE(isError(nullptr));
}

// A message with one attribute, which `add` adds.
MessageHandle with(const std::function<void(ipp_t*, const char*)>& add) {
  MessageHandle message(ippNew());
  add(message.get(), kName.c_str());
  return message;
}

MessageHandle text(ipp_tag_t type, const char* value) {
  return with(
      [&](auto* message, auto* name) { ippAddString(message, IPP_TAG_PRINTER, type, name, nullptr, value); });
}

MessageHandle number(ipp_tag_t type, int value) {
  return with([&](auto* message, auto* name) { ippAddInteger(message, IPP_TAG_PRINTER, type, name, value); });
}

MessageHandle boolean(bool value) {
  return with([&](auto* message, auto* name) {
    ippAddBoolean(message, IPP_TAG_PRINTER, name, static_cast<char>(value));
  });
}

MessageHandle outOfBand(ipp_tag_t type) {
  return with([&](auto* message, auto* name) { ippAddOutOfBand(message, IPP_TAG_PRINTER, type, name); });
}

// A letter for each reader that finds a value: text, integer, enumeration, boolean, list of texts.
std::string found(const MessageHandle& message) {
  std::string kinds;
  if (textIn(message, kName)) kinds += 't';
  if (integerIn(message, kName)) kinds += 'i';
  if (enumIn(message, kName)) kinds += 'e';
  if (booleanIn(message, kName)) kinds += 'b';
  if (!textsIn(message, kName).empty()) kinds += 'l';
  return kinds;
}

TEST(AnAttribute, IsReadAsItsOwnType) {
  EXPECT_EQ(textIn(text(IPP_TAG_TEXT, "ready"), kName), "ready");
  EXPECT_EQ(integerIn(number(IPP_TAG_INTEGER, -7), kName), -7);
  EXPECT_EQ(enumIn(number(IPP_TAG_ENUM, 5), kName), 5);
  EXPECT_EQ(booleanIn(boolean(false), kName), false);
  EXPECT_EQ(booleanIn(boolean(true), kName), true);
}

TEST(AnAttribute, OfAnyKindOfTextIsReadAsText) {
  for (const auto type : {IPP_TAG_TEXT, IPP_TAG_NAME, IPP_TAG_KEYWORD, IPP_TAG_URI, IPP_TAG_URISCHEME,
                          IPP_TAG_CHARSET, IPP_TAG_LANGUAGE, IPP_TAG_MIMETYPE})
    EXPECT_EQ(found(text(type, "x")), "tl") << ippTagString(type);
  for (const auto type : {IPP_TAG_TEXTLANG, IPP_TAG_NAMELANG}) {
    const auto inALanguage = with(
        [&](auto* message, auto* name) { ippAddString(message, IPP_TAG_PRINTER, type, name, "en", "x"); });
    EXPECT_EQ(found(inALanguage), "tl") << ippTagString(type);
  }
}

// libcups reads a value of such a type as bytes without an end, and would show them as a text.
TEST(AnAttribute, OfATypeThatIppDoesNotHaveIsNotFound) {
  std::string bytes("\2\0\0\0\0\0\0\1\4\x43\0\2it\0\1x\3", 18);
  const auto read = [](void* from, ipp_uchar_t* buffer, std::size_t size) -> ssize_t {
    auto& left = *static_cast<std::string*>(from);
    const auto taken = left.copy(reinterpret_cast<char*>(buffer), size);
    left.erase(0, taken);
    return static_cast<ssize_t>(taken);
  };
  const MessageHandle message(ippNew());
  ASSERT_EQ(ippReadIO(&bytes, read, 1, nullptr, message.get()), IPP_STATE_DATA);
  ASSERT_NE(findAttribute(message, kName), nullptr);
  EXPECT_EQ(found(message), "");
}

TEST(AnAttribute, IsNotFoundAsAnotherType) {
  EXPECT_EQ(found(number(IPP_TAG_INTEGER, 7)), "i");
  EXPECT_EQ(found(number(IPP_TAG_ENUM, 7)), "e");
  EXPECT_EQ(found(boolean(true)), "b");
  EXPECT_EQ(found(with([](auto* message, auto* name) {
              ippAddOctetString(message, IPP_TAG_PRINTER, name, "text", 4);
            })),
            "");
  EXPECT_EQ(found(with([](auto* message, auto* name) {
              ippAddCollection(message, IPP_TAG_PRINTER, name, MessageHandle(ippNew()).get());
            })),
            "");
}

TEST(AnAttribute, IsNotFoundIfItOrItsValueIsMissing) {
  for (const auto type : {IPP_TAG_NOVALUE, IPP_TAG_UNKNOWN, IPP_TAG_DEFAULT})
    EXPECT_EQ(found(outOfBand(type)), "") << ippTagString(type);
  EXPECT_EQ(found(text(IPP_TAG_TEXT, nullptr)), "");
  EXPECT_EQ(found(MessageHandle(ippNew())), "");
  EXPECT_EQ(found(nullptr), "");
}

TEST(ARequest, IsRefusedIfItLacksAValue) {
  EXPECT_NO_THROW(refuseIncomplete(text(IPP_TAG_NAME, "it")));
  EXPECT_NO_THROW(refuseIncomplete(number(IPP_TAG_INTEGER, 1)));
  EXPECT_THROW(refuseIncomplete(text(IPP_TAG_NAME, nullptr)), std::bad_alloc);
  EXPECT_THROW(refuseIncomplete(with([](auto* message, auto* /*name*/) { ippAddSeparator(message); })),
               std::bad_alloc);
  EXPECT_THROW(refuseIncomplete(nullptr), std::bad_alloc);
}

TEST(Texts, AreReadFromAllAttributesOfThatName) {
  const MessageHandle message(ippNew());
  const auto add = [&](ipp_tag_t type, const char* value) {
    ippAddString(message.get(), IPP_TAG_PRINTER, type, "printer-name", nullptr, value);
    ippAddSeparator(message.get());
  };
  add(IPP_TAG_NAME, "Morva");
  ippAddInteger(message.get(), IPP_TAG_PRINTER, IPP_TAG_INTEGER, "printer-name", 3);
  ippAddSeparator(message.get());
  add(IPP_TAG_NAME, "Other");
  EXPECT_THAT(textsIn(message, "printer-name"), ElementsAre("Morva", "Other"));
  EXPECT_THAT(textsIn(message, "printer"), IsEmpty());
}

TEST(AnAttributesText, IsReadIfTheAttributeHasExactlyOneValue) {
  const std::array values{"one", "two"};
  const auto two = with([&](auto* message, auto* name) {
    ippAddStrings(message, IPP_TAG_JOB, IPP_TAG_KEYWORD, name, 2, nullptr, values.data());
  });
  const auto one = text(IPP_TAG_KEYWORD, "one");
  EXPECT_EQ(onlyText(findAttribute(one, kName)), "one");
  EXPECT_EQ(onlyText(findAttribute(two, kName)), std::nullopt);
  EXPECT_EQ(onlyText(nullptr), std::nullopt);
}

}  // namespace
}  // namespace tandemtrim::host
