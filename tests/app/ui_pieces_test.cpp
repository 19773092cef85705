// The smaller pieces of the desktop side: file dialog filters and the
// read-outs.
#include <QLabel>
#include <QMouseEvent>

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

}  // namespace
}  // namespace tavilo::testing
