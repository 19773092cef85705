#include "plotqt/qt_surface.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <cmath>

#include "base/errors.h"
#include "plot/frames.h"
#include "plot/symbol.h"

namespace tavilo {
namespace {

QImage WhiteImage(int width, int height, double pixelRatio = 1.0) {
  QImage image(int(width * pixelRatio), int(height * pixelRatio), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(pixelRatio);
  image.fill(Qt::white);
  return image;
}

QColor Pixel(const QImage& image, int x, int y) { return image.pixelColor(x, y); }

TEST(QtSurface, MapsUserCoordinatesOntoTheTargetWithTheVerticalAxisUpwards) {
  QImage image = WhiteImage(200, 100);
  {
    QPainter painter(&image);
    QtSurface surface(painter, QRectF(0, 0, 200, 100));
    surface.Scale(0, 1, 2, -1);
    surface.Line(0.95, 0.55, 1.05, 0.45, Color::Rgb(255, 0, 0), LineKind::FilledBox);
    surface.Line(0.5, 0, 1.5, 0, Color::Rgb(0, 0, 0));
    EXPECT_EQ(surface.CurrentX(), 1.5);
    EXPECT_EQ(surface.CurrentY(), 0);
    EXPECT_THROW(surface.Line(0, 0, 1e300, 0), OverflowError);
    EXPECT_THROW(surface.Line(0, 0, 0, std::nan("")), OverflowError);
  }
  // y = 0.5 lies a quarter down from the top; the black line lies on the middle row.
  EXPECT_GT(Pixel(image, 100, 25).red(), 200);
  EXPECT_LT(Pixel(image, 100, 25).green(), 100);
  EXPECT_EQ(Pixel(image, 100, 50), QColor(Qt::black)) << "a one-pixel line sits on a pixel row";
  EXPECT_EQ(Pixel(image, 100, 49), QColor(Qt::white));
  // Only inside its target: a line far past both sides stops at the edges.
  QImage framed = WhiteImage(200, 100);
  {
    QPainter painter(&framed);
    QtSurface surface(painter, QRectF(50, 25, 100, 50));
    surface.Scale(0, 1, 1, 0);
    surface.Line(-5, 0.5, 5, 0.5, Color::Palette(12));
  }
  EXPECT_EQ(Pixel(framed, 100, 50), QColor(255, 0, 0));
  EXPECT_EQ(Pixel(framed, 40, 50), QColor(Qt::white));
  EXPECT_EQ(Pixel(framed, 160, 50), QColor(Qt::white));
}

TEST(QtSurface, GridLinesAreCrispOnOrdinaryAndDoubleDensityScreens) {
  for (double ratio : {1.0, 2.0}) {
    QImage image = WhiteImage(300, 200, ratio);
    {
      QPainter painter(&image);
      QtSurface surface(painter, QRectF(0, 0, 300, 200));
      DrawClAlfaFrame(surface, DefaultViews(PlotRanges{})[Graph::ClAlfa]);
    }
    // The Alfa = 0 axis: a column of exactly black device pixels, one or two wide.
    int x = 0;
    while (x < image.width() && Pixel(image, x, 20) != QColor(Qt::black)) ++x;
    ASSERT_LT(x, image.width()) << ratio;
    int width = 0;
    while (Pixel(image, x + width, 20) == QColor(Qt::black)) ++width;
    EXPECT_EQ(width, int(ratio)) << ratio;
    EXPECT_EQ(Pixel(image, x - 1, 20), QColor(Qt::white)) << ratio;
    // Grid lines keep their grey, not a blend of two half-covered pixels.
    int gridRow = -1;
    for (int y = 0; y < image.height() && gridRow < 0; ++y)
      if (Pixel(image, 5, y) == QColor(192, 192, 192)) gridRow = y;
    EXPECT_GE(gridRow, 0) << ratio;
  }
}

TEST(QtSurface, BoxesFillByFillStyleAndFilledBoxesInTheirLineColour) {
  QImage image = WhiteImage(300, 100);
  {
    QPainter painter(&image);
    QtSurface surface(painter, QRectF(0, 0, 300, 100));
    surface.SetFillColor(Color::Rgb(0, 0, 255));
    surface.Line(10, 10, 90, 90, Color::Rgb(0, 0, 0), LineKind::Box);  // transparent inside
    surface.SetFillStyle(kFillSolid);
    surface.Line(110, 10, 190, 90, Color::Rgb(0, 0, 0), LineKind::Box);
    surface.Line(210, 10, 290, 90, Color::Rgb(0, 128, 0), LineKind::FilledBox);
  }
  EXPECT_EQ(Pixel(image, 50, 50), QColor(Qt::white));
  EXPECT_EQ(Pixel(image, 150, 50), QColor(0, 0, 255));
  EXPECT_EQ(Pixel(image, 250, 50), QColor(0, 128, 0));
  EXPECT_EQ(Pixel(image, 110, 50), QColor(Qt::black)) << "outline in the line colour";
}

// A surface whose user units are the target's own pixels.
struct PixelSurface {
  PixelSurface(QImage& image, const QRectF& target) : painter(&image), surface(painter, target) {
    surface.Scale(0, 0, target.width(), target.height());
  }
  QPainter painter;
  QtSurface surface;
};

const QColor kBackground(200, 210, 220);

// Markers are stamped alike wherever they stand within their pixel, their
// straight edges crisp. (That the raster keeps to its clip, and that stamps
// cut by it match whole ones, its own tests show.)
TEST(QtSurface, MarkersLookAlikeWhereverTheyStand) {
  QImage image = WhiteImage(200, 150);
  image.fill(kBackground);
  {
    PixelSurface s(image, QRectF(20, 10, 160, 120));
    s.surface.SetForeColor(Color::Palette(4));
    SymbolFigure octagon = SymbolOutline(s.surface, 5, 9);
    const PlotPoint centres[] = {{60.3, 40.7}, {101.6, 80.2}};
    s.surface.Figures(centres, 2, octagon.offsets, octagon.count);
  }
  // On target pixels (80, 50) and (121, 90).
  int differing = 0;
  for (int dy = -6; dy <= 6; ++dy)
    for (int dx = -6; dx <= 6; ++dx)
      differing += Pixel(image, 80 + dx, 50 + dy) != Pixel(image, 121 + dx, 90 + dy);
  EXPECT_EQ(differing, 0);
  EXPECT_EQ(Pixel(image, 80, 50 - 5), QColor(128, 0, 0)) << "the octagon's top edge, one crisp pixel";
  EXPECT_EQ(Pixel(image, 80, 50 - 4), kBackground);
}

// On a dense screen the raster draws lines and markers a logical pixel
// wide, as QPainter does (which draws on an image the raster does not take),
// and keeps them inside the target.
TEST(QtSurface, OnADenseScreenLinesAndMarkersAreALogicalPixelWide) {
  auto ink = [](const QImage& image) {
    double sum = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) sum += 255 - qGray(image.pixel(x, y));
    return sum;
  };
  QImage direct = WhiteImage(200, 100, 2.0);
  QImage painted = direct.convertToFormat(QImage::Format_ARGB32);
  const QRectF target(10, 10, 180, 80);
  for (QImage* image : {&direct, &painted}) {
    PixelSurface s(*image, target);
    const PlotPoint curve[] = {{-20, 70}, {40, 10}, {100, 60}, {170, 20.5}, {300, 20.5}};
    s.surface.Polyline(curve, 5);
    SymbolFigure square = SymbolOutline(s.surface, 1, 9);
    s.surface.Figures(curve + 1, 3, square.offsets, square.count);
  }
  EXPECT_NEAR(ink(direct) / ink(painted), 1.0, 0.15);
  int outside = 0;
  for (int y = 0; y < direct.height(); ++y)
    for (int x = 0; x < direct.width(); ++x)
      if (!target.contains((x + 0.5) / 2, (y + 0.5) / 2)) outside += Pixel(direct, x, y) != QColor(Qt::white);
  EXPECT_EQ(outside, 0);
  // The curve's last, horizontal stretch lies on the edge between image
  // rows 60 and 61: both full, none beside them.
  for (int row : {59, 60, 61, 62})
    EXPECT_EQ(Pixel(direct, 370, row), QColor(row == 60 || row == 61 ? Qt::black : Qt::white)) << row;
}

// A halo on an image is kept as an image of its eight copies: it covers
// what they would, within a rounding unit, when first made and when used
// again, on ordinary and dense screens.
TEST(QtSurface, AKeptHaloCoversWhatItsEightCopiesWould) {
  for (double ratio : {1.0, 2.0}) {
    QImage kept = WhiteImage(160, 50, ratio);
    kept.fill(kBackground);
    QImage copied = kept.convertToFormat(QImage::Format_ARGB32);  // not drawn on directly
    for (QImage* image : {&kept, &copied}) {
      PixelSurface s(*image, QRectF(0, 0, 160, 50));
      for (double x : {10.25, 80.25}) {  // the second at the same place within a pixel
        s.surface.SetCurrentX(x);
        s.surface.SetCurrentY(17.625);
        s.surface.PrintHalo("Re= 500000", Color::Rgb(255, 255, 255));
      }
    }
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

// Figures up to the largest stamp are stamped, larger ones drawn as lines;
// both show their whole outline.
TEST(QtSurface, LargeFiguresKeepTheirWholeOutline) {
  QImage image = WhiteImage(200, 100);
  {
    PixelSurface s(image, QRectF(0, 0, 200, 100));
    for (double half : {24.0, 30.0}) {
      const PlotPoint square[] = {{-half, -half}, {half, -half}, {half, half}, {-half, half}, {-half, -half}};
      const PlotPoint centre{half == 24 ? 50.5 : 140.5, 50.5};
      s.surface.Figures(&centre, 1, square, 5);
    }
  }
  for (QPoint edge : {QPoint(26, 50), QPoint(74, 50), QPoint(50, 26), QPoint(50, 74), QPoint(110, 50),
                      QPoint(170, 50), QPoint(140, 20), QPoint(140, 80)})
    EXPECT_EQ(Pixel(image, edge.x(), edge.y()), QColor(Qt::black)) << edge.x() << "," << edge.y();
  EXPECT_EQ(Pixel(image, 50, 50), QColor(Qt::white));
}

// A run of lines draws each joint once: a straight run through a midpoint
// looks like the single line. Drawing stays in the order of the calls even
// where the raster queues lines behind boxes and text.
TEST(QtSurface, RunsDrawEachJointOnceAndDrawingKeepsItsOrder) {
  QImage single = WhiteImage(100, 100), run = WhiteImage(100, 100);
  {
    PixelSurface s(single, QRectF(0, 0, 100, 100));
    s.surface.Line(10.2, 12.7, 80.6, 61.3, Color::Palette(1));
  }
  {
    PixelSurface s(run, QRectF(0, 0, 100, 100));
    s.surface.SetForeColor(Color::Palette(1));
    const PlotPoint points[] = {{10.2, 12.7}, {45.4, 37.0}, {80.6, 61.3}};
    s.surface.Polyline(points, 3);
  }
  int worst = 0;
  for (int y = 0; y < 100; ++y)
    for (int x = 0; x < 100; ++x)
      worst = std::max(worst, std::abs(Pixel(single, x, y).red() - Pixel(run, x, y).red()));
  EXPECT_LE(worst, 2);

  QImage layered = WhiteImage(100, 100);
  {
    PixelSurface s(layered, QRectF(0, 0, 100, 100));
    s.surface.SetForeColor(Color::Rgb(255, 0, 0));
    const PlotPoint under[] = {{5, 20.5}, {95, 20.5}, {95, 60.5}};
    s.surface.Polyline(under, 3);
    s.surface.Line(40, 10, 60, 30, Color::Rgb(0, 0, 255), LineKind::FilledBox);
    s.surface.SetForeColor(Color::Rgb(0, 128, 0));
    const PlotPoint over[] = {{50.5, 5}, {50.5, 95}};
    s.surface.Polyline(over, 2);
  }
  EXPECT_EQ(Pixel(layered, 20, 20), QColor(255, 0, 0));
  EXPECT_EQ(Pixel(layered, 45, 20), QColor(0, 0, 255)) << "the box covers the line before it";
  EXPECT_EQ(Pixel(layered, 50, 20), QColor(0, 128, 0)) << "the line after the box covers it";
}

TEST(QtSurface, AWildPointEndsARunAfterTheLinesBeforeIt) {
  QImage image = WhiteImage(100, 100);
  {
    PixelSurface s(image, QRectF(0, 0, 100, 100));
    const PlotPoint points[] = {{10, 10.5}, {50, 10.5}, {50, 1e300}, {90, 90}};
    EXPECT_THROW(s.surface.Polyline(points, 4), OverflowError);
    const PlotPoint offsets[] = {{-2, -2}, {2, -2}, {2, 2}, {-2, 2}, {-2, -2}};
    const PlotPoint centres[] = {{30, 50}, {std::nan(""), 50}};
    EXPECT_THROW(s.surface.Figures(centres, 2, offsets, 5), OverflowError);
  }
  EXPECT_EQ(Pixel(image, 30, 10), QColor(Qt::black));
  EXPECT_EQ(Pixel(image, 70, 70), QColor(Qt::white));
  EXPECT_EQ(Pixel(image, 32, 50), QColor(Qt::black)) << "the marker before the wild one";
}

// Texts are laid out once and kept; what is kept belongs to its font and
// its device's resolution.
TEST(QtSurface, PrintAdvancesByTheTextWidthOfItsFontOnItsDevice) {
  QImage image = WhiteImage(300, 100);
  QPainter painter(&image);
  QFont small = QGuiApplication::font(), large = small;
  large.setPointSizeF(small.pointSizeF() * 2);
  QtSurface a(painter, QRectF(0, 0, 300, 100), small), b(painter, QRectF(0, 0, 300, 100), large);
  const char* text = "Re= 1000000";
  for (QtSurface* s : {&a, &b}) {
    double width = s->TextWidth(text);
    EXPECT_NEAR(width, QFontMetricsF(s == &a ? small : large, &image).horizontalAdvance(text), 1e-9);
    s->SetCurrentX(5);
    s->Print(text);
    s->SetCurrentX(5);
    s->Print(text);
    EXPECT_NEAR(s->CurrentX(), 5 + width, 1e-9);
  }
  EXPECT_GT(b.TextWidth(text), 1.5 * a.TextWidth(text));
  // The same font at twice the resolution is twice as wide in pixels.
  QImage dense = WhiteImage(300, 100);
  dense.setDotsPerMeterX(image.dotsPerMeterX() * 2);
  dense.setDotsPerMeterY(image.dotsPerMeterY() * 2);
  QPainter densePainter(&dense);
  QtSurface c(densePainter, QRectF(0, 0, 300, 100), small);
  EXPECT_NEAR(c.TextWidth(text), QFontMetricsF(small, &dense).horizontalAdvance(text), 1e-9);
  EXPECT_GT(c.TextWidth(text), 1.5 * a.TextWidth(text));
}

}  // namespace
}  // namespace tavilo
