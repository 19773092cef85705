#include "formats/table.h"

#include <map>
#include <utility>

#include "base/errors.h"
#include "formats/file_text.h"
#include "formats/line_reader.h"
#include "formats/pol.h"
#include "formats/table_fields.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

constexpr int kMaxPoints = 32767;

size_t FieldOf(Column column) { return static_cast<size_t>(column); }

// What tells one polar of a block from the next: the text of the set and
// polar columns (views into the file) and the flow numbers.
struct RowKey {
  std::string_view setNo, set, polarNo, polar;
  double reynolds = 0.0;
  double mach = 0.0;
  bool operator==(const RowKey&) const = default;
};

std::string_view FileStem(std::string_view fileName) {
  const size_t slash = fileName.find_last_of("/\\");
  if (slash != std::string_view::npos) fileName.remove_prefix(slash + 1);
  const size_t dot = fileName.rfind('.');
  return dot == std::string_view::npos || dot == 0 ? fileName : fileName.substr(0, dot);
}

bool HasPoint(const Airfoil& airfoil) {
  for (const ConfigurationPtr& set : airfoil.Configurations())
    for (const PolarPtr& polar : set->Polars())
      if (polar && polar->PointCount() > 0) return true;
  return false;
}

void Empty(Airfoil& airfoil) {
  airfoil.Delete();
  airfoil.Name.clear();
}

class TableReader {
 public:
  TableReader(Airfoil& airfoil, std::string_view fileName) : airfoil_(airfoil), stem_(FileStem(fileName)) {}

  ReadReport Read(std::string_view bytes);

 private:
  bool ReadDataLine(std::string_view line, PolarPoint& point, RowKey& key) const;
  void AddRow(const PolarPoint& point, const RowKey& key);
  void StartPolar(const RowKey& key);
  void FlushPoints();
  Configuration& SetOf(const RowKey& key);
  void NoteProse(std::string_view line);
  bool Has(Column column) const { return header_.fieldOf[FieldOf(column)] >= 0; }

  Airfoil& airfoil_;
  std::string_view stem_;
  std::string_view airfoilName_;
  TableHeader header_;
  TableHeader candidate_;
  bool haveHeader_ = false;
  bool inBlock_ = false;
  double reynoldsAbove_ = 0.0, machAbove_ = 0.0;
  double blockReynolds_ = 0.0, blockMach_ = 0.0;
  PolarPtr polar_;
  RowKey polarKey_;
  // The points of polar_ not yet handed to it; see FlushPoints.
  std::vector<PolarPoint> pending_;
  std::map<std::pair<std::string, std::string>, ConfigurationPtr> sets_;
  ReadReport report_;
  int lineNumber_ = 0;
};

ReadReport TableReader::Read(std::string_view bytes) {
  airfoil_.ResetConfigurations(0);
  LineReader reader(bytes);
  std::string_view line;
  try {
    while (reader.Next(line)) {
      ++lineNumber_;
      // Blank lines and comments end nothing: spreadsheets and hand-kept
      // tables put both between rows that belong together.
      if (IsBlankLine(line)) continue;
      if (IsCommentLine(line)) {
        NoteProse(line);
        continue;
      }
      PolarPoint point;
      RowKey key;
      if (haveHeader_ && ReadDataLine(line, point, key)) {
        AddRow(point, key);
        continue;
      }
      inBlock_ = false;
      FlushPoints();
      if (ReadHeader(line, candidate_)) {
        std::swap(header_, candidate_);
        haveHeader_ = true;
      } else {
        NoteProse(line);
      }
    }
  } catch (const OverflowError& error) {
    // Past 32767 sets or polars of a set: what was read stays.
    report_.stoppedEarly = true;
    report_.diagnostics.push_back({Severity::Error, MessageText(error), error.Detail(), false, {}, lineNumber_});
  }
  FlushPoints();
  airfoil_.Name = NameFromFileBytes(airfoilName_.empty() ? stem_ : airfoilName_);
  return std::move(report_);
}

// Only the first column of each kind counts; a header naming "cl" twice
// keeps the first.
bool TableReader::ReadDataLine(std::string_view line, PolarPoint& point, RowKey& key) const {
  const bool decimalComma = header_.separator == Separator::Semicolon || header_.separator == Separator::Tab;
  FieldCursor cursor(line, header_.separator);
  const size_t columnCount = header_.columns.size();
  size_t index = 0;
  int numbers = 0;
  bool hasReynolds = false, hasMach = false;
  std::string_view field;
  for (; index < columnCount && cursor.Next(field); ++index) {
    const Column column = header_.columns[index];
    if (column == Column::None || header_.fieldOf[FieldOf(column)] != static_cast<int>(index)) continue;
    switch (column) {
      case Column::SetNo: key.setNo = field; continue;
      case Column::Set: key.set = field; continue;
      case Column::PolarNo: key.polarNo = field; continue;
      case Column::Polar: key.polar = field; continue;
      default: break;
    }
    double value = 0.0;
    const FieldValue read = ReadFieldNumber(field, decimalComma, value);
    if (read == FieldValue::Text) return false;
    if (read == FieldValue::Empty) continue;
    ++numbers;
    switch (column) {
      case Column::Alfa: point.Alfa = value; break;
      case Column::Cl: point.Cl = value; break;
      case Column::Cd: point.Cd = value; break;
      case Column::Cm: point.Cm = value; break;
      case Column::TopXtr: point.TU = value; break;
      case Column::BotXtr: point.TL = value; break;
      case Column::Re:
        key.reynolds = value;
        hasReynolds = true;
        break;
      case Column::Mach:
        key.mach = value;
        hasMach = true;
        break;
      default: break;
    }
  }
  // A short line may leave out optional columns, not the angle or the lift.
  if (static_cast<int>(index) <= header_.fieldOf[FieldOf(Column::Alfa)] ||
      static_cast<int>(index) <= header_.fieldOf[FieldOf(Column::Cl)])
    return false;
  if (!hasReynolds) key.reynolds = inBlock_ ? blockReynolds_ : reynoldsAbove_;
  if (!hasMach) key.mach = inBlock_ ? blockMach_ : machAbove_;
  return numbers > 0;
}

