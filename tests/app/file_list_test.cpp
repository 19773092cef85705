// The file browser and loading from it: what the lists show, opening a file
// by double-click and by Enter, entering directories, and the messages for
// files that cannot be read.
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <QStatusBar>
#include <QTreeWidget>
#include <fstream>

#include "app/file_browser.h"
#include "app/qt_user_interface.h"
#include "app_fixture.h"

namespace tavilo::testing {
namespace {

using FileBrowsing = MainWindowTest;

QStringList Names(QListWidget* list) {
  QStringList names;
  for (int i = 0; i < list->count(); ++i) names << list->item(i)->text().trimmed();
  return names;
}

TEST_F(FileBrowsing, ListsOnlyThePolarFileKinds) {
  for (const char* name : {"a.xml", "b.pef", "c.pol", "d.mwk", "e.drg", "F.POL", "g.txt", "polar.dat", "h.xml.bak"}) {
    dir.Write(name, "");
  }
  std::filesystem::create_directory(dir.Path() / "sub.xml");
  Start();
  EXPECT_EQ(Names(FileList()), QStringList({"a.xml", "b.pef", "c.pol", "d.mwk", "e.drg", "F.POL"}));
}

TEST_F(FileBrowsing, DoubleClickOpensTheFile) {
  const std::string path = WritePolarFile(dir, "wing.xml", "Clark Y", 2);
  PEFForm& form = Start();
  QListWidget* list = FileList();
  Highlight(list, "wing.xml");
  DoubleClick(list, list->currentItem());

  EXPECT_EQ(form.Document().Current().Name, "Clark Y");
  ASSERT_EQ(form.Document().Current().ConfigCount(), 1);
  EXPECT_EQ(form.Document().Current().Configuration(1)->PolarCount(), 2);
  EXPECT_EQ(form.windowTitle().toStdString(), "Tavilo - " + path);
  EXPECT_EQ(Find<QLabel>("ProfilName")->text(), "Clark Y");
  EXPECT_EQ(form.statusBar()->currentMessage(), "Ready.");
  EXPECT_TRUE(Action("mnuFileExport")->isEnabled());
}

TEST_F(FileBrowsing, EnterOpensTheHighlightedFileAndReplacesTheDocument) {
  WritePolarFile(dir, "first.xml", "First");
  WritePolarFile(dir, "second.xml", "Second");
  PEFForm& form = Start();
  QListWidget* list = FileList();
  Highlight(list, "first.xml");
  PressEnter(list);
  EXPECT_EQ(form.Document().Current().Name, "First");
  Highlight(list, "second.xml");
  PressEnter(list);
  EXPECT_EQ(form.Document().Current().Name, "Second");
  EXPECT_EQ(form.Document().Current().ConfigCount(), 1);
}

TEST_F(FileBrowsing, OtherKeysAndNoHighlightOpenNothing) {
  WritePolarFile(dir, "wing.xml", "Wing");
  PEFForm& form = Start();
  QListWidget* list = FileList();
  PressEnter(list);
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);
  Highlight(list, "wing.xml");
  QKeyEvent space(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, " ");
  QApplication::sendEvent(list, &space);
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);
}

QListWidgetItem* ItemNamed(QListWidget* list, const QString& name) {
  for (int i = 0; i < list->count(); ++i) {
    if (list->item(i)->text().trimmed() == name) return list->item(i);
  }
  ADD_FAILURE() << "no entry " << name.toStdString();
  return nullptr;
}

TEST_F(FileBrowsing, DirectoryListEntersByDoubleClickAndLeavesByEnter) {
  std::filesystem::create_directory(dir.Path() / "polars");
  WritePolarFile(dir, "polars/inner.xml", "Inner");
  PEFForm& form = Start();
  auto* directories = Find<QListWidget>("Verzeichnis1");
  const QString top = QString::fromStdString(dir.Path().filename().string());

  DoubleClick(directories, ItemNamed(directories, "polars"));
  EXPECT_EQ(QDir(form.Browser().Path()), QDir(QString::fromStdString((dir.Path() / "polars").string())));
  EXPECT_EQ(Names(FileList()), QStringList({"inner.xml"}));

  directories->setCurrentItem(ItemNamed(directories, top));
  PressEnter(directories);
  EXPECT_EQ(QDir(form.Browser().Path()), QDir(QString::fromStdString(dir.Path().string())));
  EXPECT_TRUE(Names(FileList()).isEmpty());
  // The drive list shows the volume that holds the directory.
  EXPECT_FALSE(Find<QComboBox>("Laufwerk1")->currentText().isEmpty());
}

