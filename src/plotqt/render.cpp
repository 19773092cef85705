#include "plotqt/render.h"

#include <QBuffer>
#include <QByteArray>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <functional>

#include "formats/file_text.h"
#include "formats/number_text.h"
#include "model/errors.h"
#include "plot/plot_data.h"
#include "plot/ranges.h"
#include "plotqt/qt_surface.h"
#include "plotqt/render_context.h"

namespace tavilo {

namespace {

constexpr int kPictureWidth = 1600;
constexpr int kPictureHeight = 1000;

const QColor kBackground(246, 247, 249);
const QColor kFrame(176, 182, 190);
const QColor kCaption(40, 44, 52);
const QColor kScaleText(96, 102, 112);

// A value scale written in the margin beside a graph, outside the area that
// PlotData draws in, so that the picture can be read on its own.
struct MarginScale {
  double low = 0, high = 0, step = 0;
  const char* pattern = "0.0";
};

struct GraphBox {
  QRectF rect;
  const char* caption;
  MarginScale vertical;    // written left of the graph
  MarginScale horizontal;  // written under it; step 0 for none
};

void DrawMarginScales(QPainter& painter, const GraphBox& box) {
  QFontMetricsF metrics(painter.font(), painter.device());
  painter.setPen(kScaleText);
  const QRectF& r = box.rect;
  const MarginScale& v = box.vertical;
  for (double value = std::ceil(v.low / v.step - 1e-9) * v.step; value <= v.high + 1e-9;
       value += v.step) {
    QString text = QString::fromStdString(FormatNumber(value, v.pattern));
    double y = r.bottom() - (value - v.low) / (v.high - v.low) * r.height();
    double baseline = y + (metrics.ascent() - metrics.descent()) / 2;
    painter.drawText(QPointF(r.left() - 6 - metrics.horizontalAdvance(text), baseline), text);
  }
  const MarginScale& h = box.horizontal;
  if (h.step <= 0) return;
  for (double value = std::ceil(h.low / h.step - 1e-9) * h.step; value <= h.high + 1e-9;
       value += h.step) {
    QString text = QString::fromStdString(FormatNumber(value, h.pattern));
    double x = r.left() + (value - h.low) / (h.high - h.low) * r.width();
    painter.drawText(QPointF(x - metrics.horizontalAdvance(text) / 2, r.bottom() + 4 + metrics.ascent()),
                     text);
  }
}

void DrawBoxChrome(QPainter& painter, const GraphBox& box, const QFont& captionFont) {
  painter.save();
  painter.setFont(captionFont);
  painter.setPen(kCaption);
  QFontMetricsF metrics(captionFont, painter.device());
  painter.drawText(QPointF(box.rect.left(), box.rect.top() - 8 - metrics.descent()), box.caption);
  painter.restore();
  DrawMarginScales(painter, box);
}

void DrawFrameBorder(QPainter& painter, const QRectF& rect) {
  painter.setPen(QPen(kFrame, 1));
  painter.setBrush(Qt::NoBrush);
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.drawRect(rect.adjusted(-1, -1, 0, 0));
  painter.setRenderHint(QPainter::Antialiasing, true);
}

void DrawPicture(QPainter& painter, const Airfoil& airfoil, int language) {
  PlotRequest request;
  request.views = DefaultViews(PlotRanges{});
  request.language = language;
  const PlotViews& views = request.views;
  painter.fillRect(QRectF(0, 0, kPictureWidth, kPictureHeight), kBackground);
  QFont font = QGuiApplication::font();
  QFont captionFont = font;
  captionFont.setBold(true);
  captionFont.setPointSizeF(font.pointSizeF() * 1.15);
  painter.setFont(font);

  auto lift = [](const GraphView& view) { return MarginScale{view.bottom, view.top, 0.5, "0.0"}; };
  auto alfa = [](const GraphView& view) { return MarginScale{view.left, view.right, 5, "0"}; };
  auto chord = [](const GraphView& view) { return MarginScale{view.left, view.right, 0.2, "0.0"}; };
  GraphBox boxes[] = {
      {QRectF(64, 48, 704, 896), "Cl-Cd", lift(views.clCd), {}},
      {QRectF(844, 48, 330, 400), "Cl-Alfa", lift(views.clAlfa), alfa(views.clAlfa)},
      {QRectF(1250, 48, 330, 400), "Cm-Alfa", {views.cmAlfa.bottom, views.cmAlfa.top, 0.1, "0.0"},
       alfa(views.cmAlfa)},
      {QRectF(844, 544, 330, 400), "TU-x/c", lift(views.blu), chord(views.blu)},
      {QRectF(1250, 544, 330, 400), "TL-x/c", lift(views.bll), chord(views.bll)},
  };
  for (const GraphBox& box : boxes) DrawBoxChrome(painter, box, captionFont);
  {
    // Kept for this one picture: the application may be gone before another.
    RenderContext context;
    QtSurface clCd(painter, boxes[0].rect, font, context), clAlfa(painter, boxes[1].rect, font, context),
        cmAlfa(painter, boxes[2].rect, font, context), blu(painter, boxes[3].rect, font, context),
        bll(painter, boxes[4].rect, font, context);
    PlotData(&airfoil, request, GraphSurfaces{&clCd, &clAlfa, &cmAlfa, &blu, &bll});
  }
  for (const GraphBox& box : boxes) DrawFrameBorder(painter, box.rect);
}

bool EndsWith(const std::string& path, std::string_view suffix) {
  if (path.size() < suffix.size()) return false;
  return std::equal(suffix.begin(), suffix.end(), path.end() - suffix.size(), [](char a, char b) {
    return a == std::tolower(static_cast<unsigned char>(b));
  });
}

QByteArray RenderPng(const Airfoil& airfoil, int language) {
  QImage image(kPictureWidth, kPictureHeight, QImage::Format_ARGB32_Premultiplied);
  {
    QPainter painter(&image);
    DrawPicture(painter, airfoil, language);
  }
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!image.save(&buffer, "PNG")) bytes.clear();
  return bytes;
}

QByteArray RenderSvg(const Airfoil& airfoil, int language) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator svg;
  svg.setOutputDevice(&buffer);
  svg.setSize(QSize(kPictureWidth, kPictureHeight));
  svg.setViewBox(QRect(0, 0, kPictureWidth, kPictureHeight));
  svg.setResolution(96);
  svg.setTitle(QString::fromStdString(airfoil.Name));
  {
    QPainter painter(&svg);
    DrawPicture(painter, airfoil, language);
  }
  return bytes;
}

}  // namespace

bool EnsureGuiApplication(std::string* error) {
  if (qobject_cast<QGuiApplication*>(QCoreApplication::instance())) return true;
  if (QCoreApplication::instance()) {
    if (error) *error = "Drawing the graphs needs a QGuiApplication";
    return false;
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static int argc = 1;
  static char name[] = "tavilo";
  static char* argv[] = {name, nullptr};
  new QGuiApplication(argc, argv);  // kept for the whole run on purpose
  return true;
}

bool RenderPlotsToFile(const Airfoil& airfoil, const std::string& path, int language,
                       std::string* error) {
  bool svg = EndsWith(path, ".svg");
  if (!svg && !EndsWith(path, ".png")) {
    if (error) *error = "The picture must be a .png or .svg file: " + path;
    return false;
  }
  if (!EnsureGuiApplication(error)) return false;
  QByteArray bytes = svg ? RenderSvg(airfoil, language) : RenderPng(airfoil, language);
  if (bytes.isEmpty()) {
    if (error) *error = "The picture could not be encoded: " + path;
    return false;
  }
  try {
    WriteFileAtomically(path, std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())));
  } catch (const RuntimeError& e) {
    if (error) *error = e.what();
    return false;
  }
  return true;
}

}  // namespace tavilo
