// The file browser and the file commands: what the list shows, opening by
// double-click and by Enter, the message for files that cannot be read,
// export, batch conversion and the envelope.
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTreeWidget>
#include <fstream>

#include "app_fixture.h"

namespace tavilo::testing {
namespace {

using FileCommands = MainWindowTest;

QStringList Names(QListWidget* list) {
  QStringList names;
  for (int i = 0; i < list->count(); ++i) names << list->item(i)->text().trimmed();
  return names;
}

std::string FileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST_F(FileCommands, ListsOnlyPolarFilesAndOpensByDoubleClickOrEnter) {
  for (const char* name : {"c.pol", "d.mwk", "e.drg", "F.POL", "g.txt", "polar.dat", "h.xml.bak"}) dir.Write(name, "");
  std::filesystem::create_directory(dir.Path() / "sub.xml");
  const std::string path = WritePolarFile(dir, "a.xml", "Clark Y", 2);
  WritePolarFile(dir, "b.xml", "Second");
  PEFForm& form = Start();
  QListWidget* list = FileList();
  EXPECT_EQ(Names(list), QStringList({"a.xml", "b.xml", "c.pol", "d.mwk", "e.drg", "F.POL"}));

  PressEnter(list);  // nothing highlighted
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);
  Highlight(list, "a.xml");
  DoubleClick(list, list->currentItem());
  EXPECT_EQ(form.Document().Current().Name, "Clark Y");
  EXPECT_EQ(form.Document().Current().Configuration(1)->PolarCount(), 2);
  EXPECT_EQ(form.windowTitle().toStdString(), "Tavilo - " + path);
  EXPECT_EQ(Find<QLabel>("ProfilName")->text(), "Clark Y");
  EXPECT_EQ(form.statusBar()->currentMessage(), "Ready.");

  Highlight(list, "b.xml");
  QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ");
  QApplication::sendEvent(list, &space);
  EXPECT_EQ(form.Document().Current().Name, "Clark Y");
  PressEnter(list);
  EXPECT_EQ(form.Document().Current().Name, "Second");
  EXPECT_EQ(form.Document().Current().ConfigCount(), 1);
}

TEST_F(FileCommands, UnreadableFilesAreReportedInTheCurrentLanguage) {
  WritePolarFile(dir, "wing.xml", "Wing");
  const std::string unknown = dir.Write("notes.abc", "hello");
  PEFForm& form = Start();
  form.Document().OpenFile(dir.File("wing.xml"));
  MessageBoxCatcher boxes;
  form.Document().OpenFile(dir.File("vanished.xml"));
  EXPECT_EQ(form.Document().Current().Name, "Wing");  // a missing file keeps the document
  form.Document().OpenFile(unknown);
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);
  EXPECT_FALSE(Action("mnuFileExport")->isEnabled());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);

  Action("mnuLangDeutsch")->trigger();
  FileDialogRequest asked;
  form.UserInterfaceImpl().SetFileChooser([&](const FileDialogRequest& request, const QString&) {
    asked = request;
    return unknown;
  });
  Action("Toolbar1_OPEN")->trigger();
  EXPECT_EQ(asked.title, "In bestehende Struktur importieren");
  ASSERT_EQ(boxes.seen.size(), 3u);
  EXPECT_EQ(boxes.seen[0].title, "Tavilo: Error");
  EXPECT_TRUE(boxes.seen[0].text.contains("vanished.xml")) << boxes.seen[0].text.toStdString();
  EXPECT_EQ(boxes.seen[1].text, "Unknown File Format!");
  EXPECT_EQ(boxes.seen[1].icon, QMessageBox::Critical);
  EXPECT_EQ(boxes.seen[2].title, "Tavilo: Fehler");
  EXPECT_EQ(boxes.seen[2].text, "Umbekanntes Dateiformat!");
}

