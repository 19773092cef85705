#include "document_controller.h"

#include <filesystem>

#include "fileio/transfer.h"
#include "strings/string_table.h"

namespace tavilo {

void DocumentController::OpenFile(const std::string& path) {
  Run([&](Document& document) { document.Open(path, ui_); });
}

void DocumentController::NewAirfoil() {
  Run([](Document& document) { document.New(); });
}

void DocumentController::Import() {
  Run([&](Document& document) { document.Import(ui_); });
}

void DocumentController::ImportFiles(const std::vector<std::string>& paths) {
  Run([&](Document& document) { document.ImportFiles(paths, ui_); });
}

void DocumentController::Export() {
  Run([&](Document& document) { ExportFile(document.Current(), ui_); });
}

void DocumentController::BatchConvert() {
  Run([&](Document&) { tavilo::BatchConvert(ui_); });
}

void DocumentController::Envelope() {
  // Written into the program's working directory, where it always went.
  const std::string path = std::filesystem::absolute("Envelope.pef").string();
  bool written = false;
  Run([&](Document& document) {
    const CommandPtr command = document.Envelope(path);
    written = command && command->Changed();
  });
  if (written) ui_.FlashStatusText(FormatResString(Text::EnvelopeWritten, ui_.Language(), {path}));
}

void DocumentController::SortReynolds() {
  Run([](Document& document) { document.Sort(false); });
}

void DocumentController::SortMach() {
  Run([](Document& document) { document.Sort(true); });
}

void DocumentController::Undo() {
  Run([](Document& document) { document.Undo(); });
}

void DocumentController::Redo() {
  Run([](Document& document) { document.Redo(); });
}

}  // namespace tavilo
