#include "plotqt/render.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include "formats/file_text.h"
#include "formats/pol.h"
#include "strings/string_table.h"
#include "support/model_builders.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

TEST(RenderPlotsToFile, WritesSvgOrPdfByExtensionInAnyCaseAndRefusesOthers) {
  Airfoil naca;
  ReadFromPOL(naca, TAVILO_TEST_DATA "/xfoil/xfoil699_NACA4412_SHARP_TE_V9_Re1e6_Ncrit9_P240.pol");
  testing::TempDir dir;
  std::string error;
  ASSERT_TRUE(RenderPlotsToFile(naca, dir.File("plots.SVG"), Language::English, &error)) << error;
  std::string svg = ReadFileBytes(dir.File("plots.SVG"));
  EXPECT_TRUE(svg.find("<svg") != std::string::npos && svg.find("Re= 1000000") != std::string::npos);
  ASSERT_TRUE(RenderPlotsToFile(naca, dir.File("plots.Pdf"), Language::English, &error)) << error;
  EXPECT_EQ(ReadFileBytes(dir.File("plots.Pdf")).substr(0, 5), "%PDF-");
  EXPECT_FALSE(RenderPlotsToFile(naca, dir.File("plots.jpg"), Language::English, &error));
  EXPECT_NE(error.find("plots.jpg"), std::string::npos);
  EXPECT_FALSE(std::filesystem::exists(dir.File("plots.jpg")));
  error.clear();
  EXPECT_FALSE(RenderPlotsToFile(naca, dir.File("missing/plots.png"), Language::German, &error));
  const std::string german = "Fehler beim Dateizugriff: " + dir.File("missing/plots.png") + " kann nicht geschrieben";
  EXPECT_EQ(error.rfind(german, 0), 0u) << error;
  EXPECT_TRUE(RenderPlotsToFile(Airfoil(), dir.File("empty.png"), Language::English, &error)) << "framed graphs only";
}

// Pixels of palette blue, the first polar's colour, in `area`.
int BluePixels(const QImage& image, const QRect& area) {
  int blue = 0;
  for (int y = area.top(); y <= area.bottom(); ++y)
    for (int x = area.left(); x <= area.right(); ++x) {
      const QColor c = image.pixelColor(x, y);
      blue += c.blue() > c.red() + 60 && c.blue() > c.green() + 60;
    }
  return blue;
}

// A drag far beyond the lift-drag graph's 0.025 stays inside that graph: none of it in the gap to its right.
TEST(RenderPlotsToFile, AnSvgIsClippedToEachGraphAsThePngIs) {
  auto airfoil = std::make_shared<Airfoil>();
  auto set = std::make_shared<Configuration>();
  std::vector<PolarPoint> points;
  for (int k = 0; k <= 14; ++k) points.push_back(testing::MakePoint(k, 0.1 * k, 0.006 + 0.02 * k));
  set->AddPolar(testing::MakePolar(1e6, 0, true, points));
  airfoil->AddConfiguration(set);
  testing::TempDir dir;
  std::string error;
  ASSERT_TRUE(RenderPlotsToFile(*airfoil, dir.File("wide.png"), Language::English, &error)) << error;
  ASSERT_TRUE(RenderPlotsToFile(*airfoil, dir.File("wide.svg"), Language::English, &error)) << error;
  QImage svg(1600, 1000, QImage::Format_RGB32);
  svg.fill(Qt::white);
  {
    QSvgRenderer renderer(QString::fromStdString(dir.File("wide.svg")));
    ASSERT_TRUE(renderer.isValid());
    QPainter painter(&svg);
    renderer.render(&painter, QRectF(0, 0, 1600, 1000));
  }
  const QImage png(QString::fromStdString(dir.File("wide.png")));
  EXPECT_EQ(png.size(), QSize(1600, 1000));
  const QRect clCd(64, 48, 704, 896), gap(772, 0, 68, 1000);
  for (const auto& [name, image] : {std::pair<const char*, const QImage&>{"png", png}, {"svg", svg}}) {
    EXPECT_GT(BluePixels(image, clCd), 300) << name << ": the curve is drawn";
    EXPECT_EQ(BluePixels(image, gap), 0) << name << ": nothing spills out of the graph";
  }
}

}  // namespace
}  // namespace tavilo
