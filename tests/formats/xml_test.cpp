#include "formats/xml.h"

#include <gtest/gtest.h>

#include <tuple>

#include "fileio/load.h"
#include "formats/airfoil_summary.h"
#include "formats/file_text.h"
#include "strings/string_table.h"
#include "support/model_builders.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::AirfoilOf;
using testing::MakePoint;
using testing::MakePolar;
using testing::RecordingUserInterface;
using testing::SetOf;
using testing::Summary;
using testing::TempDir;

// Two sets: a named one with two polars (one unselected) and an unnamed one.
Airfoil SampleAirfoil() {
  const std::vector<PolarPoint> points = {MakePoint(-2, -0.1, 0.0123, -0.0871, 0.6, 0.05),
                                          MakePoint(4.0, 0.812, 0.00912, -0.0871, 0.412, 1.0)};
  auto flap =
      SetOf("flap 0", {MakePolar(2e5, 0.05, true, points, "Re 200k"), MakePolar(0, 0, false, {}, "not written")});
  flap->Origin = "XFOIL";
  return AirfoilOf("Clark Y", {flap, SetOf("", {MakePolar(1e6, 0, true, {MakePoint(0.2385, 0.5, 0.01)})})});
}

// A document around `body`, which stands inside <configurations>.
std::string Document(std::string_view body) {
  return "<?xml version=\"1.0\"?>\n<polar-exchange-file version=\"1.0\">\n<configurations>\n" + std::string(body) +
         "\n</configurations>\n</polar-exchange-file>\n";
}

Airfoil Read(std::string_view bytes, RecordingUserInterface& ui) {
  Airfoil airfoil;
  ShowDiagnostics(ReadFromXMLText(airfoil, std::string(bytes)), ui);
  return airfoil;
}

// Read back, the document gives its own text again; only the origin is not carried.
TEST(XmlRoundTrip, WritesTheDocumentLineForLineAndReadsItBack) {
  const std::string golden = ReadFileBytes(TAVILO_TEST_DATA "/golden/sample.xml");
  EXPECT_EQ(XmlText(SampleAirfoil()), golden);
  RecordingUserInterface ui;
  Airfoil airfoil = Read(golden, ui);
  EXPECT_EQ(Summary(airfoil),
            "Clark Y | flap 0: Re 200000 Ma 0.05 'Re 200k' (-2 -0.1 0.0123 -0.0871 0.6 0.05, 4 0.812 0.00912 "
            "-0.0871 0.412 1) | Airfoil Polar: Re 1000000 Ma 0 'Polar' (0.239 0.5 0.01)");
  airfoil.Configuration(1)->Origin = "XFOIL";
  EXPECT_EQ(XmlText(airfoil), golden);
  // With nothing selected the document is empty but valid.
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) airfoil.Configuration(i)->SetSelected(false);
  EXPECT_EQ(Summary(Read(XmlText(airfoil), ui)), "Clark Y");
  EXPECT_TRUE(ui.messages.empty());
}

TEST(XmlReader, ElementsAreFoundByTextAndValuesByPosition) {
  const std::tuple<const char*, std::string, const char*> cases[] = {
      {"values by position, Cl and Cd always (absent ones as 0), at most eight",
       Document("<name>A</name><configuration><polars origin=\"x\"><polar><name>p</name>"
                "<reynoldsnumber> 3.5E5 </reynoldsnumber><machnumber>0.1D0</machnumber><datapoints>"
                "<datapoint><value>1.5</value><value>0.3</value><value>0.02</value></datapoint>"
                "<datapoint><value>2</value></datapoint><datapoint><value>1</value><value>2</value>"
                "<value>3</value><value>4</value><value>5</value><value>6</value><value>7</value>"
                "<value>8</value><value>9</value></datapoint></datapoints></polar></polars>"
                "</configuration>"),
       "A | p: Re 350000 Ma 0.1 'p' (1.5 0.3 0.02, 2 0 0, 1 2 3 4 5 6 7 8)"},
      // Names after numbers or polars, an unknown element between: the set takes the first name inside.
      {"names wherever they stand",
       Document("<name>A</name><configuration><polars><polar><unknown>9</unknown>"
                "<machnumber>0.2</machnumber><reynoldsnumber>1e5</reynoldsnumber><name>late</name>"
                "<datapoints><datapoint><value>1</value><value>2</value><value>3</value></datapoint>"
                "</datapoints></polar><polar><reynoldsnumber>2e5</reynoldsnumber></polar></polars>"
                "<name>set</name></configuration>"),
       "A | late: Re 100000 Ma 0.2 'late' (1 2 3) Re 200000 Ma 0 ()"},
      {"without its own name the airfoil takes the first set's",
       Document("<configuration><name>flap</name></configuration>"), "flap | flap:"},
      {"without any name", Document("<configuration></configuration>"), "unknown airfoil | :"},
      {"line breaks vanish inside values",
       "<?xml version=\"1.0\"?>\r<configurations>\r\n<name>Clark\nY</name>\r"
       "<configuration><name>s</name></configuration></configurations>",
       "ClarkY | s:"},
      {"legacy names become UTF-8", Document("<name>Fl\xFCgel \x80</name><configuration></configuration>"),
       "Flügel € | :"},
      {"UTF-8 names stay", Document("<name>Flügel</name><configuration></configuration>"), "Flügel | :"},
  };
  for (const auto& [rule, text, expected] : cases) {
    RecordingUserInterface ui;
    EXPECT_EQ(Summary(Read(text, ui)), expected) << rule;
    EXPECT_TRUE(ui.messages.empty()) << rule;
  }
}

