#include "host/cups/connection/certificate.hpp"

#include <memory>

#include <gmock/gmock.h>

#include "host/cups/connection/cups_handles.hpp"
#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::host {
namespace {

namespace fs = std::filesystem;

class FileOfACertificate : public testing::TestWithParam<const char*> {};

TEST_P(FileOfACertificate, IsTheOneThatLibcupsWrites) {
  const test::TemporaryFolder folder;
  const std::unique_ptr<cups_array_t, EndedBy<httpFreeCredentials>> noCredentials(
      cupsArrayNew(nullptr, nullptr));
  ASSERT_EQ(httpSaveCredentials(folder.path().c_str(), noCredentials.get(), GetParam()), 0);
  EXPECT_EQ(fs::directory_iterator(folder.path())->path(), certificateFile(folder.path(), GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Names, FileOfACertificate,
                         testing::Values("localhost", "127.0.0.1", "print-server.example",
                                         "Print-Server.Example", "a_b", "[v1.fe80::1+eth0]", "fe80::1",
                                         "gr\xC3\xB6\xC3\x9F"
                                         "e",
                                         "a/../b", "AZaz09", "@[^`{", "+,-./:"));

}  // namespace
}  // namespace tandemtrim::host
