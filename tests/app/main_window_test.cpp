// The main window: enabled states, the toolbar's keys, the layout on resize,
// the language switch and Qt's own dialogs in the language.
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QFileDialog>
#include <QTimer>
#include <QMenu>
#include <QPrinter>
#include <QStatusBar>
#include <QTabWidget>

#include "app/caption_apply.h"
#include "app/main_layout.h"
#include "app_fixture.h"
#include "strings/captions.h"

namespace tavilo::testing {
namespace {

using MainWindow = MainWindowTest;

TEST_F(MainWindow, DataCommandsFollowTheDocument) {
  WritePolarFile(dir, "wing.xml", "Wing");
  PEFForm& form = Start();
  auto expectDataCommands = [this](bool enabled) {
    for (const char* name : {"mnuFilePrint", "mnuFileExport", "mnuFileSaveGraphs", "mnuToolsApproximate",
                             "mnuToolsEnvelope", "mnuToolsSortRe", "mnuToolsSortMach", "Toolbar1_PRINT",
                             "Toolbar1_SAVE"}) {
      EXPECT_EQ(Action(name)->isEnabled(), enabled) << name;
    }
  };
  expectDataCommands(false);
  EXPECT_FALSE(Action("mnuEditUndo")->isEnabled());
  for (const char* name : {"mnuFileImport", "mnuPrintOptions", "Toolbar1_NEW", "Toolbar1_OPEN", "Toolbar1_HELP"}) {
    EXPECT_TRUE(Action(name)->isEnabled()) << name;
  }
  form.Document().OpenFile(dir.File("wing.xml"));
  expectDataCommands(true);
  Action("Toolbar1_NEW")->trigger();
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);
  expectDataCommands(false);
}

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
  QFile page(pdf);
  ASSERT_TRUE(page.open(QIODevice::ReadOnly));
  EXPECT_TRUE(page.readAll().startsWith("%PDF"));
}

TEST_F(MainWindow, ToolbarKeysDispatchToTheirActions) {
  PEFForm& form = Start();
  std::vector<FileDialogKind> dialogs;
  form.UserInterfaceImpl().SetFileChooser([&](const FileDialogRequest& request, const QString&) {
    dialogs.push_back(request.kind);
    return std::string();
  });
  // Keys compare exactly: neither lower case nor an unknown key does anything.
  for (const char* key : {"OPEN", "SAVE", "open", "ZOOM"}) form.ToolbarButtonClick(key);
  EXPECT_EQ(dialogs, std::vector<FileDialogKind>({FileDialogKind::Open, FileDialogKind::Save}));
}

// Every caption of the window as shown now: text or tool tip per list entry.
std::vector<QString> ShownCaptions(QWidget* window) {
  std::vector<QString> shown;
  for (const Caption& caption : MainWindowCaptions()) {
    QObject* control = FindControl(window, QString::fromLatin1(caption.element.data(), caption.element.size()),
                                   caption.item);
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
  EXPECT_EQ(Find<QDialog>("frmAbout")->windowTitle(), QString::fromUtf8("Über Tavilo"));
  EXPECT_EQ(Find<QDialog>("frmOptions")->windowTitle(), "Optionen");
  Action("mnuLangEnglish")->trigger();
  EXPECT_EQ(ShownCaptions(window.get()), english);
}

TEST_F(MainWindow, QtsOwnTextsAndFileDialogsFollowTheLanguage) {
  PEFForm& form = Start();
  Action("mnuLangDeutsch")->trigger();
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Abbrechen");

  // Export through Qt's own dialog: choosing a file type makes its
  // extension the one a name typed without one takes. The dialog is then
  // closed: accepting it depends on its folder listing, which runs in the
  // background and may not be done in time on a loaded machine.
  WritePolarFile(dir, "source.xml", "Wing");
  form.Document().OpenFile(dir.File("source.xml"));
  QString title, suffix;
  QTimer answer;
  int ticks = 0;
  QObject::connect(&answer, &QTimer::timeout, [&] {
    QFileDialog* dialog = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* candidate = qobject_cast<QFileDialog*>(widget); candidate && candidate->isVisible()) dialog = candidate;
    if (dialog == nullptr) return;
    title = dialog->windowTitle();
    // As the user picks the type, once the list has its types: the list's
    // own signals, which a call of selectNameFilter does not send.
    auto* types = dialog->findChild<QComboBox*>("fileTypeCombo");
    if (types != nullptr && types->count() > 1) {
      types->setCurrentIndex(1);
      emit types->activated(1);
      emit types->textActivated(types->itemText(1));
      suffix = dialog->defaultSuffix();
    }
    if (!suffix.isEmpty() || ++ticks > 300) dialog->reject();
  });
  answer.start(10);
  form.Document().Export();
  answer.stop();
  EXPECT_EQ(suffix, "pef");
  EXPECT_EQ(title, "Export Polare");
  Action("mnuLangEnglish")->trigger();
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Cancel");
}

