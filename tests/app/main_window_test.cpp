// The main window: a print run, the language switch, the layout on resize.
#include <QDialog>
#include <QFile>
#include <QPrinter>
#include <QStatusBar>
#include <QTimer>

#include "app/caption_apply.h"
#include "app_fixture.h"
#include "formats/file_text.h"
#include "strings/captions.h"

namespace tavilo::testing {
namespace {

using MainWindow = MainWindowTest;

// A print run to a PDF file: Print alone is disabled while it runs.
TEST_F(MainWindow, APrintRunDisablesPrintAloneAndThePreviewPrintsNothing) {
  PEFForm& form = StartWith(1);
  const QString pdf = QString::fromStdString(dir.File("page.pdf"));
  bool answer = false;
  form.SetPrinterChooser([&](QPrinter& printer) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
    return answer;
  });
  std::vector<bool> duringRun;
  QObject::connect(&form, &PEFForm::PrintRunStarted, [&] {
    duringRun = {Action("mnuFilePrint")->isEnabled(), Action("Toolbar1_PRINT")->isEnabled(),
                 Action("Toolbar1_SAVE")->isEnabled(), form.statusBar()->currentMessage() == "Printing...",
                 QApplication::overrideCursor() != nullptr};
  });
  Action("mnuFilePrint")->trigger();  // cancelled
  EXPECT_TRUE(duringRun.empty());
  EXPECT_FALSE(QFile::exists(pdf));
  answer = true;
  Action("Toolbar1_PRINT")->trigger();
  EXPECT_EQ(duringRun, (std::vector<bool>{false, false, true, true, true}));
  EXPECT_TRUE(Action("mnuFilePrint")->isEnabled());
  EXPECT_EQ(form.statusBar()->currentMessage(), "Ready.");
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(ReadFileBytes(pdf.toStdString()).substr(0, 4), "%PDF");
}

// Every caption of the window as shown now: text or tool tip per list entry.
std::vector<QString> ShownCaptions(QWidget* window) {
  std::vector<QString> shown;
  for (const Caption& caption : MainWindowCaptions()) {
    QObject* control =
        FindControl(window, QString::fromLatin1(caption.element.data(), caption.element.size()), caption.item);
    EXPECT_NE(control, nullptr) << caption.element << " " << caption.item;
    if (control == nullptr) continue;
    shown.push_back(caption.target == CaptionTarget::ToolTip ? qobject_cast<QAction*>(control)->toolTip()
                                                             : ControlText(control));
  }
  return shown;
}

TEST_F(MainWindow, GermanAndBackRestoresEveryCaption) {
  Start();
  const std::vector<QString> english = ShownCaptions(window.get());
  Action("mnuLangDeutsch")->trigger();
  const std::vector<QString> german = ShownCaptions(window.get());
  ASSERT_EQ(german.size(), MainWindowCaptions().size());
  for (std::size_t i = 0; i < german.size(); ++i) {
    const Caption& caption = MainWindowCaptions()[i];
    EXPECT_EQ(german[i].toStdString(), ResourceString(2000 + static_cast<int>(caption.id))) << caption.element;
  }
  EXPECT_EQ(Find<QStatusBar>("StatusBar1")->currentMessage(), "Bereit.");
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Abbrechen") << "Qt's own texts too";
  Action("mnuLangEnglish")->trigger();
  EXPECT_EQ(ShownCaptions(window.get()), english);
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Cancel");
}

TEST_F(MainWindow, ResizingKeepsTheGraphsSideBySideTheRangesRightAndAllInsideAtTheMinimum) {
  Start();
  window->resize(1500, 1000);
  QApplication::processEvents();
  QWidget* client = window->centralWidget();
  const QRect big = Find("ClCdPicture")->geometry();
  const QRect strip = Find("theTabStrip")->geometry();
  EXPECT_LT(big.right(), strip.left());
  EXPECT_NEAR(big.left() + big.width() + 7, client->width() * 0.7, 2);
  EXPECT_TRUE(strip.contains(Find("BLLPicture")->geometry()));
  EXPECT_LT(strip.bottom(), client->height());
  const QRect column = Find("Label1")->geometry();
  EXPECT_NEAR(column.right() + 1, client->width() - 8, 1);
  EXPECT_LT(Find("TreeView1")->geometry().right(), column.left());

  window->resize(400, 300);
  QApplication::processEvents();
  EXPECT_EQ(window->size(), QSize(900, 600));
  for (const char* name : {"ClCdPicture", "ClAlfaPicture", "TreeView1", "Datei1", "cbAlfaMax"}) {
    const QWidget* widget = Find(name);
    const QRect inside = widget->geometry().intersected(widget->parentWidget()->rect());
    EXPECT_GE(inside.width(), 40) << name;
    EXPECT_GE(inside.height(), 20) << name;
  }
}

}  // namespace
}  // namespace tavilo::testing
