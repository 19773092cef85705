#include "formats/csv.h"

#include <gtest/gtest.h>

#include "fileio/transfer.h"
#include "formats/airfoil_summary.h"
#include "support/model_builders.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::MakePoint;
using testing::MakePolar;
using testing::SetOf;

// Two sets of one name, an unticked polar, quoted names, 17-digit values, unknowns of every kind.
Airfoil Sample() {
  return testing::AirfoilOf(
      "E387",
      {SetOf("clean",
             {MakePolar(2e5, 0.1, true,
                        {MakePoint(0.1 + 0.2, 0.5, 0.0125, -0.08, 0.55, 0.9), MakePoint(-2, kNoValue, 0.01)},
                        "tripped \"zz\""),
              MakePolar(3e5, 0, false, {MakePoint(1, 0.6, 0.02)}), MakePolar(4e5, 0, true, {MakePoint(1, 0.6, -150)})}),
       SetOf("clean", {MakePolar(1.5e6, 0.2, true, {MakePoint(3, 0.7, 0.009)}, "a, b")})});
}

TEST(CsvWriter, WritesOneQuotedRowPerPointOfEachTickedPolarAndReadsBack) {
  EXPECT_EQ(CsvText(Sample()),
            "set_no,set,polar_no,polar,re,mach,alpha,cl,cd,cm,top_xtr,bot_xtr\r\n"
            "1,\"clean\",1,\"tripped \"\"zz\"\"\",2e+05,0.1,0.30000000000000004,0.5,0.0125,-0.08,0.55,0.9\r\n"
            "1,\"clean\",1,\"tripped \"\"zz\"\"\",2e+05,0.1,-2,,0.01,,,\r\n"
            "1,\"clean\",3,\"\",4e+05,0,1,0.6,,,,\r\n"
            "2,\"clean\",1,\"a, b\",1500000,0.2,3,0.7,0.009,,,\r\n");
  // Read back, only the left-out polar's number changes (a drag below the marker reads as unknown).
  testing::TempDir dir;
  const std::string path = dir.File("e387.csv");
  testing::RecordingUserInterface ui;
  ASSERT_TRUE(ExportAirfoil(Sample(), path, ui));
  const LoadResult read = ReadPolarFile(path, nullptr);
  EXPECT_TRUE(read.report.diagnostics.empty());
  std::string expected = CsvText(Sample());
  expected.replace(expected.find("1,\"clean\",3,"), 12, "1,\"clean\",2,");
  EXPECT_EQ(CsvText(*read.airfoil), expected);
}

}  // namespace
}  // namespace tavilo
