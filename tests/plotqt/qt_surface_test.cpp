#include "plotqt/qt_surface.h"

#include <gtest/gtest.h>

#include <QImage>
#include <cmath>
#include <functional>

#include "base/errors.h"
#include "plot/symbol.h"

namespace tavilo {
namespace {

const QColor kBackground(200, 210, 220);

QImage Image(int width, int height, double ratio = 1, QColor fill = Qt::white) {
  QImage image(int(width * ratio), int(height * ratio), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(ratio);
  image.fill(fill);
  return image;
}

// `image` with what `draw` draws on a surface over `target` (the whole image
// when empty) whose user units are the painter's pixels.
template <class Draw>
QImage Drawn(QImage image, Draw draw, QRectF target = {}) {
  if (target.isEmpty()) target = QRectF(QPointF(), image.deviceIndependentSize());
  {
    QPainter painter(&image);
    QtSurface surface(painter, target);
    surface.Scale(0, 0, target.width(), target.height());
    draw(surface);
  }  // the surface draws what it queued, the painter ends
  return image;
}

// On a dense screen lines and markers are a logical pixel wide, as QPainter
// draws them (on an image the raster does not take).
TEST(QtSurface, OnADenseScreenLinesAndMarkersAreALogicalPixelWide) {
  auto draw = [](QtSurface& s) {
    const PlotPoint curve[] = {{-20, 70}, {40, 10}, {100, 60}, {170, 20.5}, {300, 20.5}};
    s.Polyline(curve, 5);
    const SymbolFigure square = SymbolOutline(s, 1, 9);
    s.Figures(curve + 1, 3, square.offsets, square.count);
  };
  auto ink = [](const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) sum += 255 - qGray(image.pixel(x, y));
    return sum;
  };
  const QRectF target(10, 10, 180, 80);
  const QImage direct = Drawn(Image(200, 100, 2), draw, target);
  const QImage painted = Drawn(Image(200, 100, 2).convertToFormat(QImage::Format_ARGB32), draw, target);
  EXPECT_NEAR(ink(direct) / ink(painted), 1.0, 0.15);
  // The last, horizontal stretch lies on the edge between image rows 60 and 61.
  for (int row : {59, 60, 61, 62})
    EXPECT_EQ(direct.pixelColor(370, row), QColor(row == 60 || row == 61 ? Qt::black : Qt::white)) << row;
}

// Within a rounding unit, when first made and when used again, on ordinary and dense screens.
TEST(QtSurface, AKeptHaloCoversWhatItsEightCopiesWould) {
  auto draw = [](QtSurface& s) {
    for (double x : {10.25, 80.25}) {  // the second at the same place within a pixel
      s.SetCurrentX(x);
      s.SetCurrentY(17.625);
      s.PrintHalo("Re= 500000", Color::Rgb(255, 255, 255));
    }
  };
  for (double ratio : {1.0, 2.0}) {
    const QImage kept = Drawn(Image(160, 50, ratio, kBackground), draw);
    const QImage copied = Drawn(Image(160, 50, ratio, kBackground).convertToFormat(QImage::Format_ARGB32), draw);
    int worst = 0, covered = 0;
    for (int y = 0; y < kept.height(); ++y)
      for (int x = 0; x < kept.width(); ++x) {
        worst = std::max(worst, std::abs(qGray(kept.pixel(x, y)) - qGray(copied.pixel(x, y))));
        covered += kept.pixel(x, y) == qRgb(255, 255, 255);
      }
    EXPECT_LE(worst, 1) << ratio;
    EXPECT_GT(covered, 200 * ratio * ratio) << ratio;
  }
}

// Small scenes on a white image of 300 x 100 and colours at some of their pixels.
TEST(QtSurface, ScenesShowTheirColours) {
  const QColor white(Qt::white), black(Qt::black), blue(0, 0, 255), green(0, 128, 0), red(255, 0, 0);
  // clang-format off
  const struct {
    const char* scene;
    std::function<void(QtSurface&)> draw;
    std::vector<std::pair<QPoint, QColor>> pixels;
    QRectF target = {};
  } cases[] = {
      // y = 0.5 a quarter down from the top; the line on the middle row alone.
      {"user coordinates with the vertical axis upwards", [](QtSurface& s) {
         s.Scale(0, 1, 2, -1);
         s.Line(0.95, 0.55, 1.05, 0.45, Color::Rgb(255, 0, 0), LineKind::FilledBox);
         s.Line(0.5, 0, 1.5, 0, Color::Rgb(0, 0, 0));
         EXPECT_EQ(std::make_pair(s.CurrentX(), s.CurrentY()), std::make_pair(1.5, 0.0));
         EXPECT_THROW(s.Line(0, 0, 1e300, 0), OverflowError);
       }, {{{150, 25}, red}, {{150, 50}, black}, {{150, 49}, white}}},
      {"a line far past both sides of its target", [](QtSurface& s) {
         s.Scale(0, 1, 1, 0);
         s.Line(-5, 0.5, 5, 0.5, Color::Palette(12));
       }, {{{100, 50}, red}, {{40, 50}, white}, {{160, 50}, white}}, QRectF(50, 25, 100, 50)},
      {"boxes by fill style, filled boxes in their line colour", [](QtSurface& s) {
         s.SetFillColor(Color::Rgb(0, 0, 255));
         s.Line(10, 10, 90, 90, Color::Rgb(0, 0, 0), LineKind::Box);  // transparent inside
         s.SetFillStyle(kFillSolid);
         s.Line(110, 10, 190, 90, Color::Rgb(0, 0, 0), LineKind::Box);
         s.Line(210, 10, 290, 90, Color::Rgb(0, 128, 0), LineKind::FilledBox);
       }, {{{50, 50}, white}, {{150, 50}, blue}, {{250, 50}, green}, {{110, 50}, black}}},
      // Up to the largest stamp stamped, larger ones drawn as lines.
      {"large figures with their whole outline", [](QtSurface& s) {
         for (double half : {24.0, 30.0}) {
           const PlotPoint square[] = {{-half, -half}, {half, -half}, {half, half}, {-half, half}, {-half, -half}};
           const PlotPoint centre{half == 24 ? 50.5 : 140.5, 50.5};
           s.Figures(&centre, 1, square, 5);
         }
       }, {{{26, 50}, black}, {{74, 50}, black}, {{50, 26}, black}, {{50, 74}, black}, {{110, 50}, black},
           {{170, 50}, black}, {{140, 20}, black}, {{140, 80}, black}, {{50, 50}, white}}},
      // The raster queues lines; a box and the line after it still come in order.
      {"lines, a box over them and a line over the box", [](QtSurface& s) {
         const PlotPoint under[] = {{5, 20.5}, {95, 20.5}, {95, 60.5}}, over[] = {{50.5, 5}, {50.5, 95}};
         s.SetForeColor(Color::Rgb(255, 0, 0));
         s.Polyline(under, 3);
         s.Line(40, 10, 60, 30, Color::Rgb(0, 0, 255), LineKind::FilledBox);
         s.SetForeColor(Color::Rgb(0, 128, 0));
         s.Polyline(over, 2);
       }, {{{20, 20}, red}, {{45, 20}, blue}, {{50, 20}, green}}},
      {"a wild point ending a run and a marker row after what came before", [](QtSurface& s) {
         const PlotPoint points[] = {{10, 10.5}, {50, 10.5}, {50, 1e300}, {90, 90}};
         EXPECT_THROW(s.Polyline(points, 4), OverflowError);
         const PlotPoint offsets[] = {{-2, -2}, {2, -2}, {2, 2}, {-2, 2}, {-2, -2}};
         const PlotPoint centres[] = {{30, 50}, {std::nan(""), 50}};
         EXPECT_THROW(s.Figures(centres, 2, offsets, 5), OverflowError);
       }, {{{30, 10}, black}, {{70, 70}, white}, {{32, 50}, black}}},
  };
  // clang-format on
  for (const auto& c : cases) {
    const QImage image = Drawn(Image(300, 100), c.draw, c.target);
    for (const auto& [at, color] : c.pixels)
      EXPECT_EQ(image.pixelColor(at), color) << c.scene << " at " << at.x() << "," << at.y();
  }
}

}  // namespace
}  // namespace tavilo
