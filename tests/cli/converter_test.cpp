// The converter end to end, through its real binary.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <fstream>

#include "formats/pef.h"
#include "formats/xml.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::TempDir;

struct Result {
  int status;
  std::string out, err;
};

Result Convert(const TempDir& dir, const std::vector<std::string>& args) {
  auto quote = [](const std::string& arg) {
    std::string quoted = "'";
    for (char c : arg) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
  };
  std::string command = quote(TAVILO_CONVERT);
  for (const std::string& arg : args) command += " " + quote(arg);
  command += " > " + quote(dir.File("stdout.txt")) + " 2> " + quote(dir.File("stderr.txt")) + " < /dev/null";
  int raw = std::system(command.c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, dir.Read("stdout.txt"), dir.Read("stderr.txt")};
}

const std::string kXfoil = TAVILO_SAMPLES "/xfoil/xfoil699_NACA4412_SHARP_TE_V9_Re1e6_Ncrit9_P240.pol";

TEST(Converter, ConvertsByNameAndExtensionAndListsTheTree) {
  TempDir dir;
  Result result = Convert(dir, {kXfoil, dir.File("naca 4412.xml")});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  Airfoil airfoil;
  ReadFromXML(airfoil, dir.File("naca 4412.xml"));
  EXPECT_EQ(airfoil.Configuration(1)->Polar(1)->ReynoldsNumber, 1e6);
  EXPECT_GT(airfoil.Configuration(1)->Polar(1)->PointCount(), 10);
  EXPECT_EQ(Convert(dir, {dir.File("naca 4412.xml"), dir.File("Flügel.v2.PEF")}).status, 0);
  EXPECT_TRUE(std::filesystem::exists(dir.File("Flügel.v2.PEF")));
  result = Convert(dir, {"--info", kXfoil});
  EXPECT_NE(result.out.find("Set 1: "), std::string::npos);
  EXPECT_NE(result.out.find("  Polar 1: Re= 1000000, Mach= 0, "), std::string::npos) << result.out;
  EXPECT_NE(Convert(dir, {"--help"}).out.find("Usage: tavilo-convert"), std::string::npos);
  EXPECT_EQ(Convert(dir, {"--version"}).out.rfind("tavilo-convert ", 0), 0u);
}

TEST(Converter, FailuresSayWhatAndSetTheStatus) {
  TempDir dir;
  dir.Write("random.xml", std::string("\x01\x02garbage", 9));
  const struct {
    std::vector<std::string> args;
    int status;
    const char* message;
  } cases[] = {
      {{"/nonexistent/wing.pef", dir.File("out.xml")}, 1, "File not found: /nonexistent/wing.pef"},
      {{dir.File("random.xml"), dir.File("out.xml")}, 1, "Tavilo: Error: This is no valid XML file!"},
      {{"--lang", "de", kXfoil, dir.File("out.dat")}, 1, "Tavilo: Fehler: Umbekanntes Dateiformat!"},
      {{kXfoil, "/nonexistent/dir/out.xml"}, 1, "/nonexistent/dir/out.xml"},
      {{"--batch", "/nonexistent/dir"}, 1, "File not found: /nonexistent/dir"},
      {{kXfoil}, 2, "wrong number of file names"},
      {{"--frobnicate", kXfoil, "x.xml"}, 2, "unknown option --frobnicate"},
      {{"--airfoil", "zero", kXfoil, "x.xml"}, 2, "--airfoil takes a number"},
  };
  for (const auto& c : cases) {
    Result result = Convert(dir, c.args);
    EXPECT_EQ(result.status, c.status) << c.args[0] << ": " << result.err;
    EXPECT_NE(result.err.find(c.message), std::string::npos) << result.err;
  }
  EXPECT_FALSE(std::filesystem::exists(dir.File("out.xml")));
  EXPECT_FALSE(std::filesystem::exists(dir.File("out.dat")));
}

TEST(Converter, AReaderThatStopsOnAWildNumberFailsTheRunAndNamesTheFile) {
  TempDir dir;
  const std::string wild = dir.Write(
      "wild.pol",
      "\n XFOIL\n\n Calculated polar for: NACA 0012\n\n 1 1\n\n xtrf\n Mach =   0.000     Re =     1.000 e 6\n"
      "\n alpha CL\n ----- --\n   0.0  0.1  0.01  0  0  1  1\n   1.0  1e999  0.01  0  0  1  1\n");
  for (const std::vector<std::string>& args :
       {std::vector<std::string>{wild, dir.File("out.xml")}, {"--info", wild}}) {
    const Result result = Convert(dir, args);
    EXPECT_EQ(result.status, 1) << args[0];
    EXPECT_NE(result.err.find("Tavilo: Error: " + wild + ", line 14: Overflow"), std::string::npos) << result.err;
  }
  EXPECT_FALSE(std::filesystem::exists(dir.File("out.xml")));
}

