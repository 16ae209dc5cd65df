#include "host/cups/printer_facts.hpp"

#include <gmock/gmock.h>

namespace tandemtrim::host {
namespace {

// What a server reports about a printer: a fact, and defaults of several types.
MessageHandle facts() {
  MessageHandle message(ippNew());
  auto* const to = message.get();
  ippAddString(to, IPP_TAG_PRINTER, IPP_TAG_NAME, "printer-name", nullptr, "Morva");
  ippAddString(to, IPP_TAG_PRINTER, IPP_TAG_NAME, "x-Note-default", nullptr, "queue");
  ippAddInteger(to, IPP_TAG_PRINTER, IPP_TAG_INTEGER, "copies-default", 2);
  ippAddString(to, IPP_TAG_PRINTER, IPP_TAG_KEYWORD, "sides-default", nullptr, "one-sided");
  ippAddOutOfBand(to, IPP_TAG_PRINTER, IPP_TAG_NOVALUE, "media-default");
  ippAddString(to, IPP_TAG_PRINTER, IPP_TAG_NAME, "-default", nullptr, "nameless");
  ippAddSeparator(to);
  return message;
}

TEST(APrinter, IsAskedForWhatAJobNeedsAndItsValuesOfTheSavedOptions) {
  const std::string longest(IPP_MAX_NAME - 1 - std::string("-default").size(), 'x');
  EXPECT_THAT(namesToAsk({{"note", "a"}, {longest + "x", "b"}, {longest, "c"}}),
              testing::ElementsAre("printer-name", "printer-is-accepting-jobs", "printer-state",
                                   "printer-state-message", "printer-defaults", "note", "note-default",
                                   longest, longest + "-default"));
}

TEST(TheServersDefaults, AreThoseThatHaveAValue) {
  EXPECT_EQ(serverDefaults(facts()), (Options{{"x-Note", "queue"}, {"copies", "2"}, {"sides", "one-sided"}}));
  EXPECT_EQ(serverDefaults(facts(), IPP_TAG_NAME), (Options{{"x-Note", "queue"}}));
  EXPECT_EQ(serverDefaults(MessageHandle(ippNew())), Options{});
}

TEST(SavedOptions, ThatTheServerSuppliesItselfAreLeftOut) {
  EXPECT_EQ(withoutServers({{"printer-name", "mine"}, {"copies", "2"}, {"sides", "one-sided"}, {"a", "1"}},
                           facts()),
            (Options{{"a", "1"}}));
  EXPECT_EQ(withoutServers({{"copies", "3"}, {"media", "A4"}, {"empty", ""}}, facts()),
            (Options{{"copies", "3"}, {"media", "A4"}, {"empty", ""}}));
}

TEST(SavedOptions, AreSpelledAsTheServerSpellsThem) {
  EXPECT_EQ(withoutServers({{"X-NOTE", "mine"}, {"Other", "1"}}, facts()),
            (Options{{"x-Note", "mine"}, {"Other", "1"}}));
}

}  // namespace
}  // namespace tandemtrim::host
