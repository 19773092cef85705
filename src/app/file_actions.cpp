#include "file_actions.h"

#include <algorithm>
#include <cctype>

#include "formats/drg.h"
#include "formats/pef.h"
#include "formats/pol.h"
#include "formats/xml.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

std::string LowerTail(const std::string& name) {
  std::string tail = name.size() >= 4 ? name.substr(name.size() - 4) : name;
  std::transform(tail.begin(), tail.end(), tail.begin(), [](unsigned char c) { return std::tolower(c); });
  return tail;
}

}  // namespace

AirfoilPtr LoadFile(const std::string& fileName, UserInterface& ui) {
  ui.SetBusy(true);
  ui.SetStatusText(GetResString(74));
  ui.SetWindowTitle("Tavilo - " + fileName);
  auto airfoil = std::make_shared<Airfoil>();
  try {
    const std::string tail = LowerTail(fileName);
    if (tail == ".pol" || fileName.find("polar.") != std::string::npos) {
      ReadFromPOL(*airfoil, fileName);
    } else if (tail == ".pef") {
      ReadFromPEF(*airfoil, fileName, ui);
    } else if (tail == ".xml") {
      ReadFromXML(*airfoil, fileName, ui);
    } else if (tail == ".drg") {
      ReadFromDRG(*airfoil, fileName, ui);
    } else {
      ui.SetBusy(false);
      ReportError(ui, 73);
      ui.SetBusy(true);
    }
  } catch (...) {
    ui.SetStatusText(GetResString(3));
    ui.SetBusy(false);
    throw;
  }
  ui.SetAirfoilName(airfoil->Name);
  ui.SetStatusText(GetResString(3));
  ui.SetBusy(false);
  return airfoil;
}

void ImportFile(Airfoil& current, UserInterface& ui) {
  FileDialogRequest request{FileDialogKind::Open, GetResString(61), GetResString(62), false};
  const std::string name = ui.ChooseFile(request);
  if (name.empty()) return;
  AirfoilPtr imported = LoadFile(name, ui);
  if (current.ConfigCount() == 0) current.Name = imported->Name;
  for (int i = 1; i <= imported->ConfigCount(); ++i) current.AddConfiguration(imported->Configuration(i));
}

void ExportFile(const Airfoil& current, UserInterface& ui) {
  FileDialogRequest request{FileDialogKind::Save, "Export " + GetResString(60), GetResString(82), true};
  const std::string name = ui.ChooseFile(request);
  if (name.empty()) return;
  if (LowerTail(name) == ".xml") {
    WriteToXML(current, name);
  } else if (LowerTail(name) == ".pef") {
    WriteToPEF(current, name);
  } else if (LowerTail(name) == ".pol") {
    WriteToPOL(current, name);
  } else {
    ui.ShowMessage(GetResString(73) + "\r\n'" + name + "'", ErrorTitle(), MessageIcon::Critical);
  }
}

void BatchConvert(UserInterface& ui) {
  ui.ShowMessage("Batch conversion is not available yet.", GetResString(1), MessageIcon::Information);
}

}  // namespace tavilo
