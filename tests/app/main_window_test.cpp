// The main window: object names, enabled states, the toolbar's keys, the
// layout on resize and the language switch.
#include <QComboBox>
#include <QLabel>
#include <QMenu>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>

#include "app/caption_apply.h"
#include "app/main_layout.h"
#include "app_fixture.h"
#include "strings/captions.h"

namespace tavilo::testing {
namespace {

using MainWindow = MainWindowTest;

const char* const kDataCommands[] = {"mnuFilePrint", "mnuFileExport", "mnuToolsApproximate", "mnuToolsEnvelope",
                                     "mnuToolsSortRe", "mnuToolsSortMach", "Toolbar1_PRINT", "Toolbar1_SAVE"};

TEST_F(MainWindow, HasEveryNamedElement) {
  Start();
  for (const char* name :
       {"Toolbar1", "StatusBar1", "Laufwerk1", "Verzeichnis1", "Datei1", "TreeView1", "ProfilName", "ClCdPicture",
        "theTabStrip", "ClAlfaPicture", "CmAlfaPicture", "BLUPicture", "BLLPicture", "cbClMax", "cbClMin", "cbCdMax",
        "cbAlfaMax", "Label1", "Label2", "Label3", "ClAlfaValue", "CdClValue", "CmAlfaValue", "TUxcValue",
        "TLxcValue", "mnuFile", "mnuBatch", "mnuTools", "mnuLanguage", "mnuEdit", "mnuEditPolar"}) {
    EXPECT_NE(window->findChild<QObject*>(name), nullptr) << name;
  }
  EXPECT_EQ(window->findChildren<QLabel*>("Bezeichnung1").size(), 4);
}

TEST_F(MainWindow, TabStripHasItsFourKeyedTabsAndShowsOneSmallGraph) {
  Start();
  auto* tabs = Find<QTabWidget>("theTabStrip");
  ASSERT_EQ(tabs->count(), 4);
  const char* keys[] = {"CLALFA", "CMALFA", "TUXC", "TLXC"};
  const char* captions[] = {"Cl-Alfa", "Cm-Alfa", "TU-x/c", "TL-x/c"};
  const char* pictures[] = {"ClAlfaPicture", "CmAlfaPicture", "BLUPicture", "BLLPicture"};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(tabs->tabBar()->tabData(i).toString(), keys[i]);
    EXPECT_EQ(tabs->tabText(i), captions[i]);
  }
  for (int shown = 0; shown < 4; ++shown) {
    tabs->setCurrentIndex(shown);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(Find(pictures[i])->isVisible(), i == shown) << pictures[i];
    EXPECT_TRUE(Find("ClCdPicture")->isVisible());
  }
}

TEST_F(MainWindow, DataCommandsFollowTheDocumentAndPrinting) {
  WritePolarFile(dir, "wing.xml", "Wing");
  PEFForm& form = Start();
  for (const char* name : kDataCommands) EXPECT_FALSE(Action(name)->isEnabled()) << name << " without data";
  for (const char* name : {"mnuFileImport", "mnuPrintOptions", "Toolbar1_NEW", "Toolbar1_OPEN", "Toolbar1_HELP"}) {
    EXPECT_TRUE(Action(name)->isEnabled()) << name;
  }

  form.Document().OpenFile(dir.File("wing.xml"));
  for (const char* name : kDataCommands) EXPECT_TRUE(Action(name)->isEnabled()) << name << " with data";

  form.EnableItems(true);
  EXPECT_FALSE(Action("mnuFilePrint")->isEnabled());
  EXPECT_FALSE(Action("Toolbar1_PRINT")->isEnabled());
  EXPECT_TRUE(Action("mnuFileExport")->isEnabled());
  EXPECT_TRUE(Action("Toolbar1_SAVE")->isEnabled());
  form.EnableItems(false);
  EXPECT_TRUE(Action("mnuFilePrint")->isEnabled());
}

TEST_F(MainWindow, NewButtonEmptiesTheDocumentAndDisablesTheDataCommands) {
  const TempDir more;
  Airfoil three;
  for (int i = 0; i < 3; ++i) {
    auto set = std::make_shared<Configuration>();
    auto polar = std::make_shared<Polar>();
    polar->Selected = true;
    polar->AddPoint(PolarPoint{});
    set->AddPolar(polar);
    three.AddConfiguration(set);
  }
  WriteToXML(three, dir.File("three.xml"));
  PEFForm& form = Start();
  form.Document().OpenFile(dir.File("three.xml"));
  ASSERT_EQ(form.Document().Current().ConfigCount(), 3);

  Action("Toolbar1_NEW")->trigger();
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);
  for (const char* name : kDataCommands) EXPECT_FALSE(Action(name)->isEnabled()) << name;
}

