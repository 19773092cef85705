// The structure tree: its nodes and marks, clicks, pop-ups and keys.
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QStatusBar>
#include <filesystem>

#include "app/icons.h"
#include "app/polar_props_dialog.h"
#include "app/tree_controller.h"
#include "app_fixture.h"

namespace tavilo::testing {
namespace {

class StructureTree : public MainWindowTest {
 protected:
  QTreeWidget* Tree() { return Find<QTreeWidget>("TreeView1"); }

  // A click as the window system delivers it: a right press also brings
  // the context menu event, which QTest leaves out.
  void Click(const char* key, Qt::MouseButton button = Qt::LeftButton) {
    QTreeWidgetItem* item = Node(key);
    ASSERT_NE(item, nullptr);
    QWidget* viewport = Tree()->viewport();
    const QPoint at = Tree()->visualItemRect(item).center();
    QTest::mousePress(viewport, button, Qt::NoModifier, at);
    if (button == Qt::RightButton) {
      QContextMenuEvent menu(QContextMenuEvent::Mouse, at, viewport->mapToGlobal(at));
      QApplication::sendEvent(viewport, &menu);
    }
    QTest::mouseRelease(viewport, button, Qt::NoModifier, at);
    QApplication::processEvents();
  }

  // Selects a node by a right click (a middle one on a polar), which opens
  // the pop-up of its kind; closes the pop-up.
  void Select(const char* key) {
    const bool polar = std::string(key).find('p') != std::string::npos;
    Click(key, polar ? Qt::MiddleButton : Qt::RightButton);
    QMenu* popup = Find<QMenu>(polar ? "mnuEditPolar" : "mnuEdit");
    EXPECT_TRUE(popup->isVisible()) << key;
    EXPECT_EQ(window->Tree().SelectedKey(), key);
    popup->hide();
  }

  static bool ShowsActive(const QTreeWidgetItem* item) {
    const QImage shown = item->icon(0).pixmap(16).toImage();
    if (shown == NodeIcon(true).pixmap(16).toImage()) return true;
    EXPECT_EQ(shown, NodeIcon(false).pixmap(16).toImage()) << "neither mark";
    return false;
  }

  // The marks of every node from the root down: '+' active, '-' not.
  std::string Marks() {
    std::string marks;
    for (QTreeWidgetItemIterator it(Tree()); *it != nullptr; ++it) marks += ShowsActive(*it) ? '+' : '-';
    return marks;
  }

