// frmXfoil: a run from the window arrives as one undo step, with the
// window responsive meanwhile; a bad coordinate file is named before any
// run. xfoil itself is a fake here; the core's tests run the real one.
#include "app/xfoil_dialog.h"

#include <sys/stat.h>

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <fstream>

#include "app_fixture.h"
#include "document/document.h"

namespace tavilo::testing {
namespace {

class XfoilDialogTest : public MainWindowTest {
 protected:
  QDialog* Open() {
    StartWith(1);
    Action("mnuToolsRunXfoil")->trigger();
    QApplication::processEvents();
    return Find<QDialog>("frmXfoil");
  }
  void Type(const char* field, const std::string& text) {
    Find<QLineEdit>(field)->setText(QString::fromStdString(text));
    emit Find<QLineEdit>(field)->editingFinished();
  }
};

TEST_F(XfoilDialogTest, RunAddsOneSetAsOneUndoStep) {
  QDialog* dialog = Open();
  const std::string fake = dir.File("fake-xfoil");
  // Two points, a pause that the window must live through, and the end.
  std::ofstream(fake) << "#!/bin/sh\nprintf ' Calculated polar for: FAKE 1\\n\\n"
                         " 1 1 Reynolds number fixed          Mach number fixed\\n\\n"
                         " xtrf =   1.000 (top)        1.000 (bottom)\\n"
                         " Mach =   0.000     Re =     0.200 e 6     Ncrit =   9.000\\n\\n"
                         "   alpha    CL        CD       CDp       CM     Top_Xtr  Bot_Xtr\\n"
                         "  ------ -------- --------- --------- -------- -------- --------\\n"
                         "   0.000   0.4575   0.01126   0.00367  -0.0987   0.7038   0.9270\\n"
                         "   1.000   0.6218   0.01165   0.00348  -0.1093   0.6595   1.0000\\n' > polar.txt\n"
                         "sleep 0.3\n";
  chmod(fake.c_str(), 0755);
  Type("txtProgram", fake);
  Type("txtReynolds", "2e5, 1e5");
  Type("txtAlphaFrom", "0");
  Type("txtAlphaTo", "2");
  Type("txtAlphaStep", "1");
  const Document& document = window->Document().Edits();
  const size_t steps = document.Steps().UndoCount();
  const int sets = window->Document().Current().ConfigCount();
  Find<QPushButton>("cmdRun")->click();
  EXPECT_FALSE(Find<QPushButton>("cmdRun")->isEnabled());
  QTRY_VERIFY_WITH_TIMEOUT(Find<QPushButton>("cmdRun")->isEnabled(), 10000);
  EXPECT_EQ(document.Steps().UndoCount(), steps + 1) << Find<QLabel>("lblReport")->text().toStdString();
  ASSERT_EQ(window->Document().Current().ConfigCount(), sets + 1);
  const Configuration& added = *window->Document().Current().Configuration(sets + 1);
  ASSERT_EQ(added.PolarCount(), 2);
  EXPECT_LE(added.Polar(1)->ReynoldsNumber, added.Polar(2)->ReynoldsNumber);
  EXPECT_EQ(Find<QProgressBar>("prgRun")->value(), Find<QProgressBar>("prgRun")->maximum());
  EXPECT_TRUE(Find<QLabel>("lblReport")->text().contains("no convergence at 2"));
  window->Document().Edits().Undo();
  EXPECT_EQ(window->Document().Current().ConfigCount(), sets);
  // The next dialog, in this session or the next, starts where this run left off.
  XfoilDialog next(Language::English, [](const Airfoil&) {});
  for (const char* field : {"txtProgram", "txtReynolds", "txtAlphaFrom"})
    EXPECT_EQ(next.findChild<QLineEdit*>(field)->text(), dialog->findChild<QLineEdit*>(field)->text()) << field;
}

TEST_F(XfoilDialogTest, BadCoordinateFileIsNamedWithItsLine) {
  Open();
  Type("txtAirfoil", dir.Write("bad.dat", "bad\n1 0\n0.5 x\n"));
  EXPECT_TRUE(Find<QLabel>("lblShape")->text().contains("bad.dat:3"));
  Type("txtAirfoil", "NACA 4412");
  EXPECT_TRUE(Find<QLabel>("lblShape")->text().startsWith("Thickness 12.0 % at "))
      << Find<QLabel>("lblShape")->text().toStdString();
}

}  // namespace
}  // namespace tavilo::testing
