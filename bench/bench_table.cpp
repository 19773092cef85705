// Reading column tables of 1/8 to 1 million data lines (about 6 to 50 MB)
// in blocks of 10,000 lines, each under its own Reynolds line and header,
// as a semicolon table with decimal commas: the slowest of the common
// shapes. Bytes per second should stay level across sizes.
#include <benchmark/benchmark.h>

#include <charconv>

#include "formats/table.h"

namespace {

void AppendNumber(std::string& out, double value) {
  char buffer[32];
  char* end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, 4).ptr;
  for (char* c = buffer; c < end; ++c)
    if (*c == '.') *c = ',';
  out.append(buffer, end);
}

std::string TableText(int lineCount) {
  std::string text = "# Airfoil: Benchmark foil\r\n";
  constexpr int kLinesPerBlock = 10000;
  for (int done = 0; done < lineCount; done += kLinesPerBlock) {
    text += "# Re = " + std::to_string(100000 + done) + "  Mach = 0.1\r\n";
    text += "alpha [deg];Cl;Cd;Cm;Top_Xtr;Bot_Xtr\r\n";
    for (int i = 0; i < kLinesPerBlock && done + i < lineCount; ++i) {
      const double alfa = -10.0 + (i % 2000) * 0.01;
      for (double value :
           {alfa, 0.1 * alfa + 0.2, 0.006 + 0.0001 * alfa * alfa, -0.05 - 0.001 * alfa, 0.5 - 0.01 * alfa}) {
        AppendNumber(text, value);
        text += ';';
      }
      text += "0,9000\r\n";
    }
  }
  return text;
}

void BM_ReadTable(benchmark::State& state) {
  const std::string text = TableText(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    tavilo::Airfoil airfoil;
    tavilo::ReadFromTableText(airfoil, text, "bench.txt", nullptr);
    benchmark::DoNotOptimize(airfoil.Configuration(1)->PolarCount());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
  state.SetComplexityN(state.range(0));
}

BENCHMARK(BM_ReadTable)
    ->RangeMultiplier(2)
    ->Range(1 << 17, 1 << 20)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace
