// The approximation dialog: Show draws over both lift graphs until a field
// changes or the dialog closes, Copy fills the clipboard, Fit takes the
// tree's current polar and reports in full, bad input is named, and the
// main window's keys work while the dialog is active.
#include <QClipboard>
#include <QComboBox>
#include <QWheelEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "app/approx_dialog.h"
#include "app/caption_apply.h"
#include "app/graph_widget.h"
#include "app_fixture.h"
#include "tools/approximation.h"

namespace tavilo::testing {
namespace {

class ApproxDialogTest : public MainWindowTest {
 protected:
  QDialog* Open() {
    Start();
    window->Document().OpenFile(TAVILO_TEST_DATA "/xfoil/naca4412_re1m_sweep.pol");
    Action("mnuToolsApproximate")->trigger();
    QApplication::processEvents();
    return Find<QDialog>("frmApprox");
  }

  QLineEdit* Field(int item) {
    return qobject_cast<QLineEdit*>(FindControl(Find<QDialog>("frmApprox"), "txtValue", item));
  }

  void Click(const char* button) { Find<QPushButton>(button)->click(); }

  // Pixels of the approximation's orange on a graph's picture.
  int OrangePixels(const char* graph) {
    const QImage image = Find<GraphWidget>(graph)->Canvas().convertToFormat(QImage::Format_RGB32);
    int count = 0;
    for (int y = 0; y < image.height(); ++y)
      for (int x = 0; x < image.width(); ++x) {
        const QColor c = image.pixelColor(x, y);
        count += c.red() > 180 && c.green() > 70 && c.green() < 150 && c.blue() < 60;
      }
    return count;
  }
};

TEST_F(ApproxDialogTest, ShowDrawsOverBothLiftGraphsUntilAFieldChangesOrItCloses) {
  QDialog* dialog = Open();
  ASSERT_TRUE(dialog->isVisible());
  EXPECT_EQ(dialog->windowTitle(), "Polar Approximation");
  auto shown = [&](const char* when, bool expected) {
    for (const char* graph : {"ClCdPicture", "ClAlfaPicture"})
      EXPECT_EQ(OrangePixels(graph) > 100, expected) << graph << " " << when;
  };
  shown("before Show", false);
  Click("btnShow");
  shown("after Show", true);
  GraphWidget* clCd = Find<GraphWidget>("ClCdPicture");
  QWheelEvent wheel(QPointF(clCd->width() / 2.0, clCd->height() / 2.0), clCd->mapToGlobal(QPointF()), QPoint(),
                    QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(clCd, &wheel);
  ASSERT_TRUE(clCd->View().zoomed);
  Find<QComboBox>("cbClMax")->setCurrentIndex(3);
  window->RefreshPlots();
  shown("through a zoom, a range change and a redraw", true);
  Field(3)->setText("0.0065");
  shown("after a field changed", false);
  Click("btnShow");
  dialog->close();
  shown("after the dialog closed", false);
}

// A report of many estimates wraps and shows in full.
TEST_F(ApproxDialogTest, FitTakesTheTreesCurrentPolarAndReportsInFull) {
  Open();
  auto* fit = Find<QPushButton>("btnFit");
  SelectNode("r");
  EXPECT_FALSE(fit->isEnabled()) << "the airfoil is no polar";
  SelectNode("c 1|p 1");
  ASSERT_TRUE(fit->isEnabled());
  Click("btnFit");
  EXPECT_NEAR(Field(10)->text().toDouble(), -4.24, 0.05) << "Alfa Zero";
  EXPECT_NEAR(Field(8)->text().toDouble(), 1.61, 0.05) << "Cl Max";
  auto* report = Find<QLabel>("lblStatus");
  EXPECT_TRUE(report->text().startsWith("Fitted to 78 points: rms Cl 0.03")) << report->text().toStdString();

  window->Document().OpenFile(std::string(TAVILO_TEST_DATA) + "/uiuc/E387A.DRG");
  Action("mnuLangDeutsch")->trigger();
  SelectNode("c 1|p 1");
  Click("btnFit");
  QApplication::processEvents();
  ASSERT_TRUE(report->text().contains("Stall Bereich Ca Max")) << report->text().toStdString();
  EXPECT_GE(report->height(), report->heightForWidth(report->width())) << "every wrapped line has room";
  EXPECT_TRUE(Find<QDialog>("frmApprox")->rect().contains(report->geometry()));
}

TEST_F(ApproxDialogTest, TheMainWindowsKeysWorkWhileTheDialogIsActive) {
  QDialog* dialog = Open();
  auto polars = [this] {
    const Airfoil& airfoil = window->Document().Current();
    return airfoil.ConfigCount() == 0 ? 0 : airfoil.Configuration(1)->PolarCount();
  };
  ASSERT_EQ(polars(), 1);
  Field(3)->setFocus();
  for (const QKeyCombination redo : {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z}) {
    PressKeys(dialog, QKeySequence(Qt::CTRL | Qt::Key_Z));
    EXPECT_EQ(polars(), 0) << "Ctrl+Z undid the open";
    PressKeys(dialog, QKeySequence(redo));
    EXPECT_EQ(polars(), 1) << QKeySequence(redo).toString().toStdString();
  }
  const QString typed = Field(3)->text();
  QTest::keyClicks(Field(3), "5");
  PressKeys(dialog, QKeySequence(Qt::CTRL | Qt::Key_Z));
  EXPECT_EQ(polars(), 1) << "the field's own typing is taken back first";
  EXPECT_EQ(Field(3)->text(), typed);

  int asked = 0;
  window->UserInterfaceImpl().SetFileChooser([&](const FileDialogRequest&, const QString&) {
    ++asked;
    return std::string();
  });
  for (const QKeyCombination key : {Qt::CTRL | Qt::Key_O, Qt::CTRL | Qt::Key_S}) PressKeys(dialog, QKeySequence(key));
  EXPECT_EQ(asked, 2) << "Import and Export asked for a file";
}

// Copy writes the fields as read; a field that is no number, or values
// the model refuses, are named in the window's language and copy nothing.
TEST_F(ApproxDialogTest, CopyPutsTheFieldsOnTheClipboardAndBadInputIsNamedInTheWindowsLanguage) {
  Open();
  Click("Command1");
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), ApproxInitializer(ApproxValues{}));
  Field(0)->setText(" -1.25e-05 ");
  Click("Command1");
  EXPECT_EQ(QApplication::clipboard()->text().split('\n')[1], "    -1.25e-05, /* Cd Tilt */");

  Action("mnuLangDeutsch")->trigger();
  EXPECT_EQ(ControlText(FindControl(Find<QDialog>("frmApprox"), "btnShow", -1)), "&Anzeigen");
  Field(0)->setText("0,002");
  Field(2)->setText("0.001");
  MessageBoxCatcher catcher;
  Click("btnShow");
  Field(0)->setText("0.002");
  Click("Command1");
  ASSERT_EQ(catcher.seen.size(), 2u);
  EXPECT_EQ(catcher.seen[0].text.toStdString(),
            "Cw Drehung: \u201E0,002\u201C ist keine Zahl. Bitte die Dezimalstellen nach einem Punkt schreiben.");
  EXPECT_EQ(catcher.seen[1].text.toStdString(), "Stall Cw bei Ca Min muss gr\u00F6\u00DFer als Cw Min sein.");
  EXPECT_EQ(catcher.seen[1].title, "Tavilo: Fehler");
  EXPECT_EQ(QApplication::clipboard()->text().split('\n')[1], "    -1.25e-05, /* Cd Tilt */");
}

}  // namespace
}  // namespace tavilo::testing