// Every command's dialog opens; a menu caption's mnemonic and ellipsis stay
// in the menu. Qt's own file dialogs are only looked at: their answer
// depends on a listing loaded in a thread.
TEST_F(MainWindow, EveryDialogOpensWithATitleWithoutMnemonic) {
  PEFForm& form = StartWith(1);
  QStringList titles;
  std::vector<QFileDialog::FileMode> modes;
  QTimer closer;
  QObject::connect(&closer, &QTimer::timeout, [&] {
    if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
      titles << dialog->windowTitle();
      if (auto* files = qobject_cast<QFileDialog*>(dialog)) modes.push_back(files->fileMode());
      dialog->reject();
    }
  });
  closer.start(20);
  for (const char* language : {"mnuLangEnglish", "mnuLangDeutsch"}) {
    Action(language)->trigger();
    for (const char* name : {"mnuFileImport", "mnuFileExport", "mnuBatch", "mnuFileSaveGraphs", "mnuPrintOptions",
                             "mnuFilePrintPreview", "Toolbar1_HELP", "mnuToolsApproximate"})
      Action(name)->trigger();
    Find<QWidget>("ClAlfaPicture")->findChild<QAction*>("mnuGraphSave")->trigger();
    titles << Find<QDialog>("frmApprox")->windowTitle() << form.windowTitle();
  }
  EXPECT_EQ(titles.size(), 2 * 10);
  for (const char* title : {"Save Graphs As", "Grafiken speichern unter", "Save Picture", "Bild speichern"})
    EXPECT_TRUE(titles.contains(title)) << titles.join(", ").toStdString();
  for (const QString& title : titles) EXPECT_FALSE(title.contains('&')) << title.toStdString();
  ASSERT_FALSE(modes.empty());
  EXPECT_EQ(modes[0], QFileDialog::ExistingFiles) << "Import lets several files be picked";
}

TEST(MainLayout, GraphsShareTheWidthAndEachDirectionMovesOnlyAboveItsThreshold) {
  // At 1440 dpi a twip is a pixel, so the classic numbers read directly.
  MainLayout design;
  design.tabStrip = QRect(11000, 3700, 4000, 4000);
  design.smallPicture = QRect(11050, 4100, 3900, 3400);
  design.clCdPicture = QRect(100, 4100, 10000, 3400);
  design.treeView = QRect(5100, 300, 6000, 2900);
  design.rangeLeft = 17000;

  const MainLayout laid = LayoutMainWindow(design, {QSize(20000, 12000), 300, 340, 1500, 1440});
  const int h = 12000 - 3700 - 300 - 80;
  EXPECT_EQ(laid.tabStrip, QRect(14100, 3700, 5800, h));
  EXPECT_EQ(laid.smallPicture, QRect(14150, 4100, 5700, h - 160 - 340));
  EXPECT_EQ(laid.clCdPicture, QRect(100, 4100, 13800, h - 160 - 340));
  EXPECT_EQ(laid.rangeLeft, 20000 - 1500 - 120);
  EXPECT_EQ(laid.treeView, QRect(5100, 300, 18380 - 5100 - 300, 2900));

  struct Case {
    const char* what;
    QSize client;
    bool heights, widths, tree;
  };
  const Case cases[] = {
      // H = height - 3700 - 300 - 80; W = width * 0.7.
      {"graph height just above 500", QSize(20000, 4581), true, true, true},
      {"graph height exactly 500", QSize(20000, 4580), false, true, true},
      {"graph width exactly 100", QSize(142, 12000), true, false, false},
      {"graph width just above 100", QSize(145, 12000), true, true, false},
      {"tree width exactly 500", QSize(5100 + 300 + 500 + 1500 + 120, 12000), true, true, false},
      {"tree width just above 500", QSize(5100 + 300 + 501 + 1500 + 120, 12000), true, true, true},
  };
  for (const Case& c : cases) {
    const MainLayout at = LayoutMainWindow(design, {c.client, 300, 340, 1500, 1440});
    EXPECT_EQ(at.tabStrip.height() != design.tabStrip.height(), c.heights) << c.what;
    EXPECT_EQ(at.clCdPicture.height() != design.clCdPicture.height(), c.heights) << c.what;
    EXPECT_EQ(at.clCdPicture.width() != design.clCdPicture.width(), c.widths) << c.what;
    EXPECT_EQ(at.rangeLeft != design.rangeLeft, c.widths) << c.what;
    EXPECT_EQ(at.treeView.width() != design.treeView.width(), c.tree) << c.what;
    EXPECT_EQ(at.tabStrip.top(), design.tabStrip.top()) << c.what;
  }
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

// Each tab shows its own graph and read-out and hides the other tabs';
// the lift-drag graph beside the strip stays.
TEST_F(MainWindow, EachTabShowsItsGraphAndReadoutAlone) {
  Start();
  auto* strip = Find<QTabWidget>("theTabStrip");
  const char* const shownOnTab[][2] = {{"ClAlfaPicture", "ClAlfaValue"},
                                       {"CmAlfaPicture", "CmAlfaValue"},
                                       {"BLUPicture", "TUxcValue"},
                                       {"BLLPicture", "TLxcValue"}};
  ASSERT_EQ(strip->count(), 4);
  for (int tab = 3; tab >= 0; --tab) {
    strip->setCurrentIndex(tab);
    for (int t = 0; t < 4; ++t)
      for (const char* name : shownOnTab[t]) EXPECT_EQ(!Find(name)->isHidden(), t == tab) << name << " on " << tab;
    EXPECT_FALSE(Find("ClCdPicture")->isHidden() || Find("CdClValue")->isHidden());
  }
}

}  // namespace
}  // namespace tavilo::testing
