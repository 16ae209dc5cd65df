#include "host/portal/session.hpp"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gio/gio.h>
#include <gmock/gmock.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::host {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kPlace = "/here";
constexpr const char* kInterface = "test.Print";
constexpr const char* kDescription =
    "<node><interface name='test.Print'><method name='Ask'><arg type='u' direction='out'/>"
    "<arg type='a{sv}' direction='out'/></method></interface></node>";
constexpr const char* kHandle = "/a/handle";
constexpr std::uint32_t kToken = 77;
constexpr std::chrono::hours kLong(1);

void runMainLoopUntil(const std::function<bool()>& isDone) {
  bool isLate = false;
  const Timer patience(std::chrono::seconds(60), [&] { isLate = true; });
  while (!isDone()) {
    if (isLate) throw std::runtime_error("timed out");
    g_main_context_iteration(nullptr, TRUE);
  }
}

// The answer that a program receives.
struct Answer {
  unsigned response = 99;
  // Empty without a token.
  std::optional<std::uint32_t> token;
  std::string copies;
  // The paper's width; 0 without a page setup.
  double width = 0;
};

// A connection between a program and a service.
class Connection {
 public:
  Connection() {
    int ends[2];
    if (socketpair(AF_UNIX, SOCK_STREAM, 0, ends) != 0) throw std::runtime_error("no sockets");
    auto* const guid = g_dbus_generate_guid();
    const std::array flags{
        static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_SERVER |
                                          G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_ALLOW_ANONYMOUS),
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT};
    for (std::size_t i = 0; i < ends_.size(); ++i) {
      auto* const socket = g_socket_new_from_fd(ends[i], nullptr);
      auto* const stream = g_socket_connection_factory_create_connection(socket);
      const auto opened = [](GObject* /*source*/, GAsyncResult* result, gpointer end) {
        *static_cast<GDBusConnection**>(end) = g_dbus_connection_new_finish(result, nullptr);
      };
      g_dbus_connection_new(G_IO_STREAM(stream), i == 0 ? guid : nullptr, flags[i], nullptr, nullptr, opened,
                            &ends_[i]);
      g_object_unref(stream);
      g_object_unref(socket);
    }
    g_free(guid);
    runMainLoopUntil([this] { return ends_[0] != nullptr && ends_[1] != nullptr; });
    static auto* const node = g_dbus_node_info_new_for_xml(kDescription, nullptr);
    static const GDBusInterfaceVTable table{onCall, nullptr, nullptr, {}};
    g_dbus_connection_register_object(ends_[0], kPlace, node->interfaces[0], &table, this, nullptr, nullptr);
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() {
    for (auto* const end : ends_) g_dbus_connection_close_sync(end, nullptr, nullptr);
    runMainLoopUntil([this] { return pending_ == 0; });
    for (auto* const end : ends_) g_object_unref(end);
  }

  // Makes a call of the program and returns it as the service receives it. The reply goes into `answer`.
  std::unique_ptr<Request> call(std::optional<Answer>& answer) {
    auto* const message = g_dbus_message_new_method_call(nullptr, kPlace, kInterface, "Ask");
    g_dbus_message_set_sender(message, ":1.5");
    into_ = &answer;
    ++pending_;
    g_dbus_connection_send_message_with_reply(ends_[1], message, G_DBUS_SEND_MESSAGE_FLAGS_NONE, G_MAXINT,
                                              nullptr, nullptr, onAnswer, this);
    g_object_unref(message);
    runMainLoopUntil([this] { return call_ != nullptr; });
    return std::make_unique<Request>(std::exchange(call_, nullptr), kHandle);
  }

 private:
  static void onCall(GDBusConnection* /*bus*/, const char* /*sender*/, const char* /*path*/,
                     const char* /*interface*/, const char* /*method*/, GVariant* /*values*/,
                     GDBusMethodInvocation* call, gpointer self) {
    static_cast<Connection*>(self)->call_ = call;
  }

