#include "ui/user_interface.h"

#include "strings/string_table.h"

namespace tavilo {

void ReportError(UserInterface& ui, int id) {
  ui.ShowMessage(GetResString(id, ui.Language()), ErrorTitle(ui.Language()), MessageIcon::Critical);
}

}  // namespace tavilo
