#include "plotqt/render.h"

#include <gtest/gtest.h>

#include <QImage>

#include "formats/file_text.h"
#include "formats/pol.h"
#include "strings/string_table.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

AirfoilPtr Naca4412() {
  auto airfoil = std::make_shared<Airfoil>();
  ReadFromPOL(*airfoil, TAVILO_TEST_DATA "/xfoil/xfoil699_NACA4412_SHARP_TE_V9_Re1e6_Ncrit9_P240.pol");
  return airfoil;
}

// Leaves the picture in the build tree so that a person can look at it.
TEST(RenderPlotsToFile, DrawsARealXfoilPolarAsPng) {
  std::string path = TAVILO_PICTURE_DIR "/naca4412_plots.png";
  std::string error;
  ASSERT_TRUE(RenderPlotsToFile(*Naca4412(), path, kEnglish, &error)) << error;
  QImage image(QString::fromStdString(path));
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

TEST(RenderPlotsToFile, WritesSvgOrPdfByExtensionInAnyCaseAndRefusesOthers) {
  testing::TempDir dir;
  std::string error;
  ASSERT_TRUE(RenderPlotsToFile(*Naca4412(), dir.File("plots.SVG"), kEnglish, &error)) << error;
  std::string svg = ReadFileBytes(dir.File("plots.SVG"));
  EXPECT_NE(svg.find("<svg"), std::string::npos);
  EXPECT_NE(svg.find("Re= 1000000"), std::string::npos);
  ASSERT_TRUE(RenderPlotsToFile(*Naca4412(), dir.File("plots.Pdf"), kEnglish, &error)) << error;
  EXPECT_EQ(ReadFileBytes(dir.File("plots.Pdf")).substr(0, 5), "%PDF-");
  EXPECT_FALSE(RenderPlotsToFile(*Naca4412(), dir.File("plots.jpg"), kEnglish, &error));
  EXPECT_NE(error.find("plots.jpg"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(dir.File("plots.jpg")));
  error.clear();
  EXPECT_FALSE(RenderPlotsToFile(*Naca4412(), dir.File("missing/plots.png"), kGerman, &error));
  const std::string german = "Fehler beim Dateizugriff: " + dir.File("missing/plots.png") + " kann nicht geschrieben";
  EXPECT_EQ(error.rfind(german, 0), 0u) << error;
  EXPECT_TRUE(RenderPlotsToFile(Airfoil(), dir.File("empty.png"), kEnglish, &error)) << "framed graphs only";
}

}  // namespace
}  // namespace tavilo
