#include "strings/captions.h"

#include <iterator>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "strings/product.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

using enum CaptionTarget;

constexpr Caption kMainWindow[] = {
    {"", -1, Text::ProgramName, WindowTitle},
    {"Label3", -1, Text::AlfaRange, ControlText},
    {"Label2", -1, Text::CdRange, ControlText},
    {"Label1", -1, Text::ClRange, ControlText},
    {"Bezeichnung1", 0, Text::StructureAndPrintSelection, ControlText},
    {"Bezeichnung1", 1, Text::Drives, ControlText},
    {"Bezeichnung1", 2, Text::Directories, ControlText},
    {"Bezeichnung1", 3, Text::Files, ControlText},
    {"mnuFile", -1, Text::FileMenu, ControlText},
    {"mnuFileImport", -1, Text::Import, ControlText},
    {"mnuFileExport", -1, Text::Export, ControlText},
    {"mnuFilePrint", -1, Text::Print, ControlText},
    {"mnuPrintOptions", -1, Text::PrintOptions, ControlText},
    {"mnuSeparator", -1, Text::FileMenuSeparator, ControlText},
    {"mnuFileExit", -1, Text::Exit, ControlText},
    {"mnuFileRecent", -1, Text::RecentFiles, ControlText},
    {"mnuMainEdit", -1, Text::EditMenu, ControlText},
    {"mnuTools", -1, Text::ToolsMenu, ControlText},
    {"mnuToolsEnvelope", -1, Text::Envelope, ControlText},
    {"mnuToolsApproximate", -1, Text::Approximate, ControlText},
    {"mnuLanguage", -1, Text::LanguageMenu, ControlText},
    {"mnuEditPolar", -1, Text::PolarMenu, ControlText},
    {"mnuEditPolarDelete", -1, Text::PolarMenuDelete, ControlText},
    {"mnuEditCopy", -1, Text::PolarMenuCopy, ControlText},
    {"mnuEditPolarPaste", -1, Text::PolarMenuPaste, ControlText},
    {"mnuEditPolarSeparator", -1, Text::PolarMenuSeparator, ControlText},
    {"mnuEditPolarName", -1, Text::PolarMenuName, ControlText},
    {"mnuEditPolarPoints", -1, Text::PointsMenu, ControlText},
    {"mnuEdit", -1, Text::NodeMenu, ControlText},
    {"mnuEditDelete", -1, Text::NodeMenuDelete, ControlText},
    {"mnuEditName", -1, Text::NodeMenuName, ControlText},
    {"mnuToolsSortRe", -1, Text::SortOnReynolds, ControlText},
    {"mnuToolsSortMach", -1, Text::SortOnMach, ControlText},
    {"Toolbar1", 0, Text::DeleteAllPolarsTip, ToolTip},
    {"Toolbar1", 1, Text::AddPolarTip, ToolTip},
    {"Toolbar1", 2, Text::ExportActivePolarsTip, ToolTip},
    {"Toolbar1", 3, Text::PrintActivePolarsTip, ToolTip},
};

constexpr Caption kAirfoilSelect[] = {
    {"", -1, Text::AirfoilSelectTitle, WindowTitle},  // "Form1" in both languages, as it always was
    {"btnOkay", -1, Text::Ok, ControlText},
    {"Label2", -1, Text::SelectOneAirfoil, ControlText},
    {"Label1", -1, Text::SeveralAirfoilsInFile, ControlText},
};

constexpr Caption kAbout[] = {
    {"", -1, Text::AboutTitle, WindowTitle},
    {"btnOkay", -1, Text::AboutOk, ControlText},
};

constexpr Caption kOptions[] = {
    {"", -1, Text::OptionsTitle, WindowTitle},
    {"Frame1", -1, Text::PlotOptions, ControlText},
    {"chkLegend", -1, Text::Legend, ControlText},
    {"optLegend", 0, Text::LegendLowerRight, ControlText},
    {"optLegend", 1, Text::LegendUpperLeft, ControlText},
    {"chkGrid", -1, Text::Gridlines, ControlText},
    {"btnOkay", -1, Text::OptionsOk, ControlText},
};

// The polar name field borrows the "Name" of the edit menus: the table has
// no label text of its own for it.
constexpr Caption kPolarProps[] = {
    {"lblName", -1, Text::PolarMenuName, ControlText}, {"btnOK", -1, Text::Ok, ControlText},
    {"btnCancel", -1, Text::Cancel, ControlText},      {"lblReNo", -1, Text::ReynoldsNumber, ControlText},
    {"lblMachNo", -1, Text::MachNumber, ControlText},
};

constexpr Caption kApprox[] = {
    {"", -1, Text::ApproxTitle, WindowTitle},
    {"Command1", -1, Text::ApproxCopy, ControlText},
    {"btnShow", -1, Text::ApproxShow, ControlText},
    {"lblValue", 0, Text::CdTiltLabel, ControlText},
    {"lblValue", 1, Text::StallCdAtClMaxLabel, ControlText},
    {"lblValue", 2, Text::StallCdAtClMinLabel, ControlText},
    {"lblValue", 3, Text::CdShiftLabel, ControlText},
    {"lblValue", 4, Text::CdExponentLabel, ControlText},
    {"lblValue", 5, Text::CdMinLabel, ControlText},
    {"lblValue", 6, Text::StallRangeClMinLabel, ControlText},
    {"lblValue", 7, Text::StallRangeClMaxLabel, ControlText},
    {"lblValue", 8, Text::ClMaxLabel, ControlText},
    {"lblValue", 9, Text::ClMinLabel, ControlText},
    {"lblValue", 10, Text::AlfaZeroLabel, ControlText},
};

}  // namespace

std::span<const Caption> MainWindowCaptions() { return kMainWindow; }
std::span<const Caption> AirfoilSelectCaptions() { return kAirfoilSelect; }
std::span<const Caption> AboutCaptions() { return kAbout; }
std::span<const Caption> OptionsCaptions() { return kOptions; }
std::span<const Caption> ApproxCaptions() { return kApprox; }
std::span<const Caption> PolarPropsCaptions() { return kPolarProps; }

std::string AboutText(Language language, std::span<const Text> readLines, std::span<const Text> writtenLines) {
  const std::string version = FormatNumber(TAVILO_VERSION_MAJOR, "0") + "." + FormatNumber(TAVILO_VERSION_MINOR, "0") +
                              "." + FormatNumber(TAVILO_VERSION_PATCH, "0");
  // Extension and description are separated by a tab so the descriptions
  // line up.
  std::vector<std::string> lines = {"Version " + version, GetResString(Text::AboutProgramCan, language),
                                    GetResString(Text::AboutReads, language)};
  for (Text id : readLines) lines.push_back(GetResString(id, language));
  lines.push_back(GetResString(Text::AboutRenameFiles, language));
  lines.push_back(GetResString(Text::AboutExports, language));
  for (Text id : writtenLines) lines.push_back(GetResString(id, language));
  const std::string graphs[] = {
      GetResString(Text::AboutGraphs, language),
      "   Lift Coefficient vs. Drag Coefficient",
      "   Lift Coefficient vs. Angle of Attack",
      "   Moment Coefficient vs. Angle of Attack",
      "   Lift Coefficient vs. Transition Location, upper Surface (T.U.)",
      "   Lift Coefficient vs. Transition Location, lower Surface (T.L.)",
      "With contributions from:",
      "   the Tavilo authors and everyone who sent polar files and bug reports",
      std::string(kCopyrightNotice),
  };
  lines.insert(lines.end(), std::begin(graphs), std::end(graphs));
  std::string text;
  for (const std::string& line : lines) {
    if (!text.empty()) text += "\r\n";
    text += line;
  }
  return text;
}

}  // namespace tavilo
