#include "ui/user_interface.h"

#include "strings/string_table.h"

namespace tavilo {

std::vector<std::string> UserInterface::ChooseFiles(const FileDialogRequest& request) {
  std::string file = ChooseFile(request);
  if (file.empty()) return {};
  return {std::move(file)};
}

void ReportError(UserInterface& ui, int id) {
  ui.ShowMessage(GetResString(id, ui.Language()), ErrorTitle(ui.Language()), MessageIcon::Critical);
}

}  // namespace tavilo
