// Reading and writing the XML exchange file; the argument is the number of
// polars of 1000 points, so doubling it shows the time grows linearly.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "bench_support.h"
#include "formats/xml.h"

namespace tavilo {
namespace {

const std::string kPath = "/tmp/tavilo-bench.xml";

void BM_WriteXml(benchmark::State& state) {
  Airfoil airfoil = bench::MakeAirfoil(static_cast<int>(state.range(0)), 1000);
  const size_t bytes = XmlText(airfoil).size();
  for (auto _ : state) WriteToXML(airfoil, kPath);
  state.SetBytesProcessed(static_cast<int64_t>(bytes * state.iterations()));
  state.counters["MB"] = bytes / 1e6;
}

void BM_ReadXml(benchmark::State& state) {
  Airfoil source = bench::MakeAirfoil(static_cast<int>(state.range(0)), 1000);
  WriteToXML(source, kPath);
  const size_t bytes = XmlText(source).size();
  for (auto _ : state) {
    Airfoil airfoil;
    ReadFromXML(airfoil, kPath);
    benchmark::DoNotOptimize(airfoil.ConfigCount());
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes * state.iterations()));
  state.counters["MB"] = bytes / 1e6;
  std::remove(kPath.c_str());
}

BENCHMARK(BM_WriteXml)->Arg(50)->Arg(100)->Arg(200)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadXml)->Arg(50)->Arg(100)->Arg(200)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tavilo
