#include "plotqt/qt_surface.h"

#include <gtest/gtest.h>

#include <QImage>

#include "model/errors.h"
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
      DrawClAlfaFrame(surface, PlotRanges{});
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

}  // namespace
}  // namespace tavilo
