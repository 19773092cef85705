#include "tools/xfoil_run.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <optional>
#include <thread>

#include "base/number_text.h"
#include "formats/file_text.h"
#include "formats/pol.h"
#include "model/configuration.h"
#include "strings/string_table.h"

extern char** environ;

namespace tavilo {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr const char* kFolderPrefix = "tavilo-xfoil-";
constexpr const char* kPolarFile = "polar.txt";
constexpr const char* kRetryFile = "retry.txt";

// Angles as xfoil is given them: exact, locale-free.
std::string Angle(double value) { return ShortestNumberText(value); }

fs::path TempRoot() {
  const char* tmp = std::getenv("TMPDIR");
  return fs::path(tmp != nullptr && *tmp != '\0' ? tmp : "/tmp");
}

// Folders of runs whose process is gone (killed with Tavilo) go at the
// next run: their name carries the pid.
void RemoveStaleFolders(const fs::path& root) {
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(root, error)) {
    const std::string name = entry.path().filename().string();
    if (name.rfind(kFolderPrefix, 0) != 0) continue;
    const std::string rest = name.substr(std::string(kFolderPrefix).size());
    const pid_t pid = static_cast<pid_t>(LeadingNumber(rest.substr(0, rest.find('-'))));
    if (pid > 0 && pid != getpid() && kill(pid, 0) == -1 && errno == ESRCH) fs::remove_all(entry.path(), error);
  }
}

// A child that dies with the thread that started it, whatever becomes of
// the parent; `setup` runs in the child before exec (only async-signal-safe
// calls there).
template <class Setup>
pid_t StartChild(const std::string& path, char* const argv[], char* const envp[], int deathSignal, Setup setup) {
  const pid_t parent = getpid();
  const pid_t pid = fork();
  if (pid != 0) return pid;
  prctl(PR_SET_PDEATHSIG, deathSignal);
  if (getppid() != parent) _exit(126);
  setpgid(0, 0);  // the terminal's Ctrl+C reaches Tavilo, which ends its children itself
  setup();
  execve(path.c_str(), argv, envp);
  _exit(127);
}

void ToDevNull(int fd, int flags) {
  const int null = open("/dev/null", flags);
  if (null >= 0) dup2(null, fd);
}

// The private virtual display: Xvfb picks a free display number and writes
// it to the pipe given by -displayfd, so two runs never collide.
class VirtualDisplay {
 public:
  VirtualDisplay() {
    const std::string xvfb = FindProgram("Xvfb");
    if (xvfb.empty()) throw XfoilSetupError(Text::XvfbMissing, "Xvfb");
    int fds[2];
    if (pipe2(fds, O_CLOEXEC) != 0) throw XfoilSetupError(Text::XvfbMissing, "pipe");
    std::string a0 = xvfb, a1 = "-displayfd", a2 = "3", a3 = "-nolisten", a4 = "tcp";
    char* argv[] = {a0.data(), a1.data(), a2.data(), a3.data(), a4.data(), nullptr};
    const int writeEnd = fds[1];
    pid_ = StartChild(xvfb, argv, environ, SIGTERM, [writeEnd] {
      dup2(writeEnd, 3);  // dup2 clears close-on-exec
      ToDevNull(0, O_RDONLY);
      ToDevNull(1, O_WRONLY);
      ToDevNull(2, O_WRONLY);
    });
    close(fds[1]);
    std::string number;
    pollfd wait{fds[0], POLLIN, 0};
    char buffer[32];
    while (number.find('\n') == std::string::npos && poll(&wait, 1, 10000) > 0) {
      const ssize_t got = read(fds[0], buffer, sizeof buffer);
      if (got <= 0) break;
      number.append(buffer, static_cast<size_t>(got));
    }
    close(fds[0]);
    if (pid_ < 0 || number.empty() || number.find_first_not_of("0123456789\n") != std::string::npos) {
      Stop();
      throw XfoilSetupError(Text::XvfbMissing, "Xvfb -displayfd");
    }
    display_ = ":" + number.substr(0, number.find('\n'));
  }
  ~VirtualDisplay() { Stop(); }
  VirtualDisplay(const VirtualDisplay&) = delete;
  VirtualDisplay& operator=(const VirtualDisplay&) = delete;

  const std::string& Name() const { return display_; }

