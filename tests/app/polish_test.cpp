// The window as a new user meets it: texts that stay, read-outs that clear,
// the envelope's file, Qt's own texts and dialogs in the language.
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QStatusBar>
#include <QStatusTipEvent>
#include <QTreeWidget>
#include <filesystem>

#include "app_fixture.h"

namespace tavilo::testing {
namespace {

using WindowPolish = MainWindowTest;

// A menu that opens sends an empty status tip, which used to wipe the text.
TEST_F(WindowPolish, ReadyStaysWhenAMenuOpens) {
  PEFForm& form = Start();
  QStatusTipEvent tip{QString()};
  QApplication::sendEvent(&form, &tip);
  EXPECT_EQ(form.statusBar()->currentMessage(), "Ready.");
}

TEST_F(WindowPolish, AnotherAirfoilClearsTheReadouts) {
  WritePolarFile(dir, "wing.xml", "Wing");
  PEFForm& form = Start();
  auto* readout = Find<QLabel>("CdClValue");
  readout->setText("Cd=0.0100 Cl=0.90");
  form.Document().OpenFile(dir.File("wing.xml"));
  EXPECT_EQ(readout->text(), "");
}

// The set is shown whether or not its file could be written; the status
// bar or the message names the file.
TEST_F(WindowPolish, TheEnvelopeIsShownBeforeItIsWrittenAndItsPathAfterwards) {
  PEFForm& form = StartWith(2);
  const std::string path = std::filesystem::absolute("Envelope.pef").string();
  auto* tree = Find<QTreeWidget>("TreeView1");
  Action("mnuToolsEnvelope")->trigger();
  EXPECT_EQ(form.statusBar()->currentMessage().toStdString(), "Envelope written to " + path);
  EXPECT_EQ(tree->findItems("Set 2: Envelope", Qt::MatchExactly | Qt::MatchRecursive).size(), 1);

  std::filesystem::remove(path);
  std::filesystem::create_directory(path);
  MessageBoxCatcher boxes;
  Action("mnuToolsEnvelope")->trigger();
  EXPECT_EQ(tree->topLevelItem(0)->childCount(), 3) << "the tree keeps up";
  ASSERT_EQ(boxes.seen.size(), 1u);
  EXPECT_NE(boxes.seen[0].text.toStdString().find(path), std::string::npos);
}

TEST_F(WindowPolish, QtsOwnTextsAndFileDialogsFollowTheLanguage) {
  PEFForm& form = Start();
  Action("mnuLangDeutsch")->trigger();
  EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Abbrechen");

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

}  // namespace
}  // namespace tavilo::testing