  // There is no reply if the connection was closed first.
  static void onAnswer(GObject* bus, GAsyncResult* result, gpointer self) {
    auto& connection = *static_cast<Connection*>(self);
    --connection.pending_;
    auto* const reply =
        g_dbus_connection_send_message_with_reply_finish(G_DBUS_CONNECTION(bus), result, nullptr);
    if (reply == nullptr) return;
    *connection.into_ = answerIn(g_dbus_message_get_body(reply));
    g_object_unref(reply);
  }

  static Answer answerIn(GVariant* body) {
    Answer answer;
    GVariant* results = nullptr;
    g_variant_get(body, "(u@a{sv})", &answer.response, &results);
    std::uint32_t token = 0;
    if (g_variant_lookup(results, "token", "u", &token) != FALSE) answer.token = token;
    if (auto* const settings = g_variant_lookup_value(results, "settings", G_VARIANT_TYPE_VARDICT)) {
      const char* copies = nullptr;
      if (g_variant_lookup(settings, "n-copies", "&s", &copies) != FALSE) answer.copies = copies;
      g_variant_unref(settings);
    }
    if (auto* const pageSetup = g_variant_lookup_value(results, "page-setup", G_VARIANT_TYPE_VARDICT)) {
      g_variant_lookup(pageSetup, "Width", "d", &answer.width);
      g_variant_unref(pageSetup);
    }
    g_variant_unref(results);
    return answer;
  }

  // The service's end and the program's.
  std::array<GDBusConnection*, 2> ends_{};
  GDBusMethodInvocation* call_ = nullptr;
  // Where the program's next answer goes, and how many answers are pending.
  std::optional<Answer>* into_ = nullptr;
  int pending_ = 0;
};

std::string contentOf(const FileDescriptor& file) {
  if (!file.isOpen()) return "nothing";
  std::string content(static_cast<std::size_t>(lseek(file.get(), 0, SEEK_END)), '\0');
  EXPECT_EQ(pread(file.get(), content.data(), content.size(), 0), static_cast<ssize_t>(content.size()));
  return content;
}

