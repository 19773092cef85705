// tavilo-convert --xfoil, --print-jobs and --merge through the real binary:
// the jobs run by GNU parallel and merged give the run's own file byte for
// byte, and each way of failing has its exit status.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <string>

#include "support/temp_dir.h"
#include "tools/xfoil_run.h"

namespace tavilo {
namespace {

using testing::TempDir;

int Shell(const std::string& command) {
  const int raw = std::system(command.c_str());
  return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
}

TEST(XfoilMode, JobsRunByParallelAndMergedEqualTheRunItself) {
  if (FindProgram("xfoil").empty() || FindProgram("parallel").empty()) GTEST_SKIP() << "xfoil or parallel missing";
  TempDir dir;
  const std::string convert = std::string(TAVILO_CONVERT) + " --xfoil 'NACA 4415' --re 1e5,3e5 --alpha -1:2:1 ";
  ASSERT_EQ(Shell(convert + "-j 2 " + dir.File("run.xml") + " 2>/dev/null"), 0);
  ASSERT_EQ(Shell(convert + "--print-jobs " + dir.File("jobs.xml") + " > " + dir.File("jobs.txt")), 0);
  ASSERT_EQ(Shell("parallel -j 2 < " + dir.File("jobs.txt") + " 2>/dev/null"), 0);
  ASSERT_EQ(Shell(std::string(TAVILO_CONVERT) + " --merge " + dir.File("merged.xml") + " " +
                  dir.File("jobs.re300000.xml") + " " + dir.File("jobs.re100000.xml")),
            0);
  EXPECT_EQ(dir.Read("merged.xml"), dir.Read("run.xml"));
  // The same polar twice is refused and nothing written.
  EXPECT_EQ(Shell(std::string(TAVILO_CONVERT) + " --merge " + dir.File("twice.xml") + " " + dir.File("run.xml") + " " +
                  dir.File("jobs.re100000.xml") + " 2>/dev/null"),
            1);
  EXPECT_FALSE(std::filesystem::exists(dir.File("twice.xml")));
}

TEST(XfoilMode, ExitStatusSaysWhatWentWrong) {
  TempDir dir;
  const std::string convert = std::string(TAVILO_CONVERT) + " --xfoil 2412 ";
  const struct {
    std::string args;
    int status;
    const char* message;  // in standard error
  } cases[] = {
      {"--re 1e5 --alpha 5:1:1 out.xml", 2, "--alpha takes"},
      {"--re 1e5 out.nope", 2, "OUTPUT must be"},
      {"out.xml", 2, "needs --re"},
      {"--re 1e5 --alpha 0:1:1 out.xml", 1, "apt-get install xfoil xvfb xfonts-base"},  // PATH without xfoil
  };
  for (const auto& c : cases) {
    const int status = Shell("cd " + dir.Path().string() + " && PATH=/nonexistent " + convert + c.args + " 2> err.txt");
    EXPECT_EQ(status, c.status) << c.args;
    EXPECT_NE(dir.Read("err.txt").find(c.message), std::string::npos) << dir.Read("err.txt");
  }
}

}  // namespace
}  // namespace tavilo
