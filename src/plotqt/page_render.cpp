#include "plotqt/page_render.h"

#include <QBuffer>
#include <QByteArray>
#include <QFont>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>

#include "base/errors.h"
#include "formats/file_text.h"
#include "plotqt/qt_surface.h"
#include "plotqt/render.h"

namespace tavilo {

namespace {

// A line of width 1 on paper, in points: grid lines; the axes and curves
// (width 2) are twice it.
constexpr double kPaperLinePoints = 0.4;

QFont PageFont() {
  QFont font(QStringLiteral("Helvetica"));
  font.setStyleHint(QFont::SansSerif);
  font.setPointSizeF(kAxisPoints);
  // Any letter spacing turns ligatures off, so that a PDF's text reads
  // "Profil" with an f and an i, as a search for it expects.
  font.setLetterSpacing(QFont::AbsoluteSpacing, 0.02);
  return font;
}

}  // namespace

void PaintPage(QPainter& painter, const QRectF& paper, const Airfoil& airfoil, const PageRequest& request,
               RenderContext& context) {
  QtSurface surface(painter, paper, PageFont(), context);
  const QPaintDevice* device = painter.device();
  const double dpi = device != nullptr ? device->logicalDpiX() : 72.0;
  surface.SetLineUnit(kPaperLinePoints * dpi / 72.0 * paper.width() / (device ? device->width() : paper.width()));
  PrintPage(airfoil, request, surface);
}

bool WritePagePdf(const Airfoil& airfoil, const PageRequest& request, const std::string& path, std::string* error) {
  if (!EnsureGuiApplication(error)) return false;
  QByteArray bytes;
  {
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setPageLayout(
        QPageLayout(QPageSize(QSizeF(request.paper.width, request.paper.height), QPageSize::Millimeter),
                    QPageLayout::Portrait, QMarginsF(0, 0, 0, 0)));
    writer.setTitle(QString::fromStdString(airfoil.Name));
    writer.setCreator(QStringLiteral("Tavilo"));
    QPainter painter(&writer);
    if (!painter.isActive()) {
      if (error) *error = FormatResString(Text::PageNotPrinted, request.language, {path});
      return false;
    }
    RenderContext context;
    PaintPage(painter, QRectF(0, 0, writer.width(), writer.height()), airfoil, request, context);
  }
  try {
    WriteFileAtomically(path, std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())));
  } catch (const RuntimeError& e) {
    if (error) *error = ErrorText(e, request.language);
    return false;
  }
  return true;
}

}  // namespace tavilo