  Polar& PolarAt(int set, int polar) { return *window->Document().Current().Configuration(set)->Polar(polar); }
};

TEST_F(StructureTree, MirrorsTheDocumentAndLeftClicksOrSpaceToggleAPolarOrEverything) {
  StartWith(2);
  ASSERT_EQ(Tree()->topLevelItemCount(), 1);
  EXPECT_EQ(Node("c 1|p 2")->parent(), Node("c 1"));
  EXPECT_EQ(Node("c 1")->text(0), "Set 1: clean");
  EXPECT_TRUE(Node("r")->isExpanded() && Node("c 1")->isExpanded());
  EXPECT_EQ(Marks(), "++++");

  // The marks, then whether each polar is selected.
  auto state = [&] {
    return Marks() + "|" + (PolarAt(1, 1).Selected ? "+" : "-") + (PolarAt(1, 2).Selected ? "+" : "-");
  };
  for (const auto& [key, expected] : {std::pair{"c 1|p 2", "+++-|+-"}, {"r", "----|--"}, {"r", "++++|++"}}) {
    Click(key);
    EXPECT_EQ(state(), expected) << key;
  }
  // The arrows only move; Space ticks the current node.
  Tree()->setFocus();
  Tree()->setCurrentItem(Node("r"));
  QTest::keyClick(Tree(), Qt::Key_Down);
  QTest::keyClick(Tree(), Qt::Key_Down);
  EXPECT_EQ(Tree()->currentItem(), Node("c 1|p 1"));
  QTest::keyClick(Tree(), Qt::Key_Space);
  EXPECT_EQ(state(), "++-+|-+");
  QTest::keyClick(Tree(), Qt::Key_Space);
  EXPECT_EQ(state(), "++++|++");
  // Copy and paste append a duplicate to the same set.
  QTest::keyClick(Tree(), Qt::Key_C, Qt::ControlModifier);
  QTest::keyClick(Tree(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Node("c 1|p 3")->text(0).toStdString(), "Polar 3, Re= 100000, Polar");

  Action("Toolbar1_NEW")->trigger();
  EXPECT_EQ(Tree()->topLevelItemCount(), 0);
}

// A deletion by menu or key, and its undo, reach the tree, its marks and
// the commands that need data through the document's one notification.
TEST_F(StructureTree, DeleteByMenuOrKeyAndItsUndoReachEveryView) {
  PEFForm& form = StartWith(2);
  Click("c 1|p 2");
  Select("c 1|p 1");
  Action("mnuEditPolarDelete")->trigger();
  ASSERT_EQ(window->Document().Current().Configuration(1)->PolarCount(), 1);
  auto dataCommands = [this] {
    std::string enabled;
    for (const char* name :
         {"mnuFilePrint", "mnuFileExport", "mnuFileSaveGraphs", "mnuToolsApproximate", "mnuToolsEnvelope",
          "mnuToolsSortRe", "mnuToolsSortMach", "Toolbar1_PRINT", "Toolbar1_SAVE"})
      enabled += Action(name)->isEnabled() ? '+' : '-';
    return enabled;
  };
  EXPECT_EQ(Node("c 1|p 1")->text(0).toStdString(), "Polar 1, Re= 200000, Polar");
  const std::string marks = Marks();

  // The Delete key acts on the selected node, which stays on its key.
  Tree()->setFocus();
  QTest::keyClick(Tree(), Qt::Key_Delete);
  EXPECT_EQ(window->Document().Current().ConfigCount(), 0) << "the emptied set goes too";
  EXPECT_EQ(Tree()->topLevelItemCount(), 0);
  EXPECT_EQ(dataCommands(), "---------");
  Action("mnuEditDelete")->trigger();  // nothing selected: nothing happens
  Action("mnuEditUndo")->trigger();
  EXPECT_EQ(Marks(), marks) << "the tree and its marks are back";
  EXPECT_EQ(dataCommands(), "+++++++++") << "and so are the menus";

  form.EnableItems(true);  // as while printing
  Action("mnuToolsSortRe")->trigger();
  EXPECT_TRUE(Action("mnuFilePrint")->isEnabled()) << "a sort updates the menus like every other change";
}

TEST_F(StructureTree, RenameAsksForRootAndSetAndAnEmptyAnswerChangesNothing) {
  PEFForm& form = StartWith(1);
  QStringList asked;
  QString answer = "Flying wing";
  form.UserInterfaceImpl().SetInputAnswerer([&](const QString&, const QString& title, const QString& value) {
    asked << title + ": " + value;
    return answer;
  });
  for (const char* key : {"r", "c 1"}) {
    Select(key);
    Action("mnuEditName")->trigger();
    answer = "";
  }
  EXPECT_EQ(asked, QStringList({"Change Airfoil Name: Wing", "Change Set Description: clean"}));
  EXPECT_EQ(Marks(), "+++") << "other buttons than the left toggle nothing";
  EXPECT_EQ(Node("r")->text(0).toStdString(), "Flying wing");
  EXPECT_EQ(Node("c 1")->text(0).toStdString(), "Set 1: clean");
}

TEST_F(StructureTree, PolarPropertiesTakeTheEditsEvenOnCancel) {
  StartWith(1);
  PolarAt(1, 1).ReynoldsNumber = 123456.7;
  PolarAt(1, 1).MachNumber = 0.12346;
  auto* dialog = Find<PolarPropsDialog>("frmPolarProps");
  Click("c 1|p 1");  // selects it (and toggles its mark)
  Tree()->setFocus();
  QStringList shown;
  QTimer::singleShot(0, dialog, [&] {
    for (const char* name : {"txtReNo", "txtMachNo"}) shown << dialog->findChild<QLineEdit*>(name)->text();
    dialog->findChild<QLineEdit*>("txtName")->setText("tripped");
    dialog->findChild<QPushButton*>("btnCancel")->click();
  });
  QTest::keyClick(Tree(), Qt::Key_F2);

  EXPECT_EQ(shown, QStringList({"123457", "0.1235"}));
  const Polar& polar = PolarAt(1, 1);
  EXPECT_EQ(std::tuple(polar.Name, polar.ReynoldsNumber, polar.MachNumber), std::tuple("tripped", 123457.0, 0.1235));
}

TEST_F(StructureTree, TheEnvelopeIsShownBeforeItIsWrittenAndItsPathAfterwards) {
  PEFForm& form = StartWith(2);
  const std::string path = std::filesystem::absolute("Envelope.pef").string();
  Action("mnuToolsEnvelope")->trigger();
  EXPECT_EQ(form.statusBar()->currentMessage().toStdString(), "Envelope written to " + path);

  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  MessageBoxCatcher boxes;
  Action("mnuToolsEnvelope")->trigger();
  ASSERT_EQ(boxes.seen.size(), 1u);
  EXPECT_NE(boxes.seen[0].text.toStdString().find(path), std::string::npos);
}

}  // namespace
}  // namespace tavilo::testing