void TableReader::AddRow(const PolarPoint& point, const RowKey& key) {
  if (!inBlock_) {
    inBlock_ = true;
    blockReynolds_ = reynoldsAbove_;
    blockMach_ = machAbove_;
    FlushPoints();
    polar_ = nullptr;
  }
  if (!polar_ || !(key == polarKey_)) {
    StartPolar(key);
  } else if (pending_.size() >= kMaxPoints) {
    report_.diagnostics.push_back({Severity::Warning, Text::TablePolarSplit, {}, false, {}, lineNumber_});
    StartPolar(key);
  }
  pending_.push_back(point);
}

// A polar's points wait in one buffer, reused from polar to polar, and go
// to the polar in one piece when it ends: the polar's own storage is then
// filled once, not regrown and copied while a block of thousands of lines
// is read.
void TableReader::FlushPoints() {
  if (!polar_ || pending_.empty()) return;
  polar_->ReservePoints(static_cast<int>(pending_.size()));
  for (const PolarPoint& point : pending_) polar_->AddPoint(point);
  pending_.clear();
}

void TableReader::StartPolar(const RowKey& key) {
  FlushPoints();
  auto polar = std::make_shared<Polar>();
  if (Has(Column::Polar)) polar->Name = NameFromFileBytes(UnquotedText(key.polar));
  polar->ReynoldsNumber = key.reynolds;
  polar->MachNumber = key.mach;
  polar->Selected = true;
  SetOf(key).AddPolar(polar);
  polar_ = std::move(polar);
  polarKey_ = key;
}

// Sets are told apart by number and name together, so that two sets of one
// name stay two, as they were written.
Configuration& TableReader::SetOf(const RowKey& key) {
  std::pair<std::string, std::string> setKey{UnquotedText(key.setNo), UnquotedText(key.set)};
  auto found = sets_.find(setKey);
  if (found != sets_.end()) return *found->second;
  auto set = std::make_shared<Configuration>();
  set->Name = Has(Column::Set) ? NameFromFileBytes(setKey.second) : NameFromFileBytes(stem_);
  airfoil_.AddConfiguration(set);
  sets_.emplace(std::move(setKey), set);
  return *set;
}

void TableReader::NoteProse(std::string_view line) {
  bool hasReynolds = false, hasMach = false;
  ReadFlowNumbers(line, reynoldsAbove_, hasReynolds, machAbove_, hasMach);
  if (airfoilName_.empty()) airfoilName_ = AirfoilNameOf(line);
}

ReadReport ReadDragText(Airfoil& airfoil, std::string_view bytes, const AirfoilChoice& choose, bool& choseNone) {
  AirfoilChoice noting;
  if (choose) {
    noting = [&](const std::vector<std::string>& entries) {
      const int answer = choose(entries);
      choseNone = answer >= static_cast<int>(entries.size()) - 1;
      return answer;
    };
  }
  try {
    return ReadFromDRGText(airfoil, bytes, noting);
  } catch (const OverflowError& error) {
    ReadReport report;
    report.stoppedEarly = true;
    report.diagnostics.push_back({Severity::Error, MessageText(error), error.Detail(), false, {}, 0});
    return report;
  }
}

}  // namespace

ReadReport ReadFromTableText(Airfoil& airfoil, std::string_view bytes, std::string_view fileName,
                             const AirfoilChoice& choose) {
  ReadReport report;
  bool tableRead = true;
  if (bytes.find("Calculated polar for") != std::string_view::npos) {
    report = ReadFromPOLText(airfoil, bytes);
    tableRead = false;
  } else if (!DrgAirfoilNames(bytes).empty()) {
    bool choseNone = false;
    report = ReadDragText(airfoil, bytes, choose, choseNone);
    // A table may well begin "Airfoil: E387" too; when the drag reader finds
    // nothing under that heading the table rules get their turn.
    tableRead = !choseNone && !HasPoint(airfoil);
    if (tableRead) {
      Empty(airfoil);
      report = {};
    }
  }
  if (tableRead) report = TableReader(airfoil, fileName).Read(bytes);
  if (!HasPoint(airfoil)) {
    Empty(airfoil);
    report.diagnostics.push_back({Severity::Error, Text::NoPolars, std::string(fileName), false, {}, 0});
  }
  return report;
}

ReadReport ReadFromTable(Airfoil& airfoil, const std::string& path, const AirfoilChoice& choose) {
  return ReadFromTableText(airfoil, ReadFileBytes(path), path, choose).InFile(path);
}

}  // namespace tavilo
