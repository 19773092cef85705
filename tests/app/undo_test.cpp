// Undo and redo of every kind of change through the window's own commands;
// the recent files across a restart.
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <filesystem>
#include <functional>

#include "app/polar_props_dialog.h"
#include "app/tree_controller.h"
#include "app_fixture.h"
#include "support/content_text.h"

namespace tavilo::testing {
namespace {

using UndoInTheWindow = MainWindowTest;

TEST_F(UndoInTheWindow, EveryKindOfChangeIsUndoneAndRedoneExactlyByTheKeys) {
  const std::string wing = WritePolarFile(dir, "wing.xml", "Wing", 2);
  const std::string tail = WritePolarFile(dir, "tail.xml", "Tail", 1);
  PEFForm& form = Start();
  form.UserInterfaceImpl().SetFilesChooser([&](const FileDialogRequest&, const QString&) {
    return std::vector<std::string>{tail, tail};
  });
  form.UserInterfaceImpl().SetInputAnswerer([](const QString&, const QString&, const QString&) { return "renamed"; });
  auto* props = Find<PolarPropsDialog>("frmPolarProps");
  auto trigger = [this](const char* key, const char* action) {
    return [this, key, action] {
      SelectNode(key);
      Action(action)->trigger();
    };
  };
  const struct {
    const char* what;
    std::function<void()> change;
  } cases[] = {
      {"open", [&] { form.Document().OpenFile(wing); }},
      {"import two files", [&] { Action("mnuFileImport")->trigger(); }},
      {"paste",
       [&] {
         SelectNode("c 1|p 2");
         form.Tree().EditCopy();
         form.Tree().EditPaste();
       }},
      {"delete a polar", trigger("c 2|p 1", "mnuEditPolarDelete")},
      {"rename a set", trigger("c 1", "mnuEditName")},
      {"polar properties",
       [&] {
         QTimer::singleShot(0, props, [props] {
           props->findChild<QLineEdit*>("txtReNo")->setText("50000");
           props->findChild<QLineEdit*>("txtMachNo")->setText("0.3");
           props->findChild<QPushButton*>("btnOK")->click();
         });
         trigger("c 1|p 2", "mnuEditPolarName")();
       }},
      {"sort on Reynolds", [&] { Action("mnuToolsSortRe")->trigger(); }},
      {"sort on Mach", [&] { Action("mnuToolsSortMach")->trigger(); }},
      {"envelope", [&] { Action("mnuToolsEnvelope")->trigger(); }},
      {"delete a set", trigger("c 1", "mnuEditDelete")},
      {"new", [&] { Action("Toolbar1_NEW")->trigger(); }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const std::string before = ContentText(form.Document().Current());
    c.change();
    const std::string after = ContentText(form.Document().Current());
    ASSERT_TRUE(after != before);
    PressKeys(&form, QKeySequence(Qt::CTRL | Qt::Key_Z));
    EXPECT_EQ(ContentText(form.Document().Current()), before);
    PressKeys(&form, QKeySequence(Qt::CTRL | Qt::Key_Y));
    EXPECT_EQ(ContentText(form.Document().Current()), after);
  }
}

TEST_F(UndoInTheWindow, RecentFilesSurviveARestartAndAGoneOneLeavesWithAMessage) {
  for (const char* name : {"a.xml", "b.xml", "c.xml"}) WritePolarFile(dir, name, name);
  PEFForm& first = Start();
  first.UserInterfaceImpl().SetFileChooser([&](const FileDialogRequest&, const QString&) { return dir.File("c.xml"); });
  EXPECT_FALSE(Find<QMenu>("mnuFileRecent")->isEnabled()) << "empty at first";
  first.Document().OpenFile(dir.File("a.xml"));
  first.Document().OpenFile(dir.File("b.xml"));
  first.Document().OpenFile(dir.File("a.xml"));
  Action("mnuFileImport")->trigger();
  Exit();

  std::filesystem::remove(dir.File("b.xml"));
  PEFForm& second = Start();
  auto entries = [this] {
    QStringList texts;
    for (QAction* entry : Find<QMenu>("mnuFileRecent")->actions()) texts << entry->text();
    return texts;
  };
  const QString in = QString::fromStdString(dir.File(""));  // the folder, with its separator
  EXPECT_EQ(entries(), QStringList({"&1 " + in + "c.xml", "&2 " + in + "a.xml", "&3 " + in + "b.xml"}));
  MessageBoxCatcher catcher;
  Action("mnuFileRecent3")->trigger();
  ASSERT_EQ(catcher.seen.size(), 1u);
  EXPECT_EQ(catcher.seen[0].text.toStdString(),
            dir.File("b.xml") + " no longer exists and has been removed from the recent files.");
  EXPECT_EQ(entries().size(), 2);
  Action("mnuFileRecent2")->trigger();
  EXPECT_EQ(second.Document().Current().Name, "a.xml");
  EXPECT_EQ(entries().front(), "&1 " + in + "a.xml");
}

}  // namespace
}  // namespace tavilo::testing