bool isClosedByItsReader(int pipe) {
  pollfd end{pipe, 0, 0};
  return poll(&end, 1, 60'000) == 1 && (end.revents & POLLERR) != 0;
}

// The log of calls to the dialogs, and how the dialogs behave.
struct Script {
  std::vector<std::string> log;
  ApplicationDialog::Events events;
  // The failure of each call; empty for success.
  std::optional<Failure> ofOpen;
  std::optional<std::runtime_error> ofShow;
  std::optional<std::runtime_error> ofChoice;
  std::optional<std::runtime_error> ofPrint;
  bool isPrintPressed = false;
};

class ScriptedDialog : public ApplicationDialog {
 public:
  explicit ScriptedDialog(Script& script) : script_(script) {}
  ~ScriptedDialog() override { script_.log.emplace_back("gone"); }
  void show() override {
    if (script_.ofShow) throw *script_.ofShow;
    script_.log.emplace_back("shown");
  }
  DialogChoice choice() override {
    if (script_.ofChoice) throw *script_.ofChoice;
    return {{{"n-copies", "1"}}, {{"Width", 210.0}}};
  }
  void print(FileDescriptor document) override {
    script_.log.push_back("prints " + contentOf(document));
    if (script_.ofPrint) throw *script_.ofPrint;
  }
  void offer(FileDescriptor document) override { script_.log.push_back("offers " + contentOf(document)); }
  void fail(const Failure& failure) override {
    script_.log.push_back(std::string("fails: ") + failure.what());
  }
  bool leave() override { return !script_.isPrintPressed; }

 private:
  Script& script_;
};

class SessionOfAProgram : public testing::Test {
 protected:
  // Begins a session whose choices expire after this time.
  void begin(std::chrono::seconds life = kLong) {
    session_ = std::make_unique<Session>(Session::Surroundings{
        [this](const auto& request, FileDescriptor document, auto events) {
          if (script.ofOpen) return OpenedDialog{nullptr, script.ofOpen};
          script.log.push_back("opens " + request.title + " for " + contentOf(document));
          script.events = std::move(events);
          return OpenedDialog{std::make_unique<ScriptedDialog>(script), {}};
        },
        [] { return kToken; }, life, [this](const auto& message) { reports.push_back(message); },
        [this] { ++ends; }});
  }

  void prepare() { session_->prepare(connection_.call(answer), asked()); }

  // The user chooses, and the program receives the answer.
  void choose() {
    prepare();
    script.events.onChosen();
    waitForAnswer();
    answer.reset();
  }

  void print(const std::string& content = "content") { printFile(open(write(content).c_str(), O_RDONLY)); }

  void printFile(int file) { session_->print(connection_.call(answer), asked(), FileDescriptor(file)); }

  std::string write(const std::string& content) { return folder.write("document", content); }

  void waitForAnswer() {
    runMainLoopUntil([this] { return answer.has_value(); });
  }

  void waitForLog(std::size_t size) {
    runMainLoopUntil([&] { return script.log.size() >= size; });
  }

  static DialogRequest asked() {
    DialogRequest request;
    request.title = "Letter";
    return request;
  }

  Session& session() { return *session_; }
  void destroy() { session_.reset(); }

  test::TemporaryFolder folder;
  Script script;
  std::optional<Answer> answer;
  std::vector<std::string> reports;
  int ends = 0;

 private:
  Connection connection_;
  std::unique_ptr<Session> session_;
};

TEST_F(SessionOfAProgram, ShowsTheDialogAndAnswersOnceTheUserHasChosen) {
  begin();
  prepare();
  EXPECT_THAT(script.log, ElementsAre("opens Letter for nothing", "shown"));
  EXPECT_TRUE(session().request()->waitsAt(kHandle));
  EXPECT_FALSE(session().waitsForDocument());
  script.events.onChosen();
  waitForAnswer();
  EXPECT_EQ(answer->response, 0U);
  EXPECT_EQ(answer->token, kToken);
  EXPECT_EQ(answer->copies, "1");
  EXPECT_EQ(answer->width, 210);
  EXPECT_EQ(session().request(), nullptr);
  EXPECT_TRUE(session().waitsForDocument());
  EXPECT_EQ(ends, 0);
}

TEST_F(SessionOfAProgram, AnswersAccordingToTheDialogsEnd) {
  for (const auto& [end, response] :
       {std::pair{DialogEnd::printed, 0U}, {DialogEnd::cancelled, 1U}, {DialogEnd::failed, 2U}}) {
    begin();
    prepare();
    script.events.onEnd(end);
    waitForAnswer();
    EXPECT_EQ(answer->response, response);
    EXPECT_EQ(answer->token, std::nullopt);
    answer.reset();
  }
  EXPECT_EQ(ends, 3);
}

TEST_F(SessionOfAProgram, PrintsADocumentThatComesInTimeWithoutAsking) {
  begin();
  choose();
  print();
  EXPECT_FALSE(session().waitsForDocument());
  waitForLog(3);
  EXPECT_EQ(script.log.back(), "prints content");
  EXPECT_FALSE(answer);
  script.events.onEnd(DialogEnd::printed);
  waitForAnswer();
  EXPECT_EQ(answer->response, 0U);
  EXPECT_EQ(ends, 1);
}

TEST_F(SessionOfAProgram, OffersADocumentThatComesLate) {
  begin(std::chrono::seconds(-1));
  choose();
  print();
  waitForLog(3);
  EXPECT_EQ(script.log.back(), "offers content");
}

TEST_F(SessionOfAProgram, OpensTheDialogForADocumentThatComesFirst) {
  begin();
  print();
  waitForLog(2);
  EXPECT_THAT(script.log, ElementsAre("opens Letter for content", "shown"));
  EXPECT_FALSE(answer);
}

TEST_F(SessionOfAProgram, FailsIfNoDialogOpens) {
  script.ofOpen = Failure("no screen");
  for (const auto& ask : {std::function([this] { prepare(); }), std::function([this] { print(); })}) {
    begin();
    ask();
    waitForAnswer();
    EXPECT_EQ(answer->response, 2U);
    EXPECT_THAT(reports, testing::Contains("no screen"));
    answer.reset();
    reports.clear();
  }
  EXPECT_EQ(ends, 2);
}

// The program is answered at once, while the user may still read the message.
TEST_F(SessionOfAProgram, ShowsWhyTheDocumentIsMissingInTheOpenDialogOrInANewOne) {
  begin();
  choose();
  printFile(open("/", O_RDONLY));
  waitForAnswer();
  EXPECT_EQ(answer->response, 2U);
  EXPECT_THAT(script.log, ElementsAre("opens Letter for nothing", "shown",
                                      HasSubstr("fails: the document cannot be read")));
  EXPECT_THAT(reports, ElementsAre(HasSubstr("cannot be read")));
  EXPECT_EQ(ends, 0);
  EXPECT_FALSE(session().request()->waitsAt(kHandle)) << "the program could close the message";
  begin();
  script.log.clear();
  answer.reset();
  printFile(open("/", O_RDONLY));
  waitForAnswer();
  EXPECT_EQ(answer->response, 2U);
  EXPECT_THAT(script.log, ElementsAre("opens Letter for nothing", HasSubstr("fails:")));
  script.events.onEnd(DialogEnd::failed);
  EXPECT_EQ(ends, 1);
}

TEST_F(SessionOfAProgram, EndsWithTheProgramUnlessTheUserHasPressedPrint) {
  begin();
  prepare();
  session().leave();
  waitForAnswer();
  EXPECT_EQ(answer->response, 2U);
  EXPECT_EQ(ends, 1);
  begin();
  answer.reset();
  script.log.clear();
  script.isPrintPressed = true;
  print();
  waitForLog(2);
  session().leave();
  waitForAnswer();
  EXPECT_EQ(answer->response, 2U);
  EXPECT_EQ(ends, 1);
  script.events.onEnd(DialogEnd::printed);
  EXPECT_EQ(ends, 2);
}

// The document is not complete, so the dialog has not been asked to print it.
TEST_F(SessionOfAProgram, EndsWithTheProgramWhileTheDocumentIsBeingRead) {
  int pipe[2];
  ASSERT_EQ(pipe2(pipe, O_CLOEXEC), 0);
  begin();
  choose();
  script.isPrintPressed = true;
  printFile(pipe[0]);
  session().leave();
  waitForAnswer();
  EXPECT_EQ(answer->response, 2U);
  EXPECT_EQ(ends, 1);
  EXPECT_TRUE(isClosedByItsReader(pipe[1]));
  close(pipe[1]);
  destroy();
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) continue;
  EXPECT_THAT(script.log, ElementsAre("opens Letter for nothing", "shown", "gone"));
}

