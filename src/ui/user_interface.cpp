#include "ui/user_interface.h"

namespace tavilo {

std::vector<std::string> UserInterface::ChooseFiles(const FileDialogRequest& request) {
  std::string file = ChooseFile(request);
  if (file.empty()) return {};
  return {std::move(file)};
}

}  // namespace tavilo
