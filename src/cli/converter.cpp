#include "cli/converter.h"

#include <iostream>
#include <optional>

#include "fileio/load.h"
#include "fileio/transfer.h"
#include "formats/drg.h"
#include "formats/file_text.h"
#include "formats/number_text.h"
#include "model/errors.h"
#include "strings/string_table.h"
#include "ui/user_interface.h"

#ifdef TAVILO_HAVE_QT_PLOT
#include "plotqt/render.h"
#endif

namespace tavilo {

namespace {

constexpr const char* kUsage =
    "Usage: tavilo-convert [options] INPUT OUTPUT      convert one file\n"
    "       tavilo-convert [options] --batch DIR       convert every .pef of DIR to .xml\n"
    "       tavilo-convert [options] --info INPUT      show the sets and polars of a file\n"
#ifdef TAVILO_HAVE_QT_PLOT
    "       tavilo-convert [options] --plot OUT INPUT  draw the five graphs to OUT (.png or .svg)\n"
#endif
    "\n"
    "The input format follows INPUT's name (.xml .pef .pol polar.* .drg), the output\n"
    "format OUTPUT's extension (.xml .pef .pol).\n"
    "\n"
    "Options:\n"
    "  --airfoil N   read airfoil N (from 1) of a drag file with several; --info lists them\n"
    "  --lang de     German messages (--lang en: English, the default)\n"
    "  --help        show this text\n"
    "  --version     show the version\n"
    "\n"
    "Exit status: 0 done, 1 a file could not be read or written, 2 bad usage.\n";

// Messages go to standard error, in the chosen language.
class ConsoleUserInterface : public SilentUserInterface {
 public:
  explicit ConsoleUserInterface(std::ostream& err) : err_(err) {}

  void ShowMessage(const std::string& text, const std::string& title, MessageIcon) override {
    std::string oneLine = text;
    for (size_t p; (p = oneLine.find("\r\n")) != std::string::npos;) oneLine.replace(p, 2, " ");
    err_ << title << ": " << oneLine << '\n';
  }

 private:
  std::ostream& err_;
};

struct Options {
  enum class Mode { Convert, Batch, Info, Plot, Help, Version } mode = Mode::Convert;
  std::vector<std::string> files;
  int airfoil = 1;
  int language = kEnglish;
};

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
    } else if (arg == "--batch" || arg == "--info" || arg == "--plot") {
      options.mode = arg == "--batch"  ? Options::Mode::Batch
                     : arg == "--info" ? Options::Mode::Info
                                       : Options::Mode::Plot;
    } else if (arg == "--lang") {
      auto lang = value();
      if (!lang || (*lang != "de" && *lang != "en")) return "--lang takes de or en";
      options.language = *lang == "de" ? kGerman : kEnglish;
    } else if (arg == "--airfoil") {
      auto n = value();
      if (!n || n->empty() || n->find_first_not_of("0123456789") != std::string::npos ||
          n->size() > 5 || LeadingNumber(*n) < 1)
        return "--airfoil takes a number from 1";
      options.airfoil = static_cast<int>(LeadingNumber(*n));
    } else if (arg.size() > 1 && arg[0] == '-' && arg != "-") {
      return "unknown option " + arg;
    } else {
      options.files.push_back(arg);
    }
  }
  const size_t wanted = options.mode == Options::Mode::Convert || options.mode == Options::Mode::Plot ? 2
                        : options.mode == Options::Mode::Batch || options.mode == Options::Mode::Info
                            ? 1
                            : 0;
  if (options.files.size() != wanted) return "wrong number of file names";
  return std::nullopt;
}

void PrintInfo(const std::string& input, const Airfoil& airfoil, std::ostream& out) {
  if (InputFormatOf(input) == InputFormat::Drag) {
    const std::vector<std::string> names = DrgAirfoilNames(ReadFileBytes(input));
    if (names.size() > 1) {
      out << "Airfoils in the file (choose with --airfoil N):\n";
      for (size_t i = 0; i < names.size(); ++i) out << "  " << i + 1 << ": " << names[i] << '\n';
    }
  }
  out << "Airfoil: " << airfoil.Name << '\n';
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& set = *airfoil.Configuration(i);
    out << "Set" << NumberText(i) << ": " << set.Name << '\n';
    for (int j = 1; j <= set.PolarCount(); ++j) {
      const Polar& polar = *set.Polar(j);
      out << "  Polar" << NumberText(j) << ": Re=" << NumberText(polar.ReynoldsNumber)
          << ", Mach=" << NumberText(polar.MachNumber) << ", " << polar.PointCount() << " points";
      if (!polar.Name.empty()) out << ", " << polar.Name;
      out << '\n';
    }
  }
}

