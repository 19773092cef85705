// The PEF writer: the exact text of a small airfoil, and the renumbering,
// naming and index rules.
#include <gtest/gtest.h>

#include "formats/file_text.h"
#include "formats/pef.h"
#include "strings/product.h"
#include "support/model_builders.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::MakePolar;

// Set 1 named, with an own Description2 and one of two polars selected;
// set 2 with nothing selected; set 3 unnamed, without origin.
Airfoil SampleAirfoil() {
  Airfoil airfoil;
  airfoil.Name = "Clark Y";
  auto first = std::make_shared<Configuration>();
  first->Name = "Flap 0";
  first->Origin = "Wind tunnel";
  first->Description2 = "smooth";
  first->AddPolar(MakePolar(1, 0, false, {}, "left out"));
  first->AddPolar(MakePolar(250000.4, 0.3, true, {{4.0, 0.8123, 0.009123, -0.08712, 0.4118, 1.0, 0.5, 0.5}, {}},
                            "Re 250k"));
  auto unselected = std::make_shared<Configuration>();
  unselected->AddPolar(MakePolar(1, 0, false, {}, "hidden"));
  auto unnamed = std::make_shared<Configuration>();
  unnamed->AddPolar(MakePolar(1e6, 0.6, true, {}, ""));
  airfoil.AddConfiguration(first);
  airfoil.AddConfiguration(unselected);
  airfoil.AddConfiguration(unnamed);
  return airfoil;
}

TEST(PefWriter, WritesTheWholeFileLineForLine) {
  EXPECT_EQ(PefText(SampleAirfoil()), ReadFileBytes(TAVILO_TEST_DATA "/golden/sample.pef"));
}

TEST(PefWriter, NothingSelectedGivesNoSetsAndTheFileIsReplaced) {
  Airfoil airfoil;
  auto config = std::make_shared<Configuration>();
  config->AddPolar(MakePolar(0, 0, false, {}, "p"));
  airfoil.AddConfiguration(config);
  testing::TempDir dir;
  WriteToPEF(airfoil, dir.Write("out.pef", std::string(100000, 'x')));
  EXPECT_TRUE(dir.Read("out.pef").ends_with("[Airfoil]\r\nDescription1=\r\nNumberSets=0\r\n\r\n"));
}

TEST(PefWriter, PolarBlockKeysHaveAtLeastTwoDigits) {
  std::vector<PolarPoint> points(100, PolarPoint{1, 2, 3, 4, 5, 6, 7, 8});
  const std::string text = PolarPefText(*MakePolar(0, 0, true, points, "p"), 1, 1);
  for (const char* line : {"\r\nValue01=", "\r\nValue09=", "\r\nValue10=", "\r\nValue100="})
    EXPECT_NE(text.find(line), std::string::npos) << line;
  EXPECT_EQ(text.find("Value1="), std::string::npos);
  Polar read;
  ReadPolarFromPEFText(read, text, 1, 1);
  EXPECT_EQ(read.PointCount(), 100);
  EXPECT_EQ(read.Point(100).TL, 6);
}

// Read back, the file gives its own text: the notice stands first among a
// set's descriptions and names an unnamed set, whose origin is Tavilo.
TEST(PefWriter, WrittenFileReadsBackToTheWrittenText) {
  const std::string written = ReadFileBytes(TAVILO_TEST_DATA "/golden/sample.pef");
  Airfoil read;
  EXPECT_TRUE(ReadFromPEFText(read, written).diagnostics.empty());
  EXPECT_EQ(read.Configuration(1)->Description2, kCopyrightNotice);
  EXPECT_EQ(read.Configuration(2)->Name + "|" + read.Configuration(2)->Origin,
            std::string(kCopyrightNotice) + "|Tavilo");
  read.Configuration(1)->Description2 = "smooth";  // the writer adds its notice again
  read.Configuration(2)->Name = "";
  EXPECT_EQ(PefText(read), written);
}

}  // namespace
}  // namespace tavilo
