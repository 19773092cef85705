#include "cli/xfoil_mode.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>

#include "base/number_text.h"
#include "fileio/formats_table.h"
#include "model/configuration.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

namespace fs = std::filesystem;

// `text` split at `separator`, each part a whole number; none when one is not.
std::optional<std::vector<double>> Numbers(const std::string& text, char separator) {
  std::vector<double> numbers;
  size_t start = 0;
  for (;;) {
    const size_t end = text.find(separator, start);
    const std::optional<double> number = WholeNumber(std::string_view(text).substr(start, end - start));
    if (!number) return std::nullopt;
    numbers.push_back(*number);
    if (end == std::string::npos) return numbers;
    start = end + 1;
  }
}

std::string ShellQuoted(const std::string& text) {
  if (!text.empty() &&
      text.find_first_not_of("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_-+=.,:/@") ==
          std::string::npos)
    return text;
  std::string quoted = "'";
  for (char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

std::string ReText(double reynolds) { return std::string(TrimBlanks(NumberText(reynolds))); }

// The job's own output beside OUTPUT: <stem>.re<Re>.<ext>.
std::string JobOutput(const std::string& output, double reynolds) {
  const fs::path path = fs::absolute(output);
  return (path.parent_path() / (path.stem().string() + ".re" + ReText(reynolds) + path.extension().string())).string();
}

}  // namespace

bool IsXfoilOption(const std::string& arg) {
  return arg == "--xfoil" || arg == "--re" || arg == "--alpha" || arg == "--mach" || arg == "--ncrit" ||
         arg == "--xtr" || arg == "--iter" || arg == "--timeout";
}

std::optional<std::string> ParseXfoilOption(const std::string& arg, const std::string& value,
                                            XfoilCliOptions& options) {
  XfoilConditions& c = options.conditions;
  if (arg == "--xfoil") {
    options.airfoil = value;
    return std::nullopt;
  }
  const std::optional<std::vector<double>> numbers = Numbers(value, arg == "--alpha" ? ':' : ',');
  const size_t wanted = arg == "--alpha" ? 3 : arg == "--xtr" ? 2 : arg == "--re" ? 0 : 1;
  if (!numbers || (wanted > 0 && numbers->size() != wanted)) return arg + ": bad value " + value;
  const std::vector<double>& n = *numbers;
  if (arg == "--re") {
    if (std::any_of(n.begin(), n.end(), [](double re) { return !(re > 0); })) return "--re takes positive numbers";
    c.reynolds = n;
    options.reynoldsGiven = true;
    return std::nullopt;
  }
  if (arg == "--alpha") {
    if (!(n[2] > 0) || n[1] < n[0]) return "--alpha takes FROM:TO:STEP with FROM <= TO and STEP > 0";
    c.alphaFrom = n[0], c.alphaTo = n[1], c.alphaStep = n[2];
  } else if (arg == "--xtr") {
    if (n[0] < 0 || n[0] > 1 || n[1] < 0 || n[1] > 1) return "--xtr takes TOP,BOTTOM between 0 and 1";
    c.tripTop = n[0], c.tripBottom = n[1];
  } else if (arg == "--mach") {
    if (n[0] < 0 || n[0] >= 1) return "--mach takes a number from 0 to below 1";
    c.mach = n[0];
  } else if (arg == "--ncrit") {
    if (!(n[0] > 0)) return "--ncrit takes a positive number";
    c.ncrit = n[0];
  } else if (arg == "--iter") {
    if (n[0] < 1 || n[0] > 10000 || n[0] != static_cast<int>(n[0])) return "--iter takes a count from 1";
    c.iterations = static_cast<int>(n[0]);
  } else if (arg == "--timeout") {
    if (!(n[0] > 0)) return "--timeout takes seconds above 0";
    c.timeLimit = n[0];
  }
  options.passOn.push_back(arg);
  options.passOn.push_back(value);
  return std::nullopt;
}

int RunXfoilMode(const XfoilCliOptions& options, int jobs, const std::string& output, Language language,
                 std::ostream& out, const XfoilCliOutput& tell) {
  XfoilAirfoil airfoil;
  std::error_code error;
  const bool isFile = fs::exists(options.airfoil, error);
  if (options.printJobs) {
    std::string self = fs::read_symlink("/proc/self/exe", error).string();
    const std::string airfoilArg = isFile ? fs::absolute(options.airfoil).string() : options.airfoil;
    for (double re : options.conditions.reynolds) {
      std::string line = ShellQuoted(self) + " --xfoil " + ShellQuoted(airfoilArg) + " --re " + ReText(re);
      for (const std::string& arg : options.passOn) line += " " + ShellQuoted(arg);
      out << line << " " << ShellQuoted(JobOutput(output, re)) << '\n';
    }
    return 0;
  }
  if (!isFile && !NacaDigits(options.airfoil).empty()) {
    airfoil.designation = NacaDigits(options.airfoil);
  } else if (isFile) {
    try {
      const ReadReport report = ReadCoordinates(airfoil.outline, options.airfoil);
      for (const Diagnostic& diagnostic : report.diagnostics) {
        std::string text = FormatResString(diagnostic.messageId, language, {diagnostic.text, diagnostic.file});
        if (diagnostic.line > 0) text = options.airfoil + ":" + std::to_string(diagnostic.line) + ": " + text;
        tell.error(text, options.airfoil);
      }
      if (report.HasError()) return 1;
    } catch (const std::exception& problem) {
      tell.error(problem.what(), options.airfoil);
      return 1;
    }
  } else {
    tell.error(FormatResString(Text::XfoilUnknownAirfoil, language, {options.airfoil}), "");
    return 1;
  }
  const bool terminal = isatty(STDERR_FILENO) == 1;
  XfoilRun run;
  try {
    run = RunXfoil(airfoil, options.conditions, jobs, [terminal](int done, int total) {
      if (terminal) std::cerr << "\rXFOIL: " << done << " / " << total << std::flush;
    });
    if (terminal) std::cerr << '\n';
  } catch (const XfoilSetupError& problem) {
    tell.error(FormatResString(problem.id, language, {problem.detail}), "");
    return 1;
  }
  bool allGavePoints = true;
  for (const XfoilJob& job : run.jobs) allGavePoints = allGavePoints && job.polar->PointCount() > 0;
  for (const std::string& line : RunReportLines(run, options.conditions, language)) {
    if (line.find(GetResString(Text::XfoilNoPoint, language).substr(6)) != std::string::npos)
      tell.error(line, "");
    else
      tell.warning(line, "");
  }
  const AirfoilPtr result = RunAirfoil(run);
  if (result->Configuration(1)->PolarCount() > 0 && !tell.write(*result, output)) return 1;
  return allGavePoints ? 0 : 1;
}

std::optional<std::string> MergeAirfoils(const std::vector<std::pair<std::string, AirfoilPtr>>& inputs, Airfoil& merged,
                                         Language language) {
  std::map<std::string, int> setSources;  // set name -> the inputs it came from
  std::map<std::tuple<std::string, double, double>, std::string> seen;
  for (const auto& [file, airfoil] : inputs) {
    if (merged.Name.empty()) merged.Name = airfoil->Name;
    for (const ConfigurationPtr& set : airfoil->Configurations()) {
      ConfigurationPtr target;
      for (const ConfigurationPtr& existing : merged.Configurations())
        if (existing->Name == set->Name) target = existing;
      if (target == nullptr) {
        target = std::make_shared<Configuration>(*set);
        target->ResetPolars(0, {});
        merged.AddConfiguration(target);
      }
      ++setSources[set->Name];
      for (const PolarPtr& polar : set->Polars()) {
        const auto key = std::make_tuple(set->Name, polar->ReynoldsNumber, polar->MachNumber);
        if (seen.count(key) > 0)
          return FormatResString(
              Text::MergeDuplicatePolar, language,
              {ReText(polar->ReynoldsNumber), ReText(polar->MachNumber), set->Name, seen[key], file});
        seen[key] = file;
        target->AddPolar(polar);
      }
    }
  }
  for (const ConfigurationPtr& set : merged.Configurations()) {
    if (setSources[set->Name] < 2) continue;
    std::vector<PolarPtr> polars = set->Polars();
    std::stable_sort(polars.begin(), polars.end(),
                     [](const PolarPtr& a, const PolarPtr& b) { return a->ReynoldsNumber < b->ReynoldsNumber; });
    set->ResetPolars(static_cast<int16_t>(polars.size()), polars);
  }
  return std::nullopt;
}

}  // namespace tavilo
