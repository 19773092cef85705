// The converter end to end: in process, and through its real binary where
// the process itself matters.
#include "cli/converter.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <regex>
#include <sstream>
#include <tuple>

#include "formats/file_text.h"
#include "formats/pef.h"
#include "formats/xml.h"
#include "support/model_builders.h"
#include "support/temp_dir.h"

namespace tavilo {
namespace {

using testing::TempDir;

struct Result {
  int status;
  std::string out, err;
};

// Runs the converter in process; through `binary` (the real one, or a copy)
// where asked, and always for drawing, which starts the renderer beside it.
Result Convert(const TempDir& dir, const std::vector<std::string>& args, std::string binary = "") {
  if (binary.empty() && std::find_if(args.begin(), args.end(), [](const std::string& arg) {
                          return arg == "--plot" || arg == "--print";
                        }) == args.end()) {
    std::ostringstream out, err;
    const int status = RunConverter(args, out, err);
    return {status, out.str(), err.str()};
  }
  auto quote = [](const std::string& arg) {
    std::string quoted = "'";
    for (char c : arg) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
  };
  std::string command = quote(binary.empty() ? TAVILO_CONVERT : binary);
  for (const std::string& arg : args) command += " " + quote(arg);
  command += " > " + quote(dir.File("stdout.txt")) + " 2> " + quote(dir.File("stderr.txt")) + " < /dev/null";
  int raw = std::system(command.c_str());
  return {WIFEXITED(raw) ? WEXITSTATUS(raw) : -1, dir.Read("stdout.txt"), dir.Read("stderr.txt")};
}

const std::string kXfoil = TAVILO_SAMPLES "/xfoil/xfoil699_NACA4412_SHARP_TE_V9_Re1e6_Ncrit9_P240.pol";

TEST(Converter, ConvertsByNameAndExtensionAndListsTheTree) {
  TempDir dir;
  Result result = Convert(dir, {kXfoil, dir.File("naca 4412.xml")}, TAVILO_CONVERT);
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  Airfoil airfoil;
  ReadFromXML(airfoil, dir.File("naca 4412.xml"));
  EXPECT_EQ(airfoil.Configuration(1)->Polar(1)->ReynoldsNumber, 1e6);
  EXPECT_GT(airfoil.Configuration(1)->Polar(1)->PointCount(), 10);
  EXPECT_EQ(Convert(dir, {dir.File("naca 4412.xml"), dir.File("Flügel.v2.PEF")}).status, 0);
  EXPECT_TRUE(std::filesystem::exists(dir.File("Flügel.v2.PEF")));
  ASSERT_EQ(Convert(dir, {kXfoil, dir.File("naca.csv")}).status, 0);
  EXPECT_EQ(dir.Read("naca.csv").substr(0, 66), "set_no,set,polar_no,polar,re,mach,alpha,cl,cd,cm,top_xtr,bot_xtr\r\n");
  // The listing speaks the chosen language.
  const std::tuple<std::string, std::string> listings[] = {
      {"en", "Airfoil: NACA4412 SHARP TE V9\nSet 1: \n  Polar 1: Re= 1000000, Mach= 0, 12 points\n"},
      {"de", "Profil: NACA4412 SHARP TE V9\nKonfiguration 1: \n  Polare 1: Re= 1000000, Mach= 0, 12 Punkte\n"},
  };
  for (const auto& [language, listing] : listings) {
    EXPECT_EQ(Convert(dir, {"--lang", language, "--info", kXfoil}).out, listing);
    const std::string back = Convert(dir, {"--lang", language, "--info", dir.File("naca.csv")}).out;
    EXPECT_NE(back.find(listing.substr(listing.rfind("  Pol"))), std::string::npos) << "the CSV reads back";
  }
  EXPECT_EQ(Convert(dir, {"--help"}).out.rfind("Usage: tavilo-convert", 0), 0u);
  EXPECT_EQ(Convert(dir, {"--version"}).out.rfind("tavilo-convert ", 0), 0u);
}

// Every polar of five points or more as C text, the others named and skipped.
TEST(Converter, ApproxFitsEachLongEnoughPolarAsCText) {
  TempDir dir;
  Airfoil airfoil;
  airfoil.Name = "Wing */ 2";
  auto set = std::make_shared<Configuration>();
  for (int points : {3, 21, 9}) {
    std::vector<PolarPoint> sweep;
    for (int k = 0; k < points; ++k) sweep.push_back(testing::MakePoint(k - 5, 0.11 * (k - 3), 0.008 + 0.0001 * k * k));
    set->AddPolar(testing::MakePolar(2e5, 0.05, true, sweep));
  }
  airfoil.AddConfiguration(set);
  WriteToXML(airfoil, dir.File("wing.xml"));
  Result result = Convert(dir, {"--approx", dir.File("wing.xml")});
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out.rfind("/* Wing * / 2, Re=2e+05, Mach=0.05: rms Cl ", 0), 0u) << result.out;
  EXPECT_NE(result.out.find(" over 21 points */\nstatic const double approx_1[11] = {\n"), std::string::npos);
  EXPECT_NE(result.out.find(" over 9 points */\nstatic const double approx_2[11] = {\n"), std::string::npos);
  EXPECT_EQ(result.err.rfind("Tavilo: Warning: Polar 1 (Re=2e+05, Mach=0.05) has fewer than 8 points", 0), 0u)
      << result.err;
  // Values as a person reads them: six significant digits at most, the errors three.
  EXPECT_FALSE(std::regex_search(result.out, std::regex("[1-9](\\.?[0-9]){6}"))) << result.out;
  EXPECT_FALSE(std::regex_search(result.out, std::regex("rms C[ld] [-0.]*[1-9](\\.?[0-9]){3}"))) << result.out;

