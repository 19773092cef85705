// Runs of XFOIL: the commands each job is given, the real xfoil on short
// sweeps against xfoil run directly, and a fake xfoil that hangs, crashes or
// writes garbage. Every run must leave no process and no folder behind.
#include "tools/xfoil_run.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <thread>

#include "base/number_text.h"
#include "formats/file_text.h"
#include "formats/pol.h"
#include "model/configuration.h"

namespace tavilo {
namespace {

namespace fs = std::filesystem;

// A private temporary folder for the run's folders, set as TMPDIR.
class XfoilRunTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "xfoil-test-XXXXXX").string();
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder_ = pattern;
    oldTmp_ = getenv("TMPDIR") ? getenv("TMPDIR") : "";
    setenv("TMPDIR", folder_.c_str(), 1);
  }
  void TearDown() override {
    EXPECT_TRUE(RunFoldersLeft().empty());
    if (oldTmp_.empty())
      unsetenv("TMPDIR");
    else
      setenv("TMPDIR", oldTmp_.c_str(), 1);
    fs::remove_all(folder_);
  }
  std::vector<std::string> RunFoldersLeft() const {
    std::vector<std::string> left;
    for (const auto& entry : fs::directory_iterator(folder_))
      if (entry.path().filename().string().rfind("tavilo-xfoil-", 0) == 0) left.push_back(entry.path().string());
    return left;
  }
  // A fake xfoil: a shell script whose body is `script`, run in the job folder.
  std::string Fake(const std::string& script) {
    const std::string path = (folder_ / "fake-xfoil").string();
    std::ofstream(path) << "#!/bin/sh\n" << script;
    chmod(path.c_str(), 0755);
    return path;
  }
  fs::path folder_;
  std::string oldTmp_;
};

XfoilConditions Short(double from, double to, double step) {
  XfoilConditions conditions;
  conditions.reynolds = {200000};
  conditions.alphaFrom = from, conditions.alphaTo = to, conditions.alphaStep = step;
  conditions.timeLimit = 60;
  return conditions;
}

TEST(XfoilCommands, SweepUpFromNearestZeroThenDownAfterReinit) {
  const struct {
    double from, to, step;
    const char* sweeps;
  } cases[] = {
      {-2, 3, 1, "ASEQ 0 3 1\nINIT\nASEQ -1 -2 -1\n"},
      {-5, 15, 0.5, "ASEQ 0 15 0.5\nINIT\nASEQ -0.5 -5 -0.5\n"},
      {2, 6, 2, "ASEQ 2 6 2\n"},  // all positive: upwards only
      {-6, -2, 2, "ALFA -2\nINIT\nASEQ -4 -6 -2\n"},
      {-0.3, 0.7, 0.25, "ASEQ -0.05 0.7 0.25\nINIT\nALFA -0.3\n"},  // one angle: ALFA
  };
  for (const auto& c : cases) {
    const std::string commands = XfoilCommands({"2412", {}}, Short(c.from, c.to, c.step), 2e5);
    const size_t start = commands.find("\n\n", commands.find("PACC")) + 2;
    EXPECT_EQ(commands.substr(start, commands.find("PACC", start) - start), c.sweeps);
  }
}

TEST(XfoilCommands, RetryApproachesEachMissedAngleFromItsNeighbourTowardZero) {
  const std::string commands = RetryCommands({"2412", {}}, Short(-4, 4, 1), 2e5, {-2, 0, 1, 2}, {-3, -1, 4});
  const size_t start = commands.find("\n\n", commands.find("PACC")) + 2;
  EXPECT_EQ(commands.substr(start, commands.find("PACC", start) - start),
            "ASEQ -2 -3 -0.25\nINIT\nASEQ 0 -1 -0.25\nINIT\nASEQ 2 4 0.25\n");
  EXPECT_NE(commands.find("retry.txt"), std::string::npos);
  EXPECT_EQ(RetryCommands({"2412", {}}, Short(-4, 4, 1), 2e5, {}, {1}), "");  // nothing to start from
}

// The points of xfoil run directly on `commands` in a folder of its own,
// in angle order.
std::vector<PolarPoint> DirectRun(const std::string& commands, const std::string& outline) {
  const fs::path dir = fs::temp_directory_path() / ("xfoil-direct-" + std::to_string(getpid()));
  fs::create_directories(dir);
  if (!outline.empty()) WriteFileAtomically((dir / "airfoil.dat").string(), outline);
  WriteFileAtomically((dir / "commands.txt").string(), commands);
  const std::string line = "cd " + dir.string() + " && xvfb-run -a xfoil < commands.txt > /dev/null 2>&1";
  EXPECT_EQ(std::system(line.c_str()), 0);
  Airfoil airfoil;
  ReadFromPOL(airfoil, (dir / "polar.txt").string());
  fs::remove_all(dir);
  std::vector<PolarPoint> points(airfoil.Configuration(1)->Polar(1)->Points().begin(),
                                 airfoil.Configuration(1)->Polar(1)->Points().end());
  std::sort(points.begin(), points.end(), [](auto& a, auto& b) { return a.Alfa < b.Alfa; });
  return points;
}

