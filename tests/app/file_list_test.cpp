// The file browser and the file commands.
#include <QLabel>
#include <QPushButton>

#include "app/qt_user_interface.h"
#include "app_fixture.h"
#include "formats/file_text.h"
#include "formats/pef.h"

namespace tavilo::testing {
namespace {

TEST(QtFileFilter, TurnsPipeJoinedPairsIntoQtFilters) {
  struct Case {
    const char* pairs;
    const char* expected;
  };
  const Case cases[] = {
      {"Xfoil Polar File (*.pol)|*.pol|Mses Polar File (polar.*)|polar.*",
       "Xfoil Polar File (*.pol);;Mses Polar File (polar.*)"},
      {"Text|*.txt|dangling", "Text (*.txt)"},
      {"", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(QtFileFilter(c.pairs), c.expected) << c.pairs;
  // The type chosen in a file dialog gives a name typed without one its extension.
  EXPECT_EQ(DefaultSuffixOf("Polar Exchange File (*.pef)"), "pef");
  EXPECT_EQ(DefaultSuffixOf("Mses Polar File (polar.*)"), "") << "a name pattern gives no extension";
}

using FileCommands = MainWindowTest;

QStringList Names(QListWidget* list) {
  QStringList names;
  for (int i = 0; i < list->count(); ++i) names << list->item(i)->text().trimmed();
  return names;
}

TEST_F(FileCommands, ListsOnlyPolarFilesOpensByDoubleClickOrEnterAndAsksWhichOfSeveralAirfoils) {
  for (const char* name : {"c.pol", "d.mwk", "F.POL", "g.txt", "polar.dat", "h.xml.bak"}) dir.Write(name, "");
  const std::string uiuc = std::string(TAVILO_TEST_DATA) + "/uiuc/";
  dir.Write("e.drg", ReadFileBytes(uiuc + "S1223GF1.DRG") + ReadFileBytes(uiuc + "WASP.DRG"));
  std::filesystem::create_directory(dir.Path() / "sub.xml");
  const std::string path = WritePolarFile(dir, "a.xml", "Clark Y", 2);
  WritePolarFile(dir, "b.xml", "Second");
  PEFForm& form = Start();
  QListWidget* list = FileList();
  EXPECT_EQ(Names(list), QStringList({"a.xml", "b.xml", "c.pol", "d.mwk", "e.drg", "F.POL"}));

  QTest::keyClick(list, Qt::Key_Return);  // nothing highlighted
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);
  Highlight(list, "a.xml");
  const QPoint at = list->visualItemRect(list->currentItem()).center();
  QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, at);
  EXPECT_EQ(form.Document().Current().Name, "Clark Y");
  EXPECT_EQ(form.windowTitle().toStdString(), "Tavilo - " + path);

  Highlight(list, "b.xml");
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(form.Document().Current().Name, "Second") << "opened, not imported";
  EXPECT_EQ(form.Document().Current().ConfigCount(), 1);

  QStringList offered;
  QTimer answer;
  QObject::connect(&answer, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || dialog->objectName() != "frmAirfoilSelect") return;
    auto* airfoils = dialog->findChild<QListWidget*>("lstAirfoils");
    for (int i = 0; i < airfoils->count(); ++i) offered << airfoils->item(i)->text();
    airfoils->setCurrentRow(1);
    dialog->findChild<QPushButton*>("btnOkay")->click();
  });
  answer.start(5);
  Highlight(list, "e.drg");
  QTest::keyClick(list, Qt::Key_Return);
  answer.stop();
  EXPECT_EQ(offered, QStringList({"S1223", "WASP", ""}));
  EXPECT_EQ(Find<QLabel>("ProfilName")->text(), "WASP");
}

// A message about a file names it and is titled in the window's language;
// the title names the file the document was opened from, and neither a
// failed open, an import nor the language moves it.
TEST_F(FileCommands, MessagesNameTheirFileAndTheTitleFollowsTheOpenedDocument) {
  const std::string wing = WritePolarFile(dir, "wing.xml", "Wing");
  const std::string tail = WritePolarFile(dir, "tail.xml", "Tail");
  const std::string unknown = dir.Write("notes.abc", "hello");
  PEFForm& form = Start();
  auto shown = [&] { return (form.windowTitle() + "|" + Find<QLabel>("ProfilName")->text()).toStdString(); };
  EXPECT_EQ(shown(), "Tavilo|");
  MessageBoxCatcher boxes;
  form.Document().OpenFile(wing);
  EXPECT_EQ(shown(), "Tavilo - " + wing + "|Wing");
  form.Document().OpenFile(unknown);
  form.UserInterfaceImpl().SetFilesChooser([&](const FileDialogRequest&, const QString&) {
    return std::vector<std::string>{unknown, tail};
  });
  Action("mnuFileImport")->trigger();
  EXPECT_EQ(form.Document().Current().ConfigCount(), 2) << "the good file of the two is imported";
  EXPECT_EQ(shown(), "Tavilo - " + wing + "|Wing");
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  ASSERT_EQ(boxes.seen.size(), 2u);
  for (const MessageBoxCatcher::Seen& box : boxes.seen) {
    EXPECT_EQ(box.text.toStdString(), "File: " + unknown + "\r\nUnknown File Format!");
    EXPECT_EQ(box.title, "Tavilo: Error");
  }

  Action("mnuEditUndo")->trigger();
  Action("mnuEditUndo")->trigger();
  EXPECT_EQ(shown(), "Tavilo|") << "the first opening undone";
  Action("mnuEditRedo")->trigger();
  Action("mnuLangDeutsch")->trigger();
  EXPECT_EQ(shown(), "Tavilo - " + wing + "|Wing");
  form.Document().OpenFile(unknown);
  EXPECT_EQ(boxes.seen.back().title, "Tavilo: Fehler");
}

TEST_F(FileCommands, ExportWarnsOfASweepTooLongForXmlAndEachDialogOffersItsFormats) {
  Airfoil sweep;
  auto set = std::make_shared<Configuration>();
  set->AddPolar(MakePolar(1e5, 0, true, std::vector<PolarPoint>(1001, MakePoint(1, 0.5, 0.01))));
  sweep.AddConfiguration(set);
  WriteToPEF(sweep, dir.File("sweep.pef"));
  PEFForm& form = Start();
  MessageBoxCatcher boxes;
  QStringList asked;  // the filters, and whether an existing file is asked about
  form.UserInterfaceImpl().SetFileChooser([&](const FileDialogRequest& request, const QString& qtFilter) {
    asked << qtFilter.section(";;", 0, 0) + (request.promptOverwrite ? " overwrite?" : "");
    return request.kind == FileDialogKind::Save ? dir.File("copy.xml") : std::string();
  });
  Action("mnuFileImport")->trigger();
  form.Document().OpenFile(dir.File("sweep.pef"));
  Action("mnuFileExport")->trigger();
  EXPECT_EQ(asked, QStringList({"All polar files (*.xml *.pef *.pol polar.* *.drg *.mwk *.txt *.csv)",
                                "Polar Exchange File (*.xml) overwrite?"}));
  ASSERT_EQ(boxes.seen.size(), 1u);
  EXPECT_EQ(boxes.seen[0].icon, QMessageBox::Warning);
  EXPECT_TRUE(boxes.seen[0].text.startsWith(QString::fromStdString(dir.File("copy.xml") + " holds a polar of more")));
}

}  // namespace
}  // namespace tavilo::testing
