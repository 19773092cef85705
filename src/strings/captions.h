#pragma once
// Which string each caption of each window takes, in the order a language
// switch assigns them. The windows only apply these lists.

#include <span>
#include <string>
#include <string_view>

#include "strings/language.h"
#include "strings/text_ids.h"

namespace tavilo {

enum class CaptionTarget {
  WindowTitle,  // the window's own title; `element` is empty
  ControlText,  // the caption of a label, menu entry, button or frame
  ToolTip,      // the tool tip of a toolbar button
};

struct Caption {
  std::string_view element;  // object name of the control
  int item;                  // item of a control array or toolbar, -1 for none
  Text id;
  CaptionTarget target;
};

// Main window `PEFForm` (the language items mnuLangEnglish and mnuLangDeutsch
// keep fixed captions and are not listed). The About window follows.
std::span<const Caption> MainWindowCaptions();
std::span<const Caption> AirfoilSelectCaptions();  // frmAirfoilSelect
std::span<const Caption> AboutCaptions();          // frmAbout
std::span<const Caption> OptionsCaptions();        // frmOptions
std::span<const Caption> ApproxCaptions();         // frmApprox
std::span<const Caption> PolarPropsCaptions();     // frmPolarProps (no title)

// Fixed captions of the two language menu items, the same in both languages.
inline constexpr std::string_view kEnglishMenuCaption = "English";
inline constexpr std::string_view kGermanMenuCaption = "Deutsch";

// The About text in `language`, lines joined by CR LF, with the string
// table's lines `readLines` of the formats read and `writtenLines` of those
// written (the format table's, fileio/formats_table.h).
std::string AboutText(Language language, std::span<const Text> readLines, std::span<const Text> writtenLines);

}  // namespace tavilo
