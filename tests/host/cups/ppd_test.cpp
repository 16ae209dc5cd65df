#include "host/cups/ppd.hpp"

#include <cerrno>
#include <csignal>
#include <cstring>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <unistd.h>
#include <zlib.h>

#include "tests/host/failure_matcher.hpp"
#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::host {
namespace {

using test::failureOf;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const std::string kHeader = "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n";

class APpd : public testing::Test {
 protected:
  PpdHandle open(const std::string& text) const {
    return openPpd(folder.write("test.ppd", text), "test.ppd");
  }

  test::TemporaryFolder folder;
};

TEST_F(APpd, NamesItsDialogExtensionsWithoutTheirFolders) {
  const auto ppd = open(kHeader +
                        "*APDialogExtension: \"/Library/Printers/Morva/TandemTrim.bundle\"\n"
                        "*APDialogExtension: \"Other.bundle/\"\n*APDialogExtension: \"\"\n");
  EXPECT_THAT(dialogExtensions(*ppd), ElementsAre("TandemTrim.bundle", "Other.bundle"));
}

TEST_F(APpd, IsReadFromTheBeginningOfAnOpenFile) {
  const auto path = folder.write("test.ppd", kHeader + "*APDialogExtension: \"TandemTrim.bundle\"\n");
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  lseek(file, 0, SEEK_END);
  EXPECT_THAT(dialogExtensions(*readPpd(FileDescriptor(file), "test.ppd")), ElementsAre("TandemTrim.bundle"));
  EXPECT_EQ(fcntl(file, F_GETFD), -1) << "it is still open";
}

TEST_F(APpd, IgnoresDialogExtensionsThatLeadOutOfThePluginFolders) {
  const auto ppd = open(kHeader +
                        "*APDialogExtension: \"..\"\n*APDialogExtension: \"/Library/..\"\n"
                        "*APDialogExtension: \"./\"\n*APDialogExtension: \"../\"\n");
  EXPECT_THAT(dialogExtensions(*ppd), IsEmpty());
}

TEST_F(APpd, WithoutDialogExtensionNamesNoBundle) {
  EXPECT_THAT(dialogExtensions(*open(kHeader)), IsEmpty());
}

TEST_F(APpd, CorrectsTheLetterCaseOfKeywords) {
  const auto ppd =
      open(kHeader + "*OpenUI *MVTopMargin/Top: PickOne\n*MVTopMargin 5/5: \"\"\n*CloseUI: *MVTopMargin\n");
  const Options options{{"mvTOPmargin", "7"}, {"media", "A4"}};
  EXPECT_EQ(asSpelled(ppd.get(), options), (Options{{"MVTopMargin", "7"}, {"media", "A4"}}));
  EXPECT_EQ(asSpelled(nullptr, options), options);
}

TEST_F(APpd, ThatIsMalformedIsRefusedWithItsLine) {
  const auto failure = failureOf([&] { open(kHeader + "*OpenGroup: A/One\n*OpenGroup: B/Two\n"); });
  EXPECT_EQ(failure.exitStatus(), kFailed);
  EXPECT_THAT(failure.what(), AllOf(HasSubstr("test.ppd"), HasSubstr("line 4")));
}

TEST_F(APpd, ThatIsNotAPpdIsRefusedWithItsLine) {
  EXPECT_THAT(failureOf([&] { open("hello\n"); }).what(), HasSubstr("line 1"));
}

TEST_F(APpd, IsUnpackedUpToThirtyTwoMegabytes) {
  const auto path = (folder.path() / "packed.ppd.gz").string();
  for (const std::size_t size : {32U << 20, (32U << 20) + 1}) {
    std::string text = kHeader + "*APDialogExtension: \"TandemTrim.bundle\"\n";
    text.resize(size, '\n');
    const gzFile packed = gzopen(path.c_str(), "wb1");
    ASSERT_EQ(gzwrite(packed, text.data(), static_cast<unsigned>(text.size())),
              static_cast<int>(text.size()));
    gzclose(packed);
    if (size == 32U << 20) {
      EXPECT_THAT(dialogExtensions(*openPpd(path, "it")), ElementsAre("TandemTrim.bundle"));
    } else {
      const auto failure = failureOf([&] { openPpd(path, "it"); });
      EXPECT_STREQ(failure.what(), "the PPD file it is larger than 32 MB");
      EXPECT_EQ(test::inADialog(failure.fact()), "the printer's PPD file is larger than 32 MB");
    }
  }
}

TEST_F(APpd, ThatIsPackedAndCutShortIsRefused) {
  const auto path = (folder.path() / "packed.ppd.gz").string();
  const gzFile packed = gzopen(path.c_str(), "wb");
  ASSERT_GT(gzputs(packed, kHeader.c_str()), 0);
  gzclose(packed);
  std::filesystem::resize_file(path, std::filesystem::file_size(path) - 4);
  const auto failure = failureOf([&] { openPpd(path, "it"); });
  EXPECT_STREQ(failure.what(),
               "the PPD file it is damaged: unexpected end of file; correct it or name another with --ppd");
  EXPECT_EQ(test::inADialog(failure.fact()),
            "the printer's PPD file cannot be used (unexpected end of file)");
  EXPECT_EQ(failure.trouble(), Trouble::details);
}

// Runs `call` while the process may use at most this much of a resource.
template <class Call>
void within(rlim_t most, decltype(RLIMIT_NOFILE) resource, Call call) {
  rlimit usual{};
  getrlimit(resource, &usual);
  const rlimit scarce{most, usual.rlim_max};
  setrlimit(resource, &scarce);
  call();
  setrlimit(resource, &usual);
}

TEST_F(APpd, ThatTheSystemCannotCopyIsRefusedWithTheReason) {
  const auto path = folder.write("test.ppd", kHeader);
  FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  within(static_cast<rlim_t>(file.get()) + 1, RLIMIT_NOFILE, [&] {
    EXPECT_STREQ(failureOf([&] { readPpd(std::move(file), "it"); }).what(),
                 ("the PPD file it cannot be read: " + std::string(std::strerror(EMFILE))).c_str());
  });
  auto* const usual = std::signal(SIGXFSZ, SIG_IGN);
  within(0, RLIMIT_FSIZE, [&] {
    EXPECT_STREQ(failureOf([&] { openPpd(path, "it"); }).what(),
                 ("the PPD file it cannot be read: " + std::string(std::strerror(EFBIG))).c_str());
  });
  static_cast<void>(std::signal(SIGXFSZ, usual));
  EXPECT_STREQ(failureOf([] { readPpd(FileDescriptor(-1), "it"); }).what(),
               ("the PPD file it cannot be read: " + std::string(std::strerror(EBADF))).c_str());
}

TEST_F(APpd, ThatIsMissingOrAFolderIsRefused) {
  const auto missing = failureOf([] { openPpd("/nowhere.ppd", "it"); });
  EXPECT_STREQ(missing.what(), "the PPD file it cannot be read: No such file or directory");
  EXPECT_EQ(test::inADialog(missing.fact()),
            "the printer's PPD file cannot be used (No such file or directory)");
  EXPECT_THAT(failureOf([&] { openPpd(folder.path().string(), "it"); }).what(), HasSubstr("folder"));
}

}  // namespace
}  // namespace tandemtrim::host