// A PEF file of one polar of one point.
const std::string kOnePointPef =
    "[Airfoil]\r\nDescription1=A\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=1\r\n[Set1-Polar1]\r\n"
    "NumberPoints=1\r\nValue01=1 0.1 0.01\r\n";

TEST(Converter, BatchPrintsOneLinePerFile) {
  TempDir dir;
  dir.Write("one.pef", kOnePointPef);
  dir.Write("two.PEF", kOnePointPef);
  EXPECT_EQ(Convert(dir, {"--batch", dir.Path().string()}).out, "one.pef -> one.xml\ntwo.PEF -> two.xml\n");
  EXPECT_TRUE(std::filesystem::exists(dir.File("two.xml")));
}

std::string FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

TEST(Converter, AnInputWithoutAPointIsAnErrorInEveryMode) {
  TempDir dir;
  const bool canPlot = Convert(dir, {"--help"}).out.find("--plot") != std::string::npos;
  const std::string inputs[] = {
      dir.Write("empty.pol", ""),
      dir.Write("random.drg", std::string("\x93\x00\xff\x10 bytes", 10)),
      dir.Write("text.pol", "just some text\nover two lines\n"),
      TAVILO_SAMPLES "/xfoil/naca4412_re50k_none.pol",  // no angle converged
  };
  for (const std::string& input : inputs) {
    std::vector<std::vector<std::string>> runs = {{input, dir.File("out.xml")}, {"--info", input}};
    if (canPlot) runs.push_back({"--plot", dir.File("out.png"), input});
    for (const std::vector<std::string>& args : runs) {
      const Result result = Convert(dir, args);
      EXPECT_EQ(result.status, 1) << args[0] << " " << input;
      EXPECT_EQ(result.err, "Tavilo: Error: File contains no polars! (" + input + ")\n");
      EXPECT_EQ(result.out, "");
    }
  }
  EXPECT_FALSE(std::filesystem::exists(dir.File("out.xml")));
  EXPECT_FALSE(std::filesystem::exists(dir.File("out.png")));
  TempDir batch;
  const std::string empty = batch.Write("empty.pef", "[Airfoil]\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=0\r\n");
  const Result result = Convert(dir, {"--batch", batch.Path().string()});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err.rfind("Tavilo: Error: File contains no polars! (" + empty + ")\n", 0), 0u) << result.err;
  EXPECT_FALSE(std::filesystem::exists(batch.File("empty.xml")));
}

TEST(Converter, AFileShortOfItsCountsConvertsWhatItHoldsWithAWarning) {
  TempDir dir;
  const std::string cutDrg = dir.Write(
      "cut.drg", "Airfoil: E387\nUIUC\n\n\n\n1\n\n\n200000\n\n2\n\n0 0.1 0.01 0.01 0.01 0.01 0.01\n");
  const std::string cutPef = dir.Write(
      "cut.pef", kOnePointPef.substr(0, kOnePointPef.find("NumberPoints")) + "NumberPoints=3\r\n"
                     "Value01=1 0.1 0.01\r\nValue02=2 0.2 0.01\r\n");
  const struct {
    std::string input, language, warning;
    int points;
  } cases[] = {
      {cutDrg, "en", "Tavilo: Warning: " + cutDrg + " holds fewer polars or points than its counts announce", 1},
      {cutPef, "en", "Tavilo: Warning: " + cutPef + " holds fewer polars or points than its counts announce", 3},
      {cutPef, "de", "Tavilo: Warnung: " + cutPef + " enthält weniger Polaren oder Punkte", 3},
  };
  for (const auto& c : cases) {
    std::filesystem::remove(dir.File("out.xml"));
    const Result result = Convert(dir, {"--lang", c.language, c.input, dir.File("out.xml")});
    EXPECT_EQ(result.status, 0) << c.input;
    EXPECT_EQ(result.err.rfind(c.warning, 0), 0u) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    Airfoil airfoil;
    ReadFromXML(airfoil, dir.File("out.xml"));
    EXPECT_EQ(airfoil.Configuration(1)->Polar(1)->PointCount(), c.points) << c.input;
  }
}

