#include "formats/pol.h"

#include <cmath>

#include "base/errors.h"
#include "base/fixed_number.h"
#include "base/number_text.h"
#include "formats/file_text.h"
#include "formats/line_reader.h"
#include "formats/text_output.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

// `count` characters of `line` from column `first` (1-based); shorter or
// empty where the line ends first.
std::string_view Columns(std::string_view line, size_t first, size_t count = std::string_view::npos) {
  if (first > line.size()) return {};
  return line.substr(first - 1, count);
}

std::string NameFromHeading(std::string_view line) { return NameFromFileBytes(TrimTrailingBlanks(Columns(line, 24))); }

// ---------------------------------------------------------------- writing

// `value` with `decimals` decimals, right-aligned with blanks to `width`; a
// longer text is kept whole.
void AppendField(std::string& out, double value, int decimals, size_t width) {
  std::string text;
  AppendFixedNumber(text, value, decimals);
  if (text.size() < width) out.append(width - text.size(), ' ');
  out.append(text);
}

// An unknown transition position is stored negative; the file has no such
// marker, so it goes out as the trailing edge.
double TransitionOrTrailingEdge(double position) { return position > -0.1 ? position : 1.0; }

void AppendPointLine(std::string& out, const PolarPoint& point, double reynoldsInMillions) {
  AppendField(out, point.Alfa, 3, 8);
  AppendField(out, point.Cl, 4, 9);
  AppendField(out, point.Cd, 5, 10);
  // The Re(CL) column repeats the polar's Reynolds number on every line.
  AppendField(out, reynoldsInMillions, 5, 10);
  AppendField(out, point.Cm, 4, 9);
  AppendField(out, TransitionOrTrailingEdge(point.TU), 4, 8);
  AppendField(out, TransitionOrTrailingEdge(point.TL), 4, 8);
  out.append("\r\n");
}

void AppendPolarBlock(std::string& out, const Polar& polar, std::string_view airfoilName) {
  const double reynoldsInMillions = polar.ReynoldsNumber / 1000000.0;
  AppendLine(out, "");
  AppendLine(out, "       XFOIL         Version 5.4");
  AppendLine(out, "");
  out.append(" Calculated polar for: ");
  AppendLine(out, airfoilName);
  AppendLine(out, "");
  AppendLine(out, " 1  Reynolds number fixed");
  AppendLine(out, "");
  AppendLine(out, " xtrf =   1.000 (suction)    1.000 (pressure)");
  out.append(" Mach =   ");
  AppendField(out, polar.MachNumber, 3, 5);
  out.append("     Re =   ");
  AppendField(out, reynoldsInMillions, 3, 7);
  AppendLine(out, " e 6     Ncrit =   9.000");
  AppendLine(out, "");
  AppendLine(out, "   alpha     CL        CD      Re(CL)     CM     S xtr   P xtr");
  AppendLine(out, "  ------- -------- --------- --------- -------- ------- -------");
  for (const PolarPoint& point : polar.Points()) AppendPointLine(out, point, reynoldsInMillions);
}

// ---------------------------------------------------------------- reading

PolarPoint PointFromLine(std::string_view line) {
  PolarPoint point;
  // The fourth field is Re(CL) in old files and CDp in newer ones; neither
  // is kept. Fields past the seventh (newer XFOIL writes nine) are ignored.
  double* const fields[] = {&point.Alfa, &point.Cl, &point.Cd, nullptr, &point.Cm, &point.TU, &point.TL};
  std::string_view rest = TrimLeadingBlanks(line);
  for (double* field : fields) {
    if (field) *field = LeadingNumber(rest);
    rest = RestAfterFirstBlank(rest);
  }
  return point;
}

// The Mach number and Reynolds number stand in fixed columns of the line
// " Mach =   0.200     Re =     1.500 e 6 ..."; the column heading is never
// looked at, so a line laid out otherwise reads wrong values silently.
void ReadMachAndReynolds(std::string_view line, Polar& polar) {
  polar.ReynoldsNumber = LeadingNumber(Columns(line, 26, 9)) * std::pow(10.0, LeadingNumber(Columns(line, 37, 2)));
  polar.MachNumber = LeadingNumber(Columns(line, 11, 5));
}

