#include "formats/table.h"

#include <gtest/gtest.h>

#include <tuple>

#include "formats/airfoil_summary.h"
#include "support/recording_ui.h"

namespace tavilo {
namespace {

using testing::RecordingUserInterface;
using testing::Summary;

std::string Read(std::string_view text, ReadReport* report = nullptr, int reply = 0) {
  RecordingUserInterface ui;
  ui.airfoilReply = reply;
  Airfoil airfoil;
  airfoil.Name = "old";
  ReadReport read = ReadFromTableText(airfoil, text, "/data/wing.txt", ui.Chooser());
  if (report) *report = read;
  return Summary(airfoil);
}

// The file's own name names airfoil and set unless the text says otherwise.
TEST(TableReader, ColumnsBlocksNamesReynoldsAndMachEachByItsRule) {
  const std::tuple<const char*, const char*, const char*> cases[] = {
      {"blanks and tabs", "alpha  cl   cd\n 0 \t 0.1  0.01\n", "Re 0 Ma 0 (0 0.1 0.01)"},
      {"semicolon, decimal comma", "alpha;cl;cd\n0;0,1;0,01\n1,5;0.2;0.02\n", "Re 0 Ma 0 (0 0.1 0.01, 1.5 0.2 0.02)"},
      {"tab, decimal comma", "alpha\tcl\tcd\n0,5\t0,1\t0,01\n", "Re 0 Ma 0 (0.5 0.1 0.01)"},
      {"comma, period only", "alpha,cl,cd\n0.5,0.1,0.01\n", "Re 0 Ma 0 (0.5 0.1 0.01)"},
      {"blanks: a decimal comma is no number", "alpha cl\n1 0,2\n2 0.3\n", "Re 0 Ma 0 (2 0.3)"},
      {"comma: a decimal comma splits", "alpha,cl,cd\n0,5,0,1\n", "Re 0 Ma 0 (0 5 0)"},
      {"semicolon decides before comma", "alpha;cl;cd (x,y)\n1;0,2;0,03\n", "Re 0 Ma 0 (1 0.2 0.03)"},
      {"tab decides before comma", "alpha\tcl\tcd (x,y)\n1\t0,2\t0,03\n", "Re 0 Ma 0 (1 0.2 0.03)"},
      {"signs and exponents", "alpha cl cd\n-2 +1e-1 2.5E-3\n", "Re 0 Ma 0 (-2 0.1 0.0025)"},
      {"units apart", "alpha [deg]  Cl (-)  Cd [-]  Cm\n2 0.3 0.01 -0.05\n", "Re 0 Ma 0 (2 0.3 0.01 -0.05)"},
      {"units attached", "Alpha[deg];CL(-);CD\n2;0,3;0,01\n", "Re 0 Ma 0 (2 0.3 0.01)"},
      {"German names", "ALFA CA CW\n2 0.3 0.01\n", "Re 0 Ma 0 (2 0.3 0.01)"},
      {"greek alpha, aoa", "\xCE\xB1 cl\n2 0.3\naoa cl\n3 0.4\n", "Re 0 Ma 0 (2 0.3) Re 0 Ma 0 (3 0.4)"},
      {"transition names", "alpha cl xtr_bot cd xtr1\n1 0.2 0.9 0.01 0.5\n", "Re 0 Ma 0 (1 0.2 0.01 0.5 0.9)"},
      {"unknown columns skipped", "alpha CL CD CDp CM Top_Xtr Bot_Xtr\n1 0.2 0.01 0.005 -0.1 0.6 0.9\n",
       "Re 0 Ma 0 (1 0.2 0.01 -0.1 0.6 0.9)"},
      {"missing optional columns", "cl alpha\n0.2 1\n", "Re 0 Ma 0 (1 0.2)"},
      {"a short line leaves out the rest", "alpha cl cd cm\n1 0.2\n2 0.3 0.02\n", "Re 0 Ma 0 (1 0.2, 2 0.3 0.02)"},
      {"quoted text with separators", "\"polar\";alpha;cl\n\"a; \"\"b\"\"\";1;0,2\n", "Re 0 Ma 0 'a; \"b\"' (1 0.2)"},
      {"CR line ends", "alpha cl\r1 0.2\r2 0.3\r", "Re 0 Ma 0 (1 0.2, 2 0.3)"},
      {"CR LF line ends", "alpha cl\r\n1 0.2\r\n2 0.3", "Re 0 Ma 0 (1 0.2, 2 0.3)"},
      {"comments and blank lines end nothing", "alpha cl\n1 0.2\n# note\n% x\n! y\n// z\n\n2 0.3\n",
       "Re 0 Ma 0 (1 0.2, 2 0.3)"},
      {"a text line ends the block", "alpha cl\n1 0.2\nend of run\n2 0.3\n", "Re 0 Ma 0 (1 0.2) Re 0 Ma 0 (2 0.3)"},
      {"a new header ends the block", "alpha cl\n1 0.2\nalpha cl cd\n2 0.3 0.01\n",
       "Re 0 Ma 0 (1 0.2) Re 0 Ma 0 (2 0.3 0.01)"},
      {"a text field in a number column", "alpha cl\n1 0.2\n1 n/a\n", "Re 0 Ma 0 (1 0.2)"},
      {"header after prose and dashes", "Wind tunnel run 3\nalpha cl\n----- --\n1 0.2\n", "Re 0 Ma 0 (1 0.2)"},
      {"columns, a change starts a polar", "alpha cl re mach\n1 0.2 1e5 0.1\n2 0.3 1e5 0.1\n1 0.25 2e5 0.1\n",
       "Re 100000 Ma 0.1 (1 0.2, 2 0.3) Re 200000 Ma 0.1 (1 0.25)"},
      {"comment line", "# Re = 2.0E+05  Mach = 0.15\nalpha cl\n1 0.2\n", "Re 200000 Ma 0.15 (1 0.2)"},
      {"plain line, XFOIL's exponent", " Mach =   0.000     Re =     0.200 e 6\nalpha cl\n1 0.2\n",
       "Re 200000 Ma 0 (1 0.2)"},
      {"Reynolds in any case, Ma", "REYNOLDS: 300000\nMa: 0,2\nalpha cl\n1 0.2\n", "Re 300000 Ma 0.2 (1 0.2)"},
      {"the nearest line wins", "Re = 1e5\nRe = 2e5\nalpha cl\n1 0.2\nRe = 3e5\n2 0.3\n",
       "Re 200000 Ma 0 (1 0.2) Re 300000 Ma 0 (2 0.3)"},
      {"Re only as a word", "Pre = 5\nRef: 6\nRE = 7\nre = 8\nalpha cl\n1 0.2\n", "Re 0 Ma 0 (1 0.2)"},
      {"Re without a number", "Re = high\nalpha cl\n1 0.2\n", "Re 0 Ma 0 (1 0.2)"},
      {"Airfoil: line", "Airfoil: E387 (tripped)\nalpha cl\n1 0.2\n", "E387 (tripped) | wing: Re 0 Ma 0 (1 0.2)"},
      {"Profil: in a comment", "# Profil: HQ 3.0/12\nalpha cl\n1 0.2\n", "HQ 3.0/12 | wing: Re 0 Ma 0 (1 0.2)"},
      {"sets by number and name", "set_no,set,alpha,cl\n1,\"clean\",1,0.2\n2,\"flap\",1,0.4\n1,\"clean\",2,0.3\n",
       "wing | clean: Re 0 Ma 0 (1 0.2) Re 0 Ma 0 (2 0.3) | flap: Re 0 Ma 0 (1 0.4)"},
  };
  for (const auto& [rule, text, expected] : cases) {
    const std::string read = Read(text);
    EXPECT_EQ(read.starts_with("wing | wing: ") ? read.substr(13) : read, expected) << rule;
  }
}

TEST(TableRoutes, XfoilAndDragFilesGoToTheirOwnReaders) {
  const char* xfoil =
      "\n XFOIL         Version 6.99\n\n Calculated polar for: NACA 0012\n\n 1 1 Reynolds number fixed\n\n"
      " xtrf =   1.000 (top)        1.000 (bottom)\n Mach =   0.000     Re =     1.000 e 6     Ncrit =   9.000\n\n"
      "  alpha    CL        CD       CDp       CM     Top_Xtr  Bot_Xtr\n"
      " ------ -------- --------- --------- -------- -------- --------\n"
      "  0.000   0.0000   0.00540   0.00100   0.0000   0.6000   0.6000\n";
  const std::string two =
      "Airfoil  SD7037   \r\nPrinceton test 1\r\n2\r\n100000\r\n1\r\n0.50 0.0100 2.0\r\nAirfoil  "
      "E374\nclean\nNumber:\n 1\nRe:\n 100000\n 1\n  1.0  0.30  0.0100 0 0 0 0\n";
  EXPECT_EQ(Read(xfoil), "NACA 0012 | : Re 1000000 Ma 0 (0 0 0.0054 0 0.6 0.6)");
  EXPECT_EQ(Read(two, nullptr, 1), "E374 | UIUC, clean: Re 100000 Ma 0 (1 0.3 0.01)");
}

TEST(TableReport, NothingReadableGivesMessage77AndAnEmptyAirfoil) {
  const std::pair<const char*, std::string> cases[] = {
      {"empty", ""},
      {"binary", std::string("\0\xff\x01\x02\r\n\x7f\0", 8)},
      {"a header only", "alpha cl cd\n"},
      {"a header without data", "alpha cl\nend\n"},
      {"no header at all", "1 0.2 0.01\n2 0.3 0.02\n"},
      {"a header without lift", "alpha cd\n1 0.01\n"},
      {"an XFOIL heading without points", " Calculated polar for: X\n"},
  };
  for (const auto& [what, text] : cases) {
    ReadReport report;
    EXPECT_EQ(Read(text, &report), "") << what;
    ASSERT_EQ(report.diagnostics.size(), 1u) << what;
    EXPECT_EQ(std::tie(report.diagnostics[0].messageId, report.diagnostics[0].text),
              std::make_tuple(Text::NoPolars, "/data/wing.txt"))
        << what;
  }
}

TEST(TableReport, PolarPastTheLastPointContinuesWithAWarning) {
  std::string text = "Re = 5e5\nalpha cl\n";
  for (int i = 0; i < 32769; ++i) text += "1 0.5\n";
  Airfoil airfoil;
  ReadReport report = ReadFromTableText(airfoil, text, "big.txt", nullptr);
  const Configuration& set = *airfoil.Configuration(1);
  ASSERT_EQ(set.PolarCount(), 2);
  EXPECT_EQ(std::make_tuple(set.Polar(1)->PointCount(), set.Polar(2)->PointCount(), set.Polar(2)->ReynoldsNumber),
            std::make_tuple(32767, 2, 500000.0));
  ASSERT_EQ(report.diagnostics.size(), 1u);
  const Diagnostic& d = report.diagnostics[0];
  EXPECT_EQ(std::tie(d.severity, d.messageId, d.line),
            std::make_tuple(Severity::Warning, Text::TablePolarSplit, 32770));
}

}  // namespace
}  // namespace tavilo
