// The window as a new user meets it: texts that stay, keys that do what
// they say, errors that name their file, Qt's own texts in the language.
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QTest>
#include <QTreeWidget>
#include <filesystem>

#include "app/qt_user_interface.h"
#include "app/tree_controller.h"
#include "app_fixture.h"

namespace tavilo::testing {
namespace {

using WindowPolish = MainWindowTest;

TEST_F(WindowPolish, ReadyStaysWhenAMenuOpensAndTheWindowStaysUsableAtItsMinimum) {
  PEFForm& form = Start();
  // A menu that opens sends an empty status tip, which used to wipe the text.
  QStatusTipEvent tip{QString()};
  QApplication::sendEvent(&form, &tip);
  EXPECT_EQ(form.statusBar()->currentMessage(), "Ready.");

  form.resize(400, 300);
  QApplication::processEvents();
  EXPECT_EQ(form.size(), QSize(900, 600));
  for (const char* name : {"ClCdPicture", "ClAlfaPicture", "TreeView1", "Datei1", "cbAlfaMax"}) {
    const QWidget* widget = Find(name);
    const QRect inside = widget->geometry().intersected(widget->parentWidget()->rect());
    EXPECT_GE(inside.width(), 40) << name;
    EXPECT_GE(inside.height(), 20) << name;
  }
}

TEST_F(WindowPolish, SpaceTicksTheCurrentNodeAndTheArrowsOnlyMove) {
  WritePolarFile(dir, "wing.xml", "Wing", 2);
  PEFForm& form = Start();
  form.Document().OpenFile(dir.File("wing.xml"));
  auto* tree = Find<QTreeWidget>("TreeView1");
  tree->setFocus();
  tree->setCurrentItem(tree->topLevelItem(0));
  QTest::keyClick(tree, Qt::Key_Down);
  QTest::keyClick(tree, Qt::Key_Down);
  EXPECT_EQ(tree->currentItem()->data(0, TreeController::kKeyRole).toString(), "c 1|p 1");
  const Polar& first = *form.Document().Current().Configuration(1)->Polar(1);
  EXPECT_TRUE(first.Selected) << "moving does not tick";
  QTest::keyClick(tree, Qt::Key_Space);
  EXPECT_FALSE(first.Selected);
  QTest::keyClick(tree, Qt::Key_Space);
  EXPECT_TRUE(first.Selected);
}

TEST_F(WindowPolish, AnotherAirfoilClearsTheReadouts) {
  WritePolarFile(dir, "wing.xml", "Wing");
  PEFForm& form = Start();
  auto* readout = Find<QLabel>("CdClValue");
  readout->setText("Cd=0.0100 Cl=0.90");
  form.Document().OpenFile(dir.File("wing.xml"));
  EXPECT_EQ(readout->text(), "");
}

TEST_F(WindowPolish, TheEnvelopeIsShownBeforeItIsWrittenAndItsPathAfterwards) {
  WritePolarFile(dir, "wing.xml", "Wing", 2);
  PEFForm& form = Start();
  form.Document().OpenFile(dir.File("wing.xml"));
  const std::string path = std::filesystem::absolute("Envelope.pef").string();
  Action("mnuToolsEnvelope")->trigger();
  EXPECT_EQ(form.statusBar()->currentMessage().toStdString(), "Envelope written to " + path);
  EXPECT_TRUE(std::filesystem::exists(path));
  const QList<QTreeWidgetItem*> shown =
      Find<QTreeWidget>("TreeView1")->findItems("Set 2: Envelope", Qt::MatchExactly | Qt::MatchRecursive);
  ASSERT_EQ(shown.size(), 1);
  EXPECT_EQ(shown[0]->child(0)->data(0, Qt::UserRole).toString(), "c 2|p 1");

  // A folder where the file should go: the write fails, the set is shown.
  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  MessageBoxCatcher boxes;
  Action("mnuToolsEnvelope")->trigger();
  EXPECT_EQ(form.Document().Current().ConfigCount(), 3);
  EXPECT_EQ(Find<QTreeWidget>("TreeView1")->topLevelItem(0)->childCount(), 3) << "the tree keeps up";
  ASSERT_EQ(boxes.seen.size(), 1u);
  EXPECT_NE(boxes.seen[0].text.toStdString().find(path), std::string::npos);
}

TEST_F(WindowPolish, QtsOwnTextsAndFileDialogsFollowTheLanguage) {
  PEFForm& form = Start();
  Action("mnuLangDeutsch")->trigger();
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Abbrechen");
  EXPECT_EQ(Action("mnuBatch")->text(), "&Stapelumwandlung PEF nach XML...");

  // Export through Qt's own dialog: choosing a file type makes its
  // extension the one a name typed without one takes. The dialog is then
  // closed: accepting it depends on its folder listing, which runs in the
  // background and may not be done in time on a loaded machine.
  WritePolarFile(dir, "source.xml", "Wing");
  form.Document().OpenFile(dir.File("source.xml"));
  QString title, suffix;
  QTimer answer;
  int ticks = 0;
  QObject::connect(&answer, &QTimer::timeout, [&] {
    QFileDialog* dialog = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* candidate = qobject_cast<QFileDialog*>(widget); candidate && candidate->isVisible()) dialog = candidate;
    if (dialog == nullptr) return;
    title = dialog->windowTitle();
    // As the user picks the type, once the list has its types: the list's
    // own signals, which a call of selectNameFilter does not send.
    auto* types = dialog->findChild<QComboBox*>("fileTypeCombo");
    if (types != nullptr && types->count() > 1) {
      types->setCurrentIndex(1);
      emit types->activated(1);
      emit types->textActivated(types->itemText(1));
      suffix = dialog->defaultSuffix();
    }
    if (!suffix.isEmpty() || ++ticks > 300) dialog->reject();
  });
  answer.start(10);
  form.Document().Export();
  answer.stop();
  EXPECT_EQ(suffix, "pef");
  EXPECT_EQ(title, "Export Polare");
  Action("mnuLangEnglish")->trigger();
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Cancel");
}

TEST_F(WindowPolish, ImportAloneOffersEveryPolarFileFirst) {
  PEFForm& form = Start();
  std::vector<QString> filters;
  form.UserInterfaceImpl().SetFileChooser([&](const FileDialogRequest&, const QString& filter) {
    filters.push_back(filter);
    return std::string();
  });
  Action("mnuFileImport")->trigger();
  Action("mnuBatch")->trigger();
  ASSERT_EQ(filters.size(), 2u);
  EXPECT_TRUE(filters[0].startsWith("All polar files (*.xml *.pef *.pol polar.* *.drg *.mwk *.txt *.csv);;"));
  EXPECT_TRUE(filters[1].startsWith("Polar Exchange File (*.xml);;")) << "the batch keeps id 62";
  EXPECT_EQ(DefaultSuffixOf("Mses Polar File (polar.*)"), "");
}

}  // namespace
}  // namespace tavilo::testing