TEST_F(MainWindow, ToolbarKeysDispatchToTheirActions) {
  PEFForm& form = Start();
  std::vector<FileDialogKind> dialogs;
  form.UserInterfaceImpl().SetFileChooser([&](const FileDialogRequest& request, const QString&) {
    dialogs.push_back(request.kind);
    return std::string();
  });
  form.ToolbarButtonClick("OPEN");
  ASSERT_EQ(dialogs.size(), 1u);
  EXPECT_EQ(dialogs[0], FileDialogKind::Open);
  form.ToolbarButtonClick("SAVE");
  ASSERT_EQ(dialogs.size(), 2u);
  EXPECT_EQ(dialogs[1], FileDialogKind::Save);
  // Keys compare exactly: neither lower case nor an unknown key does anything.
  form.ToolbarButtonClick("open");
  form.ToolbarButtonClick("ZOOM");
  EXPECT_EQ(dialogs.size(), 2u);

  QDialog* about = window->findChild<QDialog*>("frmAbout");
  ASSERT_NE(about, nullptr);
  QTimer::singleShot(0, about, [about] {
    EXPECT_TRUE(about->isVisible());
    about->accept();
  });
  form.ToolbarButtonClick("HELP");
}

// Every caption of the window as shown now: text or tool tip per list entry.
std::vector<QString> ShownCaptions(QWidget* window) {
  std::vector<QString> shown;
  for (const Caption& caption : MainWindowCaptions()) {
    QObject* control = FindControl(window, QString::fromLatin1(caption.element.data(), caption.element.size()),
                                   caption.item);
    EXPECT_NE(control, nullptr) << caption.element << " " << caption.item;
    if (control == nullptr) continue;
    if (caption.target == CaptionTarget::ToolTip) {
      shown.push_back(qobject_cast<QAction*>(control)->toolTip());
    } else {
      shown.push_back(ControlText(control));
    }
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
    EXPECT_EQ(german[i].toStdString(), ResourceString(2000 + caption.id)) << caption.element;
  }
  EXPECT_EQ(Find<QStatusBar>("StatusBar1")->currentMessage(), "Bereit.");
  EXPECT_EQ(Action("mnuLangEnglish")->text(), "English");
  EXPECT_EQ(Action("mnuLangDeutsch")->text(), "Deutsch");
  EXPECT_EQ(Find<QDialog>("frmAbout")->windowTitle(), QString::fromUtf8("Über Tavilo"));
  EXPECT_EQ(Find<QDialog>("frmOptions")->windowTitle(), "Optionen");

  Action("mnuLangEnglish")->trigger();
  EXPECT_EQ(ShownCaptions(window.get()), english);
  EXPECT_EQ(Find<QMenu>("mnuFile")->title(), "&File");
  EXPECT_EQ(Action("mnuLangDeutsch")->text(), "Deutsch");
}

TEST(MainLayout, GraphsShareTheWidthSeventyToThirtyWithTheirMargins) {
  // At 1440 dpi a twip is a pixel, so the classic numbers read directly.
  MainLayout design;
  design.tabStrip = QRect(11000, 3700, 4000, 4000);
  design.smallPicture = QRect(11050, 4100, 3900, 3400);
  design.clCdPicture = QRect(100, 4100, 10000, 3400);
  design.treeView = QRect(5100, 300, 6000, 2900);
  LayoutMetrics metrics{QSize(20000, 12000), 300, 340, 1500, 1440};

  const MainLayout laid = LayoutMainWindow(design, metrics);
  const int h = 12000 - 3700 - 300 - 80;
  EXPECT_EQ(laid.tabStrip, QRect(14100, 3700, 5800, h));
  EXPECT_EQ(laid.smallPicture, QRect(14150, 4100, 5700, h - 160 - 340));
  EXPECT_EQ(laid.clCdPicture, QRect(100, 4100, 13800, h - 160 - 340));
  EXPECT_EQ(laid.rangeLeft, 20000 - 1500 - 120);
  EXPECT_EQ(laid.treeView, QRect(5100, 300, 18380 - 5100 - 300, 2900));
}

