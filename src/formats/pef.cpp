#include "formats/pef.h"

#include <sys/stat.h>
#include <unistd.h>

#include <charconv>
#include <optional>
#include <utility>

#include "base/fixed_number.h"
#include "base/number_text.h"
#include "formats/file_text.h"
#include "formats/pef_index.h"
#include "formats/text_output.h"
#include "strings/product.h"

namespace tavilo {

namespace {

// ---------------------------------------------------------------- writing

void AppendInteger(std::string& out, long value) {
  char buffer[24];
  auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  out.append(buffer, result.ptr);
}

// "Value01" ... "Value99", "Value100": the index has at least two digits.
void AppendPointKey(std::string& out, int index) {
  out.append("Value");
  if (index >= 0 && index < 10) out.push_back('0');
  AppendInteger(out, index);
}

void AppendPoint(std::string& out, const PolarPoint& point, int index) {
  AppendPointKey(out, index);
  out.push_back('=');
  // The six columns with their decimals, three blanks apart.
  const struct {
    double value;
    int decimals;
  } columns[] = {{point.Alfa, 3}, {point.Cl, 3}, {point.Cd, 5}, {point.Cm, 4}, {point.TU, 3}, {point.TL, 3}};
  for (const auto& column : columns) {
    if (&column != columns) out.append("   ");
    AppendFixedNumber(out, column.value, column.decimals);
  }
  out.append("\r\n");
}

void AppendPolar(std::string& out, const Polar& polar, int setNumber, int polarNumber) {
  AppendLine(out, "");
  out.append("[Set");
  AppendInteger(out, setNumber);
  out.append("-Polar");
  AppendInteger(out, polarNumber);
  AppendLine(out, "]");
  if (!polar.Name.empty()) AppendLine(out, "Description1=", polar.Name);
  // Both numbers as integers: a Mach number of 0.3 is written as 0.
  AppendLine(out, "ReynoldsNumber=", FormatNumber(polar.ReynoldsNumber, "0"));
  AppendLine(out, "MachNumber=", FormatNumber(polar.MachNumber, "0"));
  AppendLine(out, "NumberPoints=", FormatNumber(polar.PointCount(), "0"));
  AppendLine(out, "Values=Alpha      Cl        Cd         Cm      TU      TL");
  int index = 0;
  for (const PolarPoint& point : polar.Points()) AppendPoint(out, point, ++index);
}

int SelectedPolarCount(const Configuration& config) {
  int count = 0;
  for (int j = 1; j <= config.PolarCount(); ++j) count += config.Polar(j)->Selected ? 1 : 0;
  return count;
}

void AppendConfiguration(std::string& out, const Configuration& config, int setNumber) {
  AppendLine(out, "");
  out.append("[Set");
  AppendInteger(out, setNumber);
  AppendLine(out, "]");
  AppendLine(out, "Origin=", config.Origin.empty() ? std::string_view("Tavilo") : config.Origin);
  // An unnamed set carries the notice as its name; a named one gets it as a
  // first "Description2", ahead of its own, which the reader then ignores.
  if (config.Name.empty()) {
    AppendLine(out, "Description1=", kCopyrightNotice);
  } else {
    AppendLine(out, "Description1=", config.Name);
    AppendLine(out, "Description2=", kCopyrightNotice);
  }
  if (!config.Description2.empty()) AppendLine(out, "Description2=", config.Description2);
  AppendLine(out, "NumberPolars=", FormatNumber(SelectedPolarCount(config), "0"));
  int polarNumber = 0;
  for (int j = 1; j <= config.PolarCount(); ++j) {
    const Polar& polar = *config.Polar(j);
    if (polar.Selected) AppendPolar(out, polar, setNumber, ++polarNumber);
  }
}

size_t EstimatedPefSize(const Airfoil& airfoil) {
  size_t size = 1024;
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& config = *airfoil.Configuration(i);
    for (int j = 1; j <= config.PolarCount(); ++j) size += 256 + 64 * config.Polar(j)->Points().size();
  }
  return size;
}

}  // namespace

std::string PefText(const Airfoil& airfoil) {
  std::string out;
  out.reserve(EstimatedPefSize(airfoil));
  AppendLine(out, "; This is a polar exchange file (PEF)");
  AppendLine(out, "; Comments start with a ';' in column 1, blank lines are allowed");
  AppendLine(out, " ");
  AppendLine(out, "; The 'Tavilo' application, a reader and converter is available");
  AppendLine(out, "; in the software section at:");
  AppendLine(out, ";              ", kWebAddress);
  AppendLine(out, " ");
  AppendLine(out, "[Airfoil]");
  AppendLine(out, "Description1=", airfoil.Name);
  int selectedSets = 0;
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) selectedSets += airfoil.Configuration(i)->Selected() ? 1 : 0;
  AppendLine(out, "NumberSets=", FormatNumber(selectedSets, "0"));
  int setNumber = 0;
  for (int i = 1; i <= airfoil.ConfigCount(); ++i) {
    const Configuration& config = *airfoil.Configuration(i);
    if (config.Selected()) AppendConfiguration(out, config, ++setNumber);
  }
  AppendLine(out, "");
  return out;
}

