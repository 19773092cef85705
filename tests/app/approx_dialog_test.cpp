// The approximation dialog (frmApprox) as opened from the Tools menu.
#include "app/approx_dialog.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "app/caption_apply.h"
#include "app/graph_widget.h"
#include "app_fixture.h"
#include "tools/approximation.h"

namespace tavilo::testing {
namespace {

class ApproxDialogTest : public MainWindowTest {
 protected:
  QDialog* Open(const char* file = "xfoil/naca4412_re1m_sweep.pol") {
    Start();
    window->Document().OpenFile(std::string(TAVILO_TEST_DATA) + "/" + file);
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
  auto shown = [&](const char* when, bool expected) {
    for (const char* graph : {"ClCdPicture", "ClAlfaPicture"})
      EXPECT_EQ(OrangePixels(graph) > 100, expected) << graph << " " << when;
  };
  shown("before Show", false);
  Click("btnShow");
  shown("after Show", true);
  GraphWidget* clCd = Find<GraphWidget>("ClCdPicture");
  Wheel(clCd, QPointF(clCd->width() / 2.0, clCd->height() / 2.0), 1);
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

TEST_F(ApproxDialogTest, FitTakesTheTreesCurrentPolarKeepingHeldValuesWithinTheRange) {
  Open();
  auto* fit = Find<QPushButton>("btnFit");
  SelectNode("r");
  EXPECT_FALSE(fit->isEnabled()) << "the airfoil is no polar";
  SelectNode("c 1|p 1");
  ASSERT_TRUE(fit->isEnabled());
  Field(4)->setText("3");
  qobject_cast<QCheckBox*>(FindControl(Find<QDialog>("frmApprox"), "chkHold", 4))->setChecked(true);
  Find<QLineEdit>("txtAlfaFrom")->setText("-10");
  Find<QLineEdit>("txtAlfaTo")->setText("10");
  Click("btnFit");
  EXPECT_EQ(Field(4)->text(), "3") << "Cd Exponent held";
  EXPECT_NEAR(Field(10)->text().toDouble(), -4.0, 0.3) << "Alfa Zero";
  const QString report = Find<QLabel>("lblStatus")->text();
  EXPECT_TRUE(report.startsWith("Fitted 4 of 11 values to 40 points: rms Cl 0.0")) << report.toStdString();
  EXPECT_TRUE(report.contains("from the rest: Stall Cd at Cl Max, Stall Cd at Cl Min")) << report.toStdString();
}

TEST_F(ApproxDialogTest, TheMainWindowsKeysWorkWhileTheDialogIsActive) {
  QDialog* dialog = Open();
  auto polars = [this] {
    const Airfoil& airfoil = window->Document().Current();
    return airfoil.ConfigCount() == 0 ? 0 : airfoil.Configuration(1)->PolarCount();
  };
  auto press = [&](QKeyCombination keys) {
    PressKeys(dialog, QKeySequence(keys));
    return polars();
  };
  Field(3)->setFocus();
  EXPECT_EQ(press(Qt::CTRL | Qt::Key_Z), 0) << "Ctrl+Z undid the open";
  EXPECT_EQ(press(Qt::CTRL | Qt::Key_Y), 1);
  const QString typed = Field(3)->text();
  QTest::keyClicks(Field(3), "5");
  EXPECT_EQ(press(Qt::CTRL | Qt::Key_Z), 1) << "the field's own typing is taken back first";
  EXPECT_EQ(Field(3)->text(), typed);
}

TEST_F(ApproxDialogTest, CopyPutsTheFieldsOnTheClipboardAndBadInputIsNamedInTheWindowsLanguage) {
  Open("uiuc/SG6042.DRG");
  Click("Command1");
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(), ApproxInitializer(ApproxValues{}));
  Field(0)->setText(" -1.25e-05 ");
  Click("Command1");
  EXPECT_EQ(QApplication::clipboard()->text().split('\n')[1], "    -1.25e-05, /* Cd Tilt */");
  Action("mnuLangDeutsch")->trigger();
  Field(0)->setText("0,002");
  MessageBoxCatcher catcher;
  Click("Command1");
  SelectNode("c 1|p 1");
  Find<QLineEdit>("txtAlfaFrom")->setText("5");
  Find<QLineEdit>("txtAlfaTo")->setText("-5");
  Click("btnFit");
  const std::string expected[] = {
      "Cw Drehung: \u201E0,002\u201C ist keine Zahl. Bitte die Dezimalstellen nach einem Punkt schreiben.",
      "Der Winkelbereich von 5 bis -5 ist leer.",
  };
  ASSERT_EQ(catcher.seen.size(), std::size(expected));
  for (size_t k = 0; k < std::size(expected); ++k) EXPECT_EQ(catcher.seen[k].text.toStdString(), expected[k]);
  EXPECT_EQ(catcher.seen[0].title, "Tavilo: Fehler");
  EXPECT_EQ(QApplication::clipboard()->text().split('\n')[1], "    -1.25e-05, /* Cd Tilt */");
}

}  // namespace
}  // namespace tavilo::testing
