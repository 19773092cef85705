// The program's command line: what it asks for, and `tavilo FILE...`
// opening its files in the window.
#include "app/command_line.h"

#include <sstream>

#include "app_fixture.h"

namespace tavilo::testing {
namespace {

TEST(CommandLine, TellsOptionsFromFiles) {
  using Action = CommandLine::Action;
  struct Case {
    std::vector<std::string> args;
    Action action;
    std::vector<std::string> files;
    const char* badOption;
    int status;  // -1: the window starts
  };
  const Case cases[] = {
      {{}, Action::Run, {}, "", -1},
      {{"a.pol", "-", "b.xml"}, Action::Run, {"a.pol", "-", "b.xml"}, "", -1},
      {{"a.pol", "--help"}, Action::Help, {}, "", 0},
      {{"-x", "--version"}, Action::Version, {}, "", 0},
      {{"-x", "a.pol", "--y"}, Action::BadOption, {"a.pol"}, "-x", 2},
      {{"--", "--help", "-x"}, Action::Run, {"--help", "-x"}, "", -1},
  };
  for (const Case& c : cases) {
    const CommandLine line = ParseCommandLine(c.args);
    const std::string args = ::testing::PrintToString(c.args);
    EXPECT_EQ(line.action, c.action) << args;
    EXPECT_EQ(line.badOption, c.badOption) << args;
    EXPECT_EQ(line.files, c.files) << args;
    std::ostringstream out, err;
    EXPECT_EQ(AnswerCommandLine(line, Language::German, out, err).value_or(-1), c.status) << args;
    EXPECT_EQ(out.str().empty(), c.status != 0) << args;
    EXPECT_EQ(err.str().empty(), c.status != 2) << args;
  }
  std::ostringstream out, err;
  AnswerCommandLine(ParseCommandLine({"--help"}), Language::German, out, err);
  EXPECT_EQ(out.str().rfind("Aufruf: tavilo", 0), 0u) << out.str();
}

using StartFiles = MainWindowTest;

TEST_F(StartFiles, OpenTheFirstReadableFileAndImportTheOthersAsOneStep) {
  std::filesystem::create_directory(dir.Path() / "polars");
  const std::string unknown = dir.Write("notes.abc", "hello");
  const std::string wing = WritePolarFile(dir, "polars/wing.xml", "Wing");
  const std::string tail = WritePolarFile(dir, "tail.xml", "Tail");
  const std::string missing = dir.File("gone.xml");
  PEFForm& form = Start();
  MessageBoxCatcher boxes;
  OpenStartFiles(form, {"notes.abc", "polars/wing.xml", tail, missing});

  ASSERT_EQ(boxes.seen.size(), 2u);
  EXPECT_TRUE(boxes.seen[0].text.contains(QString::fromStdString(unknown))) << boxes.seen[0].text.toStdString();
  EXPECT_TRUE(boxes.seen[1].text.contains("gone.xml")) << boxes.seen[1].text.toStdString();
  EXPECT_EQ(form.Document().Current().Name, "Wing");
  EXPECT_EQ(form.Document().Current().ConfigCount(), 2);
  EXPECT_EQ(form.windowTitle().toStdString(), "Tavilo - " + wing);
  EXPECT_EQ(form.Browser().SelectedFile().toStdString(), wing);

  Action("mnuEditUndo")->trigger();
  EXPECT_EQ(form.Document().Current().ConfigCount(), 1) << "the imports are one step";
  Action("mnuEditUndo")->trigger();
  EXPECT_EQ(form.Document().Current().ConfigCount(), 0);
}

}  // namespace
}  // namespace tavilo::testing
