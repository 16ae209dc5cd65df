// Measures the making of a panel, beside libcups's work for the same PPD: panel BUNDLE PPD
#include <memory>

#include "bench/measured.hpp"
#include "bench/printer.hpp"
#include "plugin/setting_info/settings.hpp"

int main(int argc, char* argv[]) {
  using namespace tandemtrim::bench;
  if (argc != 3) return 2;
  std::unique_ptr<Job> job;
  {
    const Measured measured("ppdOpenFile");
    job = std::make_unique<Job>(argv[2]);
  }
  {
    const Measured measured("4 ppdFindAttr");
    for (const auto& margin : tandemtrim::kMargins)
      ppdFindAttr(job->ppd.get(), margin.ppdKey.data(), nullptr);
  }
  std::unique_ptr<OpenedPanel> opened;
  {
    const Measured measured("panel");
    opened = std::make_unique<OpenedPanel>(argv[1], *job);
  }
}
