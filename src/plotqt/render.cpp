#include "plotqt/render.h"

#include <QBuffer>
#include <QByteArray>
#include <QGuiApplication>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <functional>
#include <optional>

#include "base/errors.h"
#include "base/number_text.h"
#include "formats/file_text.h"
#include "plot/plot_data.h"
#include "plot/ranges.h"
#include "plotqt/qt_surface.h"
#include "plotqt/render_context.h"
#include "strings/string_table.h"

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
  std::string_view caption;
  MarginScale vertical;    // written left of the graph
  MarginScale horizontal;  // written under it; step 0 for none
};

// The scale of an axis showing `quantity` from `low` to `high`; lift-drag's
// drag axis has none, its labels are drawn inside the graph.
MarginScale MarginScaleOf(AxisQuantity quantity, double low, double high) {
  switch (quantity) {
    case AxisQuantity::Cd: return {low, high, 0, "0.0"};
    case AxisQuantity::Cl: return {low, high, 0.5, "0.0"};
    case AxisQuantity::Alfa: return {low, high, 5, "0"};
    case AxisQuantity::Cm: return {low, high, 0.1, "0.0"};
    case AxisQuantity::Xc: return {low, high, 0.2, "0.0"};
  }
  return {low, high, 0, "0.0"};
}

// Lift-drag fills the left half; the other graphs share the right half two
// by two, in their order.
QRectF PictureBox(Graph graph) {
  if (graph == Graph::ClCd) return QRectF(64, 48, 704, 896);
  const int index = static_cast<int>(graph) - 1;
  return QRectF(844 + (index % 2) * 406, 48 + (index / 2) * 496, 330, 400);
}

void DrawMarginScales(QPainter& painter, const GraphBox& box) {
  QFontMetricsF metrics(painter.font(), painter.device());
  painter.setPen(kScaleText);
  const QRectF& r = box.rect;
  const MarginScale& v = box.vertical;
  for (double value = std::ceil(v.low / v.step - 1e-9) * v.step; value <= v.high + 1e-9; value += v.step) {
    QString text = QString::fromStdString(FormatNumber(value, v.pattern));
    double y = r.bottom() - (value - v.low) / (v.high - v.low) * r.height();
    double baseline = y + (metrics.ascent() - metrics.descent()) / 2;
    painter.drawText(QPointF(r.left() - 6 - metrics.horizontalAdvance(text), baseline), text);
  }
  const MarginScale& h = box.horizontal;
  if (h.step <= 0) return;
  for (double value = std::ceil(h.low / h.step - 1e-9) * h.step; value <= h.high + 1e-9; value += h.step) {
    QString text = QString::fromStdString(FormatNumber(value, h.pattern));
    double x = r.left() + (value - h.low) / (h.high - h.low) * r.width();
    painter.drawText(QPointF(x - metrics.horizontalAdvance(text) / 2, r.bottom() + 4 + metrics.ascent()), text);
  }
}