void WriteToPEF(const Airfoil& airfoil, const std::string& path) { WriteFileAtomically(path, PefText(airfoil)); }

std::string PolarPefText(const Polar& polar, int setNumber, int polarNumber) {
  std::string out;
  out.reserve(256 + 64 * polar.Points().size());
  AppendPolar(out, polar, setNumber, polarNumber);
  return out;
}

// ---------------------------------------------------------------- reading

namespace {

PolarPoint PointFromValue(std::string_view s) {
  PolarPoint point;
  s = TrimLeadingBlanks(s);
  point.Alfa = LeadingNumber(s);
  s = RestAfterFirstBlank(s);
  point.Cl = LeadingNumber(s);
  s = RestAfterFirstBlank(s);
  point.Cd = LeadingNumber(s);
  s = RestAfterFirstBlank(s);
  if (!s.empty()) {
    point.Cm = LeadingNumber(s);
    s = RestAfterFirstBlank(s);
  }
  // The transition and the separation values come in pairs: a lone TU
  // still sets TL (to 0).
  if (!s.empty()) {
    point.TU = LeadingNumber(s);
    s = RestAfterFirstBlank(s);
    point.TL = LeadingNumber(s);
    s = RestAfterFirstBlank(s);
  }
  if (!s.empty()) {
    point.SU = LeadingNumber(s);
    s = RestAfterFirstBlank(s);
    point.SL = LeadingNumber(s);
  }
  return point;
}

int16_t CountValue(std::string_view text) { return RoundToInt16(LeadingNumber(text)); }

class PefReader {
 public:
  PefReader(PefIndex index, long missingItemLimit) : index_(std::move(index)), missingItemsLeft_(missingItemLimit) {}

  void ReadAirfoil(Airfoil& airfoil, ReadReport& report);
  void ReadConfiguration(Configuration& config, int setNumber);
  void ReadPolar(Polar& polar, int setNumber, int polarNumber);
  void ReadPolar(Polar& polar, uint32_t section);
  bool Stopped() const { return missingItemsLeft_ < 0; }
  // The counts asked for a set, polar or point that the file lacks.
  bool ShortOfCounts() const { return shortOfCounts_; }

 private:
  // False once the file has asked for more missing items than it may.
  bool TakeMissingItem() {
    shortOfCounts_ = true;
    return --missingItemsLeft_ >= 0;
  }

  PefIndex index_;
  long missingItemsLeft_;
  bool shortOfCounts_ = false;
  std::string key_;  // reused for every point key
};

void PefReader::ReadAirfoil(Airfoil& airfoil, ReadReport& report) {
  const uint32_t section = index_.FindSection("Airfoil");
  std::string_view name = index_.Value(section, "Description1");
  if (name.empty()) name = index_.Value(section, "Airfoilname");
  const int16_t setCount = CountValue(index_.Value(section, "NumberSets"));
  airfoil.Name = name.empty() ? std::string("unknown airfoil") : NameFromFileBytes(name);
  airfoil.ResetConfigurations(setCount);
  if (setCount <= 0) {
    report = MessageReport(Text::NoDataSets);
    return;
  }
  // Every slot holds a set before any is read, so an error part way leaves
  // empty sets behind it, never missing ones.
  for (int i = 1; i <= setCount; ++i) airfoil.SetConfiguration(i, std::make_shared<Configuration>());
  for (int i = 1; i <= setCount && !Stopped(); ++i) ReadConfiguration(*airfoil.Configuration(i), i);
  report.stoppedEarly = Stopped();
  // Missing items read as empty, as they always did; the warning is quiet, as the window always was.
  if (ShortOfCounts()) report.diagnostics.push_back(ShortOfCountsWarning());
}

void PefReader::ReadConfiguration(Configuration& config, int setNumber) {
  const uint32_t section = index_.FindSection("Set" + std::to_string(setNumber));
  // A missing set costs nothing, so it is not counted against the limit.
  if (section == PefIndex::kNoSection) shortOfCounts_ = true;
  config.Name = NameFromFileBytes(index_.Value(section, "Description1"));
  config.Origin = NameFromFileBytes(index_.Value(section, "Origin"));
  config.Description2 = NameFromFileBytes(index_.Value(section, "Description2"));
  const int16_t polarCount = CountValue(index_.Value(section, "NumberPolars"));
  const std::string prefix = "Set" + std::to_string(setNumber) + "-Polar";
  for (int j = 1; j <= polarCount; ++j) {
    const uint32_t polarSection = index_.FindSection(prefix + std::to_string(j));
    if (polarSection == PefIndex::kNoSection && !TakeMissingItem()) return;
    auto polar = std::make_shared<Polar>();
    ReadPolar(*polar, polarSection);
    config.AddPolar(polar);
    if (Stopped()) return;
  }
}

void PefReader::ReadPolar(Polar& polar, int setNumber, int polarNumber) {
  ReadPolar(polar, index_.FindSection("Set" + std::to_string(setNumber) + "-Polar" + std::to_string(polarNumber)));
}

void PefReader::ReadPolar(Polar& polar, uint32_t section) {
  polar.Selected = true;
  const int16_t pointCount = CountValue(index_.Value(section, "NumberPoints"));
  polar.ReynoldsNumber = LeadingNumber(index_.Value(section, "ReynoldsNumber"));
  polar.MachNumber = LeadingNumber(index_.Value(section, "MachNumber"));
  polar.Name = NameFromFileBytes(index_.Value(section, "Description1"));
  polar.ReservePoints(pointCount);  // a 16-bit count: at most 2 MB held for nothing
  for (int i = 1; i <= pointCount; ++i) {
    key_.clear();
    AppendPointKey(key_, i);
    std::optional<std::string_view> value = index_.FindValue(section, key_);
    // A missing point still counts, with Alfa, Cl and Cd at 0.
    if (!value && !TakeMissingItem()) return;
    polar.AddPoint(PointFromValue(value.value_or(std::string_view{})));
  }
}

bool IsMarkedReadOnly(const std::string& path) {
  struct stat info {};
  // The write bits are tested as well as access(), which lets root write anything.
  return ::stat(path.c_str(), &info) == 0 && ((info.st_mode & 0222) == 0 || ::access(path.c_str(), W_OK) != 0);
}

// Puts the converted text of an LF-only file in its place, unless the file
// is marked read-only. Through a link, the file it points to is rewritten.
void ReplaceWithCrLfText(const std::string& path, std::string_view converted) {
  if (!IsMarkedReadOnly(path)) WriteFileAtomically(path, converted);
}

// The file's text as the readers see it: an LF-only file converted, and
// written back when it may be and `lfOnly` asks for it.
std::string PefFileText(const std::string& path, LfOnlyFile lfOnly = LfOnlyFile::Rewrite) {
  std::string bytes = ReadFileBytes(path);
  if (!IsLfOnlyText(bytes)) return bytes;
  std::string converted = CrLfText(bytes);
  if (lfOnly == LfOnlyFile::ConvertInMemory) return converted;
  try {
    ReplaceWithCrLfText(path, converted);
  } catch (const FileAccessError&) {
    // A file in a folder that cannot be written is still read, as converted
    // in memory: the user only wants to look at it.
  }
  return converted;
}

ReadReport ReadAirfoil(Airfoil& airfoil, PefIndex index, long missingItemLimit) {
  PefReader reader(std::move(index), missingItemLimit);
  ReadReport report;
  reader.ReadAirfoil(airfoil, report);
  return report;
}

}  // namespace