TEST(MainLayout, EachDirectionMovesOnlyAboveItsThreshold) {
  MainLayout design;
  design.tabStrip = QRect(11000, 3700, 4000, 4000);
  design.smallPicture = QRect(11050, 4100, 3900, 3400);
  design.clCdPicture = QRect(100, 4100, 10000, 3400);
  design.treeView = QRect(5100, 300, 6000, 2900);
  design.rangeLeft = 17000;
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
    const MainLayout laid = LayoutMainWindow(design, {c.client, 300, 340, 1500, 1440});
    EXPECT_EQ(laid.tabStrip.height() != design.tabStrip.height(), c.heights) << c.what;
    EXPECT_EQ(laid.clCdPicture.height() != design.clCdPicture.height(), c.heights) << c.what;
    EXPECT_EQ(laid.clCdPicture.width() != design.clCdPicture.width(), c.widths) << c.what;
    EXPECT_EQ(laid.rangeLeft != design.rangeLeft, c.widths) << c.what;
    EXPECT_EQ(laid.treeView.width() != design.treeView.width(), c.tree) << c.what;
    EXPECT_EQ(laid.tabStrip.top(), design.tabStrip.top()) << c.what;
  }
}

TEST_F(MainWindow, ResizingKeepsTheGraphsSideBySideAndTheRangesAtTheRightEdge) {
  Start();
  for (const QSize size : {QSize(1000, 760), QSize(1500, 1000)}) {
    window->resize(size);
    QApplication::processEvents();
    QWidget* client = window->centralWidget();
    const QRect big = Find("ClCdPicture")->geometry();
    const QRect strip = Find("theTabStrip")->geometry();
    const QRect small = Find("BLLPicture")->geometry();
    EXPECT_LT(big.right(), strip.left()) << size.width();
    EXPECT_NEAR(big.left() + big.width() + 7, client->width() * 0.7, 2) << size.width();
    EXPECT_TRUE(strip.contains(small)) << size.width();
    EXPECT_EQ(big.top(), small.top());
    EXPECT_LT(strip.bottom(), client->height());
    const QRect column = Find("Label1")->geometry();
    EXPECT_NEAR(column.right() + 1, client->width() - 8, 1) << size.width();
    EXPECT_LT(Find("TreeView1")->geometry().right(), column.left());
  }
}

TEST_F(MainWindow, ShrinkingBelowTheThresholdKeepsTheGraphHeight) {
  Start();
  window->resize(1200, 900);
  QApplication::processEvents();
  const int height = Find("ClCdPicture")->height();
  window->resize(1200, 260);
  QApplication::processEvents();
  EXPECT_EQ(Find("ClCdPicture")->height(), height);
}

}  // namespace
}  // namespace tavilo::testing

namespace tavilo::testing {
namespace {

TEST_F(MainWindow, SortMenuOrdersThePolarsOfEverySetByReynolds) {
  Airfoil airfoil;
  auto set = std::make_shared<Configuration>();
  for (const double re : {500000.0, 100000.0, 300000.0}) {
    auto polar = std::make_shared<Polar>();
    polar->ReynoldsNumber = re;
    polar->Selected = true;
    polar->AddPoint(PolarPoint{});
    set->AddPolar(polar);
  }
  airfoil.AddConfiguration(set);
  WriteToXML(airfoil, dir.File("mixed.xml"));
  PEFForm& form = Start();
  form.Document().OpenFile(dir.File("mixed.xml"));
  Action("mnuToolsSortRe")->trigger();
  const ConfigurationPtr sorted = form.Document().Current().Configuration(1);
  EXPECT_EQ(sorted->Polar(1)->ReynoldsNumber, 100000.0);
  EXPECT_EQ(sorted->Polar(2)->ReynoldsNumber, 300000.0);
  EXPECT_EQ(sorted->Polar(3)->ReynoldsNumber, 500000.0);
}

}  // namespace
}  // namespace tavilo::testing
