// Measures whether 10,000 rounds of summary, restore and save leave anything on the heap: rounds BUNDLE PPD
#include <cstdio>

#include <malloc.h>

#include "bench/printer.hpp"

namespace {

constexpr int kRounds = 10'000;
constexpr int kFirst = 100;

void rounds(tandemtrim::platform::PrintPanel& panel, int count) {
  for (int round = 0; round < count; ++round) {
    (void)panel.summaryInfo();
    panel.restoreValuesAndReturnError(nullptr);
    panel.saveValuesAndReturnError(nullptr);
  }
}

std::size_t bytesInUse() { return mallinfo2().uordblks; }

}  // namespace

int main(int argc, char* argv[]) {
  using namespace tandemtrim::bench;
  if (argc != 3) return 2;
  Job job(argv[2]);
  // Switched on, so that the summary has all its rows.
  job.settings.PMPrintSettingsSetValue("MVTandemTrim", "On", false);
  const OpenedPanel opened(argv[1], job);
  auto& panel = opened.panel();
  if (panel.panelView() == nullptr) return 1;
  rounds(panel, kFirst);
  const auto before = bytesInUse();
  rounds(panel, kRounds);
  std::printf("after %d rounds\t%zu\nafter %d more\t%zu\n", kFirst, before, kRounds, bytesInUse());
}
