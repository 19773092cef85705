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
    {"", -1, 1, WindowTitle},
    {"Label3", -1, 4, Text},
    {"Label2", -1, 5, Text},
    {"Label1", -1, 6, Text},
    {"Bezeichnung1", 0, 8, Text},
    {"Bezeichnung1", 1, 9, Text},
    {"Bezeichnung1", 2, 10, Text},
    {"Bezeichnung1", 3, 11, Text},
    {"mnuFile", -1, 12, Text},
    {"mnuFileImport", -1, 13, Text},
    {"mnuFileExport", -1, 14, Text},
    {"mnuFilePrint", -1, 15, Text},
    {"mnuPrintOptions", -1, 16, Text},
    {"mnuSeparator", -1, 17, Text},
    {"mnuFileExit", -1, 18, Text},
    {"mnuFileRecent", -1, 236, Text},
    {"mnuMainEdit", -1, 210, Text},
    {"mnuTools", -1, 19, Text},
    {"mnuToolsEnvelope", -1, 20, Text},
    {"mnuToolsApproximate", -1, 21, Text},
    {"mnuLanguage", -1, 59, Text},
    {"mnuEditPolar", -1, 23, Text},
    {"mnuEditPolarDelete", -1, 24, Text},
    {"mnuEditCopy", -1, 25, Text},
    {"mnuEditPolarPaste", -1, 26, Text},
    {"mnuEditPolarSeparator", -1, 27, Text},
    {"mnuEditPolarName", -1, 28, Text},
    {"mnuEditPolarPoints", -1, 230, Text},
    {"mnuEdit", -1, 29, Text},
    {"mnuEditDelete", -1, 30, Text},
    {"mnuEditName", -1, 31, Text},
    {"mnuToolsSortRe", -1, 91, Text},
    {"mnuToolsSortMach", -1, 92, Text},
    {"Toolbar1", 0, 84, ToolTip},
    {"Toolbar1", 1, 85, ToolTip},
    {"Toolbar1", 2, 86, ToolTip},
    {"Toolbar1", 3, 87, ToolTip},
};

constexpr Caption kAirfoilSelect[] = {
    {"", -1, 32, WindowTitle},  // "Form1" in both languages, as it always was
    {"btnOkay", -1, 33, Text},
    {"Label2", -1, 34, Text},
    {"Label1", -1, 35, Text},
};

constexpr Caption kAbout[] = {
    {"", -1, 36, WindowTitle},
    {"btnOkay", -1, 37, Text},
};

constexpr Caption kOptions[] = {
    {"", -1, 52, WindowTitle},
    {"Frame1", -1, 53, Text},
    {"chkLegend", -1, 54, Text},
    {"optLegend", 0, 55, Text},
    {"optLegend", 1, 56, Text},
    {"chkGrid", -1, 57, Text},
    {"btnOkay", -1, 58, Text},
};

// The polar name field borrows the "Name" of the edit menus: the table has
// no label text of its own for it.
constexpr Caption kPolarProps[] = {
    {"lblName", -1, 28, Text},   {"btnOK", -1, 33, Text},     {"btnCancel", -1, 88, Text},
    {"lblReNo", -1, 89, Text},   {"lblMachNo", -1, 90, Text},
};

constexpr Caption kApprox[] = {
    {"", -1, 38, WindowTitle},  {"Command1", -1, 39, Text}, {"btnShow", -1, 40, Text},
    {"lblValue", 0, 41, Text},  {"lblValue", 1, 42, Text},  {"lblValue", 2, 43, Text},
    {"lblValue", 3, 44, Text},  {"lblValue", 4, 45, Text},  {"lblValue", 5, 46, Text},
    {"lblValue", 6, 47, Text},  {"lblValue", 7, 48, Text},  {"lblValue", 8, 49, Text},
    {"lblValue", 9, 50, Text},  {"lblValue", 10, 51, Text},
};

}  // namespace

std::span<const Caption> MainWindowCaptions() { return kMainWindow; }
std::span<const Caption> AirfoilSelectCaptions() { return kAirfoilSelect; }
std::span<const Caption> AboutCaptions() { return kAbout; }
std::span<const Caption> OptionsCaptions() { return kOptions; }
std::span<const Caption> ApproxCaptions() { return kApprox; }
std::span<const Caption> PolarPropsCaptions() { return kPolarProps; }

std::string AboutText(int language, std::span<const int> readLines, std::span<const int> writtenLines) {
  const std::string version = FormatNumber(TAVILO_VERSION_MAJOR, "0") + "." +
                              FormatNumber(TAVILO_VERSION_MINOR, "0") + "." +
                              FormatNumber(TAVILO_VERSION_PATCH, "0");
  // Extension and description are separated by a tab so the descriptions
  // line up.
  std::vector<std::string> lines = {"Version " + version, GetResString(69, language), GetResString(70, language)};
  for (int id : readLines) lines.push_back(GetResString(id, language));
  lines.push_back(GetResString(71, language));
  lines.push_back(GetResString(78, language));
  for (int id : writtenLines) lines.push_back(GetResString(id, language));
  const std::string graphs[] = {
      GetResString(79, language),
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
