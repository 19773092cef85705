#include "cli/converter.h"

#include <unistd.h>
#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <optional>
#include <thread>

#include "base/errors.h"
#include "base/number_text.h"
#include "cli/approx_mode.h"
#include "cli/xfoil_mode.h"
#include "fileio/file_names.h"
#include "fileio/formats_table.h"
#include "fileio/heap.h"
#include "fileio/load.h"
#include "fileio/transfer.h"
#include "formats/file_text.h"
#include "plot/print_page.h"
#include "strings/string_table.h"
#include "ui/user_interface.h"

namespace tavilo {

namespace {

// The usage is these modes, which names pick which format (UsageText) and
// the options.
constexpr const char* kUsageModes =
    "Usage: tavilo-convert [options] INPUT OUTPUT      convert one file\n"
    "       tavilo-convert [options] --batch DIR       convert every .pef of DIR to .xml\n"
    "       tavilo-convert [options] --info INPUT      show the sets and polars of a file\n"
    "       tavilo-convert [options] --approx INPUT    fit the approximation to each polar, as C text\n"
#ifdef TAVILO_HAVE_RENDERER
    "       tavilo-convert [options] --plot OUT INPUT  draw the five graphs to OUT (.png, .svg or .pdf)\n"
    "       tavilo-convert [options] --print OUT.pdf INPUT\n"
    "                                                  print the page of the graphs to a PDF\n"
#endif
    "       tavilo-convert [options] --xfoil AIRFOIL --re RE,RE... OUTPUT\n"
    "                                                  run XFOIL, one polar per Reynolds number\n"
    "       tavilo-convert [options] --merge OUTPUT INPUT...\n"
    "                                                  join files, such as --print-jobs outputs\n"
    "\n";
constexpr const char* kUsageOptions =
    "\n"
    "Options:\n"
    "  --airfoil N   read airfoil N (from 1) of a drag file with several; --info lists them\n"
    "  -j N          --batch, --xfoil: N files or Reynolds numbers at a time (default: one per core)\n"
    "  --lang de     German messages (--lang en: English, the default)\n"
    "  --grid        --print: draw the grid\n"
    "  --legend ul   --print: a legend in the upper left (lr: lower right) of Cl-Cd\n"
    "  --alpha F:T:S --xfoil: angles from F to T in steps of S degrees (default -5:15:0.5)\n"
    "  --mach M      --xfoil: Mach number (0)\n"
    "  --ncrit N     --xfoil: transition amplification Ncrit (9)\n"
    "  --xtr T,B     --xfoil: transition trips top and bottom as x/c (1,1: free transition)\n"
    "  --iter N      --xfoil: viscous iterations per angle (100)\n"
    "  --timeout S   --xfoil: time limit per Reynolds number in seconds (120)\n"
    "  --print-jobs  --xfoil: print one shell command line per Reynolds number, run nothing\n"
    "  --help        show this text\n"
    "  --version     show the version\n"
    "\n"
    "Exit status: 0 done, 1 a file could not be read or written (--xfoil: a Reynolds number gave\n"
    "no converged point, or xfoil is missing), 2 bad usage.\n";

// How a name is written in the usage: its pattern without a leading "*"
// (".pol", "polar.*").
std::string UsageName(const FormatName& name) {
  const std::string pattern = PatternOf(name);
  return pattern.front() == '*' ? pattern.substr(1) : pattern;
}

// The names of `format` that are read (or written), joined by blanks.
std::string UsageNames(const FileFormat& format, bool written) {
  std::string names;
  for (const FormatName& name : format.names)
    if (written ? name.written : name.readOrder > 0) names += (names.empty() ? "" : " ") + UsageName(name);
  return names;
}

// `text` broken into lines of at most `width` characters at blanks.
std::string WrapAtBlanks(const std::string& text, size_t width) {
  std::string wrapped;
  size_t lineStart = 0;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find(' ', start);
    if (end == std::string::npos) end = text.size();
    if (wrapped.size() > lineStart && wrapped.size() - lineStart + 1 + (end - start) > width) {
      wrapped += '\n';
      lineStart = wrapped.size();
    } else if (wrapped.size() > lineStart) {
      wrapped += ' ';
    }
    wrapped.append(text, start, end - start);
    start = end + 1;
  }
  return wrapped + '\n';
}

// Which names pick which format, from the table: the formats read, those
// with a heading of their own last, and the formats written.
std::string UsageText() {
  std::string read, headed, written;
  for (const FileFormat& format : FileFormats()) {
    if (format.kind != FormatKind::Polars) continue;
    const std::string readNames = UsageNames(format, false);
    if (format.read != nullptr && format.usageHeading != nullptr)
      headed += std::string(", and ") + format.usageHeading + " " + readNames;
    else if (format.read != nullptr)
      read += (read.empty() ? "" : " ") + readNames;
    if (format.write != nullptr) written += (written.empty() ? "" : " ") + UsageNames(format, true);
  }
  return kUsageModes +
         WrapAtBlanks("The input format follows INPUT's name (" + read + headed +
                          "), the output format OUTPUT's extension (" + written + ").",
                      78) +
         kUsageOptions;
}

// Messages on standard error, "Tavilo: Error: ..." or "Tavilo: Warning:
// ...", in the chosen language; each names the file it is about.
class Messages {
 public:
  Messages(std::ostream& err, tavilo::Language language) : err_(err), language_(language) {}