TEST(Converter, AnLfOnlyPefInputStaysByteForByteInEveryMode) {
  TempDir dir, batch;
  std::string text = kOnePointPef;
  for (size_t p; (p = text.find("\r\n")) != std::string::npos;) text.replace(p, 2, "\n");
  const std::string input = batch.Write("lf.pef", text);
  const auto old = std::filesystem::last_write_time(input) - std::chrono::hours(24 * 365);
  std::filesystem::last_write_time(input, old);
  for (const std::vector<std::string>& args : {std::vector<std::string>{input, dir.File("out.xml")},
                                               {"--info", input}, {"--batch", batch.Path().string()}}) {
    const Result result = Convert(dir, args);
    EXPECT_EQ(result.status, 0) << args[0] << ": " << result.err;
    EXPECT_EQ(FileBytes(input), text) << args[0];
    EXPECT_EQ(std::filesystem::last_write_time(input), old) << args[0];
  }
  Airfoil airfoil;
  ReadFromXML(airfoil, batch.File("lf.xml"));
  EXPECT_EQ(airfoil.Configuration(1)->Polar(1)->Cd(1), 0.01);
}

TEST(Converter, AnAirfoilPastTheFilesIsBadUsageAndOneThatChoosesNothingIsReported) {
  TempDir dir;
  const std::string uiuc = TAVILO_SAMPLES "/uiuc/";
  const std::string two = dir.Write("two.drg", FileBytes(uiuc + "S1223GF1.DRG") + FileBytes(uiuc + "WASP.DRG"));
  const std::string single = uiuc + "E387A.DRG";
  const struct {
    std::vector<std::string> args;
    int status;
    std::string message;  // "" for none
  } cases[] = {
      {{"--airfoil", "3", two, dir.File("out.xml")}, 2, "--airfoil 3 is past the end: " + two + " holds 2 airfoil(s)."},
      {{"--lang", "de", "--airfoil", "3", "--info", two}, 2, "--airfoil 3 liegt hinter dem Ende: " + two + " enthält 2"},
      {{"--airfoil", "2", single, dir.File("out.xml")}, 2, "--airfoil 2 is past the end: " + single + " holds 1"},
      {{"--airfoil", "2", "--info", two}, 0, ""},
      {{"--airfoil", "1", "--info", single}, 0,
       "Tavilo: Warning: --airfoil is ignored: " + single + " holds a single airfoil."},
      {{"--airfoil", "2", "--info", kXfoil}, 0, "Tavilo: Warning: --airfoil is ignored: " + kXfoil + " is not a drag"},
  };
  for (const auto& c : cases) {
    const Result result = Convert(dir, c.args);
    EXPECT_EQ(result.status, c.status) << c.message << ": " << result.err;
    if (c.message.empty())
      EXPECT_EQ(result.err, "");
    else
      EXPECT_NE(result.err.find(c.message), std::string::npos) << result.err;
  }
  EXPECT_FALSE(std::filesystem::exists(dir.File("out.xml")));
  EXPECT_NE(Convert(dir, {"--airfoil", "2", "--info", two}).out.find("Airfoil: WASP\n"), std::string::npos);
}

TEST(Converter, BatchGoesOnPastFailingFilesAndListsThemAtTheEnd) {
  TempDir dir;
  for (const char* name : {"a.pef", "c.pef", "d.pef"}) dir.Write(name, kOnePointPef);
  const std::string empty = dir.Write("b.pef", "[Airfoil]\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=0\r\n");
  std::filesystem::create_directory(dir.File("c.xml"));  // where c.pef's output should go
  const struct {
    const char* language;
    std::string noPolars, cannotWrite, summary;
  } cases[] = {
      {"en", "Tavilo: Error: File contains no polars! (" + empty + ")\n",
       "Tavilo: Error: File access error: cannot replace " + dir.File("c.xml"),
       "Tavilo: Error: 2 of 4 files could not be converted:\n  b.pef\n  c.pef\n"},
      {"de", "Tavilo: Fehler: Datei enthält keine Polaren!",
       "Tavilo: Fehler: Fehler beim Dateizugriff: cannot replace " + dir.File("c.xml"),
       "Tavilo: Fehler: 2 von 4 Dateien konnten nicht umgewandelt werden:\n  b.pef\n  c.pef\n"},
  };
  for (const auto& c : cases) {
    const Result result = Convert(dir, {"--lang", c.language, "--batch", dir.Path().string()});
    EXPECT_EQ(result.status, 1) << c.language;
    EXPECT_EQ(result.out, "a.pef -> a.xml\nd.pef -> d.xml\n");
    EXPECT_NE(result.err.find(c.noPolars), std::string::npos) << result.err;
    EXPECT_NE(result.err.find(c.cannotWrite), std::string::npos) << result.err;
    EXPECT_NE(result.err.find("(" + dir.File("c.pef") + ")\n"), std::string::npos) << result.err;
    EXPECT_EQ(result.err.substr(result.err.size() - std::min(result.err.size(), c.summary.size())), c.summary);
  }
}

}  // namespace
}  // namespace tavilo
