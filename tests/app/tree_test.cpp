// The structure tree: its nodes and marks, clicks with either button, the
// edit commands of its pop-ups and keys, and the envelope it shows.
#include <QClipboard>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTest>
#include <QStatusBar>
#include <QTreeWidget>
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

  QTreeWidgetItem* Node(const char* key) {
    for (QTreeWidgetItemIterator it(Tree()); *it != nullptr; ++it) {
      if ((*it)->data(0, TreeController::kKeyRole).toString() == QLatin1String(key)) return *it;
    }
    ADD_FAILURE() << "no node " << key;
    return nullptr;
  }

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

  // Selects a node as a right click does, without leaving its pop-up open.
  void Select(const char* key) {
    Click(key, Qt::RightButton);
    Find<QMenu>("mnuEdit")->hide();
    Find<QMenu>("mnuEditPolar")->hide();
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

  Click("c 1|p 2");
  EXPECT_EQ(Marks().substr(2), "+-");
  EXPECT_FALSE(PolarAt(1, 2).Selected);
  Click("r");
  EXPECT_EQ(Marks(), "----");
  EXPECT_FALSE(PolarAt(1, 1).Selected);
  Click("r");
  EXPECT_EQ(Marks(), "++++");
  EXPECT_TRUE(PolarAt(1, 1).Selected && PolarAt(1, 2).Selected);

  // The arrows only move; Space ticks the current node.
  Tree()->setFocus();
  Tree()->setCurrentItem(Node("r"));
  QTest::keyClick(Tree(), Qt::Key_Down);
  QTest::keyClick(Tree(), Qt::Key_Down);
  EXPECT_EQ(Tree()->currentItem(), Node("c 1|p 1"));
  EXPECT_EQ(Marks(), "++++");
  QTest::keyClick(Tree(), Qt::Key_Space);
  EXPECT_FALSE(PolarAt(1, 1).Selected);
  QTest::keyClick(Tree(), Qt::Key_Space);
  EXPECT_TRUE(PolarAt(1, 1).Selected);

  Action("Toolbar1_NEW")->trigger();
  EXPECT_EQ(Tree()->topLevelItemCount(), 0);
}

TEST_F(StructureTree, OtherButtonsOpenThePopupOfTheNodeKindWithoutToggling) {
  StartWith(1);
  auto* edit = Find<QMenu>("mnuEdit");
  auto* editPolar = Find<QMenu>("mnuEditPolar");
  struct Case {
    const char* key;
    QMenu* expected;
    QMenu* other;
  };
  for (const Case& c : {Case{"c 1|p 1", editPolar, edit}, Case{"c 1", edit, editPolar}, Case{"r", edit, editPolar}}) {
    Click(c.key, c.expected == edit ? Qt::RightButton : Qt::MiddleButton);
    EXPECT_TRUE(c.expected->isVisible()) << c.key;
    EXPECT_FALSE(c.other->isVisible()) << c.key;
    EXPECT_EQ(window->Tree().SelectedKey(), c.key);
    c.expected->hide();
  }
  EXPECT_TRUE(PolarAt(1, 1).Selected);
  EXPECT_EQ(Marks(), "+++");
}

// A deletion by menu or key, and its undo, reach the tree, its marks and
// the menus through the document's one notification.
TEST_F(StructureTree, DeleteByMenuOrKeyAndItsUndoReachEveryView) {
  PEFForm& form = StartWith(2);
  Click("c 1|p 2");
  Select("c 1|p 1");
  Action("mnuEditPolarDelete")->trigger();
  ASSERT_EQ(window->Document().Current().Configuration(1)->PolarCount(), 1);
  EXPECT_EQ(Node("c 1|p 1")->text(0).toStdString(), "Polar 1, Re= 200000, Polar");
  const std::string marks = Marks();

  // The Delete key acts on the selected node, which stays on its key.
  Tree()->setFocus();
  QTest::keyClick(Tree(), Qt::Key_Delete);
  EXPECT_EQ(window->Document().Current().ConfigCount(), 0) << "the emptied set goes too";
  EXPECT_EQ(Tree()->topLevelItemCount(), 0);
  EXPECT_FALSE(Action("mnuToolsSortRe")->isEnabled());
  Action("mnuEditDelete")->trigger();  // nothing selected: nothing happens
  Action("mnuEditUndo")->trigger();
  EXPECT_EQ(Marks(), marks) << "the tree and its marks are back";
  EXPECT_TRUE(Action("mnuToolsSortRe")->isEnabled()) << "and so are the menus";

  form.EnableItems(true);  // as while printing
  Action("mnuToolsSortRe")->trigger();
  EXPECT_TRUE(Action("mnuFilePrint")->isEnabled()) << "a sort updates the menus like every other change";
}

