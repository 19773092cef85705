// The PEF reader on the model: names, counts, points, round trips, and the
// files it reads from disk.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "formats/number_text.h"
#include "formats/pef.h"
#include "formats/xml.h"
#include "model/errors.h"
#include "strings/product.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::RecordingUserInterface;

Airfoil ReadText(const std::string& text, RecordingUserInterface& ui) {
  Airfoil airfoil;
  ReadFromPEFText(airfoil, text, ui);
  return airfoil;
}

std::string OnePolarFile(const std::string& polarLines) {
  return "[Airfoil]\r\nDescription1=A\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=1\r\n"
         "[Set1-Polar1]\r\n" + polarLines;
}

// ---------------------------------------------------------------- airfoil and sets

struct NameCase {
  std::string keys;
  std::string expected;
};

TEST(PefReader, AirfoilNameFallsBackToAirfoilnameThenUnknown) {
  const std::vector<NameCase> cases = {
      {"Description1=Clark Y\r\nAirfoilname=other\r\n", "Clark Y"},
      {"Airfoilname=E387\r\n", "E387"},
      {"Description1=\r\nAirfoilname=E387\r\n", "E387"},
      {"Description1=  \r\n", "unknown airfoil"},
      {"", "unknown airfoil"},
      {"Description1=Caf\xE9\r\n", "Caf\xC3\xA9"},  // legacy 8-bit name read as Windows-1252
  };
  for (const NameCase& c : cases) {
    RecordingUserInterface ui;
    EXPECT_EQ(ReadText("[Airfoil]\r\n" + c.keys + "NumberSets=1\r\n", ui).Name, c.expected) << c.keys;
  }
}

struct SetCountCase {
  std::string value;
  int configCount;
  bool reported;
};

TEST(PefReader, NumberSetsIsRoundedHalfToEvenAndReportedWhenNotPositive) {
  const std::vector<SetCountCase> cases = {
      {"2", 2, false},    {"2.5", 2, false}, {"3.5", 4, false}, {"1e1", 10, false},
      {"0", 0, true},     {"0.5", 0, true},  {"-2", -2, true},  {"none", 0, true},
  };
  for (const SetCountCase& c : cases) {
    RecordingUserInterface ui;
    Airfoil airfoil = ReadText("[Airfoil]\r\nDescription1=A\r\nNumberSets=" + c.value + "\r\n", ui);
    EXPECT_EQ(airfoil.ConfigCount(), c.configCount) << c.value;
    ASSERT_EQ(ui.messages.size(), c.reported ? 1u : 0u) << c.value;
    if (c.reported) {
      EXPECT_EQ(ui.messages[0].text, "File contains no data sets!");
      EXPECT_EQ(ui.messages[0].title, "Tavilo: Error");
      EXPECT_EQ(airfoil.Name, "A");
    }
  }
  RecordingUserInterface ui;
  EXPECT_EQ(ReadText("[Airfoil]\r\n", ui).ConfigCount(), 0);
  EXPECT_EQ(ui.messages.size(), 1u);
}

TEST(PefReader, NumberSetsBeyondSixteenBitsOverflows) {
  RecordingUserInterface ui;
  Airfoil airfoil;
  EXPECT_THROW(ReadFromPEFText(airfoil, "[Airfoil]\r\nNumberSets=40000\r\n", ui), OverflowError);
}

TEST(PefReader, MissingSetsAndPolarsReadEmpty) {
  RecordingUserInterface ui;
  Airfoil airfoil = ReadText(
      "[Airfoil]\r\nNumberSets=2\r\n[Set1]\r\nDescription1=one\r\nOrigin=XFOIL\r\n"
      "Description2=clean\r\nNumberPolars=2\r\n[Set1-Polar2]\r\nReynoldsNumber=1e5\r\n",
      ui);
  ASSERT_EQ(airfoil.ConfigCount(), 2);
  const Configuration& first = *airfoil.Configuration(1);
  EXPECT_EQ(first.Name, "one");
  EXPECT_EQ(first.Origin, "XFOIL");
  EXPECT_EQ(first.Description2, "clean");
  ASSERT_EQ(first.PolarCount(), 2);
  EXPECT_EQ(first.Polar(1)->PointCount(), 0);
  EXPECT_EQ(first.Polar(1)->ReynoldsNumber, 0.0);
  EXPECT_TRUE(first.Polar(1)->Selected);
  EXPECT_EQ(first.Polar(2)->ReynoldsNumber, 1e5);
  EXPECT_EQ(airfoil.Configuration(2)->Name, "");
  EXPECT_EQ(airfoil.Configuration(2)->PolarCount(), 0);
}