TEST_F(XfoilRunTest, RealXfoilGivesWhatItGivesRunDirectly) {
  if (FindProgram("xfoil").empty() || FindProgram("xvfb-run").empty()) GTEST_SKIP() << "xfoil not installed";
  // The same outline from a Selig and from a Lednicer file.
  const AirfoilOutline naca = NacaOutline("4412");
  const size_t le = naca.points.size() / 2;
  std::string lednicer = "NACA 4412\n" + std::to_string(le + 1) + " " + std::to_string(le + 1) + "\n";
  for (size_t k = le + 1; k-- > 0;) lednicer += SeligText({"", {naca.points[k]}}).substr(8);
  for (size_t k = le; k < naca.points.size(); ++k) lednicer += SeligText({"", {naca.points[k]}}).substr(8);
  AirfoilOutline selig, fromLednicer;
  ASSERT_FALSE(ReadCoordinatesText(selig, SeligText(naca)).HasError());
  ASSERT_FALSE(ReadCoordinatesText(fromLednicer, lednicer).HasError());
  const XfoilAirfoil airfoils[] = {{"2412", {}}, {"", selig}, {"", fromLednicer}};
  const XfoilConditions conditions = Short(-1, 2, 1);
  for (const XfoilAirfoil& airfoil : airfoils) {
    const XfoilRun run = RunXfoil(airfoil, conditions, 1);
    ASSERT_EQ(run.jobs.size(), 1u);
    EXPECT_EQ(run.jobs[0].end, JobEnd::Done);
    const std::vector<PolarPoint> direct =
        DirectRun(XfoilCommands(airfoil, conditions, 2e5), airfoil.designation.empty() ? SeligText(naca) : "");
    const auto points = run.jobs[0].polar->Points();
    ASSERT_EQ(points.size(), direct.size());
    ASSERT_EQ(points.size(), 4u);
    for (size_t k = 0; k < points.size(); ++k) EXPECT_EQ(points[k], direct[k]);
  }
}

constexpr const char* kHeader =
    "printf ' Calculated polar for: FAKE 1\\n\\n 1 1 Reynolds number fixed          Mach number fixed\\n\\n"
    " xtrf =   1.000 (top)        1.000 (bottom)\\n"
    " Mach =   0.000     Re =     0.200 e 6     Ncrit =   9.000\\n\\n"
    "   alpha    CL        CD       CDp       CM     Top_Xtr  Bot_Xtr\\n"
    "  ------ -------- --------- --------- -------- -------- --------\\n"
    "   0.000   0.4575   0.01126   0.00367  -0.0987   0.7038   0.9270\\n"
    "   1.000   0.6218   0.01165   0.00348  -0.1093   0.6595   1.0000\\n' > polar.txt\n";

TEST_F(XfoilRunTest, HangCrashAndGarbageKeepWhatThePolarFileHolds) {
  const struct {
    std::string script;
    JobEnd end;
    int points;
  } cases[] = {
      {std::string(kHeader) + "exec sleep 100\n", JobEnd::TimedOut, 2},
      {std::string(kHeader) + "kill -SEGV $$\n", JobEnd::Crashed, 2},
      {"head -c 3000 /dev/urandom > polar.txt\n", JobEnd::Done, 0},
      {"exit 3\n", JobEnd::Crashed, 0},
  };
  for (const auto& c : cases) {
    XfoilConditions conditions = Short(-1, 2, 1);
    conditions.program = Fake(c.script);
    conditions.timeLimit = 1.0;
    const XfoilRun run = RunXfoil({"2412", {}}, conditions, 1);
    EXPECT_EQ(run.jobs[0].end, c.end) << c.script;
    EXPECT_EQ(run.jobs[0].polar->PointCount(), c.points) << c.script;
    EXPECT_EQ(run.jobs[0].missedAngles.size(), 4u - c.points);
    EXPECT_EQ(RunAirfoil(run)->Configuration(1)->PolarCount(), c.points > 0 ? 1 : 0);
  }
}

TEST_F(XfoilRunTest, CancelKillsEveryJobAndMissingXfoilIsNamed) {
  XfoilConditions conditions = Short(0, 1, 1);
  conditions.reynolds = {1e5, 2e5, 3e5};
  const std::string pids = (folder_ / "pids").string();
  conditions.program = Fake("echo $$ >> " + pids + "\nexec sleep 100\n");
  std::atomic<bool> cancel{false};
  std::thread canceller([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    cancel = true;
  });
  const XfoilRun run = RunXfoil({"2412", {}}, conditions, 2, {}, &cancel);
  canceller.join();
  EXPECT_TRUE(run.cancelled);
  std::ifstream started(pids);
  int count = 0;
  for (pid_t pid; started >> pid; ++count) EXPECT_NE(kill(pid, 0), 0) << pid;
  EXPECT_EQ(count, 2);  // two at a time; the third never started

  conditions.program = "no-such-xfoil";
  try {
    RunXfoil({"2412", {}}, conditions, 1);
    ADD_FAILURE() << "ran without xfoil";
  } catch (const XfoilSetupError& error) {
    EXPECT_EQ(error.id, Text::XfoilMissing);
  }
}

TEST_F(XfoilRunTest, StaleFoldersOfDeadRunsAreRemoved) {
  const fs::path stale = folder_ / "tavilo-xfoil-999999-abc";  // no such pid
  fs::create_directories(stale / "re1");
  XfoilConditions conditions = Short(0, 0, 1);
  conditions.program = Fake("exit 0\n");
  RunXfoil({"2412", {}}, conditions, 1);
  EXPECT_FALSE(fs::exists(stale));
}

}  // namespace
}  // namespace tavilo