TEST_F(FileBrowsing, UnknownFileKindShowsTheErrorAndLeavesAnEmptyDocument) {
  WritePolarFile(dir, "wing.xml", "Wing");
  PEFForm& form = Start();
  form.Document().OpenFile(dir.File("wing.xml"));
  MessageBoxCatcher boxes;
  form.Document().OpenFile(dir.Write("notes.abc", "hello"));
  ASSERT_EQ(boxes.seen.size(), 1u);
  EXPECT_EQ(boxes.seen[0].title, "Tavilo: Error");
  EXPECT_EQ(boxes.seen[0].text, "Unknown File Format!");
  EXPECT_EQ(boxes.seen[0].icon, QMessageBox::Critical);
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);
  EXPECT_FALSE(Action("mnuFileExport")->isEnabled());
  EXPECT_EQ(form.statusBar()->currentMessage(), "Ready.");
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(FileBrowsing, UnknownFileKindOnImportInGermanUsesTheGermanText) {
  PEFForm& form = Start();
  Action("mnuLangDeutsch")->trigger();
  const std::string unknown = dir.Write("notes.abc", "hello");
  FileDialogRequest asked;
  form.UserInterfaceImpl().SetFileChooser([&](const FileDialogRequest& request, const QString&) {
    asked = request;
    return unknown;
  });
  MessageBoxCatcher boxes;
  Action("Toolbar1_OPEN")->trigger();
  EXPECT_EQ(asked.title, "In bestehende Struktur importieren");
  ASSERT_EQ(boxes.seen.size(), 1u);
  EXPECT_EQ(boxes.seen[0].title, "Tavilo: Fehler");
  EXPECT_EQ(boxes.seen[0].text, "Umbekanntes Dateiformat!");
}

TEST_F(FileBrowsing, AnUnreadableFileIsReportedAndTheWindowGoesOn) {
  WritePolarFile(dir, "wing.xml", "Wing");
  PEFForm& form = Start();
  form.Document().OpenFile(dir.File("wing.xml"));
  MessageBoxCatcher boxes;
  form.Document().OpenFile(dir.File("vanished.xml"));
  ASSERT_EQ(boxes.seen.size(), 1u);
  EXPECT_EQ(boxes.seen[0].title, "Tavilo: Error");
  EXPECT_TRUE(boxes.seen[0].text.contains("vanished.xml")) << boxes.seen[0].text.toStdString();
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  // The document shown before stays, and the next file opens normally.
  EXPECT_EQ(form.Document().Current().Name, "Wing");
  form.Document().OpenFile(dir.File("wing.xml"));
  EXPECT_EQ(boxes.seen.size(), 1u);
}

TEST_F(FileBrowsing, ExportAsksWithTheSaveTitleAndWritesTheChosenFile) {
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

  // The new file shows up in the list by itself; the highlight stays.
  Highlight(FileList(), "wing.xml");
  QElapsedTimer waited;
  waited.start();
  while (FileList()->count() < 2 && waited.elapsed() < 5000) QApplication::processEvents(QEventLoop::AllEvents, 50);
  EXPECT_EQ(Names(FileList()), QStringList({"copy.xml", "wing.xml"}));
  EXPECT_EQ(FileList()->currentItem()->text(), "wing.xml");
}

std::string FileBytes(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

TEST_F(FileBrowsing, DragFileWithSeveralAirfoilsAsksWhichOneToShow) {
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

TEST_F(FileBrowsing, BatchConvertsThePefFilesOfTheChosenFilesDirectory) {
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
  EXPECT_EQ(form.statusBar()->currentMessage(), "Ready.");
  // The document is left alone.
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);
}

TEST_F(FileBrowsing, EnvelopeAddsASetAndWritesItsFile) {
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

TEST_F(FileBrowsing, AFileDroppedOnTheWindowOpens) {
  const std::string path = WritePolarFile(dir, "dropped.xml", "Dropped");
  PEFForm& form = Start();
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(QString::fromStdString(path))});
  QDragEnterEvent enter(QPoint(300, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&form, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(QPointF(300, 300), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&form, &drop);
  EXPECT_EQ(form.Document().Current().Name, "Dropped");
  EXPECT_EQ(form.windowTitle().toStdString(), "Tavilo - " + path);
}

TEST_F(FileBrowsing, EverySampleInExamplesIsListedAndLoads) {
  PEFForm& form = Start();
  ASSERT_TRUE(form.Browser().SetPath(TAVILO_EXAMPLES));
  const QStringList names = Names(FileList());
  EXPECT_GE(names.size(), 3);
  MessageBoxCatcher boxes;
  for (const QString& name : names) {
    Highlight(FileList(), name);
    PressEnter(FileList());
    EXPECT_GE(form.Document().Current().ConfigCount(), 1) << name.toStdString();
    EXPECT_FALSE(Find<QLabel>("ProfilName")->text().isEmpty()) << name.toStdString();
  }
  EXPECT_TRUE(boxes.seen.empty());
}

}  // namespace
}  // namespace tavilo::testing
