#include "plotqt/render_context.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include "plotqt/qt_surface.h"

namespace tavilo {
namespace {

// Surfaces that share a context share its laid-out texts: a text kept for
// one font or device resolution must not measure for another, neither when
// first laid out nor when found again.
TEST(RenderContext, SharedTextsStayApartByFontAndDevice) {
  QImage image(300, 100, QImage::Format_ARGB32_Premultiplied), dense = image;
  dense.setDotsPerMeterX(image.dotsPerMeterX() * 2);
  dense.setDotsPerMeterY(image.dotsPerMeterY() * 2);
  QFont small = QGuiApplication::font(), large = small;
  large.setPointSizeF(small.pointSizeF() * 2);
  RenderContext context;
  QPainter painter(&image), densePainter(&dense);
  const struct {
    QPainter* painter;
    const QImage* device;
    QFont font;
  } cases[] = {{&painter, &image, small}, {&painter, &image, large}, {&densePainter, &dense, small}};
  const char* text = "Re= 1000000";
  for (int pass = 1; pass <= 2; ++pass)
    for (const auto& c : cases) {
      QtSurface surface(*c.painter, QRectF(0, 0, 300, 100), c.font, context);
      EXPECT_NEAR(surface.TextWidth(text), QFontMetricsF(c.font, c.device).horizontalAdvance(text), 1e-9)
          << "pass " << pass << ", " << c.font.pointSizeF() << " pt, " << c.device->logicalDpiX() << " dpi";
    }
}

}  // namespace
}  // namespace tavilo
