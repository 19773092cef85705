// The points table in the window; what a cell shows or takes is the
// document's points table's to test.
#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

#include "app/points_window.h"
#include "app_fixture.h"
#include "support/content_text.h"

namespace tavilo::testing {
namespace {

class PointsTable : public MainWindowTest {
 protected:
  // Enter on tree node `key`, as the user opens a polar's table.
  PointsWindow* EnterOn(const char* key) {
    auto* tree = Find<QTreeWidget>("TreeView1");
    Activate(window.get());
    SelectNode(key);
    tree->setFocus();
    QTest::keyClick(tree, Qt::Key_Return);
    return Tables().empty() ? nullptr : Tables().back();
  }

  std::vector<PointsWindow*> Tables() { return window->Points().Windows(); }
  static QTableView* Grid(PointsWindow* table) { return table->findChild<QTableView*>("grdPoints"); }

  static QStringList Row(PointsWindow* table, int row) {
    QStringList cells;
    const QAbstractItemModel* shown = Grid(table)->model();
    for (int column = 0; column < shown->columnCount(); ++column) cells << shown->index(row, column).data().toString();
    return cells;
  }

  // Types `text` into a cell as the user does: F2, the text, Enter.
  static void Type(PointsWindow* table, int row, int column, const QString& text) {
    QTableView* grid = Grid(table);
    Activate(table);
    grid->setFocus();
    grid->setCurrentIndex(grid->model()->index(row, column));
    QTest::keyClick(grid, Qt::Key_F2);
    auto* editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    if (text.isEmpty()) QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
  }

  static void SelectRows(PointsWindow* table, int first, int last) {
    QTableView* grid = Grid(table);
    Activate(table);
    grid->setFocus();
    const QItemSelection rows(grid->model()->index(first, 0), grid->model()->index(last, 0));
    grid->selectionModel()->select(rows, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  }

  std::string Content() { return ContentText(window->Document().Current()); }
};

TEST_F(PointsTable, ATypedCellIsTakenOrRefusedInFrontOfTheTable) {
  StartWith(1);
  PointsWindow* table = EnterOn("c 1|p 1");
  const struct {
    int column;
    const char* typed;
    const char* shown;    // the cell afterwards
    const char* message;  // start of the message, "" for none
  } cases[] = {
      {2, "0.0125", "0.0125", ""},
      {1, "0,3", "0.2", "'0,3' is not a number. Enter numbers with a period"},
      {3, "", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.typed);
    MessageBoxCatcher catcher;
    Type(table, 0, c.column, c.typed);
    QTest::qWait(20);
    EXPECT_EQ(Row(table, 0)[c.column], c.shown);
    EXPECT_EQ(catcher.seen.size(), *c.message == '\0' ? 0u : 1u);
    for (const MessageBoxCatcher::Seen& box : catcher.seen) {
      EXPECT_TRUE(box.text.startsWith(c.message)) << box.text.toStdString();
      EXPECT_EQ(box.owner, table) << "in front of the table";
    }
  }
  const PolarPoint& point = window->Document().Current().Configuration(1)->Polar(1)->Point(1);
  EXPECT_EQ(point.Cd, 0.0125);
  EXPECT_EQ(point.Cm, kNoValue);
}

TEST_F(PointsTable, RowsAreAddedDeletedCopiedAndPastedEachAsOneStep) {
  PEFForm& form = StartWith(1);
  PointsWindow* table = EnterOn("c 1|p 1");
  const Polar& polar = *form.Document().Current().Configuration(1)->Polar(1);
  std::vector<std::string> contents = {Content()};

  Grid(table)->setCurrentIndex(Grid(table)->model()->index(0, 0));
  table->findChild<QPushButton*>("btnAddRow")->click();
  ASSERT_EQ(polar.PointCount(), 4);
  EXPECT_EQ(Row(table, 1), Row(table, 0)) << "a copy of the current point after it";
  contents.push_back(Content());

  SelectRows(table, 0, 1);
  QTest::keyClick(Grid(table), Qt::Key_Delete);
  ASSERT_EQ(polar.PointCount(), 2);
  EXPECT_EQ(Row(table, 0)[0], "2");
  contents.push_back(Content());

  SelectRows(table, 0, 1);
  QTest::keyClick(Grid(table), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(),
            "Alfa\tCl\tCd\tCm\tTU\tTL\n2\t0.4\t0.011\t-0.05\t\t\n4\t0.6\t0.012\t-0.05\t\t\n");

  QApplication::clipboard()->setText("alpha\tcl\tcd\r\n6,5\t0,75\t0,0131\r\n");
  SelectRows(table, 0, 0);
  QTest::keyClick(Grid(table), Qt::Key_V, Qt::ControlModifier);
  ASSERT_EQ(polar.PointCount(), 3);
  EXPECT_EQ(Row(table, 1), QStringList({"6.5", "0.75", "0.0131", "", "", ""})) << "after the selected row";
  contents.push_back(Content());

  for (size_t k = contents.size() - 1; k > 0; --k) {
    PressKeys(table, QKeySequence(Qt::CTRL | Qt::Key_Z));
    EXPECT_EQ(Content(), contents[k - 1]) << k;
  }
  EXPECT_EQ(Grid(table)->model()->rowCount(), 3);
}

TEST_F(PointsTable, OpensOncePerPolarSortsTheViewOnlyAndFollowsRenameUndoAndItsPolar) {
  PEFForm& form = StartWith(2);
  PointsWindow* table = EnterOn("c 1|p 2");
  ASSERT_NE(table, nullptr);
  EXPECT_EQ(table->windowTitle(), "Points of Polar 2, Re= 200000, Polar (Set 1: clean)");
  EXPECT_EQ(Row(table, 0), QStringList({"0", "0.2", "0.01", "-0.05", "", ""})) << "unknown values empty";
  EnterOn("c 1");
  EnterOn("c 1|p 2");
  SelectNode("c 1|p 1");
  Action("mnuEditPolarPoints")->trigger();
  EXPECT_EQ(Tables().size(), 2u) << "none for a set, one per polar";

  const std::string before = Content();
  QHeaderView* header = Grid(table)->horizontalHeader();
  header->setSortIndicator(1, Qt::DescendingOrder);
  EXPECT_EQ(Row(table, 0)[1], "0.6");
  EXPECT_EQ(Grid(table)->model()->headerData(0, Qt::Vertical).toString(), "3") << "the point's own number";
  EXPECT_EQ(Content(), before);
  EXPECT_EQ(form.Document().Edits().Steps().UndoCount(), 1u);

  Type(table, 0, 1, "0.65");
  EXPECT_EQ(form.Document().Current().Configuration(1)->Polar(2)->Cl(3), 0.65) << "the point shown, not the row";
  Action("mnuEditUndo")->trigger();
  EXPECT_EQ(Row(table, 0)[1], "0.6") << "the table shows what the undo gave back";

  form.UserInterfaceImpl().SetInputAnswerer([](const QString&, const QString&, const QString&) { return "flap"; });
  SelectNode("c 1");
  Action("mnuEditName")->trigger();
  EXPECT_EQ(table->windowTitle(), "Points of Polar 2, Re= 200000, Polar (Set 1: flap)");

  Action("Toolbar1_NEW")->trigger();
  QApplication::processEvents(QEventLoop::AllEvents);
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(Tables().empty()) << "its polar is gone";
}

}  // namespace
}  // namespace tavilo::testing
