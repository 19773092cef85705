// The smaller pieces of the desktop side: file dialog filters, the error
// guard, the print options dialog, the airfoil choice and the read-outs.
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include "app/airfoil_select_dialog.h"
#include "app/error_guard.h"
#include "app/graph_widget.h"
#include "app/options_dialog.h"
#include "app/qt_user_interface.h"
#include "app/settings.h"
#include "app_fixture.h"
#include "support/recording_ui.h"

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

TEST(RunGuarded, ShowsCoreAndStandardErrorsAndReportsFailure) {
  RecordingUserInterface ui;
  EXPECT_TRUE(RunGuarded(ui, [] {}));
  EXPECT_FALSE(RunGuarded(ui, [] { throw SubscriptError("set 4"); }));
  EXPECT_FALSE(RunGuarded(ui, [] { throw std::invalid_argument("bad"); }));
  ASSERT_EQ(ui.messages.size(), 2u);
  EXPECT_EQ(ui.messages[0].title, "Tavilo: Error");
  EXPECT_EQ(ui.messages[0].text, "Subscript out of range: set 4");
  EXPECT_EQ(ui.messages[0].icon, MessageIcon::Critical);
  EXPECT_NE(ui.messages[1].text.find("bad"), std::string::npos);
}

TEST(OptionsDialog, OptionPairHoldsAtMostOneAndStoresMinusOne) {
  OptionsDialog dialog;
  AppSettings settings;
  settings.gridShow = 1;
  settings.legendPosition1 = -1;
  settings.legendPosition2 = -1;
  dialog.Apply(settings);
  EXPECT_EQ(dialog.GridShow(), 1);
  EXPECT_EQ(dialog.LegendPosition(0), 0);
  EXPECT_EQ(dialog.LegendPosition(1), -1);

  AppSettings stored;
  dialog.Store(stored);
  EXPECT_EQ(stored.gridShow, 1);
  EXPECT_EQ(stored.legendShow, 0);
  EXPECT_EQ(stored.legendPosition1, 0);
  EXPECT_EQ(stored.legendPosition2, -1);

  dialog.Apply(AppSettings{});
  EXPECT_EQ(dialog.LegendPosition(0), 0);
  EXPECT_EQ(dialog.LegendPosition(1), 0);
}

TEST(AirfoilSelectDialog, ReturnsTheChosenIndexOrMinusOne) {
  SetLanguage(kEnglish);
  for (const int chosen : {-1, 2}) {
    AirfoilSelectDialog dialog;
    QTimer::singleShot(0, &dialog, [&dialog, chosen] {
      auto* list = dialog.findChild<QListWidget*>("lstAirfoils");
      if (chosen >= 0) list->setCurrentRow(chosen);
      dialog.findChild<QPushButton*>("btnOkay")->click();
    });
    EXPECT_EQ(dialog.Choose({"E387", "S1223", "SD7037"}), chosen);
    EXPECT_EQ(dialog.windowTitle(), "Form1");
    EXPECT_EQ(dialog.findChild<QLabel*>("Label1")->text(),
              "This data file contains polars for more than one airfoil.");
  }
}

TEST(GraphWidget, ReadoutShowsValuesInsideTheLimitAndKeepsTheTextBeyond) {
  QWidget parent;
  parent.resize(300, 300);
  GraphWidget graph("ClCdPicture", &parent);
  graph.setGeometry(0, 0, 200, 100);
  QLabel label;
  graph.SetValueRect(QRectF(QPointF(0, 1.5), QPointF(2.0, -0.5)));
  graph.SetReadout(&label, [](double x, double y) -> std::optional<std::string> {
    if (!(x < 1.0)) return std::nullopt;
    return std::to_string(static_cast<int>(x * 100)) + "/" + std::to_string(static_cast<int>(y * 100));
  });
  auto move = [&graph](QPointF at) {
    QMouseEvent event(QEvent::MouseMove, at, graph.mapToGlobal(at), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(&graph, &event);
  };
  move(QPointF(50, 25));  // a quarter across and down: x 0.5, y 1.0
  EXPECT_EQ(label.text(), "50/100");
  move(QPointF(150, 25));  // x 1.5: beyond the limit, the text stays
  EXPECT_EQ(label.text(), "50/100");
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
