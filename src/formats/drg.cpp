#include "formats/drg.h"

#include <algorithm>
#include <array>

#include "base/number_text.h"
#include "formats/file_text.h"
#include "formats/line_reader.h"

namespace tavilo {

namespace {

// Where each item stands, counting lines from 1 after the airfoil's heading
// (set items) or from the start of each Reynolds block (polar items).
struct DrgLayout {
  const char* setPrefix;
  int setNameLine;
  int polarCountLine;
  int reynoldsLine;
  int pointCountLine;
  int linesBeforePoints;
  bool princetonPoints;  // Cl, Cd, Alfa instead of Alfa, Cl and five drag values
};

constexpr int kPrinceton = 0;
constexpr int kUiucColon = 3;
constexpr int kUiucBlanks = 12;

const DrgLayout* LayoutForCode(int code) {
  static constexpr DrgLayout kPrincetonLayout{"Princeton, ", 1, 2, 1, 2, 2, true};
  static constexpr DrgLayout kUiucBlanksLayout{"UIUC, ", 1, 3, 2, 3, 3, false};
  static constexpr DrgLayout kUiucColonLayout{"UIUC, ", 2, 5, 3, 5, 6, false};
  switch (code) {
    case kPrinceton: return &kPrincetonLayout;
    case kUiucBlanks: return &kUiucBlanksLayout;
    case kUiucColon: return &kUiucColonLayout;
    default: return nullptr;
  }
}

std::string NameFromHeading(std::string_view line) {
  return NameFromFileBytes(TrimTrailingBlanks(line.size() > 9 ? line.substr(9) : std::string_view{}));
}

bool StartsWith(std::string_view line, std::string_view prefix) { return line.substr(0, prefix.size()) == prefix; }

// A Princeton heading has its one-digit polar count two lines further on.
bool IsOneDigitLine(std::string_view line) {
  std::string_view trimmed = TrimBlanks(line);
  return line.size() == 1 && !trimmed.empty() && trimmed[0] >= '0' && trimmed[0] <= '9';
}

struct DrgHeadings {
  std::vector<std::string> names;
  int layoutCode = kPrinceton;  // as the last heading of the file set it
};

DrgHeadings ScanHeadings(std::string_view bytes) {
  DrgHeadings headings;
  LineReader reader(bytes);
  std::string_view line;
  while (reader.Next(line)) {
    if (StartsWith(line, "Airfoil  ")) {
      headings.names.push_back(NameFromHeading(line));
      // The two lines after the heading are consumed, whatever they hold;
      // where the file ends first they count as empty.
      std::string_view first, second;
      reader.Next(first);
      reader.Next(second);
      headings.layoutCode = IsOneDigitLine(second) ? kPrinceton : kUiucBlanks;
    } else if (StartsWith(line, "Airfoil: ")) {
      headings.names.push_back(NameFromHeading(line));
      headings.layoutCode = kUiucColon;
    }
  }
  return headings;
}

// Averages the drag readings above a single-precision 1e-16, so that missing
// or zero wake-survey values do not pull the mean down. A point with no such
// reading gets Cd 0 rather than 0/0.
double AverageDrag(const double* values, int count) {
  const double threshold = static_cast<double>(1e-16f);
  double sum = 0.0;
  int used = 0;
  for (int k = 0; k < count; ++k) {
    if (values[k] > threshold) {
      sum += values[k];
      ++used;
    }
  }
  return used > 0 ? sum / used : 0.0;
}

PolarPoint PointFromLine(std::string_view line, const DrgLayout& layout) {
  const int fieldCount = layout.princetonPoints ? 3 : 7;
  std::array<double, 7> fields{};
  std::string_view rest = TrimLeadingBlanks(line);
  for (int k = 0; k < fieldCount; ++k) {
    fields[k] = LeadingNumber(rest);
    rest = RestAfterFirstBlank(rest);
  }
  PolarPoint point;
  if (layout.princetonPoints) {
    point.Cl = fields[0];
    point.Cd = AverageDrag(&fields[1], 1);
    point.Alfa = fields[2];
  } else {
    point.Alfa = fields[0];
    point.Cl = fields[1];
    point.Cd = AverageDrag(&fields[2], 5);
  }
  return point;
}

bool IsBlockFooter(std::string_view line) { return StartsWith(line, "Tabulated from data"); }

enum class BlockEnd { Complete, CutShort, HeaderMissing };

// Reads one Reynolds block into `polar`. Real UIUC files close every block
// with a "Tabulated from data in file ..." line and an empty line that the
// line counts do not allow for; such a footer where a block should start is
// passed over, so each block reads with its own Reynolds number. A block cut
// short by the end of the file keeps the points read so far.
BlockEnd ReadBlock(LineReader& reader, const DrgLayout& layout, Polar& polar) {
  std::array<std::string_view, 6> lines{};
  for (int k = 0; k < layout.linesBeforePoints; ++k) {
    if (!reader.Next(lines[k])) return BlockEnd::HeaderMissing;
    while (k == 0 && IsBlockFooter(lines[0])) {
      if (!reader.Next(lines[0])) return BlockEnd::HeaderMissing;
    }
  }
  polar.ReynoldsNumber = LeadingNumber(lines[layout.reynoldsLine - 1]);
  polar.Selected = true;
  const int pointCount = RoundToInt16(LeadingNumber(lines[layout.pointCountLine - 1]));
  std::string_view line;
  for (int k = 1; k <= pointCount; ++k) {
    if (!reader.Next(line)) return BlockEnd::CutShort;
    polar.AddPoint(PointFromLine(line, layout));
  }
  return BlockEnd::Complete;
}

// Reads the set's blocks; false when the file ended before its counts did.
bool ReadSet(LineReader& reader, int layoutCode, Configuration& config) {
  const DrgLayout* layout = LayoutForCode(layoutCode);
  if (!layout) return true;
  std::array<std::string_view, 5> lines{};
  for (int k = 0; k < layout->polarCountLine; ++k) {
    if (!reader.Next(lines[k])) return false;  // cut short: the set keeps the airfoil's name
  }
  config.Name = layout->setPrefix + NameFromFileBytes(lines[layout->setNameLine - 1]);
  const int polarCount = RoundToInt16(LeadingNumber(lines[layout->polarCountLine - 1]));
  for (int i = 1; i <= polarCount; ++i) {
    auto polar = std::make_shared<Polar>();
    BlockEnd end = ReadBlock(reader, *layout, *polar);
    if (end == BlockEnd::HeaderMissing) return false;
    config.AddPolar(polar);
    if (end == BlockEnd::CutShort) return false;
  }
  return true;
}

}  // namespace

std::vector<std::string> DrgAirfoilNames(std::string_view bytes) { return ScanHeadings(bytes).names; }

ReadReport ReadFromDRGText(Airfoil& airfoil, std::string_view bytes, const AirfoilChoice& choose) {
  DrgHeadings headings = ScanHeadings(bytes);
  int chosen = 0;
  if (headings.names.size() >= 2 && choose) {
    std::vector<std::string> entries = headings.names;
    entries.emplace_back();  // the list shows one empty entry after the names
    chosen = std::max(0, choose(entries));
  }

  // Any line beginning "Airfoil" counts here, also an "Airfoil:" heading
  // that the first pass passed over.
  LineReader reader(bytes);
  std::string_view heading;
  for (int i = 0; i <= chosen; ++i) {
    heading = reader.FindLine("Airfoil");
    if (heading.empty()) break;
  }
  airfoil.Name = NameFromHeading(heading);
  auto config = std::make_shared<Configuration>();
  config->Name = airfoil.Name;
  airfoil.ResetConfigurations(1);
  airfoil.SetConfiguration(1, config);
  // The trailing empty entry (or any choice past the last heading) runs off
  // the end of the file: the airfoil keeps an empty name and an empty set.
  ReadReport report;
  if (heading.empty()) return report;
  report.stoppedEarly = !ReadSet(reader, headings.layoutCode, *config);
  if (report.stoppedEarly) report.diagnostics.push_back(ShortOfCountsWarning());
  return report;
}

ReadReport ReadFromDRG(Airfoil& airfoil, const std::string& path, const AirfoilChoice& choose) {
  return ReadFromDRGText(airfoil, ReadFileBytes(path), choose).InFile(path);
}

}  // namespace tavilo
