// The converter end to end, through its real binary.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <filesystem>

#include "formats/pef.h"
#include "formats/xml.h"
#include "support/recording_ui.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::RecordingUserInterface;
using testing::TempDir;

struct Result {
  int status;
  std::string out;
  std::string err;
};

std::string Quote(const std::string& arg) {
  std::string quoted = "'";
  for (char c : arg) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

Result Convert(const TempDir& dir, const std::vector<std::string>& args) {
  std::string command = Quote(TAVILO_CONVERT);
  for (const std::string& arg : args) command += " " + Quote(arg);
  command += " > " + Quote(dir.File("stdout.txt")) + " 2> " + Quote(dir.File("stderr.txt")) + " < /dev/null";
  int raw = std::system(command.c_str());
  Result result{WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, dir.Read("stdout.txt"), dir.Read("stderr.txt")};
  std::filesystem::remove(dir.File("stdout.txt"));
  std::filesystem::remove(dir.File("stderr.txt"));
  return result;
}

const std::string kXfoil = TAVILO_SAMPLES "/xfoil/xfoil699_NACA4412_SHARP_TE_V9_Re1e6_Ncrit9_P240.pol";

TEST(Converter, ConvertsByNameAndExtension) {
  TempDir dir;
  Result result = Convert(dir, {kXfoil, dir.File("naca 4412.xml")});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  RecordingUserInterface ui;
  Airfoil airfoil;
  ReadFromXML(airfoil, dir.File("naca 4412.xml"), ui);
  ASSERT_EQ(airfoil.ConfigCount(), 1);
  EXPECT_EQ(airfoil.Configuration(1)->Polar(1)->ReynoldsNumber, 1e6);
  EXPECT_GT(airfoil.Configuration(1)->Polar(1)->PointCount(), 10);

  EXPECT_EQ(Convert(dir, {dir.File("naca 4412.xml"), dir.File("Flügel.v2.PEF")}).status, 0);
  EXPECT_TRUE(std::filesystem::exists(dir.File("Flügel.v2.PEF")));
}

TEST(Converter, InfoListsTheTree) {
  TempDir dir;
  Result result = Convert(dir, {"--info", kXfoil});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_NE(result.out.find("Airfoil: "), std::string::npos);
  EXPECT_NE(result.out.find("Set 1: "), std::string::npos);
  EXPECT_NE(result.out.find("  Polar 1: Re= 1000000, Mach= 0, "), std::string::npos) << result.out;
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
      {{kXfoil, dir.File("out.dat")}, 1, "Unknown File Format!"},
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

TEST(Converter, BatchPrintsOneLinePerFile) {
  TempDir dir;
  Airfoil airfoil;
  airfoil.Name = "A";
  WriteToPEF(airfoil, dir.File("one.pef"));
  WriteToPEF(airfoil, dir.File("two.PEF"));
  Result result = Convert(dir, {"--batch", dir.Path().string()});
  // The airfoils hold no sets, which the PEF reader reports.
  EXPECT_EQ(result.out, "one.pef -> one.xml\ntwo.PEF -> two.xml\n");
  EXPECT_TRUE(std::filesystem::exists(dir.File("two.xml")));
}

TEST(Converter, HelpAndVersion) {
  TempDir dir;
  Result help = Convert(dir, {"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_NE(help.out.find("Usage: tavilo-convert"), std::string::npos);
  Result version = Convert(dir, {"--version"});
  EXPECT_EQ(version.out.rfind("tavilo-convert ", 0), 0u);
}

}  // namespace
}  // namespace tavilo
