#pragma once
// Every user action runs inside one guard: an error from the core becomes a
// "Tavilo: Error" box, and the window goes on working.

#include <exception>
#include <new>
#include <string>

#include "base/errors.h"
#include "strings/string_table.h"
#include "ui/user_interface.h"

namespace tavilo {

// Runs `action`; a tavilo::RuntimeError or std::exception is shown with its
// message and swallowed. Returns false when the action failed.
template <typename Action>
bool RunGuarded(UserInterface& ui, Action&& action) {
  std::string message;
  try {
    action();
    return true;
  } catch (const std::exception& error) {
    message = ErrorText(error, ui.Language());
  }
  // Shown outside the handlers so that a failing message box cannot throw
  // from inside a catch block; any busy pointer of the action is lifted.
  ui.SetBusy(false);
  ui.ShowMessage(message, ErrorTitle(ui.Language()), MessageIcon::Critical);
  return false;
}

}  // namespace tavilo
