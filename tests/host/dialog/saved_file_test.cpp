#include "host/dialog/file/saved_file.hpp"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <tuple>

#include <giomm/file.h>
#include <giomm/init.h>
#include <gmock/gmock.h>

#include "host/dialog/file/file_target.hpp"
#include "host/failure.hpp"
#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

TEST(FileFormats, AreRecognizedByTheirBeginning) {
  EXPECT_EQ(formatOf("%PDF-1.7"), FileFormat::pdf);
  EXPECT_EQ(formatOf("%!PS-Ado"), FileFormat::postScript);
  for (const char* other : {"", "%", "%PDF", " %PDF-1.", "plain"}) EXPECT_EQ(formatOf(other), std::nullopt);
}

TEST(FileFormats, HaveTheNamesThatGtkAndUsersKnow) {
  for (const auto& [format, name, title] : {std::tuple{FileFormat::pdf, "pdf", "PDF"},
                                            {FileFormat::postScript, "ps", "PostScript"},
                                            {FileFormat::svg, "svg", "SVG"}}) {
    EXPECT_STREQ(nameOf(format), name);
    EXPECT_STREQ(titleOf(format), title);
  }
  EXPECT_EQ(formatOf("<?xml ve"), FileFormat::svg);
}

TEST(FileFormats, OfDrawingsAreNotOfferedForDocuments) {
  for (const auto& document : {std::optional<FileFormat>(), {FileFormat::pdf}, {FileFormat::svg}})
    EXPECT_THAT(formatsFor(document), testing::Not(testing::Contains(FileFormat::svg)));
  EXPECT_THAT(converter(FileFormat::pdf, FileFormat::svg), testing::IsEmpty());
  EXPECT_THAT(converter(FileFormat::svg, FileFormat::postScript), testing::IsEmpty());
}

TEST(TheChosenFile, HasTheChosenFormatElseTheFirstOneOffered) {
  const auto settings = Gtk::PrintSettings::create();
  settings->set("output-uri", "file:///tmp/a.pdf");
  const std::vector offered{FileFormat::postScript, FileFormat::pdf};
  const auto chosen = [&](const char* name) {
    settings->set("output-file-format", name);
    return fileTargetOf(*settings, offered);
  };
  EXPECT_EQ(fileTargetOf(*settings, offered).format, FileFormat::postScript);
  EXPECT_EQ(chosen("pdf").format, FileFormat::pdf);
  EXPECT_EQ(chosen("ps").format, FileFormat::postScript);
  EXPECT_EQ(chosen("svg").format, FileFormat::postScript) << "it was not offered";
  EXPECT_EQ(chosen("pdf").uri, "file:///tmp/a.pdf");
}

TEST(FileFormats, AlwaysIncludeTheDocumentsOwn) {
  for (const auto format : {FileFormat::pdf, FileFormat::postScript})
    EXPECT_THAT(formatsFor(format), testing::Contains(format));
}

class SavedDocument : public testing::Test {
 protected:
  SavedDocument() {
    Gio::init();
    document_ =
        std::make_unique<Document>(folder_.write("document.pdf", "%PDF-" + std::string(200'000, 'x')));
    target_ = folder_.write("saved/file.pdf", "what was there");
  }
  SavedFile save(FileFormat format, const std::function<void()>& check) {
    return saveToFile(*document_, {Gio::File::create_for_path(target_)->get_uri(), format}, check);
  }
  void removeOldFile() const { fs::remove(target_); }
  [[nodiscard]] auto countFiles() const {
    return std::distance(fs::directory_iterator(folder_.path() / "saved"), {});
  }
  void expectNothingChanged() const {
    std::ifstream file(target_);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "what was there");
    EXPECT_EQ(countFiles(), 1);
  }

 private:
  test::TemporaryFolder folder_;
  std::unique_ptr<Document> document_;
  std::string target_;
};

TEST_F(SavedDocument, ThatIsCancelledLeavesTheOldFileAndNothingElse) {
  int pieces = 0;
  EXPECT_THROW(save(FileFormat::pdf,
                    [&] {
                      if (++pieces == 2) throw Failure(Trouble::cancelled, "cancelled");
                    }),
               Failure);
  EXPECT_EQ(pieces, 2);
  expectNothingChanged();
}

TEST_F(SavedDocument, ThatIsCancelledLeavesNoNewFile) {
  removeOldFile();
  int pieces = 0;
  EXPECT_THROW(save(FileFormat::pdf,
                    [&] {
                      if (++pieces == 2) throw Failure(Trouble::cancelled, "cancelled");
                    }),
               Failure);
  EXPECT_EQ(countFiles(), 0);
}

TEST_F(SavedDocument, ThatNoFilterUnderstandsLeavesTheOldFile) {
  EXPECT_THROW(save(FileFormat::postScript, [] {}), Failure);
  expectNothingChanged();
}

TEST_F(SavedDocument, CanBeSavedAgain) {
  for (int i = 0; i < 2; ++i) EXPECT_EQ(save(FileFormat::pdf, [] {}).bytes, 200'005U);
}

}  // namespace
}  // namespace tandemtrim::host