void DrawBoxChrome(QPainter& painter, const GraphBox& box, const QFont& captionFont) {
  painter.save();
  painter.setFont(captionFont);
  painter.setPen(kCaption);
  QFontMetricsF metrics(captionFont, painter.device());
  painter.drawText(QPointF(box.rect.left(), box.rect.top() - 8 - metrics.descent()),
                   QString::fromUtf8(box.caption.data(), static_cast<qsizetype>(box.caption.size())));
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

void DrawPicture(QPainter& painter, const Airfoil& airfoil, const PlotRequest& request) {
  const PlotViews& views = request.views;
  painter.fillRect(QRectF(0, 0, kPictureWidth, kPictureHeight), kBackground);
  QFont font = QGuiApplication::font();
  QFont captionFont = font;
  captionFont.setBold(true);
  captionFont.setPointSizeF(font.pointSizeF() * 1.15);
  painter.setFont(font);

  PerGraph<GraphBox> boxes;
  for (Graph graph : kGraphs) {
    const GraphDescription& d = Describe(graph);
    const GraphView& view = views[graph];
    GraphBox& box = boxes[graph];
    box = {PictureBox(graph), d.title, MarginScaleOf(d.y, view.bottom, view.top),
           MarginScaleOf(d.x, view.left, view.right)};
    // Numbers inside the graphs replace those in the margin.
    if (request.axisNumbers) box.vertical.step = box.horizontal.step = 0;
    DrawBoxChrome(painter, box, captionFont);
  }
  {
    // Kept for this one picture: the application may be gone before another.
    RenderContext context;
    PerGraph<std::optional<QtSurface>> surfaces;
    GraphSurfaces all;
    for (Graph graph : kGraphs) {
      surfaces[graph].emplace(painter, boxes[graph].rect, font, context);
      all[graph] = &*surfaces[graph];
    }
    PlotData(&airfoil, request, all);
  }
  for (const GraphBox& box : boxes) DrawFrameBorder(painter, box.rect);
}

// One graph alone, filling the picture, as the window shows it.
void DrawGraph(QPainter& painter, const Airfoil& airfoil, const PlotRequest& request, Graph graph, const QSizeF& size) {
  RenderContext context;
  QtSurface surface(painter, QRectF(QPointF(0, 0), size), QGuiApplication::font(), context);
  GraphSurfaces surfaces;
  surfaces[graph] = &surface;
  PlotData(&airfoil, request, surfaces);
}

bool EndsWith(const std::string& path, std::string_view suffix) {
  if (path.size() < suffix.size()) return false;
  return std::equal(suffix.begin(), suffix.end(), path.end() - suffix.size(),
                    [](char a, char b) { return a == std::tolower(static_cast<unsigned char>(b)); });
}

enum class PictureFormat { Png, Svg, Pdf, Unknown };

PictureFormat FormatOf(const std::string& path) {
  if (EndsWith(path, ".png")) return PictureFormat::Png;
  if (EndsWith(path, ".svg")) return PictureFormat::Svg;
  if (EndsWith(path, ".pdf")) return PictureFormat::Pdf;
  return PictureFormat::Unknown;
}

using Paint = std::function<void(QPainter&)>;

// The picture of `size` logical pixels drawn by `paint`, encoded: PNG at
// `pixelRatio` device pixels per logical one, SVG and PDF as vectors.
QByteArray Encode(PictureFormat format, const QSizeF& size, double pixelRatio, const QString& title,
                  const Paint& paint) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (format == PictureFormat::Png) {
    QImage image((size * pixelRatio).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(pixelRatio);
    image.fill(Qt::white);
    {
      QPainter painter(&image);
      paint(painter);
    }
    if (!image.save(&buffer, "PNG")) bytes.clear();
  } else if (format == PictureFormat::Svg) {
    QSvgGenerator svg;
    svg.setOutputDevice(&buffer);
    svg.setSize(size.toSize());
    svg.setViewBox(QRectF(QPointF(0, 0), size));
    svg.setResolution(96);
    svg.setTitle(title);
    QPainter painter(&svg);
    paint(painter);
  } else {
    QPdfWriter pdf(&buffer);
    pdf.setResolution(96);
    pdf.setPageLayout(
        QPageLayout(QPageSize(size * 25.4 / 96, QPageSize::Millimeter), QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    pdf.setTitle(title);
    pdf.setCreator(QStringLiteral("Tavilo"));
    QPainter painter(&pdf);
    paint(painter);
  }
  return bytes;
}

bool WritePicture(const std::string& path, const QSizeF& size, double pixelRatio, const QString& title,
                  const Paint& paint, Language language, std::string* error) {
  const PictureFormat format = FormatOf(path);
  if (format == PictureFormat::Unknown) {
    if (error) *error = GetResString(Text::UnknownFileFormat, language) + "\r\n'" + path + "'";
    return false;
  }
  if (!EnsureGuiApplication(error)) return false;
  const QByteArray bytes = Encode(format, size, pixelRatio, title, paint);
  if (bytes.isEmpty()) {
    if (error) *error = FormatResString(Text::PictureNotWritten, language, {path});
    return false;
  }
  try {
    WriteFileAtomically(path, std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())));
  } catch (const RuntimeError& e) {
    if (error) *error = ErrorText(e, language);
    return false;
  }
  return true;
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
  // Kept for the whole run on purpose, and reachable, so that no leak
  // checker takes it for one.
  static QGuiApplication* application = new QGuiApplication(argc, argv);
  (void)application;
  return true;
}

bool RenderPlotsToFile(const Airfoil& airfoil, const std::string& path, Language language, std::string* error) {
  PlotRequest request;
  request.language = language;
  return RenderPlotsToFile(airfoil, path, request, 1.0, error);
}

bool RenderPlotsToFile(const Airfoil& airfoil, const std::string& path, const PlotRequest& request, double pixelRatio,
                       std::string* error) {
  return WritePicture(
      path, QSizeF(kPictureWidth, kPictureHeight), pixelRatio, QString::fromStdString(airfoil.Name),
      [&](QPainter& painter) { DrawPicture(painter, airfoil, request); }, request.language, error);
}

bool RenderGraphToFile(const Airfoil& airfoil, const std::string& path, const PlotRequest& request, Graph graph,
                       const QSizeF& size, double pixelRatio, std::string* error) {
  return WritePicture(
      path, size, pixelRatio, QString::fromStdString(airfoil.Name),
      [&](QPainter& painter) { DrawGraph(painter, airfoil, request, graph, size); }, request.language, error);
}

}  // namespace tavilo
