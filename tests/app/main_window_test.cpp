// The main window: a print run, the language switch.
#include <QFile>
#include <QPrinter>
#include <QStatusBar>

#include "app/caption_apply.h"
#include "app_fixture.h"
#include "formats/file_text.h"
#include "strings/captions.h"

namespace tavilo::testing {
namespace {

using MainWindow = MainWindowTest;

TEST_F(MainWindow, APrintRunDisablesPrintAloneAndThePreviewPrintsNothing) {
  PEFForm& form = StartWith(1);
  const QString pdf = QString::fromStdString(dir.File("page.pdf"));
  bool answer = false;
  form.SetPrinterChooser([&](QPrinter& printer) {
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(pdf);
    return answer;
  });
  auto state = [&] {  // Print twice, Save, the status text, the busy cursor
    return std::vector<QVariant>{Action("mnuFilePrint")->isEnabled(), Action("Toolbar1_PRINT")->isEnabled(),
                                 Action("Toolbar1_SAVE")->isEnabled(), form.statusBar()->currentMessage(),
                                 QApplication::overrideCursor() != nullptr};
  };
  std::vector<QVariant> duringRun;
  QObject::connect(&form, &PEFForm::PrintRunStarted, [&] { duringRun = state(); });
  Action("mnuFilePrint")->trigger();  // cancelled
  EXPECT_TRUE(duringRun.empty());
  EXPECT_FALSE(QFile::exists(pdf));
  answer = true;
  Action("Toolbar1_PRINT")->trigger();
  EXPECT_EQ(duringRun, (std::vector<QVariant>{false, false, true, "Printing...", true}));
  EXPECT_EQ(state(), (std::vector<QVariant>{true, true, true, "Ready.", false}));
  EXPECT_EQ(ReadFileBytes(pdf.toStdString()).substr(0, 4), "%PDF");
}

// Every caption of the window as shown now: text or tool tip per list entry.
std::vector<QString> ShownCaptions(QWidget* window) {
  std::vector<QString> shown;
  for (const Caption& caption : MainWindowCaptions()) {
    QObject* control =
        FindControl(window, QString::fromLatin1(caption.element.data(), caption.element.size()), caption.item);
    if (control != nullptr)  // a missing one shows as a shorter list
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

}  // namespace
}  // namespace tavilo::testing