 private:
  void Stop() {
    if (pid_ <= 0) return;
    kill(pid_, SIGTERM);  // Xvfb removes its lock file and socket on TERM
    waitpid(pid_, nullptr, 0);
    pid_ = -1;
  }
  pid_t pid_ = -1;
  std::string display_;
};

// The converged points in the polar file so far: its lines after the
// dashed rule under the column heads.
int PointLines(const fs::path& file) {
  std::string bytes;
  try {
    bytes = ReadFileBytes(file.string());
  } catch (const std::exception&) {
    return 0;
  }
  const size_t rule = bytes.find(" ------");
  if (rule == std::string::npos) return 0;
  const size_t start = bytes.find('\n', rule);
  if (start == std::string::npos) return 0;
  int count = 0;
  for (size_t k = start + 1; k < bytes.size(); ++k)
    if (bytes[k] == '\n') ++count;
  return count;
}

struct RunningJob {
  size_t index = 0;
  pid_t pid = -1;
  Clock::time_point started;
  int pointsSeen = 0;
  bool retrying = false;  // the second process, for the angles the first missed
};

bool Near(double a, double b) { return std::abs(a - b) < 5e-4; }

// The first polar of the polar file `file` as xfoil left it, or null when
// there is none: a crash may leave the file cut short or missing.
PolarPtr ReadJobPolar(const fs::path& file, Airfoil& read) {
  std::error_code error;
  try {
    if (fs::exists(file, error)) ReadFromPOL(read, file.string());
  } catch (const std::exception&) {
  }
  if (read.ConfigCount() == 0 || read.Configuration(1)->PolarCount() == 0) return nullptr;
  return read.Configuration(1)->Polar(1);
}

void SetPointsByAngle(Polar& polar, std::vector<PolarPoint> points) {
  std::stable_sort(points.begin(), points.end(),
                   [](const PolarPoint& a, const PolarPoint& b) { return a.Alfa < b.Alfa; });
  polar.SetPoints(points);
}

// The job's points, sorted by angle, and the angles that are missing; after
// a retry, the retry's points at missing angles join them.
void CollectJob(XfoilJob& job, const fs::path& folder, const std::vector<double>& angles, XfoilRun& run, bool retried) {
  Airfoil read;
  if (retried) {
    const PolarPtr retry = ReadJobPolar(folder / kRetryFile, read);
    if (!retry) return;
    std::vector<PolarPoint> points(job.polar->Points().begin(), job.polar->Points().end());
    for (const PolarPoint& point : retry->Points()) {
      auto missed = std::find_if(job.missedAngles.begin(), job.missedAngles.end(),
                                 [&point](double angle) { return Near(point.Alfa, angle); });
      if (missed == job.missedAngles.end()) continue;  // a step on the way, or one converged already
      points.push_back(point);
      job.missedAngles.erase(missed);
    }
    SetPointsByAngle(*job.polar, std::move(points));
    return;
  }
  job.polar = ReadJobPolar(folder / kPolarFile, read);
  if (job.polar) {
    if (run.airfoilName.empty()) run.airfoilName = read.Name, run.setName = read.Configuration(1)->Name;
  } else {
    job.polar = std::make_shared<Polar>();
    job.polar->ReynoldsNumber = job.reynolds;
  }
  SetPointsByAngle(*job.polar, std::vector<PolarPoint>(job.polar->Points().begin(), job.polar->Points().end()));
  for (double angle : angles) {
    const bool found = std::any_of(job.polar->Points().begin(), job.polar->Points().end(),
                                   [angle](const PolarPoint& p) { return Near(p.Alfa, angle); });
    if (!found) job.missedAngles.push_back(angle);
  }
}

}  // namespace

std::string NacaDigits(const std::string& text) {
  std::string digits;
  std::string rest = std::string(TrimBlanks(text));
  if (rest.size() >= 4 && (rest.rfind("NACA", 0) == 0 || rest.rfind("naca", 0) == 0 || rest.rfind("Naca", 0) == 0))
    rest = std::string(TrimBlanks(rest.substr(4)));
  if ((rest.size() == 4 || rest.size() == 5) && rest.find_first_not_of("0123456789") == std::string::npos) return rest;
  return "";
}