ReadReport ReadFromPEFText(Airfoil& airfoil, std::string_view bytes, long missingItemLimit) {
  return ReadAirfoil(airfoil, PefIndex(bytes), missingItemLimit);
}

ReadReport ReadFromPEFText(Airfoil& airfoil, std::string_view bytes) {
  return ReadFromPEFText(airfoil, bytes, kPefMissingItemLimit);
}

ReadReport ReadFromPEF(Airfoil& airfoil, const std::string& path, LfOnlyFile lfOnly) {
  // Read section by section from the file, which is then never held whole;
  // an LF-only file reads the same, unless it is to be rewritten first.
  std::optional<PefIndex> index;
  try {
    index = PefIndex::OfFile(path);
  } catch (const FileAccessError&) {
    // Not a file that can be read twice (a pipe): read once, whole.
  }
  if (!index || (index->LfOnly() && lfOnly == LfOnlyFile::Rewrite))
    return ReadFromPEFText(airfoil, PefFileText(path, lfOnly)).InFile(path);
  return ReadAirfoil(airfoil, std::move(*index), kPefMissingItemLimit).InFile(path);
}

void ReadPolarFromPEFText(Polar& polar, std::string_view bytes, int setNumber, int polarNumber) {
  PefReader reader(PefIndex(bytes), kPefMissingItemLimit);
  reader.ReadPolar(polar, setNumber, polarNumber);
}

void ReadPolarFromPEF(Polar& polar, const std::string& path, int setNumber, int polarNumber) {
  ReadPolarFromPEFText(polar, PefFileText(path), setNumber, polarNumber);
}

std::string ReadPefValue(std::string_view section, std::string_view key, const std::string& path) {
  const std::string text = PefFileText(path);
  return std::string(PefIndex(text).Value(section, key));
}

bool IsLfOnlyText(std::string_view bytes) {
  return bytes.find('\n') != std::string_view::npos && bytes.find('\r') == std::string_view::npos;
}

std::string CrLfText(std::string_view bytes) {
  std::string out;
  out.reserve(bytes.size() + bytes.size() / 16 + 2);
  for (char c : bytes) {
    if (c == '\n') out.push_back('\r');
    out.push_back(c);
  }
  out.append("\r\n");
  return out;
}

void ConvertLfOnlyFile(const std::string& path) {
  std::string bytes = ReadFileBytes(path);
  if (IsLfOnlyText(bytes)) ReplaceWithCrLfText(path, CrLfText(bytes));
}

}  // namespace tavilo
