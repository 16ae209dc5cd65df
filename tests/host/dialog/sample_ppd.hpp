#pragma once

#include <string>

#include "host/cups/ppd.hpp"
#include "tests/support/temporary_folder.hpp"

namespace tandemtrim::test {

/// A4, A3 and a size that only this printer has, 100 by 200 mm; the default is A3.
inline constexpr const char* kPapers =
    "*OpenUI *PageSize/Media Size: PickOne\n*DefaultPageSize: A3\n"
    "*PageSize A4/A4: \"\"\n*PageSize A3/A3: \"\"\n*PageSize Blade/Blade: \"\"\n*CloseUI: *PageSize\n"
    "*DefaultImageableArea: A3\n*ImageableArea A4/A4: \"12 12 583 830\"\n"
    "*ImageableArea A3/A3: \"12 12 830 1179\"\n*ImageableArea Blade/Blade: \"0 0 283 567\"\n"
    "*DefaultPaperDimension: A3\n*PaperDimension A4/A4: \"595 842\"\n"
    "*PaperDimension A3/A3: \"842 1191\"\n*PaperDimension Blade/Blade: \"283 567\"\n";

/// An open PPD of this content.
class SamplePpd {
 public:
  explicit SamplePpd(const std::string& content)
      : ppd_(host::openPpd(
            folder_.write("sample.ppd", "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n" + content),
            "sample.ppd")) {}

  [[nodiscard]] ppd_file_t* get() const { return ppd_.get(); }

 private:
  TemporaryFolder folder_;
  host::PpdHandle ppd_;
};

}  // namespace tandemtrim::test
