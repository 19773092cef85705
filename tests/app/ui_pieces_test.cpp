// The smaller pieces of the desktop side: file dialog filters and the
// read-outs.
#include <QLabel>
#include <QMouseEvent>

#include "app/graph_view.h"
#include "app/graph_widget.h"
#include "app/qt_user_interface.h"
#include "app_fixture.h"

namespace tavilo::testing {
namespace {

TEST(QtFileFilter, TurnsPipeJoinedPairsIntoQtFilters) {
  struct Case {
    const char* pairs;
    const char* expected;
  };
  const Case cases[] = {
      {"Polar Exchange File (*.xml)|*.xml", "Polar Exchange File (*.xml)"},
      {"Xfoil Polar File (*.pol)|*.pol|Mses Polar File (polar.*)|polar.*",
       "Xfoil Polar File (*.pol);;Mses Polar File (polar.*)"},
      {"All polars|*.xml;*.pef", "All polars (*.xml *.pef)"},
      {"Text|*.txt|dangling", "Text (*.txt)"},
      {"", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(QtFileFilter(c.pairs), c.expected) << c.pairs;
}

using Readouts = MainWindowTest;

TEST_F(Readouts, PointerOverTheLiftDragGraphReadsCdAndCl) {
  WritePolarFile(dir, "wing.xml", "Wing");
  PEFForm& form = Start();
  form.Document().OpenFile(dir.File("wing.xml"));
  auto* graph = Find<GraphWidget>("ClCdPicture");
  const QPointF middle(graph->width() / 2.0, graph->height() / 2.0);
  QMouseEvent event(QEvent::MouseMove, middle, graph->mapToGlobal(middle), Qt::NoButton, Qt::NoButton,
                    Qt::NoModifier);
  QApplication::sendEvent(graph, &event);
  // Cd from 0 to 0.025 and Cl from 1.5 down to -0.5: the middle is 0.0125 / 0.5.
  EXPECT_EQ(Find<QLabel>("CdClValue")->text(), "Cd=0.0125 Cl=0.50");
}

// A graph drawn in a view of its own reads out in that view; the others
// keep the views of the range lists.
TEST_F(Readouts, EachGraphReadsInTheViewItWasDrawnIn) {
  WritePolarFile(dir, "wing.xml", "Wing");
  PEFForm& form = Start();
  form.Document().OpenFile(dir.File("wing.xml"));
  const GraphWidgets graphs{Find<GraphWidget>("ClCdPicture"), Find<GraphWidget>("ClAlfaPicture"),
                            Find<GraphWidget>("CmAlfaPicture"), Find<GraphWidget>("BLUPicture"),
                            Find<GraphWidget>("BLLPicture")};
  PlotRequest request;
  request.views[Graph::ClAlfa] = {-4, 2.0, 8, 0.0};
  RenderContext context;
  DrawGraphs(&form.Document().Current(), request, graphs, context);
  EXPECT_EQ(graphs[Graph::ClCd]->View(), DefaultViews(PlotRanges{})[Graph::ClCd]);

  GraphWidget* graph = graphs[Graph::ClAlfa];
  const QPointF quarter(graph->width() / 4.0, graph->height() / 4.0);
  QMouseEvent event(QEvent::MouseMove, quarter, graph->mapToGlobal(quarter), Qt::NoButton, Qt::NoButton,
                    Qt::NoModifier);
  QApplication::sendEvent(graph, &event);
  // A quarter of the way from -4 to 8 degrees and from 2.0 down to 0.0.
  EXPECT_EQ(Find<QLabel>("ClAlfaValue")->text(), "Alfa=-1.00 Cl=1.50");
}

}  // namespace
}  // namespace tavilo::testing
