// PEF reading and writing: throughput on a 100-polar x 1000-point file,
// growth with the file, and the literal scan-per-value reader for scale.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "../tests/formats/pef_reference_scan.h"
#include "base/number_text.h"
#include "formats/pef.h"
#include "model/airfoil.h"

namespace tavilo {
namespace {

Airfoil MakeAirfoil(int sets, int polarsPerSet, int points) {
  Airfoil airfoil;
  airfoil.Name = "Benchmark airfoil";
  for (int s = 0; s < sets; ++s) {
    auto config = std::make_shared<Configuration>();
    config->Name = "Set " + std::to_string(s + 1);
    for (int p = 0; p < polarsPerSet; ++p) {
      auto polar = std::make_shared<Polar>();
      polar->Name = "Re " + std::to_string(p);
      polar->ReynoldsNumber = 50000.0 * (p + 1);
      polar->Selected = true;
      for (int i = 0; i < points; ++i) {
        double a = -10 + 25.0 * i / points;
        polar->AddPoint({a, 0.1 * a + 0.2, 0.006 + 0.0001 * a * a, -0.05 - 0.001 * a, 0.6 - 0.02 * a, 0.9 + 0.003 * a,
                         kNoValue, kNoValue});
      }
      config->AddPolar(polar);
    }
    airfoil.AddConfiguration(config);
  }
  return airfoil;
}

// 100 polars of 1000 points each, in 10 sets.
const std::string& LargeFile() {
  static const std::string text = PefText(MakeAirfoil(10, 10, 1000));
  return text;
}

void BM_PefWrite(benchmark::State& state) {
  const Airfoil airfoil = MakeAirfoil(10, 10, static_cast<int>(state.range(0)));
  size_t bytes = 0;
  for (auto _ : state) {
    std::string text = PefText(airfoil);
    bytes = text.size();
    benchmark::DoNotOptimize(text);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
  state.SetComplexityN(static_cast<int64_t>(bytes));
}
BENCHMARK(BM_PefWrite)->Arg(250)->Arg(1000)->Arg(4000)->Arg(16000)->Unit(benchmark::kMillisecond)->Complexity();

// Reads `text` into a new airfoil on every iteration.
void ReadEach(benchmark::State& state, const std::string& text) {
  for (auto _ : state) {
    Airfoil airfoil;
    ReadFromPEFText(airfoil, text);
    benchmark::DoNotOptimize(airfoil);
  }
}

void BM_PefRead(benchmark::State& state) {
  const std::string text = PefText(MakeAirfoil(10, 10, static_cast<int>(state.range(0))));
  ReadEach(state, text);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
  state.SetComplexityN(static_cast<int64_t>(text.size()));
}
// Points per polar from 250 to 16000: the time should grow with the file.
BENCHMARK(BM_PefRead)->Arg(250)->Arg(1000)->Arg(4000)->Arg(16000)->Unit(benchmark::kMillisecond)->Complexity();

// The same through the file system: write, then read the written file.
void BM_PefFileRoundTrip(benchmark::State& state) {
  const Airfoil airfoil = MakeAirfoil(10, 10, 1000);
  const std::string path = (std::filesystem::temp_directory_path() / "tavilo_bench.pef").string();
  for (auto _ : state) {
    WriteToPEF(airfoil, path);
    Airfoil read;
    ReadFromPEF(read, path);
    benchmark::DoNotOptimize(read);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * 2 * LargeFile().size()));
  std::filesystem::remove(path);
}
BENCHMARK(BM_PefFileRoundTrip)->Unit(benchmark::kMillisecond);

// ---------------------------------------------------------------- literal reader

// Reads every value with a scan of the whole text from the top, as the
// format was first read; quadratic in the points of a polar.
int LiteralRead(const std::string& text) {
  using testing::ReferencePefValue;
  int values = 0;
  int sets = RoundToInt16(LeadingNumber(ReferencePefValue(text, "Airfoil", "NumberSets")));
  for (int s = 1; s <= sets; ++s) {
    const std::string set = "Set" + std::to_string(s);
    int polars = RoundToInt16(LeadingNumber(ReferencePefValue(text, set, "NumberPolars")));
    for (int p = 1; p <= polars; ++p) {
      const std::string section = set + "-Polar" + std::to_string(p);
      int points = RoundToInt16(LeadingNumber(ReferencePefValue(text, section, "NumberPoints")));
      values += static_cast<int>(LeadingNumber(ReferencePefValue(text, section, "ReynoldsNumber")) > 0);
      for (int i = 1; i <= points; ++i) {
        std::string key = std::string(i < 10 ? "Value0" : "Value") + std::to_string(i);
        values += static_cast<int>(LeadingNumber(ReferencePefValue(text, section, key)) > 0);
      }
    }
  }
  return values;
}

// 10 polars of 200 points: small enough for the literal reader.
const std::string& SmallFile() {
  static const std::string text = PefText(MakeAirfoil(2, 5, 200));
  return text;
}

void BM_PefReadSmallLiteral(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(LiteralRead(SmallFile()));
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * SmallFile().size()));
}
BENCHMARK(BM_PefReadSmallLiteral)->Unit(benchmark::kMillisecond);

void BM_PefReadSmallIndexed(benchmark::State& state) {
  ReadEach(state, SmallFile());
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * SmallFile().size()));
}
BENCHMARK(BM_PefReadSmallIndexed)->Unit(benchmark::kMillisecond);

// A file that asks for 32767 points per polar and has none of them.
void BM_PefReadMissingPoints(benchmark::State& state) {
  std::string text = "[Airfoil]\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=30\r\n";
  for (int p = 1; p <= 30; ++p) text += "[Set1-Polar" + std::to_string(p) + "]\r\nNumberPoints=32767\r\n";
  ReadEach(state, text);
  state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * 30 * 32767));
}
BENCHMARK(BM_PefReadMissingPoints)->Unit(benchmark::kMillisecond);

// The worst a short file can ask for: 32767 sets of 32767 polars each, none
// of which exists. Reading stops at the limit of missing items.
void BM_PefReadHugeCounts(benchmark::State& state) {
  std::string text = "[Airfoil]\r\nNumberSets=32767\r\n";
  for (int s = 1; s <= 40; ++s) text += "[Set" + std::to_string(s) + "]\r\nNumberPolars=32767\r\n";
  ReadEach(state, text);
}
BENCHMARK(BM_PefReadHugeCounts)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavilo
