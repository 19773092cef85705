#include "document/command.h"

#include <filesystem>
#include <unordered_set>

#include "formats/number_text.h"
#include "strings/string_table.h"
#include "tree/structure_tree.h"

namespace tavilo {

unsigned ChangesOf(EditKind kind) {
  switch (kind) {
    case EditKind::Tick:
      return kTicksChanged;
    case EditKind::Open:
    case EditKind::Import:
      return kContentChanged | kTicksChanged | kFileChanged;
    case EditKind::EditPoint:
    case EditKind::AddPoint:
    case EditKind::DeletePoints:
    case EditKind::PastePoints:
      // Ticks too: undone, a step puts back the ticks of its time.
      return kPointsChanged | kTicksChanged;
    default:
      return kContentChanged | kTicksChanged;
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

std::string StepName(const Command& command, int language) {
  const std::string subject = NodeName(command.Subject(), language);
  const std::vector<std::string>& files = command.Files();
  const std::string fileText = files.size() == 1 ? FileNameOnly(files.front())
                                                 : FormatResString(229, language, {FormatNumber(static_cast<double>(files.size()), "0")});
  switch (command.Kind()) {
    case EditKind::Open:
      return FormatResString(215, language, {fileText});
    case EditKind::New:
      return GetResString(216, language);
    case EditKind::Import:
      return FormatResString(217, language, {fileText});
    case EditKind::Paste:
      return GetResString(218, language);
    case EditKind::Delete:
      return FormatResString(219, language, {subject});
    case EditKind::Rename:
      return FormatResString(220, language, {subject});
    case EditKind::PolarProperties:
      return FormatResString(221, language, {subject});
    case EditKind::SortReynolds:
      return GetResString(222, language);
    case EditKind::SortMach:
      return GetResString(223, language);
    case EditKind::Envelope:
      return GetResString(224, language);
    case EditKind::EditPoint:
      return FormatResString(225, language, {subject});
    case EditKind::AddPoint:
      return FormatResString(226, language, {subject});
    case EditKind::DeletePoints:
      return FormatResString(227, language, {subject});
    case EditKind::PastePoints:
      return FormatResString(228, language, {subject});
    case EditKind::Tick:
      break;
  }
  return {};
}

}  // namespace tavilo
