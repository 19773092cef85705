// Every edit of the document as a command: one notification each, and undo
// and redo that give back exactly the airfoil there was.
#include "document/document.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "fileio/clipboard.h"
#include "formats/pef.h"
#include "formats/xml.h"
#include "model/errors.h"
#include "support/model_builders.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

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

// The whole content as the XML writer sees it with every polar ticked,
// then the ticks themselves, so that a difference in either shows.
std::string Content(const Airfoil& airfoil) {
  std::string ticks;
  for (const ConfigurationPtr& set : airfoil.Configurations())
    for (const PolarPtr& polar : set->Polars()) ticks += polar->Selected ? '+' : '-';
  AirfoilPtr all = DeepCopy(airfoil);
  for (const ConfigurationPtr& set : all->Configurations()) set->SetSelected(true);
  return XmlText(*all) + ticks + "|" + std::to_string(airfoil.ConfigCount());
}

class DocumentEdits : public ::testing::Test {
 protected:
  DocumentEdits() {
    document.Subscribe([this](const DocumentChange& change) { seen.push_back({change.command->Kind(), change.step}); });
    document.Execute(EditKind::Open, [](AirfoilPtr& airfoil) { airfoil = TwoSets(); });
    seen.clear();
  }

  struct Seen {
    EditKind kind;
    ChangeStep step;
    bool operator==(const Seen&) const = default;
  };
  Document document;
  RecordingUserInterface ui;
  TempDir dir;
  std::vector<Seen> seen;
};

TEST_F(DocumentEdits, EachEditNotifiesOnceAndUndoAndRedoRestoreItExactly) {
  const std::string other = dir.File("other.xml");
  WriteToXML(*TwoSets(), other);
  std::vector<TreeNode> nodes = BuildTree(*TwoSets(), kEnglish);
  const struct {
    EditKind kind;
    std::function<CommandPtr()> edit;
  } cases[] = {
      {EditKind::Open, [&] { return document.Open(other, ui); }},
      {EditKind::New, [&] { return document.New(); }},
      {EditKind::Import, [&] { ui.fileReplies.push_back(other); return document.Import(ui); }},
      {EditKind::Paste,
       [&] { CopyPolar(*document.Current().Configuration(2)->Polar(1), ui); return document.Paste(1, ui); }},
      {EditKind::Delete, [&] { return document.Delete("r"); }},
      {EditKind::Delete, [&] { return document.Delete("c 1"); }},
      {EditKind::Delete, [&] { return document.Delete("c 2|p 2"); }},
      {EditKind::Rename, [&] { return document.RenameAirfoil("S1223"); }},
      {EditKind::Rename, [&] { return document.RenameSet(2, "flap 10"); }},
      {EditKind::PolarProperties, [&] { return document.SetPolarProperties(1, 3, {"new", "250000", "0.3"}); }},
      {EditKind::SortReynolds, [&] { return document.Sort(false); }},
      {EditKind::SortMach, [&] { return document.Sort(true); }},
      {EditKind::Envelope, [&] { return document.Envelope(dir.File("Envelope.pef")); }},
      {EditKind::Tick, [&] { return document.Toggle(nodes, 1); }},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(static_cast<int>(c.kind));
    seen.clear();
    const AirfoilPtr original = document.CurrentPtr();
    const std::string before = Content(document.Current());
    CommandPtr command = c.edit();
    ASSERT_TRUE(command);
    const std::string after = Content(document.Current());
    EXPECT_NE(after, before);
    EXPECT_TRUE(command->Changed());
    document.Undo(command);
    EXPECT_EQ(Content(document.Current()), before);
    EXPECT_EQ(document.CurrentPtr(), original);
    document.Redo(command);
    EXPECT_EQ(Content(document.Current()), after);
    document.Undo(command);
    EXPECT_EQ(seen, (std::vector<Seen>{{c.kind, ChangeStep::Do}, {c.kind, ChangeStep::Undo},
                                       {c.kind, ChangeStep::Redo}, {c.kind, ChangeStep::Undo}}));
  }
}

TEST_F(DocumentEdits, TheEnvelopeIsWrittenAloneUnderTheAirfoilsNameAndStaysWhenTheWriteFails) {
  dir.Write("Envelope.pef", "an older envelope");
  document.Envelope(dir.File("Envelope.pef"));
  Airfoil written;
  ReadFromPEF(written, dir.File("Envelope.pef"));
  EXPECT_EQ(written.Name + "|" + written.Configuration(1)->Name, "E387|Envelope");
  EXPECT_EQ(written.ConfigCount(), 1);

  seen.clear();
  EXPECT_THROW(document.Envelope(dir.File("no such folder/Envelope.pef")), FileAccessError);
  EXPECT_EQ(document.Current().ConfigCount(), 4) << "the set is added before the write";
  EXPECT_EQ(seen.size(), 1u) << "and shown";
}

TEST_F(DocumentEdits, AFailedOpenChangesNothingAndSaysNothing) {
  const std::string before = Content(document.Current());
  EXPECT_THROW(document.Open(dir.File("missing.xml"), ui), FileNotFoundError);
  EXPECT_EQ(Content(document.Current()), before);
  EXPECT_TRUE(seen.empty());
}

TEST_F(DocumentEdits, EditsThatFindNothingToDoLeaveTheDocumentAlone) {
  ui.clipboard = "no polar here";
  EXPECT_FALSE(document.Paste(1, ui)->Changed());
  EXPECT_FALSE(document.RenameAirfoil("")->Changed()) << "an empty name changes nothing";
  EXPECT_EQ(document.Import(ui), nullptr) << "a cancelled dialog is no edit";
}

TEST(DeepCopy, SharesNothingWithTheOriginal) {
  AirfoilPtr original = TwoSets();
  AirfoilPtr copy = DeepCopy(*original);
  EXPECT_EQ(XmlText(*copy), XmlText(*original));
  copy->Configuration(1)->Polar(1)->Point(1).Cl = 9;
  copy->Configuration(2)->Name = "changed";
  EXPECT_EQ(original->Configuration(1)->Polar(1)->Cl(1), 0.1);
  EXPECT_EQ(original->Configuration(2)->Name, "tripped");
}

}  // namespace
}  // namespace tavilo
