#include "formats/csv.h"

#include <gtest/gtest.h>

#include "fileio/transfer.h"
#include "support/model_builders.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::MakePoint;
using testing::MakePolar;

ConfigurationPtr SetOf(const std::string& name, std::initializer_list<PolarPtr> polars) {
  auto set = std::make_shared<Configuration>();
  set->Name = name;
  for (const PolarPtr& polar : polars) set->AddPolar(polar);
  return set;
}

// Two sets of one name, a polar left unticked, names with quotes, values
// that need all seventeen digits, and unknown values of every kind.
Airfoil Sample() {
  Airfoil airfoil;
  airfoil.Name = "E387";
  airfoil.AddConfiguration(SetOf("clean", {
      MakePolar(2e5, 0.1, true, {MakePoint(0.1 + 0.2, 0.5, 0.0125, -0.08, 0.55, 0.9),
                                 MakePoint(-2, kNoValue, 0.01)}, "tripped \"zz\""),
      MakePolar(3e5, 0, false, {MakePoint(1, 0.6, 0.02)}),
      MakePolar(4e5, 0, true, {MakePoint(1, 0.6, -150)}),
  }));
  airfoil.AddConfiguration(SetOf("clean", {MakePolar(1.5e6, 0.2, true, {MakePoint(3, 0.7, 0.009)}, "a, b")}));
  return airfoil;
}

TEST(CsvWriter, WritesOneQuotedRowPerPointOfEachTickedPolar) {
  EXPECT_EQ(CsvText(Sample()),
            "set_no,set,polar_no,polar,re,mach,alpha,cl,cd,cm,top_xtr,bot_xtr\r\n"
            "1,\"clean\",1,\"tripped \"\"zz\"\"\",2e+05,0.1,0.30000000000000004,0.5,0.0125,-0.08,0.55,0.9\r\n"
            "1,\"clean\",1,\"tripped \"\"zz\"\"\",2e+05,0.1,-2,,0.01,,,\r\n"
            "1,\"clean\",3,\"\",4e+05,0,1,0.6,,,,\r\n"
            "2,\"clean\",1,\"a, b\",1500000,0.2,3,0.7,0.009,,,\r\n");
}

TEST(CsvWriter, ReadsBackIntoTheSameSetsAndPolars) {
  testing::TempDir dir;
  const std::string path = dir.File("e387.csv");
  testing::RecordingUserInterface ui;
  const Airfoil written = Sample();
  ASSERT_TRUE(ExportAirfoil(written, path, ui));
  const LoadResult read = ReadPolarFile(path, nullptr);
  EXPECT_TRUE(read.report.diagnostics.empty());
  ASSERT_EQ(read.airfoil->ConfigCount(), 2);
  // The unticked polar is not written; the others keep their order.
  const std::pair<int, int> sources[] = {{1, 1}, {1, 3}, {2, 1}};
  std::vector<PolarPtr> polars;
  for (const ConfigurationPtr& set : read.airfoil->Configurations()) {
    EXPECT_EQ(set->Name, "clean");
    for (const PolarPtr& polar : set->Polars()) polars.push_back(polar);
  }
  ASSERT_EQ(polars.size(), std::size(sources));
  for (size_t k = 0; k < polars.size(); ++k) {
    const Polar& original = *written.Configuration(sources[k].first)->Polar(sources[k].second);
    const Polar& copy = *polars[k];
    EXPECT_EQ(copy.Name, original.Name) << k;
    EXPECT_EQ(copy.ReynoldsNumber, original.ReynoldsNumber) << k;
    EXPECT_EQ(copy.MachNumber, original.MachNumber) << k;
    ASSERT_EQ(copy.PointCount(), original.PointCount()) << k;
    for (int i = 1; i <= copy.PointCount(); ++i) {
      PolarPoint expected = original.Point(i);
      if (expected.Cd < kNoValue) expected.Cd = kNoValue;  // below the marker is unknown too
      EXPECT_EQ(copy.Point(i), expected) << k << " point " << i;
    }
  }
}

}  // namespace
}  // namespace tavilo
