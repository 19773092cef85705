// Reading a UIUC drag polar file of 1/8 to 1 million point lines (about 7 to
// 60 MB) in Reynolds blocks of 10000 points, each closed by the footer real
// files carry. Bytes per second should stay level across sizes.
#include <benchmark/benchmark.h>

#include "base/number_text.h"
#include "formats/drg.h"

namespace {

std::string DrgFileText(int pointCount) {
  constexpr int kPointsPerBlock = 10000;
  const int blocks = (pointCount + kPointsPerBlock - 1) / kPointsPerBlock;
  std::string text =
      "Airfoil: Benchmark\r\nBuilder: nobody\r\nComment: clean\r\n\r\n"
      "Number of Reynolds #'s:\r\n" +
      tavilo::NumberText(blocks) + " \r\n";
  for (int b = 0; b < blocks; ++b) {
    const int points = std::min(kPointsPerBlock, pointCount - b * kPointsPerBlock);
    text += "\r\nAverage Reynolds #:\r\n" + tavilo::NumberText(60000 + b) + " \r\nNumber of angles of attack:\r\n" +
            tavilo::NumberText(points) + " \r\n alpha /   Cl   /  Cd   /  Spanwise Cd's >>>\r\n";
    for (int i = 0; i < points; ++i) {
      const double alfa = -5.0 + (i % 1500) * 0.01;
      text += " " + tavilo::FormatNumber(alfa, "0.00") + "  " + tavilo::FormatNumber(0.1 * alfa, "0.000") +
              "   0.0427   0.0491   0.0455   0.0374   0.0388\r\n";
    }
    text += "Tabulated from data in file AB00209.DAT & reduced using program Q01.00L\r\n";
  }
  return text + "\r\nFile benchmark.drg created by the benchmark\r\n";
}

void BM_ReadDrg(benchmark::State& state) {
  const std::string text = DrgFileText(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    tavilo::Airfoil airfoil;
    tavilo::ReadFromDRGText(airfoil, text, {});
    benchmark::DoNotOptimize(airfoil.Configuration(1)->PolarCount());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
  state.SetComplexityN(state.range(0));
}

BENCHMARK(BM_ReadDrg)
    ->RangeMultiplier(2)
    ->Range(1 << 17, 1 << 20)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace
