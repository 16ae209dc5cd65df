// Measures the times of the panel's steps, for information: times --benchmark_..., with TANDEM_TRIM_BUNDLE
// and TANDEM_TRIM_PPD set
#include <cstdlib>

#include <benchmark/benchmark.h>

#include "adapters/memory/panel_view.hpp"
#include "bench/printer.hpp"

namespace {

using namespace tandemtrim::bench;

const char* ppdFile() { return std::getenv("TANDEM_TRIM_PPD"); }
const char* bundle() { return std::getenv("TANDEM_TRIM_BUNDLE"); }

void openPpd(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(tandemtrim::host::PpdHandle(ppdOpenFile(ppdFile())));
}
BENCHMARK(openPpd)->Name("ppdOpenFile");

void makePanel(benchmark::State& state) {
  const Job job(ppdFile());
  for (auto _ : state) benchmark::DoNotOptimize(OpenedPanel(bundle(), job).panels.get());
}
BENCHMARK(makePanel)->Name("panel made");

void setUpView(benchmark::State& state) {
  const Job job(ppdFile());
  for (auto _ : state) {
    state.PauseTiming();
    const OpenedPanel opened(bundle(), job);
    state.ResumeTiming();
    benchmark::DoNotOptimize(opened.panel().panelView());
  }
}
BENCHMARK(setUpView)->Name("view of memory set up");

void type(benchmark::State& state) {
  const Job job(ppdFile());
  const OpenedPanel opened(bundle(), job);
  auto& view = dynamic_cast<tandemtrim::platform::memory::PanelView&>(*opened.panel().panelView());
  for (auto _ : state) benchmark::DoNotOptimize(view.type("Top", "12"));
}
BENCHMARK(type)->Name("keystroke");

void round(benchmark::State& state) {
  const Job job(ppdFile());
  const OpenedPanel opened(bundle(), job);
  benchmark::DoNotOptimize(opened.panel().panelView());
  for (auto _ : state) {
    benchmark::DoNotOptimize(opened.panel().summaryInfo());
    opened.panel().restoreValuesAndReturnError(nullptr);
    opened.panel().saveValuesAndReturnError(nullptr);
  }
}
BENCHMARK(round)->Name("summary, restore and save");

}  // namespace

BENCHMARK_MAIN();
