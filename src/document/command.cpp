#include "document/command.h"

#include <filesystem>
#include <unordered_set>

#include "base/number_text.h"
#include "strings/string_table.h"
#include "tree/structure_tree.h"

namespace tavilo {

unsigned ChangesOf(EditKind kind) {
  switch (kind) {
    case EditKind::Tick: return kTicksChanged;
    case EditKind::Open: return kContentChanged | kTicksChanged | kFileChanged;
    case EditKind::EditPoint:
    case EditKind::AddPoint:
    case EditKind::DeletePoints:
    case EditKind::PastePoints:
      // Ticks too: undone, a step puts back the ticks of its time.
      return kPointsChanged | kTicksChanged;
    default: return kContentChanged | kTicksChanged;
  }
}

namespace {

size_t StateBytes(const AirfoilSnapshot& shape) {
  size_t bytes = sizeof shape + shape.name.capacity();
  for (const AirfoilSnapshot::SetState& set : shape.sets) {
    bytes += sizeof set + set.name.capacity() + set.origin.capacity() + set.description2.capacity();
    for (const AirfoilSnapshot::PolarState& polar : set.polars) bytes += sizeof polar + polar.name.capacity();
  }
  return bytes;
}

std::unordered_set<const Polar*> PolarsOf(const AirfoilSnapshot& shape) {
  std::unordered_set<const Polar*> polars;
  for (const AirfoilSnapshot::SetState& set : shape.sets)
    for (const AirfoilSnapshot::PolarState& polar : set.polars) polars.insert(polar.polar.get());
  return polars;
}

std::string FileNameOnly(const std::string& path) { return std::filesystem::path(path).filename().string(); }

}  // namespace

size_t Command::Bytes() const {
  size_t bytes = sizeof *this + StateBytes(before_.shape) + StateBytes(after_.shape);
  for (const State* state : {&before_, &after_})
    for (const PointsState& points : state->points) bytes += points.points.capacity() * sizeof(PolarPoint);
  const std::unordered_set<const Polar*> kept = PolarsOf(after_.shape);
  for (const Polar* polar : PolarsOf(before_.shape)) {
    if (polar != nullptr && !kept.contains(polar)) bytes += sizeof *polar + polar->Points().size_bytes();
  }
  return bytes;
}

std::string StepName(const Command& command, Language language) {
  // The text of each kind; "%1" takes the files read or the node acted on.
  static constexpr std::pair<EditKind, Text> kTexts[] = {
      {EditKind::Open, Text::StepOpen},
      {EditKind::New, Text::StepNew},
      {EditKind::Import, Text::StepImport},
      {EditKind::Paste, Text::StepPastePolar},
      {EditKind::Delete, Text::StepDelete},
      {EditKind::Rename, Text::StepRename},
      {EditKind::PolarProperties, Text::StepProperties},
      {EditKind::SortReynolds, Text::StepSortOnReynolds},
      {EditKind::SortMach, Text::StepSortOnMach},
      {EditKind::Envelope, Text::StepEnvelope},
      {EditKind::XfoilRun, Text::RunXfoilTitle},
      {EditKind::EditPoint, Text::StepEditPoint},
      {EditKind::AddPoint, Text::StepAddPoint},
      {EditKind::DeletePoints, Text::StepDeletePoints},
      {EditKind::PastePoints, Text::StepPastePoints},
  };
  const std::vector<std::string>& files = command.Files();
  std::string argument = NodeName(command.Subject(), language);
  if (files.size() == 1) argument = FileNameOnly(files.front());
  if (files.size() > 1)
    argument = FormatResString(Text::FileCount, language, {FormatNumber(static_cast<double>(files.size()), "0")});
  for (const auto& [kind, id] : kTexts) {
    if (kind == command.Kind()) return FormatResString(id, language, {argument});
  }
  return {};
}

}  // namespace tavilo