  set->DeletePolar(3);
  set->DeletePolar(2);
  WriteToXML(airfoil, dir.File("short.xml"));
  result = Convert(dir, {"--lang", "de", "--approx", dir.File("short.xml")});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_NE(result.err.find("Keine Polare hat die 8 Punkte"), std::string::npos) << result.err;
}

const std::string kOnePointPef =
    "[Airfoil]\r\nDescription1=A\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=1\r\n[Set1-Polar1]\r\n"
    "NumberPoints=1\r\nValue01=1 0.1 0.01\r\n";

// Qt is loaded for drawing alone, by the tavilo-render beside the converter.
TEST(Converter, DrawsThroughTheRendererBesideItAndLinksNoQtItself) {
  TempDir dir;
  if (Convert(dir, {"--help"}).out.find("--plot") == std::string::npos) GTEST_SKIP() << "built without Qt";
  const std::string ldd = "ldd '" TAVILO_CONVERT "' > '" + dir.File("ldd.txt") + "'";
  ASSERT_EQ(std::system(ldd.c_str()), 0);
  EXPECT_EQ(dir.Read("ldd.txt").find("Qt"), std::string::npos) << dir.Read("ldd.txt");

  std::filesystem::create_directory(dir.File("alone"));
  const std::string alone = dir.File("alone/tavilo-convert");
  std::filesystem::copy_file(TAVILO_CONVERT, alone);
  const Result result = Convert(dir, {"--lang", "de", "--plot", dir.File("out.png"), kXfoil}, alone);
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.err.rfind("Tavilo: Fehler: Das Grafikprogramm " + dir.File("alone/tavilo-render") +
                                 " kann nicht gestartet werden: No such file",
                             0),
            0u)
      << result.err;
  EXPECT_FALSE(std::filesystem::exists(dir.File("out.png")));
  // Nothing to draw is found before the renderer is started.
  const std::string empty = dir.Write("empty.pol", "");
  EXPECT_EQ(Convert(dir, {"--plot", dir.File("out.png"), empty}).err,
            "Tavilo: Error: File contains no polars! (" + empty + ")\n");
}

TEST(Converter, AWarnedFileIsConvertedWithOneLineOnStandardError) {
  TempDir dir;
  const std::string drg = dir.Write("cut.drg", "Airfoil: E387\nUIUC\n\n\n\n1\n\n\n2e5\n\n2\n\n0 0.1 0.01 0.01 0 0 0\n");
  Airfoil sweep;
  auto set = std::make_shared<Configuration>();
  set->AddPolar(testing::MakePolar(1e5, 0, true, std::vector<PolarPoint>(1001, testing::MakePoint(1, 0.1, 0.01))));
  sweep.AddConfiguration(set);
  WriteToPEF(sweep, dir.File("sweep.pef"));
  const std::tuple<std::string, std::string, std::string> cases[] = {
      {drg, "en", "Tavilo: Warning: " + drg + " holds fewer polars or points than its counts announce; what it"},
      {dir.File("sweep.pef"), "de",
       "Tavilo: Warnung: " + dir.File("de.xml") +
           " enthält eine Polare mit mehr als 1000 Punkten: Leser des XML-Formats lassen die Punkte nach dem "
           "1000. aus.\n"},
  };
  for (const auto& [input, language, warning] : cases) {
    const Result result = Convert(dir, {"--lang", language, input, dir.File(language + ".xml")});
    EXPECT_EQ(result.status, 0) << input;
    EXPECT_EQ(result.err.rfind(warning, 0), 0u) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_NE(dir.Read(language + ".xml").find("<value>0.100</value>"), std::string::npos) << input;
  }
}

