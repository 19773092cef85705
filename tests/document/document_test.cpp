#include "document/document.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <utility>

#include "base/errors.h"
#include "formats/pef.h"
#include "formats/xml.h"
#include "support/content_text.h"
#include "support/model_builders.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::ContentText;
using testing::MakePoint;
using testing::MakePolar;
using testing::RecordingUserInterface;
using testing::TempDir;

AirfoilPtr TwoSets() {
  auto airfoil = std::make_shared<Airfoil>();
  airfoil->Name = "E387";
  for (const char* name : {"clean", "tripped"}) {
    auto set = std::make_shared<Configuration>();
    set->Name = name;
    set->AddPolar(MakePolar(300000, 0.1, true, {MakePoint(0, 0.1, 0.012), MakePoint(4, 0.5, 0.010)}, "a"));
    set->AddPolar(MakePolar(100000, 0.2, false, {MakePoint(0, 0.2, 0.020), MakePoint(6, 0.7, 0.015)}, "b"));
    set->AddPolar(MakePolar(200000, 0.0, true, {MakePoint(2, 0.3, 0.011), MakePoint(8, 0.9, 0.013)}));
    airfoil->AddConfiguration(set);
  }
  return airfoil;
}

class DocumentEdits : public ::testing::Test {
 protected:
  DocumentEdits() {
    document.Subscribe([this](const DocumentChange& change) { seen.push_back({change.command->Kind(), change.step}); });
    document.Execute(EditKind::Open, [](AirfoilPtr& airfoil) { airfoil = TwoSets(); });
    seen.clear();
  }

  PolarPtr PolarAt(int set, int polar) { return document.Current().Configuration(set)->Polar(polar); }

  using Seen = std::pair<EditKind, ChangeStep>;  // what each notification told
  Document document;
  RecordingUserInterface ui;
  TempDir dir;
  std::vector<Seen> seen;
};

// The window's tests take every kind through the keys; these also check the
// notifications and the airfoil object an undo gives back.
TEST_F(DocumentEdits, EachStepNotifiesOnceAndUndoAndRedoRestoreItExactly) {
  const std::string other = dir.Write("other.xml", XmlText(*TwoSets()));
  std::vector<PolarPoint> edited(PolarAt(1, 2)->Points().begin(), PolarAt(1, 2)->Points().end());
  edited[1].Cm = -0.08;
  const std::pair<EditKind, std::function<CommandPtr()>> cases[] = {
      {EditKind::Open, [&] { return document.Open(other, ui); }},
      {EditKind::Delete, [&] { return document.Delete("r"); }},
      {EditKind::EditPoint, [&] { return document.SetPoints(EditKind::EditPoint, PolarAt(1, 2), edited); }},
      {EditKind::DeletePoints, [&] { return document.SetPoints(EditKind::DeletePoints, PolarAt(2, 3), {}); }},
  };
  for (const auto& [kind, edit] : cases) {
    SCOPED_TRACE(static_cast<int>(kind));
    seen.clear();
    const AirfoilPtr original = document.CurrentPtr();
    const std::string before = ContentText(document.Current());
    CommandPtr command = edit();
    ASSERT_TRUE(command);
    const std::string after = ContentText(document.Current());
    ASSERT_NE(after, before);
    EXPECT_EQ(document.Undo(), command);
    EXPECT_EQ(ContentText(document.Current()), before);
    EXPECT_EQ(document.CurrentPtr(), original);
    EXPECT_EQ(document.Redo(), command);
    EXPECT_EQ(ContentText(document.Current()), after);
    EXPECT_EQ(document.Redo(), nullptr) << "nothing more to redo";
    document.Undo();
    EXPECT_EQ(
        seen,
        (std::vector<Seen>{
            {kind, ChangeStep::Do}, {kind, ChangeStep::Undo}, {kind, ChangeStep::Redo}, {kind, ChangeStep::Undo}}));
  }
}

// Ticks, edits that change nothing and edits that fail before changing
// are no step; an undo puts back the ticks of its time.
TEST_F(DocumentEdits, TicksAndEditsThatChangeNothingOrFailBeforeChangingAreNoStep) {
  const std::string before = ContentText(document.Current());
  document.Delete("c 2|p 3");
  std::vector<TreeNode> nodes = BuildTree(document.Current(), Language::English);
  document.Toggle(nodes, 1);  // set 1: all its polars off
  EXPECT_FALSE(PolarAt(1, 1)->Selected);
  ui.clipboard = "no polar here";
  EXPECT_FALSE(document.Paste(1, ui)->Changed());
  EXPECT_FALSE(document.RenameAirfoil("")->Changed()) << "an empty name changes nothing";
  EXPECT_EQ(document.Import(ui), nullptr) << "a cancelled dialog is no edit";
  seen.clear();
  EXPECT_THROW(document.Open(dir.File("missing.xml"), ui), FileNotFoundError);
  EXPECT_TRUE(seen.empty()) << "a failed open says nothing";
  EXPECT_EQ(document.Steps().UndoCount(), 2u) << "the opening and the delete";
  document.Undo();
  EXPECT_EQ(ContentText(document.Current()), before);
  document.Sort(true);
  EXPECT_EQ(document.Steps().RedoCount(), 0u) << "a new step ends what could be redone";
}

