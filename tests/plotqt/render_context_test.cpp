#include "plotqt/render_context.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <optional>

#include "plotqt/graph_images.h"
#include "plotqt/qt_surface.h"
#include "support/model_builders.h"

namespace tavilo {
namespace {

// A text laid out for one font or device resolution must not measure for another, when first laid out nor when
// found again, and a print advances by that width.
TEST(RenderContext, SharedTextsStayApartByFontAndDevice) {
  QImage image(300, 100, QImage::Format_ARGB32_Premultiplied), dense = image;
  dense.setDotsPerMeterX(image.dotsPerMeterX() * 2);
  dense.setDotsPerMeterY(image.dotsPerMeterY() * 2);
  QFont small = QGuiApplication::font(), large = small;
  large.setPointSizeF(small.pointSizeF() * 2);
  RenderContext context;
  QPainter painter(&image), densePainter(&dense);
  const std::tuple<QPainter*, const QImage*, QFont> cases[] = {
      {&painter, &image, small}, {&painter, &image, large}, {&densePainter, &dense, small}};
  const char* text = "Re= 1000000";
  for (int pass = 1; pass <= 2; ++pass)
    for (const auto& [painter, device, font] : cases) {
      QtSurface surface(*painter, QRectF(0, 0, 300, 100), font, context);
      const double width = QFontMetricsF(font, device).horizontalAdvance(text);
      EXPECT_NEAR(surface.TextWidth(text), width, 1e-9)
          << "pass " << pass << ", " << font.pointSizeF() << " pt, " << device->logicalDpiX() << " dpi";
      surface.SetCurrentX(5);
      surface.Print(text);
      EXPECT_NEAR(surface.CurrentX(), 5 + width, 1e-9);
    }
}

// Pixel for pixel, on ordinary and dense screens, also when a wild value (on the upper transition graph, drawn
// first of a polar) ends the redraw at the second of three polars.
TEST(RenderContext, GraphsDrawnAtOnceMatchThoseDrawnInTurn) {
  for (bool wild : {false, true})
    for (double ratio : {1.0, 2.0}) {
      Airfoil airfoil;
      airfoil.AddConfiguration(std::make_shared<Configuration>());
      for (int p = 0; p < 3; ++p) {
        std::vector<PolarPoint> points;
        for (double alfa = -6; alfa < 14; alfa += 0.5)
          points.push_back(testing::MakePoint(alfa, 0.3 + 0.1 * alfa + 0.05 * p, 0.008 + 0.0002 * alfa * alfa,
                                              -0.05 + 0.002 * alfa, 0.6 - 0.02 * alfa, 0.3 + 0.01 * p));
        if (wild && p == 1) points[20].TU = 1e300;
        airfoil.Configuration(1)->AddPolar(testing::MakePolar(2e5 * (p + 1), 0, true, points));
      }
      const QSizeF size(240, 160);
      PerGraph<QImage> inTurn, atOnce;
      PerGraph<QPainter> painters;
      PerGraph<std::optional<QtSurface>> surfaces;
      GraphSurfaces all;
      GraphImages graphs;
      for (Graph g : kGraphs) {
        for (QImage* image : {&inTurn[g], &atOnce[g]}) {
          *image = QImage((size * ratio).toSize(), QImage::Format_RGB32);
          image->setDevicePixelRatio(ratio);
        }
        painters[g].begin(&inTurn[g]);
        all[g] = &surfaces[g].emplace(painters[g], QRectF(QPointF(), size));
        graphs[g] = {&atOnce[g], size};
      }
      EXPECT_EQ(PlotData(&airfoil, PlotRequest{}, all), !wild);
      for (Graph g : kGraphs) surfaces[g].reset(), painters[g].end();
      RenderContext context;
      PlotDataOnImages(&airfoil, PlotRequest{}, graphs, QGuiApplication::font(), context);
      for (Graph g : kGraphs)
        EXPECT_EQ(atOnce[g], inTurn[g]) << "graph " << int(g) << ", wild " << wild << ", ratio " << ratio;
    }
}

}  // namespace
}  // namespace tavilo
