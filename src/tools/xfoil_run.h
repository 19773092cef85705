#pragma once
// Runs XFOIL for one airfoil over several Reynolds numbers: one job per
// Reynolds number, each a fresh xfoil process in a temporary folder of its
// own, on a private virtual display, at most `jobs` at a time. Each job
// sweeps from the angle nearest zero upwards, re-initialises the boundary
// layer and sweeps from there downwards; its points are merged in angle
// order. Nothing is left behind: no process, no folder, also on cancel.

#include <atomic>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "formats/coordinates.h"
#include "model/airfoil.h"
#include "strings/language.h"
#include "strings/text_ids.h"

namespace tavilo {

struct XfoilConditions {
  std::vector<double> reynolds;  // one job each
  bool reSqrtClFixed = false;    // xfoil's polar type 2 (Re·√Cl and M·√Cl fixed)
  double mach = 0.0;
  double ncrit = 9.0;
  double tripTop = 1.0, tripBottom = 1.0;                    // x/c; 1 is free transition
  double alphaFrom = -5.0, alphaTo = 15.0, alphaStep = 0.5;  // degrees
  int iterations = 100;
  bool repanel = true;
  double timeLimit = 120.0;       // seconds per Reynolds number
  std::string program = "xfoil";  // a path, or a name looked up on PATH
};

// The airfoil of a run: a NACA designation xfoil makes itself ("NACA 2412",
// "2412", "NACA 23012"), or an outline read from a coordinate file.
struct XfoilAirfoil {
  std::string designation;  // the digits, when a designation
  AirfoilOutline outline;   // else this
};

// "NACA 2412", "naca23012" or "4415": the 4 or 5 digits; "" for anything else.
std::string NacaDigits(const std::string& text);

// The outline of a NACA 4-digit or standard 5-digit section (2xx0x with
// mean-line 210 to 250), for the dialog's drawing; empty for others.
AirfoilOutline NacaOutline(const std::string& digits);

// The angles from `from` to `to` in steps of `step` (both ends included,
// `to` where it lies within a thousandth of a step of a step's end); empty
// when step is not positive or to < from.
std::vector<double> SweepAngles(double from, double to, double step);

// The commands that make xfoil compute one job, fed as its standard input;
// the airfoil is "airfoil.dat" in the job's folder when an outline, the
// polar file "polar.txt".
std::string XfoilCommands(const XfoilAirfoil& airfoil, const XfoilConditions& conditions, double reynolds);

// The commands of a second process for the angles `missed` by the first:
// each approached from its converged neighbour on the side of zero (among
// `converged`) in quarter steps, re-initialised between them, into
// "retry.txt"; "" when no missed angle has such a neighbour.
std::string RetryCommands(const XfoilAirfoil& airfoil, const XfoilConditions& conditions, double reynolds,
                          const std::vector<double>& converged, const std::vector<double>& missed);

// What stops a run before it starts: xfoil or the virtual display missing.
// `id` takes `detail` as its "%1".
struct XfoilSetupError : std::runtime_error {
  XfoilSetupError(Text id, const std::string& detail) : std::runtime_error(detail), id(id), detail(detail) {}
  Text id;
  std::string detail;
};

enum class JobEnd { Done, TimedOut, Crashed, Cancelled };

struct XfoilJob {
  double reynolds = 0.0;
  PolarPtr polar;  // the converged points in angle order, as the XFOIL reader names them; never null
  JobEnd end = JobEnd::Done;
  std::vector<double> missedAngles;  // asked for but not converged
};

struct XfoilRun {
  std::string airfoilName;  // as xfoil names it in the polar files
  std::string setName;
  std::vector<XfoilJob> jobs;  // ascending Reynolds numbers
  bool cancelled = false;
};

// Called on the running thread with the converged points so far (a finished
// job counts whole) and the points asked for.
using XfoilProgress = std::function<void(int done, int total)>;

// Runs every job, `jobs` at a time; returns when all have ended or `cancel`
// turned true (then every process is killed and `cancelled` set). Stale
// folders of runs whose process has died are removed first. Raises
// XfoilSetupError when xfoil or Xvfb cannot be found or started.
XfoilRun RunXfoil(const XfoilAirfoil& airfoil, const XfoilConditions& conditions, int jobs,
                  const XfoilProgress& progress = {}, const std::atomic<bool>* cancel = nullptr);

// The polars of `run` as one airfoil with one set, a polar per Reynolds
// number that gave points, ascending, each selected.
AirfoilPtr RunAirfoil(const XfoilRun& run);

// What the user is told about `run`: per job a line of a timeout or crash,
// of angles that did not converge, or of no converged point at all.
std::vector<std::string> RunReportLines(const XfoilRun& run, const XfoilConditions& conditions, Language language);

// The path of `program` ("xfoil", or a path): itself where it holds a
// slash, else the first executable of that name on PATH; "" when none.
std::string FindProgram(const std::string& program);

}  // namespace tavilo