// ---------------------------------------------------------------- points

struct PointCase {
  std::string value;
  PolarPoint expected;
};

constexpr double N = kNoValue;

TEST(PefReader, PointValuesFollowThePairRule) {
  const std::vector<PointCase> cases = {
      {"2.0 0.5 0.01", {2, 0.5, 0.01, N, N, N, N, N}},
      {"2.0 0.5 0.01 -0.05", {2, 0.5, 0.01, -0.05, N, N, N, N}},
      {"2.0 0.5 0.01 -0.05 0.4", {2, 0.5, 0.01, -0.05, 0.4, 0, N, N}},
      {"2.0 0.5 0.01 -0.05 0.4 0.9", {2, 0.5, 0.01, -0.05, 0.4, 0.9, N, N}},
      {"2.0 0.5 0.01 -0.05 0.4 0.9 0.7", {2, 0.5, 0.01, -0.05, 0.4, 0.9, 0.7, 0}},
      {"2.0 0.5 0.01 -0.05 0.4 0.9 0.7 0.8 9", {2, 0.5, 0.01, -0.05, 0.4, 0.9, 0.7, 0.8}},
      {"2.0", {2, 0, 0, N, N, N, N, N}},
      {"", {0, 0, 0, N, N, N, N, N}},
      {"4.000   0.812   0.00912   -0.0871   0.412   1.000", {4, 0.812, 0.00912, -0.0871, 0.412, 1, N, N}},
      {"1,5 2 3", {1, 2, 3, N, N, N, N, N}},  // only the period is a decimal separator
      {"1\t2 3 4", {1, 3, 4, N, N, N, N, N}},  // a tab does not separate values
  };
  for (const PointCase& c : cases) {
    RecordingUserInterface ui;
    Airfoil airfoil = ReadText(OnePolarFile("NumberPoints=1\r\nValue01=" + c.value + "\r\n"), ui);
    const Polar& polar = *airfoil.Configuration(1)->Polar(1);
    ASSERT_EQ(polar.PointCount(), 1) << c.value;
    EXPECT_EQ(polar.Point(1), c.expected) << c.value;
  }
}

TEST(PefReader, PointsAreFoundByKeyWhateverTheirOrder) {
  RecordingUserInterface ui;
  Airfoil airfoil = ReadText(OnePolarFile("NumberPoints=3\r\nValue03=3 0 0\r\nValue01=1 0 0\r\n"
                                          "Values=Alpha Cl Cd\r\nValue04=4 0 0\r\n"),
                             ui);
  const Polar& polar = *airfoil.Configuration(1)->Polar(1);
  ASSERT_EQ(polar.PointCount(), 3);  // Value04 lies beyond NumberPoints
  EXPECT_EQ(polar.Alfa(1), 1);
  EXPECT_EQ(polar.Point(2), (PolarPoint{0, 0, 0, N, N, N, N, N}));  // missing key
  EXPECT_EQ(polar.Alfa(3), 3);
}

TEST(PefReader, PolarWithManyMissingPointsIsReadExactly) {
  RecordingUserInterface ui;
  Airfoil airfoil = ReadText(OnePolarFile("NumberPoints=32767\r\nValue32767=9 9 9\r\n"), ui);
  const Polar& polar = *airfoil.Configuration(1)->Polar(1);
  ASSERT_EQ(polar.PointCount(), 32767);
  EXPECT_EQ(polar.Point(1), (PolarPoint{0, 0, 0, N, N, N, N, N}));
  EXPECT_EQ(polar.Alfa(32767), 9);
}

TEST(PefReader, StopsWhenAFileAsksForTooManyMissingItems) {
  // Each set points at 1000 polars of which none exists.
  std::string text = "[Airfoil]\r\nNumberSets=3\r\n";
  for (int i = 1; i <= 3; ++i) text += "[Set" + std::to_string(i) + "]\r\nNumberPolars=1000\r\n";
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromPEFText(airfoil, text, ui, 1500);
  ASSERT_EQ(airfoil.ConfigCount(), 3);
  EXPECT_EQ(airfoil.Configuration(1)->PolarCount(), 1000);
  EXPECT_EQ(airfoil.Configuration(2)->PolarCount(), 500);
  EXPECT_EQ(airfoil.Configuration(3)->PolarCount(), 0);
  EXPECT_TRUE(ui.messages.empty());

  Airfoil points;
  ReadFromPEFText(points, OnePolarFile("NumberPoints=100\r\nValue50=5 5 5\r\n"), ui, 10);
  EXPECT_EQ(points.Configuration(1)->Polar(1)->PointCount(), 10);
}

