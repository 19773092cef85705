// The print run of the main window: the platform's print dialog, a preview,
// and the page itself, which the core lays out.

#include <QAction>
#include <QApplication>
#include <QPageLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QStatusBar>

#include "app/error_guard.h"
#include "app/graph_controller.h"
#include "app/options_dialog.h"
#include "app/pef_form.h"
#include "app/qt_user_interface.h"
#include "plotqt/page_render.h"

namespace tavilo {

namespace {

// A landscape page named after the airfoil, so that a PDF or a print queue
// shows what it holds.
void SetUpPrinter(QPrinter& printer, const Airfoil& airfoil) {
  printer.setPageOrientation(QPageLayout::Landscape);
  printer.setDocName(QString::fromStdString(airfoil.Name));
  printer.setFullPage(true);
}

}  // namespace

PageRequest PEFForm::PrintRequestFor(const QPrinter& printer) const {
  PageRequest request;
  request.ranges = CurrentRanges();
  request.language = Language();
  // The page shows the polars in the colours the window shows them in.
  request.readableColors = graphController_->ReadableColors();
  request.options.grid = options_->GridShow() != 0;
  request.options.legend = options_->LegendShow() != 0;
  // Lower right unless upper left is chosen: a first start has neither.
  request.options.legendCorner = options_->LegendPosition(1) != 0 ? LegendCorner::UpperLeft : LegendCorner::LowerRight;
  const QRectF paper = printer.pageLayout().fullRect(QPageLayout::Millimeter);
  request.paper = {paper.width(), paper.height()};
  return request;
}

bool PEFForm::PaintOn(QPrinter& printer) {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  const QRectF paper = printer.paperRect(QPrinter::DevicePixel);
  PaintPage(painter, QRectF(0, 0, paper.width(), paper.height()), document_->Current(), PrintRequestFor(printer),
            renderContext_);
  return painter.end();
}

void PEFForm::Print() {
  if (document_->Current().ConfigCount() == 0) return;
  QPrinter printer(QPrinter::HighResolution);
  SetUpPrinter(printer, document_->Current());
  if (printerChooser_) {
    if (!printerChooser_(printer)) return;
  } else {
    QPrintDialog dialog(&printer, this);
    dialog.setOption(QAbstractPrintDialog::PrintToFile, true);
    if (dialog.exec() != QDialog::Accepted) return;
  }
  RunPrint(printer);
}

// Print stays disabled for the whole run so that a second one cannot start
// from the menu while the first still feeds the printer.
void PEFForm::RunPrint(QPrinter& printer) {
  EnableItems(true);
  statusBar()->showMessage(QString::fromStdString(GetResString(Text::Printing, Language())));
  QApplication::setOverrideCursor(Qt::WaitCursor);
  emit PrintRunStarted();
  bool printed = false;
  const bool ran = RunGuarded(*ui_, [&] { printed = PaintOn(printer); });
  QApplication::restoreOverrideCursor();
  EnableItems(false);
  statusBar()->showMessage(QString::fromStdString(GetResString(Text::Ready, Language())));
  if (ran && !printed) {
    const QString where = printer.outputFileName().isEmpty() ? printer.printerName() : printer.outputFileName();
    ui_->ShowMessage(FormatResString(Text::PageNotPrinted, Language(), {where.toStdString()}), ErrorTitle(Language()),
                     MessageIcon::Critical);
  }
}

void PEFForm::PrintPreview() {
  if (document_->Current().ConfigCount() == 0) return;
  QPrinter printer(QPrinter::HighResolution);
  SetUpPrinter(printer, document_->Current());
  QPrintPreviewDialog preview(&printer, this);
  preview.setObjectName("PrintPreview");
  preview.setWindowTitle(QString::fromStdString(DialogTitle(GetResString(Text::PrintPreview, Language()))));
  connect(&preview, &QPrintPreviewDialog::paintRequested, this,
          [this](QPrinter* target) { RunGuarded(*ui_, [&] { PaintOn(*target); }); });
  preview.exec();
}

}  // namespace tavilo