std::vector<double> SweepAngles(double from, double to, double step) {
  std::vector<double> angles;
  if (!(step > 0) || to < from || !std::isfinite(from) || !std::isfinite(to)) return angles;
  const long count = static_cast<long>(std::floor((to - from) / step + 1e-3)) + 1;
  if (count > 100000) return angles;
  for (long k = 0; k < count; ++k) {
    // Rounded to the polar file's thousandths, so that asked and written angles compare.
    angles.push_back(std::round((from + static_cast<double>(k) * step) * 1000.0) / 1000.0);
  }
  return angles;
}

namespace {

// Everything before the first angle: the airfoil, the conditions, and the
// point accumulation into `polarFile`.
std::string SetupCommands(const XfoilAirfoil& airfoil, const XfoilConditions& c, double reynolds,
                          const char* polarFile) {
  std::string text = airfoil.designation.empty() ? "LOAD airfoil.dat\n" : "NACA " + airfoil.designation + "\n";
  if (c.repanel) text += "PANE\n";
  text += "OPER\n";
  text += "VISC " + ShortestNumberText(reynolds) + "\n";
  text += "MACH " + ShortestNumberText(c.mach) + "\n";
  if (c.reSqrtClFixed) text += "TYPE 2\n";
  text += "VPAR\nN " + ShortestNumberText(c.ncrit) + "\nXTR " + ShortestNumberText(c.tripTop) + " " +
          ShortestNumberText(c.tripBottom) + "\n\n";
  text += "ITER " + std::to_string(c.iterations) + "\n";
  text += std::string("PACC\n") + polarFile + "\n\n";
  return text;
}

}  // namespace

std::string XfoilCommands(const XfoilAirfoil& airfoil, const XfoilConditions& c, double reynolds) {
  const std::vector<double> angles = SweepAngles(c.alphaFrom, c.alphaTo, c.alphaStep);
  std::string text = SetupCommands(airfoil, c, reynolds, kPolarFile);
  if (!angles.empty()) {
    size_t start = 0;
    for (size_t k = 1; k < angles.size(); ++k)
      if (std::abs(angles[k]) < std::abs(angles[start])) start = k;
    auto sweep = [&](size_t first, size_t last) {
      if (first == last) return "ALFA " + Angle(angles[first]) + "\n";
      const double step = first < last ? c.alphaStep : -c.alphaStep;
      return "ASEQ " + Angle(angles[first]) + " " + Angle(angles[last]) + " " + Angle(step) + "\n";
    };
    text += sweep(start, angles.size() - 1);
    if (start > 0) text += "INIT\n" + sweep(start - 1, 0);
  }
  text += "PACC\n\nQUIT\n";
  return text;
}

std::string RetryCommands(const XfoilAirfoil& airfoil, const XfoilConditions& c, double reynolds,
                          const std::vector<double>& converged, const std::vector<double>& missed) {
  std::string sweeps;
  const double fine = c.alphaStep / 4;
  for (double angle : missed) {
    // The converged neighbour on the side of zero lift, where the sweep came from.
    std::optional<double> from;
    for (double done : converged) {
      const bool towardZero = angle >= 0 ? done < angle : done > angle;
      if (towardZero && (!from || std::abs(done - angle) < std::abs(*from - angle))) from = done;
    }
    if (!from) continue;
    const double step = angle > *from ? fine : -fine;
    // INIT toggles xfoil's flag that the boundary layer is ready: before the
    // first solution it would mark a layer that does not exist, and xfoil
    // dies of a floating-point exception.
    sweeps += std::string(sweeps.empty() ? "" : "INIT\n") + "ASEQ " + Angle(*from) + " " + Angle(angle) + " " +
              Angle(step) + "\n";
  }
  if (sweeps.empty()) return "";
  return SetupCommands(airfoil, c, reynolds, kRetryFile) + sweeps + "PACC\n\nQUIT\n";
}

std::string FindProgram(const std::string& program) {
  if (program.empty()) return "";
  if (program.find('/') != std::string::npos) return access(program.c_str(), X_OK) == 0 ? program : "";
  const char* path = std::getenv("PATH");
  std::string_view dirs = path != nullptr ? path : "/usr/local/bin:/usr/bin:/bin";
  while (!dirs.empty()) {
    const size_t colon = dirs.find(':');
    const std::string dir(dirs.substr(0, colon));
    dirs = colon == std::string_view::npos ? std::string_view() : dirs.substr(colon + 1);
    const std::string candidate = (dir.empty() ? "." : dir) + "/" + program;
    struct stat info;
    if (stat(candidate.c_str(), &info) == 0 && S_ISREG(info.st_mode) && access(candidate.c_str(), X_OK) == 0)
      return candidate;
  }
  return "";
}