// Reads the input files and reports what the readers found; remembers
// whether anything failed.
class Reader {
 public:
  Reader(const Options& options, std::ostream& err) : options_(options), err_(err) {}

  // The file's airfoil; its diagnostics are written to standard error, and
  // an error among them fails the run.
  LoadResult Read(const std::string& path) {
    LoadResult result;
    try {
      result = ReadPolarFile(path, [this](const std::vector<std::string>& entries) { return ChooseAirfoil(entries); });
    } catch (const FileNotFoundError&) {
      throw;  // names the file already
    } catch (const RuntimeError& error) {
      throw RuntimeError(path + ": " + error.what());
    }
    Report(result.report);
    return result;
  }

  void Report(const ReadReport& report) {
    for (const Diagnostic& diagnostic : report.diagnostics) {
      std::string text = DiagnosticText(diagnostic, options_.language);
      // The window's messages leave the file to the user's memory; here it is named.
      if (diagnostic.line == 0 && !diagnostic.file.empty()) text += " (" + diagnostic.file + ")";
      err_ << ErrorTitle(options_.language) << ": " << text << '\n';
      if (diagnostic.severity == Severity::Error) failed_ = true;
    }
  }

  bool Failed() const { return failed_; }
  void Fail() { failed_ = true; }

 private:
  int ChooseAirfoil(const std::vector<std::string>& entries) {
    const int index = options_.airfoil - 1;
    // The list ends with an empty entry; a number past the names is an error.
    if (index >= static_cast<int>(entries.size()) - 1) {
      err_ << "tavilo-convert: the file holds " << entries.size() - 1 << " airfoils, not " << index + 1 << '\n';
      failed_ = true;
      return static_cast<int>(entries.size()) - 1;
    }
    return index;
  }

  const Options& options_;
  std::ostream& err_;
  bool failed_ = false;
};

int Run(const Options& options, std::ostream& out, std::ostream& err) {
  ConsoleUserInterface ui(err);
  ui.SetLanguage(options.language);
  Reader reader(options, err);
  switch (options.mode) {
    case Options::Mode::Help:
      out << kUsage;
      return kExitDone;
    case Options::Mode::Version:
      out << "tavilo-convert " << TAVILO_VERSION_MAJOR << '.' << TAVILO_VERSION_MINOR << '.'
          << TAVILO_VERSION_PATCH << '\n';
      return kExitDone;
    case Options::Mode::Batch:
      ConvertPefDirectory(
          options.files[0], [&reader](const std::string& path) { return reader.Read(path); },
          [&out](const BatchStep& step) { out << step.source << " -> " << step.target << '\n'; });
      break;
    case Options::Mode::Info: {
      LoadResult input = reader.Read(options.files[0]);
      if (!reader.Failed()) PrintInfo(options.files[0], *input.airfoil, out);
      break;
    }
    case Options::Mode::Convert: {
      LoadResult input = reader.Read(options.files[0]);
      if (!reader.Failed() && !ExportAirfoil(*input.airfoil, options.files[1], ui)) reader.Fail();
      break;
    }
    case Options::Mode::Plot: {
#ifdef TAVILO_HAVE_QT_PLOT
      LoadResult input = reader.Read(options.files[1]);
      std::string error;
      if (!reader.Failed() && !RenderPlotsToFile(*input.airfoil, options.files[0], options.language, &error)) {
        err << "tavilo-convert: " << error << '\n';
        return kExitFileError;
      }
#else
      err << "tavilo-convert: this build cannot draw graphs\n";
      return kExitUsage;
#endif
      break;
    }
  }
  return reader.Failed() ? kExitFileError : kExitDone;
}

}  // namespace

int RunConverter(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  Options options;
  if (auto problem = Parse(args, options)) {
    err << "tavilo-convert: " << *problem << "\n\n" << kUsage;
    return kExitUsage;
  }
  try {
    return Run(options, out, err);
  } catch (const std::exception& error) {
    err << ErrorTitle(options.language) << ": " << error.what() << '\n';
    return kExitFileError;
  }
}

}  // namespace tavilo
