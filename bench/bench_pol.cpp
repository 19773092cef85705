// Reading XFOIL polar files of 1/8 to 1 million point lines (about 8 to 64
// MB), in polars of 32000 points each under their own heading, as the
// writer lays them out. Bytes per second should stay level across sizes.
#include <benchmark/benchmark.h>

#include "formats/pol.h"

namespace {

std::string PolFileText(int pointCount) {
  tavilo::Airfoil airfoil;
  airfoil.Name = "Benchmark foil";
  auto config = std::make_shared<tavilo::Configuration>();
  constexpr int kPointsPerPolar = 32000;
  for (int done = 0; done < pointCount; done += kPointsPerPolar) {
    auto polar = std::make_shared<tavilo::Polar>();
    polar->ReynoldsNumber = 100000.0 + done;
    polar->MachNumber = 0.1;
    polar->Selected = true;
    for (int i = 0; i < kPointsPerPolar && done + i < pointCount; ++i) {
      const double alfa = -10.0 + (i % 2000) * 0.01;
      polar->AddPoint({alfa, 0.1 * alfa + 0.2, 0.006 + 0.0001 * alfa * alfa, -0.05 - 0.001 * alfa, 0.5 - 0.01 * alfa,
                       0.9, -99.999, -99.999});
    }
    config->AddPolar(polar);
  }
  airfoil.AddConfiguration(config);
  return tavilo::PolText(airfoil);
}

void BM_ReadPol(benchmark::State& state) {
  const std::string text = PolFileText(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    tavilo::Airfoil airfoil;
    tavilo::ReadFromPOLText(airfoil, text);
    benchmark::DoNotOptimize(airfoil.Configuration(1)->PolarCount());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
  state.SetComplexityN(state.range(0));
}

BENCHMARK(BM_ReadPol)
    ->RangeMultiplier(2)
    ->Range(1 << 17, 1 << 20)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace
