#include "formats/xml.h"

#include <gtest/gtest.h>

#include "base/errors.h"
#include "fileio/load.h"
#include "formats/file_text.h"
#include "strings/string_table.h"
#include "support/model_builders.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::MakePoint;
using testing::MakePolar;
using testing::RecordingUserInterface;
using testing::TempDir;

// Two sets: a named one with two polars (one unselected) and an unnamed one.
Airfoil SampleAirfoil() {
  Airfoil airfoil;
  airfoil.Name = "Clark Y";
  auto flap = std::make_shared<Configuration>();
  flap->Name = "flap 0";
  flap->Origin = "XFOIL";
  flap->AddPolar(MakePolar(200000, 0.05, true, {MakePoint(-2, -0.1, 0.0123, -0.0871, 0.6, 0.05),
                                                MakePoint(4.0, 0.812, 0.00912, -0.0871, 0.412, 1.0)}, "Re 200k"));
  flap->AddPolar(MakePolar(0, 0, false, {}, "not written"));
  auto plain = std::make_shared<Configuration>();
  plain->AddPolar(MakePolar(1e6, 0, true, {MakePoint(0.2385, 0.5, 0.01)}));
  airfoil.AddConfiguration(flap);
  airfoil.AddConfiguration(plain);
  return airfoil;
}

TEST(XmlWriter, WritesTheDocumentLineForLine) {
  const std::string golden = ReadFileBytes(TAVILO_TEST_DATA "/golden/sample.xml");
  EXPECT_EQ(XmlText(SampleAirfoil()), golden);
}

TEST(XmlRoundTrip, ReadsBackWhatWasWrittenToThePatterns) {
  TempDir dir;
  const std::string path = dir.File("clark y.xml");
  WriteToXML(SampleAirfoil(), path);
  RecordingUserInterface ui;
  Airfoil airfoil;
  ShowDiagnostics(ReadFromXML(airfoil, path), ui);
  EXPECT_TRUE(ui.messages.empty());
  ASSERT_EQ(airfoil.ConfigCount(), 2);
  EXPECT_EQ(airfoil.Configuration(1)->PolarCount(), 1) << "the unselected polar was not written";
  EXPECT_EQ(airfoil.Configuration(1)->Polar(1)->Point(2), MakePoint(4.0, 0.812, 0.00912, -0.0871, 0.412, 1.0));
  EXPECT_EQ(airfoil.Configuration(2)->Name + "|" + airfoil.Configuration(2)->Polar(1)->Name, "Airfoil Polar|Polar");
  EXPECT_EQ(airfoil.Configuration(2)->Polar(1)->Point(1).Alfa, 0.239);
  airfoil.Configuration(1)->Origin = "XFOIL";  // the only value not read back
  EXPECT_EQ(XmlText(airfoil), ReadFileBytes(path));
  // With nothing selected the document is empty but valid.
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) airfoil.Configuration(i)->SetSelected(false);
  Airfoil back;
  ShowDiagnostics(ReadFromXMLText(back, XmlText(airfoil)), ui);
  EXPECT_EQ(back.Name, "Clark Y");
  EXPECT_EQ(back.ConfigCount(), 0);
  EXPECT_TRUE(ui.messages.empty());
}

// A document around `body`, which stands inside <configurations>.
std::string Document(std::string_view body) {
  return "<?xml version=\"1.0\"?>\n<polar-exchange-file version=\"1.0\">\n<configurations>\n" +
         std::string(body) + "\n</configurations>\n</polar-exchange-file>\n";
}

Airfoil Read(std::string_view bytes, RecordingUserInterface& ui) {
  Airfoil airfoil;
  ShowDiagnostics(ReadFromXMLText(airfoil, std::string(bytes)), ui);
  return airfoil;
}

TEST(XmlReader, ReportsABadDeclarationAndMissingSetsInTheCurrentLanguage) {
  const struct {
    std::string text;
    Language language;
    const char* message;
    const char* name;
  } cases[] = {
      {"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<configurations/>", Language::English,
       "This is no valid XML file!|Tavilo: Error", "kept"},
      {"<?XML version=\"1.0\"?>\n<configurations/>", Language::German, "Dies ist keine gültige XML Polarendatei !|Tavilo: Fehler",
       "kept"},
      {"<?xml version=\"1.0\"?>\r\n<polar-exchange-file/>\r\n", Language::German,
       "Datei enthält keine Datensätze!|Tavilo: Fehler", "unknown airfoil"},
  };
  for (const auto& c : cases) {
    RecordingUserInterface ui;
    ui.SetLanguage(c.language);
    Airfoil airfoil;
    airfoil.Name = "kept";
    ShowDiagnostics(ReadFromXMLText(airfoil, c.text), ui);
    EXPECT_EQ(airfoil.Name, c.name);
    ASSERT_EQ(ui.messages.size(), 1u) << c.text;
    EXPECT_EQ(ui.messages[0].text + "|" + ui.messages[0].title, c.message);
    EXPECT_EQ(ui.messages[0].icon, MessageIcon::Critical);
  }
}

TEST(XmlReader, ValuesAreTakenByPositionAndMissingOnesKeepTheMarker) {
  RecordingUserInterface ui;
  Airfoil airfoil = Read(Document(
      "<name>A</name><configuration><polars origin=\"x\"><polar><name>p</name>"
      "<reynoldsnumber> 3.5E5 </reynoldsnumber><machnumber>0.1D0</machnumber>"
      "<datapoints>"
      "  <datapoint><value>1.5</value><value>0.3</value><value>0.02</value></datapoint>"
      "  <datapoint><value>2</value></datapoint>"
      "  <datapoint><value>1</value><value>2</value><value>3</value><value>4</value><value>5</value>"
      "<value>6</value><value>7</value><value>8</value><value>9</value></datapoint>"
      "</datapoints></polar></polars></configuration>"), ui);
  const Polar& polar = *airfoil.Configuration(1)->Polar(1);
  EXPECT_EQ(polar.ReynoldsNumber, 350000);
  EXPECT_EQ(polar.MachNumber, 0.1);
  ASSERT_EQ(polar.PointCount(), 3);
  EXPECT_EQ(polar.Point(1), MakePoint(1.5, 0.3, 0.02));
  EXPECT_EQ(polar.Point(2), MakePoint(2, 0, 0)) << "Cl and Cd are always taken, absent ones as 0";
  EXPECT_EQ(polar.Point(3), (PolarPoint{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(XmlReader, ElementsAreFoundByTextNotByNesting) {
  RecordingUserInterface ui;
  // The polar's name comes after its numbers, the set's name after its polars, and an
  // unknown element sits in between: all are found or ignored by plain search.
  Airfoil airfoil = Read(Document(
      "<name>A</name><configuration><polars><polar><unknown>9</unknown>"
      "<machnumber>0.2</machnumber><reynoldsnumber>1e5</reynoldsnumber><name>late</name>"
      "<datapoints><datapoint><value>1</value><value>2</value><value>3</value></datapoint>"
      "</datapoints></polar><polar><reynoldsnumber>2e5</reynoldsnumber></polar></polars>"
      "<name>set</name></configuration>"), ui);
  const Configuration& set = *airfoil.Configuration(1);
  EXPECT_EQ(set.Name, "late") << "the first name inside the set, wherever it stands";
  ASSERT_EQ(set.PolarCount(), 2);
  EXPECT_EQ(set.Polar(1)->MachNumber, 0.2);
  EXPECT_EQ(set.Polar(2)->ReynoldsNumber, 200000);
  EXPECT_EQ(set.Polar(2)->PointCount(), 0);
  // Without the airfoil's own name line the first set's name is taken; without either, none.
  EXPECT_EQ(Read(Document("<configuration><name>flap</name></configuration>"), ui).Name, "flap");
  EXPECT_EQ(Read(Document("<configuration></configuration>"), ui).Name, "unknown airfoil");
  EXPECT_TRUE(ui.messages.empty());
}

TEST(XmlReader, LineBreaksVanishInsideValuesAndLegacyNamesBecomeUtf8) {
  RecordingUserInterface ui;
  Airfoil airfoil = Read("<?xml version=\"1.0\"?>\r<configurations>\r\n<name>Clark\nY</name>\r"
                         "<configuration><name>s</name></configuration></configurations>", ui);
  EXPECT_EQ(airfoil.Name, "ClarkY");
  EXPECT_EQ(airfoil.ConfigCount(), 1);
  EXPECT_EQ(Read(Document("<name>Fl\xFCgel \x80</name>"), ui).Name, "Flügel €");
  EXPECT_EQ(Read(Document("<name>Flügel</name>"), ui).Name, "Flügel");
}

std::string Repeated(int count, std::string_view text) {
  std::string out;
  for (int i = 0; i < count; ++i) out += text;
  return out;
}

// The format's readers take 1000 of each; what is left out is told, naming
// the file, and never silently.
TEST(XmlReader, ReadsAtMostAThousandItemsPerLevelAndWarnsOfTheRest) {
  const std::string point = "<datapoint><value>1</value><value>2</value><value>3</value></datapoint>";
  auto polar = [&](int points) { return "<polar><datapoints>" + Repeated(points, point) + "</datapoints></polar>"; };
  auto set = [&](std::string polars) { return "<configuration><polars>" + polars + "</polars></configuration>"; };
  const struct {
    std::string body;
    int sets, polars, points;  // read: sets, polars of set 1, points of its polar 1
    std::vector<Text> warnings;
  } cases[] = {
      {set(polar(1000)) + Repeated(999, set("")), 1000, 1, 1000, {}},
      {set(polar(1003)), 1, 1, 1000, {Text::PointsLeftOut}},
      {set(Repeated(1001, polar(1))), 1, 1000, 1, {Text::PolarsLeftOut}},
      {set(polar(1)) + Repeated(1000, set("")), 1000, 1, 1, {Text::SetsLeftOut}},
      {set(polar(1001) + Repeated(1000, polar(1))) + Repeated(1000, set("")), 1000, 1000, 1000,
       {Text::SetsLeftOut, Text::PolarsLeftOut, Text::PointsLeftOut}},
  };
  TempDir dir;
  for (const auto& c : cases) {
    const std::string path = dir.Write("many.xml", Document(c.body));
    Airfoil airfoil;
    const ReadReport report = ReadFromXML(airfoil, path);
    ASSERT_EQ(airfoil.ConfigCount(), c.sets);
    EXPECT_EQ(airfoil.Configuration(1)->PolarCount(), c.polars);
    EXPECT_EQ(airfoil.Configuration(1)->Polar(1)->PointCount(), c.points);
    std::vector<Text> warnings;
    for (const Diagnostic& d : report.diagnostics) {
      warnings.push_back(d.messageId);
      EXPECT_EQ(d.severity, Severity::Warning);
      EXPECT_EQ(DiagnosticText(d, Language::English).rfind(path + " holds ", 0), 0u);
    }
    EXPECT_EQ(warnings, c.warnings) << c.sets << " " << c.polars << " " << c.points;
  }
}

TEST(XmlWriter, WarnsWhenAWrittenPolarHasMorePointsThanReadersTake) {
  TempDir dir;
  const std::string path = dir.File("sweep.xml");
  const struct {
    int points;
    bool selected;
    bool warned;
  } cases[] = {{1000, true, false}, {1001, true, true}, {1001, false, false}};
  for (const auto& c : cases) {
    Airfoil airfoil = SampleAirfoil();
    airfoil.Configuration(1)->Polar(2)->SetPoints(std::vector<PolarPoint>(c.points, MakePoint(1, 0.5, 0.01)));
    airfoil.Configuration(1)->Polar(2)->Selected = c.selected;
    const WriteReport report = WriteToXML(airfoil, path);
    ASSERT_EQ(report.diagnostics.size(), c.warned ? 1u : 0u) << c.points;
    Airfoil back;
    ReadFromXML(back, path);
    EXPECT_EQ(back.Configuration(1)->PolarCount(), c.selected ? 2 : 1) << "written whole";
    if (!c.warned) continue;
    EXPECT_EQ(DiagnosticText(report.diagnostics[0], Language::German),
              path + " enthält eine Polare mit mehr als 1000 Punkten: Leser des XML-Formats lassen die Punkte nach "
                     "dem 1000. aus.");
  }
}

TEST(XmlReader, AMissingFileNamesThePath) {
  RecordingUserInterface ui;
  Airfoil airfoil;
  try {
    ShowDiagnostics(ReadFromXML(airfoil, "/nonexistent/wing.xml"), ui);
    ADD_FAILURE() << "no error";
  } catch (const FileNotFoundError& error) {
    EXPECT_NE(std::string(error.what()).find("/nonexistent/wing.xml"), std::string::npos);
  }
}

TEST(XmlElements, ContentIsTheTextBetweenTheFirstTagAndItsClosingTag) {
  const struct {
    const char* element;
    const char* content;
  } cases[] = {
      {"<name> Clark &amp; Y </name>", " Clark &amp; Y "},  // neither trimmed nor unescaped
      {"<value unit=\"deg\">4.5</value><value>5</value>", "4.5"},
      {"<name></name>", ""},
      {"<name>open", ""},
      {"name>x</name>", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(XmlElementContent(c.element), c.content) << c.element;
}

// The reader's tag search looks at sixteen places at a time; on texts of
// every length and tag density it must find what a plain search finds.
TEST(XmlElements, TheFastTagSearchFindsWhatAPlainSearchFinds) {
  uint32_t seed = 12345;
  auto next = [&seed] { return seed = seed * 1664525u + 1013904223u; };
  const char alphabet[] = {'<', '/', 'a', 'b', '>', ' ', 'x'};
  for (int round = 0; round < 3000; ++round) {
    std::string text(next() % 70, ' ');
    for (char& c : text) c = alphabet[next() % sizeof alphabet];
    const std::string_view view(text);
    size_t p = view.find("<ab>");
    if (p == std::string_view::npos) p = view.find("<ab ");
    size_t q = p == std::string_view::npos ? p : view.substr(p).find("</ab>");
    const std::string_view expected = q == std::string_view::npos ? std::string_view{} : view.substr(p, q + 5);
    ASSERT_EQ(ExtractXmlElement(view, "ab"), expected) << text;
  }
}

}  // namespace
}  // namespace tavilo