TEST_F(SessionOfAProgram, AnswersEvenIfTheDialogCannotBeShown) {
  script.ofShow = std::runtime_error("no window");
  for (const auto& ask : {std::function([this] { prepare(); }), std::function([this] { print(); })}) {
    begin();
    ask();
    waitForAnswer();
    EXPECT_EQ(answer->response, 2U);
    EXPECT_THAT(reports, ElementsAre("no window"));
    answer.reset();
    reports.clear();
  }
  EXPECT_EQ(ends, 2);
}

TEST_F(SessionOfAProgram, AnswersEvenIfTheChoiceCannotBeRead) {
  script.ofChoice = std::runtime_error("no choice");
  begin();
  prepare();
  script.events.onChosen();
  waitForAnswer();
  EXPECT_EQ(answer->response, 2U);
  EXPECT_THAT(reports, ElementsAre("no choice"));
  EXPECT_EQ(ends, 1);
}

TEST_F(SessionOfAProgram, AnswersEvenIfTheDialogFailsUnexpectedly) {
  script.ofPrint = std::runtime_error("out of order");
  begin();
  choose();
  print();
  waitForAnswer();
  EXPECT_EQ(answer->response, 2U);
  EXPECT_THAT(reports, ElementsAre("out of order"));
  EXPECT_EQ(ends, 1);
}

TEST_F(SessionOfAProgram, LeavesNoRequestUnansweredWhenItIsDestroyed) {
  begin();
  prepare();
  destroy();
  waitForAnswer();
  EXPECT_EQ(answer->response, 2U);
}

}  // namespace
}  // namespace tandemtrim::host