TEST(Converter, AnLfOnlyPefInputStaysByteForByteInEveryMode) {
  TempDir dir, batch;
  std::string text = kOnePointPef;
  text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
  const std::string input = batch.Write("lf.pef", text);
  const auto old = std::filesystem::last_write_time(input) - std::chrono::hours(24 * 365);
  std::filesystem::last_write_time(input, old);
  for (const std::vector<std::string>& args :
       {std::vector<std::string>{input, dir.File("out.xml")}, {"--info", input}, {"--batch", batch.Path().string()}}) {
    EXPECT_EQ(Convert(dir, args).status, 0) << args[0];
    EXPECT_EQ(ReadFileBytes(input), text) << args[0];
    EXPECT_EQ(std::filesystem::last_write_time(input), old) << args[0];
  }
  EXPECT_NE(batch.Read("lf.xml").find("<value>0.100</value>"), std::string::npos) << "read converted in memory";
}

// Bad usage exits with 2, a file that cannot be read or written with 1;
// an --airfoil that chooses nothing is only reported.
TEST(Converter, FailuresSayWhatAndSetTheStatus) {
  TempDir dir;
  const std::string random = dir.Write("random.xml", std::string("\x01\x02garbage", 9));
  const std::string notes = dir.Write("notes.txt", "alpha cl\nnothing measured\n");
  const std::string none = TAVILO_SAMPLES "/xfoil/naca4412_re50k_none.pol";
  const std::string wild = dir.Write(
      "wild.pol",
      "\n XFOIL\n\n Calculated polar for: NACA 0012\n\n 1 1\n\n xtrf\n Mach =   0.000     Re =     1.000 e 6\n"
      "\n alpha CL\n ----- --\n   0.0  0.1  0.01  0  0  1  1\n   1.0  1e999  0.01  0  0  1  1\n");
  const std::string uiuc = TAVILO_SAMPLES "/uiuc/";
  const std::string two = dir.Write("two.drg", ReadFileBytes(uiuc + "S1223GF1.DRG") + ReadFileBytes(uiuc + "WASP.DRG"));
  const std::string single = uiuc + "E387A.DRG", out = dir.File("out.xml"), dat = dir.File("out.dat");
  const struct {
    std::vector<std::string> args;
    int status;
    std::string message;  // the start of standard error
  } cases[] = {
      {{"/nonexistent/wing.pef", out}, 1, "Tavilo: Error: File not found: /nonexistent/wing.pef\n"},
      {{random, out}, 1, "Tavilo: Error: This is no valid XML file! (" + random + ")\n"},
      // No polar with a point is an error in every mode.
      {{notes, out}, 1, "Tavilo: Error: File contains no polars! (" + notes + ")\n"},
      {{"--info", none}, 1, "Tavilo: Error: File contains no polars! (" + none + ")\n"},
      {{"--lang", "de", kXfoil, dat}, 1, "Tavilo: Fehler: Umbekanntes Dateiformat! '" + dat + "'"},
      {{kXfoil, "/no/dir/out.xml"}, 1, "Tavilo: Error: File access error: cannot write /no/dir/out.xml: "},
      // A reader that stops on a wild number fails the run and names the file.
      {{wild, out}, 1, "Tavilo: Error: " + wild + ", line 14: Overflow"},
      {{kXfoil}, 2, "tavilo-convert: wrong number of file names\n"},
      {{"--frobnicate", kXfoil, "x.xml"}, 2, "tavilo-convert: unknown option --frobnicate\n"},
      {{"--airfoil", "zero", kXfoil, "x.xml"}, 2, "tavilo-convert: --airfoil takes a number from 1"},
      {{"--airfoil", "3", two, out}, 2, "tavilo-convert: --airfoil 3 is past the end: " + two + " holds 2 airfoil(s)."},
      {{"--airfoil", "2", single, out}, 2, "tavilo-convert: --airfoil 2 is past the end: " + single},
      {{"--airfoil", "2", "--info", two}, 0, ""},  // real UIUC files: no other message either
      {{"--airfoil", "1", "--info", single}, 0, "Tavilo: Warning: --airfoil is ignored: " + single + " holds a"},
      {{"--airfoil", "2", "--info", kXfoil}, 0, "Tavilo: Warning: --airfoil is ignored: " + kXfoil + " is not"},
  };
  for (const auto& c : cases) {
    const Result result = Convert(dir, c.args);
    EXPECT_EQ(result.status, c.status) << c.message;
    EXPECT_EQ(result.err.substr(0, c.message.size()), c.message);
  }
  EXPECT_FALSE(std::filesystem::exists(out));
  EXPECT_FALSE(std::filesystem::exists(dat));
  EXPECT_NE(Convert(dir, {"--airfoil", "2", "--info", two}).out.find("Airfoil: WASP\n"), std::string::npos);
}