TEST_F(StructureTree, RenameAsksForRootAndSetAndAnEmptyAnswerChangesNothing) {
  PEFForm& form = StartWith(1);
  std::vector<QStringList> asked;
  QString answer = "Flying wing";
  form.UserInterfaceImpl().SetInputAnswerer([&](const QString& prompt, const QString& title, const QString& value) {
    asked.push_back({prompt, title, value});
    return answer;
  });
  Select("r");
  Action("mnuEditName")->trigger();
  answer = "";
  Select("c 1");
  Action("mnuEditName")->trigger();

  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(asked[0], QStringList({QString::fromStdString(GetResString(Text::EnterAirfoilName, Language::English)), "Change Airfoil Name", "Wing"}));
  EXPECT_EQ(asked[1], QStringList({QString::fromStdString(GetResString(Text::EnterSetDescription, Language::English)), "Change Set Description", "clean"}));
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
  EXPECT_EQ(PolarAt(1, 1).Name, "tripped");
  EXPECT_EQ(PolarAt(1, 1).ReynoldsNumber, 123457.0);
  EXPECT_EQ(PolarAt(1, 1).MachNumber, 0.1235);
  EXPECT_EQ(Node("c 1|p 1")->text(0).toStdString(), "Polar 1, Re= 123457, tripped");
}

TEST_F(StructureTree, CopyThenPasteAppendsADuplicateToTheSameSet) {
  StartWith(2);
  QApplication::clipboard()->setText("untouched");
  Select("c 1");
  Tree()->setFocus();
  QTest::keyClick(Tree(), Qt::Key_C, Qt::ControlModifier);  // a set: nothing to copy
  EXPECT_EQ(QApplication::clipboard()->text(), "untouched");

  Select("c 1|p 2");
  QTest::keyClick(Tree(), Qt::Key_C, Qt::ControlModifier);
  QTest::keyClick(Tree(), Qt::Key_V, Qt::ControlModifier);
  ASSERT_EQ(window->Document().Current().Configuration(1)->PolarCount(), 3);
  EXPECT_EQ(Node("c 1|p 3")->text(0).toStdString(), "Polar 3, Re= 200000, Polar");
}

// The set is shown whether or not its file could be written; the status
// bar or the message names the file.
TEST_F(StructureTree, TheEnvelopeIsShownBeforeItIsWrittenAndItsPathAfterwards) {
  PEFForm& form = StartWith(2);
  const std::string path = std::filesystem::absolute("Envelope.pef").string();
  Action("mnuToolsEnvelope")->trigger();
  EXPECT_EQ(form.statusBar()->currentMessage().toStdString(), "Envelope written to " + path);
  EXPECT_EQ(Tree()->findItems("Set 2: Envelope", Qt::MatchExactly | Qt::MatchRecursive).size(), 1);

  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  MessageBoxCatcher boxes;
  Action("mnuToolsEnvelope")->trigger();
  EXPECT_EQ(Tree()->topLevelItem(0)->childCount(), 3) << "the tree keeps up";
  ASSERT_EQ(boxes.seen.size(), 1u);
  EXPECT_NE(boxes.seen[0].text.toStdString().find(path), std::string::npos);
}

}  // namespace
}  // namespace tavilo::testing
