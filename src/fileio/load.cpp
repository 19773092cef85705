#include "fileio/load.h"

#include "fileio/file_names.h"
#include "formats/drg.h"
#include "formats/pef.h"
#include "formats/pol.h"
#include "formats/xml.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

// Readers that are not written yet: the file loads as an empty airfoil, and
// the user learns why.
void ReportNotReadable(UserInterface& ui, std::string_view english, std::string_view german) {
  const std::string text = Language() == kGerman
                               ? std::string(german) + " können noch nicht gelesen werden."
                               : std::string(english) + " cannot be read yet.";
  ui.ShowMessage(text, ErrorTitle(), MessageIcon::Information);
}

// Restores the pointer and the status text however the reader ends.
class BusyScope {
 public:
  explicit BusyScope(UserInterface& ui) : ui_(ui) {
    ui_.SetBusy(true);
    ui_.SetStatusText(GetResString(74));
  }
  ~BusyScope() {
    ui_.SetStatusText(GetResString(3));
    ui_.SetBusy(false);
  }

 private:
  UserInterface& ui_;
};

}  // namespace

InputFormat InputFormatOf(std::string_view fileName) {
  const std::string extension = UpperExtension(fileName);
  if (extension == ".POL" || fileName.find("polar.") != std::string_view::npos) return InputFormat::Xfoil;
  if (extension == ".MWK") return InputFormat::WindTunnel;
  if (extension == ".PEF") return InputFormat::Pef;
  if (extension == ".XML") return InputFormat::Xml;
  if (extension == ".DRG") return InputFormat::Drag;
  if (extension == ".TXT") return InputFormat::EpplerOutput;
  return InputFormat::Unknown;
}

AirfoilPtr LoadFile(const std::string& fileName, UserInterface& ui) {
  BusyScope busy(ui);
  ui.SetWindowTitle("Tavilo - " + fileName);
  auto airfoil = std::make_shared<Airfoil>();
  switch (InputFormatOf(fileName)) {
    case InputFormat::Xfoil:
      ReadFromPOL(*airfoil, fileName);
      break;
    case InputFormat::WindTunnel:
      ReportNotReadable(ui, "Stuttgart model wind tunnel files (.mwk)", "Modellwindkanal-Dateien (.mwk)");
      break;
    case InputFormat::Pef:
      ReadFromPEF(*airfoil, fileName, ui);
      break;
    case InputFormat::Xml:
      ReadFromXML(*airfoil, fileName, ui);
      break;
    case InputFormat::Drag:
      ReadFromDRG(*airfoil, fileName, ui);
      break;
    case InputFormat::EpplerOutput:
      ReportNotReadable(ui, "Eppler output files (.txt)", "Eppler-Ausgabedateien (.txt)");
      break;
    case InputFormat::Unknown:
      ReportError(ui, 73);
      break;
  }
  ui.SetAirfoilName(airfoil->Name);
  return airfoil;
}

}  // namespace tavilo