  tavilo::Language Language() const { return language_; }
  void Error(const std::string& text, const std::string& file) { Print(ErrorTitle(language_), text, file); }
  void Warning(const std::string& text, const std::string& file) { Print(WarningTitle(language_), text, file); }
  void Report(const ReadReport& report) {
    for (const Diagnostic& diagnostic : report.diagnostics) {
      const std::string text = DiagnosticText(diagnostic, language_);
      if (diagnostic.severity == Severity::Error)
        Error(text, diagnostic.file);
      else
        Warning(text, diagnostic.file);
    }
  }
  // A line as it stands: a list under a message, a text of another library.
  void Line(const std::string& text) { err_ << text << '\n'; }

 private:
  void Print(const std::string& title, std::string text, const std::string& file) {
    // The window's messages leave the file to the user's memory; here it is named.
    if (!file.empty() && text.find(file) == std::string::npos) text += " (" + file + ")";
    for (size_t p; (p = text.find("\r\n")) != std::string::npos;) text.replace(p, 2, " ");
    err_ << title << ": " << text << '\n';
  }

  std::ostream& err_;
  tavilo::Language language_;
};

// What the export code shows (an unknown output format, a writer's warning)
// goes to standard error.
class ConsoleUserInterface : public SilentUserInterface {
 public:
  ConsoleUserInterface(Messages& messages, const std::string& output) : messages_(messages), output_(output) {
    SetLanguage(messages.Language());
  }

  void ShowMessage(const std::string& text, const std::string&, MessageIcon icon) override {
    if (icon == MessageIcon::Warning)
      messages_.Warning(text, output_);
    else
      messages_.Error(text, output_);
  }

 private:
  Messages& messages_;
  const std::string& output_;
};

// Bad usage that shows only once the input is read: an airfoil number past
// the file's last.
struct LateUsageError {
  std::string text;
};

struct Options {
  enum class Mode { Convert, Batch, Info, Plot, Print, Approx, Xfoil, Merge, Help, Version } mode = Mode::Convert;
  std::vector<std::string> files;
  std::optional<int> airfoil;                                                      // 1-based, when given
  int jobs = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1u));  // --batch
  Language language = Language::English;
  PrintOptions print;  // --print: as a first start has them unless asked
  XfoilCliOptions xfoil;
};

// A number of up to five digits, from 1; nothing for anything else.
std::optional<int> CountFromOne(const std::optional<std::string>& text) {
  if (!text || text->empty() || text->size() > 5 || text->find_first_not_of("0123456789") != std::string::npos ||
      LeadingNumber(*text) < 1)
    return std::nullopt;
  return static_cast<int>(LeadingNumber(*text));
}

// Parses the arguments; an error text on bad usage.
std::optional<std::string> Parse(const std::vector<std::string>& args, Options& options) {
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    auto value = [&]() -> std::optional<std::string> {
      if (i + 1 >= args.size()) return std::nullopt;
      return args[++i];
    };
    if (arg == "--help" || arg == "-h") {
      options.mode = Options::Mode::Help;
    } else if (arg == "--version") {
      options.mode = Options::Mode::Version;
    } else if (arg == "--batch" || arg == "--info" || arg == "--plot" || arg == "--print") {
      options.mode = arg == "--batch"  ? Options::Mode::Batch
                     : arg == "--info" ? Options::Mode::Info
                     : arg == "--plot" ? Options::Mode::Plot
                                       : Options::Mode::Print;
    } else if (arg == "--grid") {
      options.print.grid = true;
    } else if (arg == "--legend") {
      auto corner = value();
      if (!corner || (*corner != "ul" && *corner != "lr")) return "--legend takes ul or lr";
      options.print.legend = true;
      options.print.legendCorner = *corner == "ul" ? LegendCorner::UpperLeft : LegendCorner::LowerRight;
    } else if (IsXfoilOption(arg)) {
      auto given = value();
      if (!given) return arg + " takes a value";
      if (auto problem = ParseXfoilOption(arg, *given, options.xfoil)) return *problem;
      if (arg == "--xfoil") options.mode = Options::Mode::Xfoil;
    } else if (arg == "--print-jobs") {
      options.xfoil.printJobs = true;
    } else if (arg == "--merge") {
      options.mode = Options::Mode::Merge;
    } else if (arg == "--approx") {
      options.mode = Options::Mode::Approx;
    } else if (arg == "--lang") {
      auto lang = value();
      if (!lang || (*lang != "de" && *lang != "en")) return "--lang takes de or en";
      options.language = *lang == "de" ? Language::German : Language::English;
    } else if (arg == "--airfoil") {
      auto n = CountFromOne(value());
      if (!n) return "--airfoil takes a number from 1";
      options.airfoil = *n;
    } else if (arg == "-j") {
      auto n = CountFromOne(value());
      if (!n) return "-j takes a number from 1";
      options.jobs = *n;
    } else if (arg.size() > 1 && arg[0] == '-' && arg != "-") {
      return "unknown option " + arg;
    } else {
      options.files.push_back(arg);
    }
  }
  const Options::Mode mode = options.mode;
  const size_t wanted =
      mode == Options::Mode::Convert || mode == Options::Mode::Plot || mode == Options::Mode::Print  ? 2
      : mode == Options::Mode::Batch || mode == Options::Mode::Info || mode == Options::Mode::Approx ? 1
                                                                                                     : 0;
  if (mode == Options::Mode::Merge)
    return options.files.size() >= 2 ? std::nullopt : std::optional<std::string>("wrong number of file names");
  if (mode == Options::Mode::Xfoil && !options.xfoil.reynoldsGiven) return "--xfoil needs --re";
  if (mode != Options::Mode::Xfoil && (options.xfoil.reynoldsGiven || options.xfoil.printJobs))
    return "--re and --print-jobs go with --xfoil";
  if (mode == Options::Mode::Xfoil && options.files.size() == 1) return std::nullopt;
  if (options.files.size() != wanted) return "wrong number of file names";
  return std::nullopt;
}

void PrintInfo(const std::string& input, const Airfoil& airfoil, Language language, std::ostream& out) {
  const FileFormat* format = FormatToRead(input);
  if (format != nullptr && format->airfoilNames != nullptr) {
    const std::vector<std::string> names = format->airfoilNames(ReadFileBytes(input));
    if (names.size() > 1) {
      out << GetResString(Text::AirfoilList, language) << '\n';
      for (size_t i = 0; i < names.size(); ++i) out << "  " << i + 1 << ": " << names[i] << '\n';
    }
  }
  out << GetResString(Text::Airfoil, language) << ": " << airfoil.Name << '\n';
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& set = *airfoil.Configuration(i);
    out << GetResString(Text::SetHeading, language) << NumberText(i) << ": " << set.Name << '\n';
    for (int j = 1; j <= set.PolarCount(); ++j) {
      const Polar& polar = *set.Polar(j);
      out << "  "
          << FormatResString(Text::PolarLine, language,
                             {NumberText(j), NumberText(polar.ReynoldsNumber), NumberText(polar.MachNumber),
                              FormatNumber(polar.PointCount(), "0")});
      if (!polar.Name.empty()) out << ", " << polar.Name;
      out << '\n';
    }
  }
}

// Reads the inputs of every mode the same way: never writing to them, and
// taking a file without a polar of at least one point as an error.
class Reader {
 public:
  Reader(const Options& options, Messages& messages) : options_(options), messages_(messages) {}

  // The airfoil of `path` with its report, whose diagnostics are printed.
  // Raises what reading raises, and LateUsageError.
  LoadResult Read(const std::string& path) {
    CheckAirfoilOption(path);
    LoadResult result = ReadSilently(path);
    messages_.Report(result.report);
    return result;
  }

  // Read in two halves, for a batch that reads on several threads and
  // prints on one: the reading, which prints nothing...
  LoadResult ReadSilently(const std::string& path) const {
    ReadOptions readOptions;
    readOptions.leaveFileUnchanged = true;
    readOptions.requirePoints = true;
    return ReadPolarFile(
        path, [this](const std::vector<std::string>&) { return options_.airfoil.value_or(1) - 1; }, readOptions);
  }
  // ...and what Read prints about the file.
  void Tell(const std::string& path, const ReadReport& report) {
    CheckAirfoilOption(path);
    messages_.Report(report);
  }

  // Read for a single input: nothing when it failed, the reason printed.
  std::optional<LoadResult> ReadInput(const std::string& path) {
    PrepareHeapForReading(path);
    try {
      LoadResult result = Read(path);
      if (!result.report.HasError()) return result;
    } catch (const std::exception& error) {
      messages_.Error(ErrorText(error, messages_.Language()), path);
    }
    return std::nullopt;
  }

 private:
  // The drag reader asks for its airfoil only where there is a choice, so
  // the option is checked against the file first: a number past the last
  // airfoil is refused, and one that chooses nothing is reported.
  void CheckAirfoilOption(const std::string& path) {
    if (!options_.airfoil) return;
    const Language language = messages_.Language();
    const FileFormat* format = FormatToRead(path);
    if (format == nullptr || format->airfoilNames == nullptr) {
      messages_.Warning(FormatResString(Text::AirfoilIgnoredNotDrag, language, {path}), path);
      return;
    }
    const int count = static_cast<int>(format->airfoilNames(ReadFileBytes(path)).size());
    if (*options_.airfoil > std::max(count, 1)) {
      throw LateUsageError{FormatResString(Text::AirfoilPastEnd, language,
                                           {path, FormatNumber(count, "0"), FormatNumber(*options_.airfoil, "0")})};
    }
    if (count < 2) messages_.Warning(FormatResString(Text::AirfoilIgnoredSingle, language, {path}), path);
  }

  const Options& options_;
  Messages& messages_;
};

// A batch frees and allocates buffers of the same sizes for every file.
// glibc hands those of 128 kB and more back to the system (mapped apart, or
// trimmed off the heap's top) and faults their pages in again for the next
// file, which cost more than the conversion itself; kept, they are reused.
// Blocks past 32 MB are still mapped apart, as glibc's own limit has them.
void KeepFreedMemoryForReuse() {
#ifdef __GLIBC__
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  mallopt(M_TRIM_THRESHOLD, 64 << 20);
#endif
}

// Converts every PEF file of the directory, `jobs` at a time, going on past
// a file that fails; the failed ones are listed at the end. Everything is
// printed in name order, as one job prints it. False when any failed.
bool RunBatch(const std::string& directory, int jobs, Reader& reader, Messages& messages, std::ostream& out) {
  KeepFreedMemoryForReuse();
  std::vector<std::string> failed;
  const std::string prefix = DirectoryPrefix(directory);
  const std::string* told = nullptr;  // the file whose reading was last told
  const int fileCount = ConvertPefDirectory(
      directory, [&reader](const std::string& path) { return reader.ReadSilently(path); },
      [&](const BatchStep& step) {
        if (told == nullptr || *told != step.source) reader.Tell(prefix + step.source, step.report);
        told = &step.source;
        if (step.stage == BatchStage::Written) out << step.source << " -> " << step.target << '\n';
        if (step.stage != BatchStage::Failed) return true;
        // A reader's own errors are printed already.
        if (step.error) messages.Error(ErrorText(*step.error, messages.Language()), prefix + step.source);
        failed.push_back(step.source);
        return true;
      },
      jobs);
  if (failed.empty()) return true;
  messages.Error(BatchFailuresText(static_cast<int>(failed.size()), fileCount, messages.Language()), "");
  for (const std::string& name : failed) messages.Line("  " + name);
  return false;
}

#ifdef TAVILO_HAVE_RENDERER
// Hands the run to the tavilo-render beside this binary; returns only when
// it cannot be started. Its messages and exit status are the run's own.
int RunRendererBeside(const std::vector<std::string>& args, std::ostream& out, Messages& messages) {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  const std::string renderer = (self.parent_path() / "tavilo-render").string();
  std::vector<std::string> strings{renderer};
  strings.insert(strings.end(), args.begin(), args.end());
  std::vector<char*> argv;
  for (std::string& arg : strings) argv.push_back(arg.data());
  argv.push_back(nullptr);
  out.flush();
  ::execv(renderer.c_str(), argv.data());
  messages.Error(FormatResString(Text::RendererNotStarted, messages.Language(), {renderer, std::strerror(errno)}), "");
  return kExitFileError;
}
#endif

int Run([[maybe_unused]] const std::vector<std::string>& args, const Options& options, const Renderer* renderer,
        std::ostream& out, Messages& messages) {
  Reader reader(options, messages);
  switch (options.mode) {
    case Options::Mode::Help: out << UsageText(); return kExitDone;
    case Options::Mode::Version:
      out << "tavilo-convert " << TAVILO_VERSION_MAJOR << '.' << TAVILO_VERSION_MINOR << '.' << TAVILO_VERSION_PATCH
          << '\n';
      return kExitDone;
    case Options::Mode::Batch:
      try {
        return RunBatch(options.files[0], options.jobs, reader, messages, out) ? kExitDone : kExitFileError;
      } catch (const RuntimeError& error) {
        messages.Error(ErrorText(error, messages.Language()), options.files[0]);
        return kExitFileError;
      }
    case Options::Mode::Info: {
      std::optional<LoadResult> input = reader.ReadInput(options.files[0]);
      if (!input) return kExitFileError;
      PrintInfo(options.files[0], *input->airfoil, options.language, out);
      return kExitDone;
    }
    case Options::Mode::Convert: {
      std::optional<LoadResult> input = reader.ReadInput(options.files[0]);
      if (!input) return kExitFileError;
      const std::string& output = options.files[1];
      ConsoleUserInterface ui(messages, output);
      try {
        return ExportAirfoil(*input->airfoil, output, ui) ? kExitDone : kExitFileError;
      } catch (const std::exception& error) {
        messages.Error(ErrorText(error, messages.Language()), output);
        return kExitFileError;
      }
    }
    case Options::Mode::Xfoil: {
      const std::string& output = options.files[0];
      if (!options.xfoil.printJobs && FormatToWrite(output) == nullptr) {
        messages.Line("tavilo-convert: OUTPUT must be a file name that a format writes");
        return kExitUsage;
      }
      XfoilCliOutput tell;
      tell.error = [&](const std::string& text, const std::string& file) { messages.Error(text, file); };
      tell.warning = [&](const std::string& text, const std::string& file) { messages.Warning(text, file); };
      tell.write = [&](const Airfoil& airfoil, const std::string& path) {
        ConsoleUserInterface ui(messages, path);
        return ExportAirfoil(airfoil, path, ui);
      };
      return RunXfoilMode(options.xfoil, options.jobs, output, options.language, out, tell);
    }
    case Options::Mode::Merge: {
      std::vector<std::pair<std::string, AirfoilPtr>> inputs;
      for (size_t k = 1; k < options.files.size(); ++k) {
        std::optional<LoadResult> input = reader.ReadInput(options.files[k]);
        if (!input) return kExitFileError;
        inputs.emplace_back(options.files[k], input->airfoil);
      }
      Airfoil merged;
      if (auto problem = MergeAirfoils(inputs, merged, messages.Language())) {
        messages.Error(*problem, "");
        return kExitFileError;
      }
      const std::string& output = options.files[0];
      ConsoleUserInterface ui(messages, output);
      return ExportAirfoil(merged, output, ui) ? kExitDone : kExitFileError;
    }
    case Options::Mode::Approx: {
      std::optional<LoadResult> input = reader.ReadInput(options.files[0]);
      if (!input) return kExitFileError;
      const std::string& file = options.files[0];
      auto skipped = [&](const std::string& text) { messages.Warning(text, file); };
      if (WriteApproximations(*input->airfoil, out, skipped, messages.Language()) > 0) return kExitDone;
      messages.Error(GetResString(Text::ApproxNoPolarFits, messages.Language()), file);
      return kExitFileError;
    }
    case Options::Mode::Plot:
    case Options::Mode::Print: {
      if (renderer == nullptr) {
#ifdef TAVILO_HAVE_RENDERER
        return RunRendererBeside(args, out, messages);
#else
        messages.Line("tavilo-convert: this build cannot draw graphs");
        return kExitUsage;
#endif
      }
      std::optional<LoadResult> input = reader.ReadInput(options.files[1]);
      if (!input) return kExitFileError;
      std::string error;
      if (options.mode == Options::Mode::Plot) {
        if (renderer->plot(*input->airfoil, options.files[0], options.language, &error)) return kExitDone;
        messages.Error(error, options.files[0]);
        return kExitFileError;
      }
      PageRequest request;
      request.options = options.print;
      request.language = options.language;
      if (renderer->print(*input->airfoil, request, options.files[0], &error)) return kExitDone;
      messages.Error(error, options.files[0]);
      return kExitFileError;
    }
  }
  return kExitDone;
}

}  // namespace

int RunConverter(const std::vector<std::string>& args, std::ostream& out, std::ostream& err, const Renderer* renderer) {
  Options options;
  if (auto problem = Parse(args, options)) {
    err << "tavilo-convert: " << *problem << "\n\n" << UsageText();
    return kExitUsage;
  }
  Messages messages(err, options.language);
  try {
    return Run(args, options, renderer, out, messages);
  } catch (const LateUsageError& problem) {
    err << "tavilo-convert: " << problem.text << '\n';
    return kExitUsage;
  } catch (const std::exception& error) {
    messages.Error(ErrorText(error, options.language), "");
    return kExitFileError;
  }
}

}  // namespace tavilo