TEST_F(FileCommands, ExportAsksWithTheSaveTitleAndWritesTheChosenFile) {
  WritePolarFile(dir, "wing.xml", "Wing");
  PEFForm& form = Start();
  form.Document().OpenFile(dir.File("wing.xml"));
  FileDialogRequest asked;
  QString filter;
  form.UserInterfaceImpl().SetFileChooser([&](const FileDialogRequest& request, const QString& qtFilter) {
    asked = request;
    filter = qtFilter;
    return dir.File("copy.xml");
  });
  Action("mnuFileExport")->trigger();
  EXPECT_EQ(asked.kind, FileDialogKind::Save);
  EXPECT_EQ(asked.title, "Export Polar");
  EXPECT_TRUE(asked.promptOverwrite);
  EXPECT_TRUE(filter.startsWith("Polar Exchange File (*.xml);;")) << filter.toStdString();
  EXPECT_TRUE(std::filesystem::exists(dir.File("copy.xml")));
}

TEST_F(FileCommands, BatchConvertsThePefFilesOfTheChosenFilesDirectory) {
  const std::string sample = FileBytes(std::string(TAVILO_EXAMPLES) + "/naca2412.pef");
  dir.Write("wing.PEF", sample);
  dir.Write("tail.pef", sample);
  PEFForm& form = Start();
  form.UserInterfaceImpl().SetFileChooser(
      [&](const FileDialogRequest&, const QString&) { return dir.File("wing.PEF"); });
  MessageBoxCatcher boxes;
  Action("mnuBatch")->trigger();
  EXPECT_TRUE(boxes.seen.empty());
  EXPECT_TRUE(std::filesystem::exists(dir.File("wing.xml")));
  EXPECT_TRUE(std::filesystem::exists(dir.File("tail.xml")));
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);  // the document is left alone
}

TEST_F(FileCommands, DragFileWithSeveralAirfoilsAsksWhichOneToShow) {
  const std::string uiuc = std::string(TAVILO_TEST_DATA) + "/uiuc/";
  dir.Write("two.drg", FileBytes(uiuc + "S1223GF1.DRG") + FileBytes(uiuc + "WASP.DRG"));
  PEFForm& form = Start();
  QStringList offered;
  QTimer answer;
  QObject::connect(&answer, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || dialog->objectName() != "frmAirfoilSelect") return;
    auto* list = dialog->findChild<QListWidget*>("lstAirfoils");
    for (int i = 0; i < list->count(); ++i) offered << list->item(i)->text();
    list->setCurrentRow(1);
    dialog->findChild<QPushButton*>("btnOkay")->click();
  });
  answer.start(5);
  Highlight(FileList(), "two.drg");
  PressEnter(FileList());
  answer.stop();
  EXPECT_EQ(offered, QStringList({"S1223", "WASP", ""}));
  EXPECT_EQ(form.Document().Current().Name, "WASP");
  EXPECT_EQ(Find<QLabel>("ProfilName")->text(), "WASP");
}

TEST_F(FileCommands, EnvelopeAddsASetAndWritesItsFile) {
  PEFForm& form = Start();
  form.Document().OpenFile(std::string(TAVILO_EXAMPLES) + "/naca2412.xml");
  Action("mnuToolsEnvelope")->trigger();
  ASSERT_EQ(form.Document().Current().ConfigCount(), 2);
  EXPECT_EQ(form.Document().Current().Configuration(2)->Name, "Envelope");
  EXPECT_TRUE(std::filesystem::exists(dir.File("Envelope.pef")));
  const QList<QTreeWidgetItem*> shown =
      Find<QTreeWidget>("TreeView1")->findItems("Set 2: Envelope", Qt::MatchExactly | Qt::MatchRecursive);
  ASSERT_EQ(shown.size(), 1);
  EXPECT_EQ(shown[0]->child(0)->data(0, Qt::UserRole).toString(), "c 2|p 1");
}

}  // namespace
}  // namespace tavilo::testing
