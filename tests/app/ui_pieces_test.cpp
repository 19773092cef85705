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
  EXPECT_EQ(DefaultSuffixOf("Mses Polar File (polar.*)"), "") << "a name pattern gives no extension";
}

using Readouts = MainWindowTest;

// The pointer reads out in the view a graph was drawn in: the lift-drag
// graph in the views of the range lists, the lift graph in one of its own.
TEST_F(Readouts, EachGraphReadsInTheViewItWasDrawnIn) {
  PEFForm& form = StartWith(1);
  const GraphWidgets graphs{Find<GraphWidget>("ClCdPicture"), Find<GraphWidget>("ClAlfaPicture"),
                            Find<GraphWidget>("CmAlfaPicture"), Find<GraphWidget>("BLUPicture"),
                            Find<GraphWidget>("BLLPicture")};
  PlotRequest request;
  request.views[Graph::ClAlfa] = {-4, 2.0, 8, 0.0};
  RenderContext context;
  DrawGraphs(&form.Document().Current(), request, graphs, context);
  const struct {
    Graph graph;
    double share;  // of the width and the height from the top left
    const char *readout, *expected;
  } cases[] = {
      // Cd from 0 to 0.025 and Cl from 1.5 down to -0.5.
      {Graph::ClCd, 0.5, "CdClValue", "Cd=0.0125 Cl=0.50"},
      // A quarter of the way from -4 to 8 degrees and from 2.0 down to 0.0.
      {Graph::ClAlfa, 0.25, "ClAlfaValue", "Alfa=-1.00 Cl=1.50"},
  };
  for (const auto& c : cases) {
    GraphWidget* graph = graphs[c.graph];
    const QPointF at(graph->width() * c.share, graph->height() * c.share);
    QMouseEvent event(QEvent::MouseMove, at, graph->mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(graph, &event);
    EXPECT_EQ(Find<QLabel>(c.readout)->text(), c.expected);
  }
}

}  // namespace
}  // namespace tavilo::testing