std::string Repeated(int count, std::string_view text) {
  std::string out;
  for (int i = 0; i < count; ++i) out += text;
  return out;
}

TEST(XmlReader, ReadsAtMostAThousandItemsPerLevelAndWarnsOfTheRest) {
  const std::string point = "<datapoint><value>1</value><value>2</value><value>3</value></datapoint>";
  auto polar = [&](int points) { return "<polar><datapoints>" + Repeated(points, point) + "</datapoints></polar>"; };
  auto set = [&](std::string polars) { return "<configuration><polars>" + polars + "</polars></configuration>"; };
  // The body; read: sets, polars of set 1, points of its polar 1; the warnings.
  const std::tuple<std::string, int, int, int, std::vector<Text>> cases[] = {
      {set(polar(1000)) + Repeated(999, set("")), 1000, 1, 1000, {}},
      {set(polar(1003)), 1, 1, 1000, {Text::PointsLeftOut}},
      {set(Repeated(1001, polar(1))), 1, 1000, 1, {Text::PolarsLeftOut}},
      {set(Repeated(1001, polar(1))) + set(Repeated(1000, polar(1))), 2, 1000, 1, {Text::PolarsLeftOut}},
      {set(polar(1)) + Repeated(1000, set("")), 1000, 1, 1, {Text::SetsLeftOut}},
      {set(polar(1001) + Repeated(1000, polar(1))) + Repeated(1000, set("")),
       1000,
       1000,
       1000,
       {Text::SetsLeftOut, Text::PolarsLeftOut, Text::PointsLeftOut}},
  };
  TempDir dir;
  for (const auto& [body, sets, polars, points, expected] : cases) {
    const std::string path = dir.Write("many.xml", Document(body));
    Airfoil airfoil;
    const ReadReport report = ReadFromXML(airfoil, path);
    ASSERT_EQ(airfoil.ConfigCount(), sets);
    EXPECT_EQ(std::make_tuple(airfoil.Configuration(1)->PolarCount(), airfoil.Configuration(1)->Polar(1)->PointCount()),
              std::make_tuple(polars, points));
    std::vector<Text> warnings;
    for (const Diagnostic& d : report.diagnostics) {
      warnings.push_back(d.messageId);
      EXPECT_EQ(d.severity, Severity::Warning);
      EXPECT_EQ(DiagnosticText(d, Language::English).rfind(path + " holds ", 0), 0u);
    }
    EXPECT_EQ(warnings, expected) << sets << " " << polars << " " << points;
  }
}

TEST(XmlWriter, WarnsWhenAWrittenPolarHasMorePointsThanReadersTake) {
  TempDir dir;
  const std::string path = dir.File("sweep.xml");
  // Points, selected, warned; the warning's text is the batch's to show.
  for (auto [points, selected, warned] : {std::tuple{1000, true, false}, {1001, true, true}, {1001, false, false}}) {
    Airfoil airfoil = SampleAirfoil(), back;
    airfoil.Configuration(1)->Polar(2)->SetPoints(std::vector<PolarPoint>(points, MakePoint(1, 0.5, 0.01)));
    airfoil.Configuration(1)->Polar(2)->Selected = selected;
    EXPECT_EQ(WriteToXML(airfoil, path).diagnostics.size(), warned ? 1u : 0u) << points;
    ReadFromXML(back, path);
    EXPECT_EQ(back.Configuration(1)->PolarCount(), selected ? 2 : 1) << "written whole";
  }
}

TEST(XmlElements, ContentIsTheTextBetweenTheFirstTagAndItsClosingTag) {
  const std::pair<const char*, const char*> cases[] = {
      {"<name> Clark &amp; Y </name>", " Clark &amp; Y "},  // neither trimmed nor unescaped
      {"<value unit=\"deg\">4.5</value><value>5</value>", "4.5"},
      {"<name></name>", ""},
      {"<name>open", ""},
      {"name>x</name>", ""}};
  for (const auto& [element, content] : cases) EXPECT_EQ(XmlElementContent(element), content) << element;
}

// The tag search looks at sixteen places at a time; it must find what a plain search finds.
TEST(XmlElements, TheFastTagSearchFindsWhatAPlainSearchFinds) {
  uint32_t seed = 12345;
  auto next = [&seed] { return seed = seed * 1664525u + 1013904223u; };
  for (int round = 0; round < 3000; ++round) {
    std::string text(next() % 70, ' ');
    for (char& c : text) c = "</ab> x"[next() % 7];
    const std::string_view view(text);
    const size_t p = view.find("<ab>") != std::string_view::npos ? view.find("<ab>") : view.find("<ab ");
    const size_t q = p == std::string_view::npos ? p : view.substr(p).find("</ab>");
    const std::string_view expected = q == std::string_view::npos ? std::string_view{} : view.substr(p, q + 5);
    ASSERT_EQ(ExtractXmlElement(view, "ab"), expected) << text;
  }
}

}  // namespace
}  // namespace tavilo