// The point lines that follow, up to the first blank line or the end of the
// text at hand: counted first, so that a long polar's points are stored
// once instead of being moved each time their store grows. At most a
// 16-bit count.
int PointLinesAhead(LineReader ahead) {
  std::string_view line;
  int count = 0;
  while (count < 32767 && ahead.Next(line) && !TrimTrailingBlanks(line).empty()) ++count;
  return count;
}

// Reads the next block into `config`; false when the text ends before a
// block is complete. A header cut short drops its polar.
bool ReadPolarBlock(LineReader& reader, Airfoil& airfoil, Configuration& config) {
  std::string_view line;
  do {
    if (!reader.Next(line)) return false;
  } while (line.find("Calculated polar for") == std::string_view::npos);
  airfoil.Name = NameFromHeading(line);

  auto polar = std::make_shared<Polar>();
  polar->Selected = true;
  if (!reader.Skip(4) || !reader.Next(line)) return false;
  ReadMachAndReynolds(line, *polar);
  if (!reader.Skip(3)) return false;
  // XFOIL writes the heading before the first point converges, so a file
  // that ends right after the column heading is a run without a converged
  // point: its polar is kept, empty, with its Reynolds and Mach numbers.
  polar->ReservePoints(PointLinesAhead(reader.Ahead()));
  const bool hasPoints = reader.Next(line);
  // The data end at the first blank line or at the end of the text, so a
  // file without a final empty line still reads its last point.
  while (hasPoints && !TrimTrailingBlanks(line).empty()) {
    polar->AddPoint(PointFromLine(line));
    if (!reader.Next(line)) break;
  }
  config.AddPolar(polar);
  return hasPoints;
}

ReadReport ReadPolarBlocks(Airfoil& airfoil, LineReader& reader) {
  auto config = std::make_shared<Configuration>();
  airfoil.ResetConfigurations(1);
  airfoil.SetConfiguration(1, config);
  ReadReport report;
  try {
    while (ReadPolarBlock(reader, airfoil, *config)) {
    }
  } catch (const OverflowError& error) {
    // A number past the double range, a point past the 32767th or a line
    // past 32767 characters ends the file here, as any run-time error does
    // in this reader: what was read stays, the polar being read is dropped.
    // The window shows nothing; the converter must not call it a success.
    report.stoppedEarly = true;
    report.diagnostics.push_back({Severity::Error, MessageText(error), error.Detail(), true, {}, reader.LinesRead()});
  }
  return report;
}

}  // namespace

std::string PolText(const Airfoil& airfoil) {
  std::string out;
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& config = *airfoil.Configuration(i);
    for (int j = 1; j <= config.PolarCount(); ++j) {
      const Polar& polar = *config.Polar(j);
      if (polar.Selected) AppendPolarBlock(out, polar, airfoil.Name);
    }
  }
  return out;
}

void WriteToPOL(const Airfoil& airfoil, const std::string& path) { WriteFileAtomically(path, PolText(airfoil)); }

ReadReport ReadFromPOLText(Airfoil& airfoil, std::string_view bytes) {
  LineReader reader(bytes);
  return ReadPolarBlocks(airfoil, reader);
}

ReadReport ReadFromPOL(Airfoil& airfoil, const std::string& path) {
  // Read a piece at a time, so that a large file is never held whole; a
  // piece holds the longest polar, or most of it.
  InputFile file(path);
  if (!file.IsRegular()) return ReadFromPOLText(airfoil, ReadFileBytes(path)).InFile(path);
  FileTextSource source(file, 4 << 20);
  LineReader reader(source);
  return ReadPolarBlocks(airfoil, reader).InFile(path);
}

std::string ReadSetNameFromPOL(const std::string& path) {
  const std::string bytes = ReadFileBytes(path);
  LineReader reader(bytes);
  // At the end of the file FindLine gives "", and so does the name.
  return NameFromHeading(reader.FindLine(" Calculated"));
}

}  // namespace tavilo