// A batch goes on past failing files and lists them at the end; files
// converted side by side are printed and written as one job does it, the
// messages of every read included, once each.
TEST(Converter, BatchGoesOnPastFailuresListsThemAtTheEndAndPrintsAsOneJob) {
  TempDir dir;
  std::vector<std::string> names;
  const std::string noPolars = "[Airfoil]\r\nNumberSets=1\r\n[Set1]\r\nNumberPolars=0\r\n";
  for (int k = 0; k < 40; ++k) {
    std::string text = kOnePointPef;
    text.replace(text.find("1 0.1 0.01"), 10, std::to_string(k) + " 0.1 0.01");
    names.push_back(std::string(k % 7 == 3 ? "F" : "f") + std::to_string(100 + k));
    dir.Write(names.back() + ".pef", k % 13 == 5 ? noPolars : text);
  }
  std::filesystem::create_directory(dir.File("f109.xml"));  // cannot be written
  auto run = [&](const std::string& language, const std::string& jobs) {
    const Result result =
        Convert(dir, {"--lang", language, "--airfoil", "2", "--batch", "-j", jobs, dir.Path().string()});
    std::string written;
    for (const std::string& name : names) {
      if (!std::filesystem::is_regular_file(dir.File(name + ".xml"))) continue;
      written += name + ":" + dir.Read(name + ".xml");
      std::filesystem::remove(dir.File(name + ".xml"));
    }
    return std::tuple{result.status, result.out, result.err, written};
  };
  const auto [status, out, err, written] = run("en", "1");
  EXPECT_EQ(status, 1);
  EXPECT_EQ(out.rfind("F103.pef -> F103.xml\nF110.pef -> F110.xml\n", 0), 0u) << out;
  const std::string ignored = "Tavilo: Warning: --airfoil is ignored: ";
  EXPECT_EQ(err.rfind(ignored + dir.File("F103.pef") + " is not a drag polar file (.drg).\n" + ignored, 0), 0u);
  for (const std::string& failure : {"Error: File contains no polars! (" + dir.File("F131.pef") + ")\n",
                                     "Error: File access error: cannot replace " + dir.File("f109.xml")})
    EXPECT_NE(err.find("Tavilo: " + failure), std::string::npos) << err;
  size_t warnings = 0;
  for (size_t at = 0; (at = err.find(ignored, at)) != std::string::npos; ++at) ++warnings;
  EXPECT_EQ(warnings, 40u) << "once for each file read";
  const std::string failures = "\n  F131.pef\n  f105.pef\n  f109.pef\n  f118.pef\n";
  EXPECT_TRUE(err.ends_with("4 of 40 files could not be converted:" + failures)) << err;
  for (const char* jobs : {"3", "16"}) EXPECT_EQ(run("en", jobs), std::tuple(status, out, err, written)) << jobs;
  EXPECT_TRUE(std::get<2>(run("de", "3")).ends_with("4 von 40 Dateien konnten nicht umgewandelt werden:" + failures));
}

TEST(Converter, PrintWritesTheGraphPageAsAOnePageA4Pdf) {
  TempDir dir;
  auto poppler = [&](const std::string& tool, const std::string& pdf) {  // scripts/install-deps.sh installs them
    const std::string command =
        tool + " '" + pdf + "' " + (tool == "pdftotext" ? "- " : "") + "> '" + dir.File("poppler.txt") + "' 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0) << tool;
    return dir.Read("poppler.txt");
  };
  const std::string uiuc = TAVILO_TEST_DATA "/uiuc/E387A.DRG";
  for (const auto& [language, heading] : {std::pair{"en", "Airfoil: E387 (A)"}, {"de", "Profil: E387 (A)"}}) {
    const std::string pdf = dir.File(std::string("page ") + language + ".pdf");
    const Result result = Convert(dir, {"--print", pdf, "--grid", "--legend", "ul", "--lang", language, uiuc});
    ASSERT_EQ(result.status, 0) << result.err;
    const std::string info = poppler("pdfinfo", pdf), text = poppler("pdftotext", pdf);
    EXPECT_TRUE(info.find("Pages:           1\n") != std::string::npos && info.find("(A4)") != std::string::npos);
    for (const char* shown :
         {heading, "Re= 61000", "Re= 101000", "Re= 151600", "Re= 202300", "Re= 303000", "Cl-Cd", "TL-x/c"})
      EXPECT_NE(text.find(shown), std::string::npos) << shown << text;
  }
  EXPECT_EQ(Convert(dir, {"--print", dir.File("x.pdf"), "--legend", "middle", uiuc}).status, 2);
  const Result unwritable = Convert(dir, {"--print", dir.File("no/such/dir/x.pdf"), uiuc});
  EXPECT_EQ(unwritable.status, 1);
  EXPECT_NE(unwritable.err.find("x.pdf"), std::string::npos) << unwritable.err;
}

}  // namespace
}  // namespace tavilo
