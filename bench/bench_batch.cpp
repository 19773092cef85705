// Batch conversion of a directory of 1000 PEF files of mixed sizes to XML.
#include <benchmark/benchmark.h>
#include <stdlib.h>

#include <filesystem>
#include <string>

#include "bench_support.h"
#include "fileio/transfer.h"
#include "formats/file_text.h"
#include "formats/pef.h"
#include "ui/user_interface.h"

namespace tavilo {
namespace {

// From one polar of 20 points to ten polars of 400, cycling.
std::string MakeDirectory(int files, size_t& bytes) {
  std::string pattern = (std::filesystem::temp_directory_path() / "tavilo-batch-XXXXXX").string();
  std::string directory = mkdtemp(pattern.data());
  const std::string texts[] = {PefText(bench::MakeAirfoil(1, 20)), PefText(bench::MakeAirfoil(3, 100)),
                               PefText(bench::MakeAirfoil(5, 200)), PefText(bench::MakeAirfoil(10, 400))};
  bytes = 0;
  for (int i = 0; i < files; ++i) {
    const std::string& text = texts[i % 4];
    WriteFileAtomically(directory + "/polar set " + std::to_string(i) + ".pef", text);
    bytes += text.size();
  }
  return directory;
}

void BM_BatchConvert1000PefFiles(benchmark::State& state) {
  size_t bytes = 0;
  const std::string directory = MakeDirectory(1000, bytes);
  SilentUserInterface ui;
  for (auto _ : state) BatchConvertDirectory(directory, ui);
  state.SetBytesProcessed(static_cast<int64_t>(bytes * state.iterations()));
  state.counters["files"] = 1000;
  state.counters["input_MB"] = bytes / 1e6;
  std::filesystem::remove_all(directory);
}
BENCHMARK(BM_BatchConvert1000PefFiles)->Unit(benchmark::kMillisecond)->Iterations(3)->UseRealTime();

}  // namespace
}  // namespace tavilo
