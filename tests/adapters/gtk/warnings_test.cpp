#include <algorithm>
#include <array>
#include <string_view>

#include <glib.h>
#include <gtest/gtest-spi.h>

/// Linked into every test program of the GTK platform: a warning of the toolkit or its libraries fails the
/// test that causes it, and so does a message, since the panel logs nothing through GLib.
namespace tandemtrim::test {
namespace {

constexpr auto kFailures =
    G_LOG_LEVEL_ERROR | G_LOG_LEVEL_CRITICAL | G_LOG_LEVEL_WARNING | G_LOG_LEVEL_MESSAGE;

// Messages that GTK prints because of the tests' surroundings, not because of the panel.
constexpr std::array<std::string_view, 2> kForeign{
    "GtkDialog mapped without a transient parent",  // a test's dialog is its only window
    "avahi printers will not be available",         // GTK asks the system bus, which tests do not have
};

std::string_view valueOf(std::string_view key, const GLogField* fields, gsize count) {
  const auto* const end = fields + count;
  const auto* const field = std::find_if(fields, end, [&](const GLogField& one) { return key == one.key; });
  if (field == end) return {};
  const auto* const text = static_cast<const char*>(field->value);
  return field->length < 0 ? text : std::string_view(text, static_cast<std::size_t>(field->length));
}

GLogWriterOutput write(GLogLevelFlags level, const GLogField* fields, gsize count, gpointer data) {
  const auto message = valueOf("MESSAGE", fields, count);
  const auto isWithin = [&](std::string_view foreign) { return message.find(foreign) != message.npos; };
  if ((level & kFailures) == 0 || std::ranges::any_of(kForeign, isWithin))
    return g_log_writer_default(level, fields, count, data);
  ADD_FAILURE() << valueOf("GLIB_DOMAIN", fields, count) << ": " << message;
  return G_LOG_WRITER_HANDLED;
}

[[maybe_unused]] const bool isWriting = [] {
  g_log_set_writer_func(write, nullptr, nullptr);
  return true;
}();

TEST(Warnings, FailTheTestThatCausesThem) {
  EXPECT_NONFATAL_FAILURE(g_log("Gtk", G_LOG_LEVEL_WARNING, "made up"), "Gtk: made up");
  EXPECT_NONFATAL_FAILURE(g_log("tandem-trim", G_LOG_LEVEL_MESSAGE, "made up"), "tandem-trim: made up");
  EXPECT_NONFATAL_FAILURE(g_log("GLib-GObject", G_LOG_LEVEL_CRITICAL, "made up"), "GLib-GObject: made up");
}

}  // namespace
}  // namespace tandemtrim::test