XfoilRun RunXfoil(const XfoilAirfoil& airfoil, const XfoilConditions& conditions, int jobs,
                  const XfoilProgress& progress, const std::atomic<bool>* cancel) {
  const std::string program = FindProgram(conditions.program);
  if (program.empty()) throw XfoilSetupError(Text::XfoilMissing, conditions.program);
  const fs::path root = TempRoot();
  RemoveStaleFolders(root);

  XfoilRun run;
  std::vector<double> reynolds = conditions.reynolds;
  std::sort(reynolds.begin(), reynolds.end());
  for (double re : reynolds) {
    XfoilJob job;
    job.reynolds = re;
    run.jobs.push_back(job);
  }
  const std::vector<double> angles = SweepAngles(conditions.alphaFrom, conditions.alphaTo, conditions.alphaStep);
  const int perJob = static_cast<int>(angles.size());
  const int total = perJob * static_cast<int>(run.jobs.size());

  std::string pattern = (root / (kFolderPrefix + std::to_string(getpid()) + "-XXXXXX")).string();
  if (mkdtemp(pattern.data()) == nullptr) throw XfoilSetupError(Text::XfoilMissing, root.string());
  const fs::path folder = pattern;
  struct RemoveFolder {
    fs::path path;
    ~RemoveFolder() {
      std::error_code error;
      fs::remove_all(path, error);
    }
  } removeFolder{folder};

  VirtualDisplay display;
  // The environment is made before any fork: a child of a threaded program
  // may only make async-signal-safe calls until it execs.
  std::vector<std::string> environment;
  for (char** e = environ; *e != nullptr; ++e)
    if (std::string_view(*e).rfind("DISPLAY=", 0) != 0) environment.emplace_back(*e);
  environment.push_back("DISPLAY=" + display.Name());
  std::vector<char*> envp;
  for (std::string& entry : environment) envp.push_back(entry.data());
  envp.push_back(nullptr);
  std::string programArg = program;
  char* argv[] = {programArg.data(), nullptr};

  std::vector<fs::path> jobFolders;
  for (size_t k = 0; k < run.jobs.size(); ++k) {
    const fs::path jobFolder = folder / ("re" + std::to_string(k + 1));
    fs::create_directory(jobFolder);
    if (airfoil.designation.empty())
      WriteFileAtomically((jobFolder / "airfoil.dat").string(), SeligText(airfoil.outline));
    WriteFileAtomically((jobFolder / "commands.txt").string(),
                        XfoilCommands(airfoil, conditions, run.jobs[k].reynolds));
    jobFolders.push_back(jobFolder);
  }

  auto Launch = [&](const fs::path& folder, const char* commandFile) {
    const std::string dir = folder.string();
    const std::string commands = (folder / commandFile).string();
    return StartChild(program, argv, envp.data(), SIGKILL, [&dir, &commands] {
      if (chdir(dir.c_str()) != 0) _exit(126);
      const int in = open(commands.c_str(), O_RDONLY);
      if (in < 0) _exit(126);
      dup2(in, 0);
      // xfoil's screen output is not needed: the polar file is what counts.
      ToDevNull(1, O_WRONLY);
      ToDevNull(2, O_WRONLY);
    });
  };

  std::vector<RunningJob> running;
  size_t next = 0;
  int finishedPoints = 0;
  int lastDone = -1;
  const auto limit = std::chrono::duration<double>(conditions.timeLimit);
  while (next < run.jobs.size() || !running.empty()) {
    const bool cancelNow = cancel != nullptr && cancel->load();
    if (cancelNow) run.cancelled = true;
    while (!run.cancelled && next < run.jobs.size() && static_cast<int>(running.size()) < std::max(jobs, 1)) {
      running.push_back({next, Launch(jobFolders[next], "commands.txt"), Clock::now(), 0});
      ++next;
    }
    if (run.cancelled && next < run.jobs.size()) {
      for (; next < run.jobs.size(); ++next) run.jobs[next].end = JobEnd::Cancelled;
    }
    int livePoints = 0;
    for (size_t r = 0; r < running.size();) {
      RunningJob& job = running[r];
      int status = 0;
      const pid_t ended = job.pid > 0 ? waitpid(job.pid, &status, WNOHANG) : job.pid;
      bool over = ended != 0;
      XfoilJob& result = run.jobs[job.index];
      if (!over && (run.cancelled || Clock::now() - job.started > limit)) {
        kill(job.pid, SIGKILL);
        waitpid(job.pid, &status, 0);
        result.end = run.cancelled ? JobEnd::Cancelled : JobEnd::TimedOut;
        over = true;
      } else if (over) {
        result.end = ended > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0 ? JobEnd::Done : JobEnd::Crashed;
      }
      if (over) {
        CollectJob(result, jobFolders[job.index], angles, run, job.retrying);
        // One more process for the angles missed, each approached in finer
        // steps from its converged neighbour, within the same time limit.
        if (!job.retrying && result.end == JobEnd::Done && !result.missedAngles.empty()) {
          std::vector<double> converged;
          for (const PolarPoint& point : result.polar->Points()) converged.push_back(point.Alfa);
          const std::string retry = RetryCommands(airfoil, conditions, result.reynolds, converged, result.missedAngles);
          if (!retry.empty()) {
            WriteFileAtomically((jobFolders[job.index] / "retry-commands.txt").string(), retry);
            job.pid = Launch(jobFolders[job.index], "retry-commands.txt");
            job.retrying = true;
            livePoints += job.pointsSeen;
            ++r;
            continue;
          }
        }
        finishedPoints += perJob;
        running.erase(running.begin() + static_cast<long>(r));
        continue;
      }
      if (!job.retrying) job.pointsSeen = std::min(PointLines(jobFolders[job.index] / kPolarFile), perJob);
      livePoints += job.pointsSeen;
      ++r;
    }
    const int done = finishedPoints + livePoints;
    if (progress && done != lastDone) progress(done, total);
    lastDone = done;
    // Short, since a job's end waits for it: eight jobs on two cores pass it four times.
    if (!running.empty()) std::this_thread::sleep_for(std::chrono::milliseconds(10));
  }
  if (run.airfoilName.empty())
    run.airfoilName = airfoil.designation.empty() ? airfoil.outline.name : "NACA " + airfoil.designation;
  return run;
}