// Opening, importing or dropping a file that yields no polar with a point
// shows the reader's own message, or "no polars", naming the file, and
// leaves the document, its file and its history as they were.
TEST_F(DocumentEdits, AFileWithoutPointsIsReportedByNameAndChangesNothing) {
  std::filesystem::create_directory(dir.Path() / "folder.xml");
  // Name, bytes and message, after "File: <path>\r\n" unless it names the file itself.
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {"noise.drg", std::string("\x01\x9f\xff\x00garbage\n\x7f", 14), "File contains no polars!"},
      {"empty.xml", "", "This is no valid XML file!"},
      {"sets.xml", "<?xml version=\"1.0\"?>\n<polar-exchange-file/>", "File contains no data sets!"},
      {"notes.abc", "hello", "Unknown File Format!"},
      {"folder.xml", "", "%2 is a folder, not a polar file."},
  };
  const std::string before = ContentText(document.Current());
  for (const auto& [name, bytes, message] : cases) {
    SCOPED_TRACE(name);
    const std::string path = name == std::string("folder.xml") ? dir.File(name) : dir.Write(name, bytes);
    const std::string shown = message.starts_with("%2") ? path + message.substr(2) : "File: " + path + "\r\n" + message;
    ui.messages.clear();
    EXPECT_FALSE(document.Open(path, ui)->Changed());
    EXPECT_FALSE(document.ImportFiles({path, path}, ui)->Changed());
    ASSERT_EQ(ui.messages.size(), 3u);
    for (const testing::ShownMessage& message : ui.messages) EXPECT_EQ(message.text, shown);
    EXPECT_EQ(ContentText(document.Current()), before);
    EXPECT_EQ(document.FileName(), "");
    EXPECT_EQ(document.Steps().UndoCount(), 1u) << "only the opening";
  }
}

// The names say what an undo would take, as the Edit menu shows them.
TEST_F(DocumentEdits, AFailingFileEndsAnImportOfSeveralWithTheFilesBeforeItAsOneNamedStep) {
  const std::string a = dir.Write("a.xml", XmlText(*TwoSets())), b = dir.Write("b.xml", XmlText(*TwoSets()));
  ui.fileListReplies.push_back({a, dir.File("gone.xml"), b});
  EXPECT_THROW(document.Import(ui), FileNotFoundError);
  EXPECT_EQ(document.Current().ConfigCount(), 4);
  EXPECT_EQ(document.Steps().NextUndo()->Files(), std::vector<std::string>{a});
  document.Undo();
  EXPECT_EQ(document.Current().ConfigCount(), 2);
  ui.fileListReplies.push_back({a, b});
  document.Import(ui);
  EXPECT_EQ(StepName(*document.Steps().NextUndo(), Language::German), "2 Dateien importieren");
  document.SetPoints(EditKind::PastePoints, PolarAt(1, 3), {});
  EXPECT_EQ(StepName(*document.Steps().NextUndo(), Language::English), "Paste Points into Polar 3");
}

TEST(DocumentHistory, KeepsAtMostItsStepsAndBytesDroppingTheOldest) {
  Document document;
  document.Execute(EditKind::Open, [](AirfoilPtr& airfoil) { airfoil = TwoSets(); });
  for (int i = 0; i < 100; ++i) document.RenameAirfoil("name " + std::to_string(i));
  EXPECT_EQ(document.Steps().UndoCount(), 100u) << "the opening is gone";
  while (document.Undo()) {
  }
  EXPECT_EQ(document.Current().Name, "E387") << "undone down to the oldest rename";

  // A polar of 10,000 points holds 640 kB; a bound of 3 MB keeps two of its
  // point edits, as each keeps the points before and after.
  auto big = std::make_shared<Airfoil>();
  auto set = std::make_shared<Configuration>();
  set->AddPolar(MakePolar(1e5, 0, true, std::vector<PolarPoint>(10000, MakePoint(0, 0.1, 0.01))));
  big->AddConfiguration(set);
  Document bounded(100, 3'000'000);
  bounded.Execute(EditKind::Open, [&](AirfoilPtr& airfoil) { airfoil = big; });
  const PolarPtr polar = big->Configuration(1)->Polar(1);
  for (int i = 1; i <= 3; ++i) {
    std::vector<PolarPoint> points(polar->Points().begin(), polar->Points().end());
    points[0].Alfa = i;
    bounded.SetPoints(EditKind::EditPoint, polar, points);
  }
  EXPECT_EQ(bounded.Steps().UndoCount(), 2u);
  EXPECT_LE(bounded.Steps().Bytes(), 3'000'000u);
  EXPECT_GT(bounded.Steps().Bytes(), 2 * 2 * 10000 * sizeof(PolarPoint));
  bounded.Undo();
  bounded.Undo();
  EXPECT_EQ(polar->Alfa(1), 1.0);
  EXPECT_EQ(bounded.Undo(), nullptr);

  Document tight(100, 100);
  tight.Execute(EditKind::Open, [&](AirfoilPtr& airfoil) { airfoil = TwoSets(); });
  EXPECT_EQ(tight.Steps().UndoCount(), 0u) << "a step past the bound alone is not kept";
}

TEST_F(DocumentEdits, TheEnvelopeIsWrittenAloneUnderTheAirfoilsNameAndStaysWhenTheWriteFails) {
  dir.Write("Envelope.pef", "an older envelope");
  document.Envelope(dir.File("Envelope.pef"));
  Airfoil written;
  ReadFromPEF(written, dir.File("Envelope.pef"));
  EXPECT_EQ(written.Name + "|" + written.Configuration(1)->Name + "|" + std::to_string(written.ConfigCount()),
            "E387|Envelope|1");

  seen.clear();
  EXPECT_THROW(document.Envelope(dir.File("no such folder/Envelope.pef")), FileAccessError);
  EXPECT_EQ(document.Current().ConfigCount(), 4) << "the set is added before the write";
  EXPECT_EQ(seen.size(), 1u) << "and shown";
}

}  // namespace
}  // namespace tavilo
