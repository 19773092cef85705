#include "plotqt/render.h"

#include <gtest/gtest.h>

#include <QImage>

#include "formats/file_text.h"
#include "plot/ranges.h"
#include "plotqt/xfoil_polar.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

AirfoilPtr Naca4412() {
  auto airfoil = std::make_shared<Airfoil>();
  auto set = std::make_shared<Configuration>();
  set->AddPolar(testing::ReadXfoilPolar(
      TAVILO_TEST_DATA "/xfoil/xfoil699_NACA4412_SHARP_TE_V9_Re1e6_Ncrit9_P240.pol", &airfoil->Name));
  airfoil->AddConfiguration(set);
  return airfoil;
}

TEST(XfoilSample, ReadsTheNumbersTheGraphsNeed) {
  AirfoilPtr airfoil = Naca4412();
  EXPECT_EQ(airfoil->Name, "NACA4412 SHARP TE V9");
  PolarPtr polar = airfoil->Configuration(1)->Polar(1);
  EXPECT_EQ(polar->ReynoldsNumber, 1e6);
  ASSERT_EQ(polar->PointCount(), 12);
  EXPECT_EQ(polar->Cl(2), 0.7247);
  EXPECT_EQ(polar->Cm(2), -0.1066);
  EXPECT_EQ(polar->TL(2), 0.9985);
}

// Leaves the picture in the build tree so that a person can look at it.
TEST(RenderPlotsToFile, DrawsARealXfoilPolarAsPng) {
  std::string path = TAVILO_PICTURE_DIR "/naca4412_plots.png";
  std::string error;
  ASSERT_TRUE(RenderPlotsToFile(*Naca4412(), path, &error)) << error;
  QImage image(QString::fromStdString(path));
  ASSERT_FALSE(image.isNull());
  EXPECT_EQ(image.size(), QSize(1600, 1000));
  // The polar's curve and markers in palette blue 1 on the lift-drag graph.
  int blue = 0;
  for (int y = 48; y < 944; ++y)
    for (int x = 64; x < 768; ++x) {
      QColor c = image.pixelColor(x, y);
      if (c.blue() > c.red() + 60 && c.blue() > c.green() + 60) ++blue;
    }
  EXPECT_GT(blue, 500);
}

// Both samples as two sets: two legend columns, two colours and markers.
TEST(RenderPlotsToFile, DrawsTwoSetsOfRealPolars) {
  AirfoilPtr airfoil = Naca4412();
  auto set = std::make_shared<Configuration>();
  set->AddPolar(testing::ReadXfoilPolar(TAVILO_TEST_DATA "/xfoil/xfoil697_blade.c130.Re30000k.M0.8.pol"));
  airfoil->AddConfiguration(set);
  std::string error;
  EXPECT_TRUE(RenderPlotsToFile(*airfoil, TAVILO_PICTURE_DIR "/xfoil_two_sets.png", &error)) << error;
}

TEST(RenderPlotsToFile, WritesSvgByExtensionInAnyCase) {
  testing::TempDir dir;
  std::string path = dir.File("plots.SVG");
  std::string error;
  ASSERT_TRUE(RenderPlotsToFile(*Naca4412(), path, &error)) << error;
  std::string svg = ReadFileBytes(path);
  EXPECT_NE(svg.find("<svg"), std::string::npos);
  EXPECT_NE(svg.find("Re= 1000000"), std::string::npos);
  EXPECT_NE(svg.find("NACA4412"), std::string::npos);
}

TEST(RenderPlotsToFile, RefusesOtherExtensionsAndUnwritablePlaces) {
  testing::TempDir dir;
  std::string error;
  EXPECT_FALSE(RenderPlotsToFile(*Naca4412(), dir.File("plots.jpg"), &error));
  EXPECT_NE(error.find("plots.jpg"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(dir.File("plots.jpg")));
  error.clear();
  EXPECT_FALSE(RenderPlotsToFile(*Naca4412(), dir.File("missing/plots.png"), &error));
  EXPECT_FALSE(error.empty());
}

TEST(RenderPlotsToFile, AnEmptyAirfoilStillGivesFramedGraphs) {
  testing::TempDir dir;
  Airfoil empty;
  std::string error;
  EXPECT_TRUE(RenderPlotsToFile(empty, dir.File("empty.png"), &error)) << error;
}

}  // namespace
}  // namespace tavilo