// ---------------------------------------------------------------- round trips

double Rounded(double value, const char* pattern) { return LeadingNumber(FormatNumber(value, pattern)); }

Airfoil ModelWithTwoSets() {
  Airfoil airfoil;
  airfoil.Name = "NACA 2412";
  for (int s = 0; s < 2; ++s) {
    auto config = std::make_shared<Configuration>();
    config->Name = s == 0 ? "Flap 0" : "";
    config->Origin = s == 0 ? "XFOIL" : "";
    for (int p = 0; p < 3; ++p) {
      auto polar = std::make_shared<Polar>();
      polar->Name = "Re " + std::to_string(p);
      polar->ReynoldsNumber = 100000.4 * (p + 1);
      polar->MachNumber = 0.3 * p;
      polar->Selected = true;
      for (int i = 0; i < 120; ++i)
        polar->AddPoint({-5 + i * 0.12345, 0.01 * i, 0.0061234 + i * 1e-5, -0.05, 0.61234, 1.0, N, N});
      config->AddPolar(polar);
    }
    airfoil.AddConfiguration(config);
  }
  return airfoil;
}

TEST(PefReader, WrittenFileReadsBackToTheSameModel) {
  const Airfoil original = ModelWithTwoSets();
  RecordingUserInterface ui;
  Airfoil read = ReadText(PefText(original), ui);
  EXPECT_TRUE(ui.messages.empty());
  EXPECT_EQ(read.Name, original.Name);
  ASSERT_EQ(read.ConfigCount(), 2);
  EXPECT_EQ(read.Configuration(1)->Name, "Flap 0");
  EXPECT_EQ(read.Configuration(1)->Origin, "XFOIL");
  EXPECT_EQ(read.Configuration(1)->Description2, kCopyrightNotice);  // the first of two
  EXPECT_EQ(read.Configuration(2)->Name, kCopyrightNotice);          // an unnamed set
  EXPECT_EQ(read.Configuration(2)->Origin, "Tavilo");
  for (int s = 1; s <= 2; ++s) {
    ASSERT_EQ(read.Configuration(s)->PolarCount(), 3);
    for (int p = 1; p <= 3; ++p) {
      const Polar& want = *original.Configuration(s)->Polar(p);
      const Polar& got = *read.Configuration(s)->Polar(p);
      EXPECT_EQ(got.Name, want.Name);
      EXPECT_EQ(got.ReynoldsNumber, Rounded(want.ReynoldsNumber, "0"));
      EXPECT_EQ(got.MachNumber, Rounded(want.MachNumber, "0"));  // 0.3 reads 0, 0.6 reads 1
      ASSERT_EQ(got.PointCount(), 120);
      for (int i = 1; i <= 120; ++i) {
        const PolarPoint& w = want.Point(i);
        EXPECT_EQ(got.Point(i), (PolarPoint{Rounded(w.Alfa, "0.000"), Rounded(w.Cl, "0.000"),
                                            Rounded(w.Cd, "0.00000"), Rounded(w.Cm, "0.0000"),
                                            Rounded(w.TU, "0.000"), Rounded(w.TL, "0.000"), N, N}))
            << "set " << s << " polar " << p << " point " << i;
      }
    }
  }
  EXPECT_EQ(read.Configuration(1)->Polar(2)->MachNumber, 0.0);
}

TEST(PefReader, ConvertsToXmlAndBackThroughTheModel) {
  RecordingUserInterface ui;
  Airfoil fromPef = ReadText(PefText(ModelWithTwoSets()), ui);
  Airfoil fromXml;
  ReadFromXMLText(fromXml, XmlText(fromPef), ui);
  Airfoil again = ReadText(PefText(fromXml), ui);
  EXPECT_TRUE(ui.messages.empty());
  // Origin and Description2 are not carried by XML; everything else is.
  for (Airfoil* airfoil : {&fromPef, &again}) {
    for (int s = 1; s <= airfoil->ConfigCount(); ++s) {
      airfoil->Configuration(s)->Origin.clear();
      airfoil->Configuration(s)->Description2.clear();
    }
  }
  EXPECT_EQ(PefText(again), PefText(fromPef));
}

TEST(PefReader, CopiedPolarBlockPastesBack) {
  const Airfoil airfoil = ModelWithTwoSets();
  const Polar& original = *airfoil.Configuration(1)->Polar(2);
  Polar pasted;
  ReadPolarFromPEFText(pasted, PolarPefText(original, 1, 1), 1, 1);
  EXPECT_TRUE(pasted.Selected);
  EXPECT_EQ(pasted.Name, original.Name);
  ASSERT_EQ(pasted.PointCount(), original.PointCount());
  EXPECT_EQ(pasted.Cd(100), Rounded(original.Cd(100), "0.00000"));
}

