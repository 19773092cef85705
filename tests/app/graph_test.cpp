// The graphs as a designer works with them: zoom and pan by mouse and keys,
// read-outs, pictures to files and the clipboard, dropped files.
#include <QClipboard>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QMouseEvent>
#include <QPrinter>

#include "app/graph_controller.h"
#include "app/graph_view.h"
#include "app/graph_widget.h"
#include "app_fixture.h"
#include "formats/file_text.h"

namespace tavilo::testing {
namespace {

class Graphs : public MainWindowTest {
 protected:
  GraphWidget* Graph(const char* name) { return Find<GraphWidget>(name); }
};

const PlotViews kDefault = DefaultViews(PlotRanges{});

TEST_F(Graphs, TheMouseAndKeysZoomAndPanAndADoubleClickOrAListResets) {
  StartWith(2);
  GraphWidget* clCd = Graph("ClCdPicture");
  const QPointF at(clCd->width() * 0.3, clCd->height() * 0.6);
  const QPointF before = clCd->ValueAt(at);
  Wheel(clCd, at, 2);
  EXPECT_NEAR(clCd->View().Width(), 0.025 * 0.64, 1e-12);
  EXPECT_NEAR(clCd->ValueAt(at).x(), before.x(), 1e-9) << "the point under the pointer stays";
  EXPECT_FALSE(Graph("ClAlfaPicture")->View().zoomed) << "each graph zooms on its own";

  GraphWidget* clAlfa = Graph("ClAlfaPicture");
  const QPoint from(clAlfa->width() / 2, clAlfa->height() / 4), to(clAlfa->width() * 3 / 4, clAlfa->height() / 2);
  const QPointF a = clAlfa->ValueAt(from), b = clAlfa->ValueAt(to);
  auto drag = [clAlfa](QPoint start, QPoint end, Qt::KeyboardModifiers modifiers) {
    QTest::mousePress(clAlfa, Qt::LeftButton, modifiers, start);
    QTest::mouseMove(clAlfa, end);
    QTest::mouseRelease(clAlfa, Qt::LeftButton, modifiers, end);
  };
  drag(from, to, Qt::NoModifier);
  const double pixel = 30.0 / clAlfa->width();
  EXPECT_NEAR(clAlfa->View().left, a.x(), pixel);
  EXPECT_NEAR(clAlfa->View().right, b.x(), 2 * pixel);

  // Shift and the left button pan: the values follow the pointer.
  const GraphView zoomed = clAlfa->View();
  drag(from, from + QPoint(40, 0), Qt::ShiftModifier);
  EXPECT_NEAR(clAlfa->View().left, zoomed.left - 40.0 / clAlfa->width() * zoomed.Width(), 1e-9);

  QTest::mouseDClick(clAlfa, Qt::LeftButton, Qt::NoModifier, from);
  EXPECT_EQ(clAlfa->View(), kDefault[Graph::ClAlfa]);
  Find<QComboBox>("cbAlfaMax")->setCurrentIndex(2);
  const GraphView listed = DefaultViews(PlotRanges{1.5, -0.5, 0.025, 30})[Graph::ClCd];
  EXPECT_EQ(clCd->View(), listed) << "a range list ends zooms";
  // Keys act on the focused graph only.
  for (QWidget* target : {static_cast<QWidget*>(Find<QTreeWidget>("TreeView1")), static_cast<QWidget*>(clCd)}) {
    QTest::mouseClick(target, Qt::LeftButton, Qt::NoModifier, QPoint(10, 10));  // a click gives the focus
    QTest::keyClick(target, Qt::Key_Plus);
  }
  EXPECT_NEAR(clCd->View().Width(), 0.025 * 0.8, 1e-12) << "zoomed once, by the graph's own key";
  QTest::keyClick(clCd, Qt::Key_Home);
  EXPECT_EQ(clCd->View(), listed);
  Wheel(clCd, at, 2);
  Wheel(clAlfa, at, 1);
  window->Document().OpenFile(dir.File("wing.xml"));
  EXPECT_FALSE(clCd->View().zoomed || clAlfa->View().zoomed) << "another file ends every zoom";
}

// The pointer reads out in the view a graph was drawn in: the lift-drag
// graph in the views of the range lists, the lift graph in one of its own.
TEST_F(Graphs, EachGraphReadsInTheViewItWasDrawnInUntilAnotherAirfoilIsOpened) {
  PEFForm& form = StartWith(1);
  const GraphWidgets graphs{Find<GraphWidget>("ClCdPicture"), Find<GraphWidget>("ClAlfaPicture"),
                            Find<GraphWidget>("CmAlfaPicture"), Find<GraphWidget>("BLUPicture"),
                            Find<GraphWidget>("BLLPicture")};
  PlotRequest request;
  request.views[Graph::ClAlfa] = {-4, 2.0, 8, 0.0};
  RenderContext context;
  DrawGraphs(&form.Document().Current(), request, graphs, context);
  // Half way over Cd from 0 to 0.025 and Cl from 1.5 to -0.5; a quarter way over -4 to 8 degrees and 2.0 to 0.0.
  for (const auto& [graph, share, readout, expected] :
       {std::tuple{Graph::ClCd, 0.5, "CdClValue", "Cd=0.0125 Cl=0.50"},
        std::tuple{Graph::ClAlfa, 0.25, "ClAlfaValue", "Alfa=-1.00 Cl=1.50"}}) {
    const QPointF at(graphs[graph]->width() * share, graphs[graph]->height() * share);
    QMouseEvent event(QEvent::MouseMove, at, graphs[graph]->mapToGlobal(at), Qt::NoButton, {}, Qt::NoModifier);
    QApplication::sendEvent(graphs[graph], &event);
    EXPECT_EQ(Find<QLabel>(readout)->text(), expected);
  }
  form.Document().OpenFile(dir.File("wing.xml"));
  EXPECT_EQ(Find<QLabel>("CdClValue")->text(), "") << "another airfoil clears the read-outs";
}

TEST_F(Graphs, PicturesGoToFilesAndTheClipboard) {
  PEFForm& form = StartWith(2);
  Wheel(Graph("ClCdPicture"), QPointF(100, 100), 1);
  std::string chosen;
  form.UserInterfaceImpl().SetFileChooser([&](const FileDialogRequest&, const QString&) { return chosen; });
  chosen = dir.File("graphs.png");
  Action("mnuFileSaveGraphs")->trigger();
  EXPECT_EQ(ReadFileBytes(chosen).substr(0, 4), "\x89PNG");
  GraphWidget* clAlfa = Graph("ClAlfaPicture");
  chosen = dir.File("one graph.svg");
  clAlfa->findChild<QAction*>("mnuGraphSave")->trigger();
  EXPECT_NE(ReadFileBytes(chosen).find("<svg"), std::string::npos);
  clAlfa->findChild<QAction*>("mnuGraphCopy")->trigger();
  EXPECT_EQ(QApplication::clipboard()->image().size(), clAlfa->Canvas().size());

  MessageBoxCatcher boxes;
  chosen = dir.File("no/such/folder/graphs.png");
  Action("mnuFileSaveGraphs")->trigger();
  ASSERT_EQ(boxes.seen.size(), 1u);
  EXPECT_TRUE(boxes.seen[0].text.contains("graphs.png"));
}

TEST_F(Graphs, OneDroppedFileOpensSeveralAreImported) {
  WritePolarFile(dir, "a.xml", "Alpha");
  WritePolarFile(dir, "b.xml", "Beta", 2);
  PEFForm& form = Start();
  const QString a = QString::fromStdString(dir.File("a.xml")), b = QString::fromStdString(dir.File("b.xml"));
  Drop(&form, {a});
  EXPECT_EQ(form.Document().Current().Name, "Alpha");
  Drop(&form, {b, a});
  EXPECT_EQ(form.Document().Current().ConfigCount(), 3);
  Drop(&form, {b}, Qt::ControlModifier);
  EXPECT_EQ(form.Document().Current().ConfigCount(), 4);
}

}  // namespace
}  // namespace tavilo::testing