AirfoilPtr RunAirfoil(const XfoilRun& run) {
  auto result = std::make_shared<Airfoil>();
  result->Name = run.airfoilName;
  auto set = std::make_shared<Configuration>();
  set->Name = run.setName.empty() ? run.airfoilName : run.setName;
  for (const XfoilJob& job : run.jobs) {
    if (job.polar->PointCount() == 0) continue;
    job.polar->Selected = true;
    set->AddPolar(job.polar);
  }
  result->AddConfiguration(set);
  return result;
}

std::vector<std::string> RunReportLines(const XfoilRun& run, const XfoilConditions& conditions, Language language) {
  std::vector<std::string> lines;
  for (const XfoilJob& job : run.jobs) {
    const std::string re = TrimBlanks(NumberText(job.reynolds)).data();
    if (job.end == JobEnd::Cancelled) continue;
    if (job.end == JobEnd::TimedOut)
      lines.push_back(FormatResString(Text::XfoilTimedOut, language,
                                      {re, std::string(TrimBlanks(NumberText(conditions.timeLimit)))}));
    if (job.end == JobEnd::Crashed) lines.push_back(FormatResString(Text::XfoilCrashed, language, {re}));
    if (job.polar->PointCount() == 0) {
      lines.push_back(FormatResString(Text::XfoilNoPoint, language, {re}));
    } else if (!job.missedAngles.empty()) {
      std::string angles;
      for (double angle : job.missedAngles) angles += (angles.empty() ? "" : ", ") + ShortestNumberText(angle);
      lines.push_back(FormatResString(Text::XfoilNotConverged, language, {re, angles}));
    }
  }
  if (run.cancelled) lines.push_back(GetResString(Text::XfoilCancelled, language));
  return lines;
}

}  // namespace tavilo