// ---------------------------------------------------------------- files

TEST(PefFile, MissingFileRaisesAndLeavesTheAirfoilUnchanged) {
  testing::TempDir dir;
  Airfoil airfoil = ModelWithTwoSets();
  RecordingUserInterface ui;
  EXPECT_THROW(ReadFromPEF(airfoil, dir.File("none.pef"), ui), FileNotFoundError);
  EXPECT_EQ(airfoil.Name, "NACA 2412");
  EXPECT_EQ(airfoil.ConfigCount(), 2);
  Polar polar;
  EXPECT_THROW(ReadPolarFromPEF(polar, dir.File("none.pef"), 1, 1), FileNotFoundError);
  EXPECT_THROW(ReadPefValue("Airfoil", "NumberSets", dir.File("none.pef")), FileNotFoundError);
}

struct ConversionCase {
  std::string before;
  std::string after;
};

TEST(PefFile, OnlyFilesWithoutAnyCarriageReturnAreConverted) {
  const std::vector<ConversionCase> cases = {
      {"a\nb", "a\r\nb\r\n"},
      {"a\nb\n", "a\r\nb\r\n\r\n"},  // a file ending in LF gains an empty last line
      {"\n", "\r\n\r\n"},
      {"ab", "ab"},
      {"", ""},
      {"a\r\nb\n", "a\r\nb\n"},
      {"a\rb\n", "a\rb\n"},
  };
  testing::TempDir dir;
  for (const ConversionCase& c : cases) {
    const std::string path = dir.Write("f.pef", c.before);
    ConvertLfOnlyFile(path);
    EXPECT_EQ(dir.Read("f.pef"), c.after) << c.before;
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), {}), 1);  // no temporary left
}

TEST(PefFile, LfOnlyFileIsRewrittenThenRead) {
  testing::TempDir dir;
  const std::string path = dir.Write("lf.pef", "[Airfoil]\nDescription1=LF\nNumberSets=1\n[Set1]\n"
                                               "NumberPolars=1\n[Set1-Polar1]\nNumberPoints=1\nValue01=1 2 3\n");
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromPEF(airfoil, path, ui);
  EXPECT_EQ(airfoil.Name, "LF");
  EXPECT_EQ(airfoil.Configuration(1)->Polar(1)->Cd(1), 3);
  EXPECT_EQ(dir.Read("lf.pef"),
            "[Airfoil]\r\nDescription1=LF\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=1\r\n"
            "[Set1-Polar1]\r\nNumberPoints=1\r\nValue01=1 2 3\r\n\r\n");
  EXPECT_EQ(ReadPefValue("Set1-Polar1", "Value01", path), "1 2 3");
}

TEST(PefFile, ReadOnlyLfOnlyFileIsReadWithoutRewriting) {
  testing::TempDir dir;
  const std::string text = "[Airfoil]\nDescription1=RO\nNumberSets=1\n";
  const std::string path = dir.Write("ro.pef", text);
  std::filesystem::permissions(path, std::filesystem::perms::owner_read | std::filesystem::perms::group_read);
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromPEF(airfoil, path, ui);
  EXPECT_EQ(airfoil.Name, "RO");
  EXPECT_EQ(airfoil.ConfigCount(), 1);
  EXPECT_EQ(dir.Read("ro.pef"), text);
  EXPECT_EQ(ReadPefValue("Airfoil", "Description1", path), "RO");
}

// A name so long that no temporary name fits beside it: the rewrite fails
// as in a folder that cannot be written, even for root.
TEST(PefFile, LfOnlyFileThatCannotBeReplacedIsReadFromMemory) {
  testing::TempDir dir;
  const std::string name = std::string(248, 'n') + ".pef";
  const std::string text = "[Airfoil]\nDescription1=Long\nNumberSets=1\n";
  const std::string path = dir.Write(name, text);
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromPEF(airfoil, path, ui);
  EXPECT_EQ(airfoil.Name, "Long");
  EXPECT_EQ(dir.Read(name), text);
  EXPECT_THROW(ConvertLfOnlyFile(path), FileAccessError);
}

TEST(PefFile, ConversionRewritesTheTargetOfALink) {
  testing::TempDir dir;
  const std::string target = dir.Write("real.pef", "a\nb");
  const std::string link = dir.File("link.pef");
  std::filesystem::create_symlink(target, link);
  ConvertLfOnlyFile(link);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(dir.Read("real.pef"), "a\r\nb\r\n");
}

}  // namespace
}  // namespace tavilo
