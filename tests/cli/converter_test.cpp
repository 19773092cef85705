// The converter end to end, through its real binary.
#include <gtest/gtest.h>
#include <sys/wait.h>

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

TEST(Converter, CsvIsWrittenByItsExtensionAndReadsBack) {
  TempDir dir;
  ASSERT_EQ(Convert(dir, {kXfoil, dir.File("naca.csv")}).status, 0);
  EXPECT_EQ(dir.Read("naca.csv").substr(0, 66), "set_no,set,polar_no,polar,re,mach,alpha,cl,cd,cm,top_xtr,bot_xtr\r\n");
  Result back = Convert(dir, {"--info", dir.File("naca.csv")});
  EXPECT_EQ(back.status, 0) << back.err;
  EXPECT_NE(back.out.find("Polar 1: Re= 1000000, Mach= 0, 12 points"), std::string::npos) << back.out;
}

TEST(Converter, FailuresSayWhatAndSetTheStatus) {
  TempDir dir;
  dir.Write("random.xml", std::string("\x01\x02garbage", 9));
  dir.Write("notes.txt", "alpha cl\nnothing measured\n");
  const struct {
    std::vector<std::string> args;
    int status;
    std::string message;
  } cases[] = {
      {{"/nonexistent/wing.pef", dir.File("out.xml")}, 1, "File not found: /nonexistent/wing.pef"},
      {{dir.File("random.xml"), dir.File("out.xml")}, 1, "Tavilo: Error: This is no valid XML file!"},
      {{dir.File("notes.txt"), dir.File("out.xml")}, 1, "File contains no polars! (" + dir.File("notes.txt") + ")"},
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

TEST(Converter, BatchPrintsOneLinePerFile) {
  TempDir dir;
  Airfoil airfoil;
  WriteToPEF(airfoil, dir.File("one.pef"));
  WriteToPEF(airfoil, dir.File("two.PEF"));
  EXPECT_EQ(Convert(dir, {"--batch", dir.Path().string()}).out, "one.pef -> one.xml\ntwo.PEF -> two.xml\n");
  EXPECT_TRUE(std::filesystem::exists(dir.File("two.xml")));
}

}  // namespace
}  // namespace tavilo
