#include "document_controller.h"

#include "fileio/transfer.h"

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

void DocumentController::Export() {
  Run([&](Document& document) { ExportFile(document.Current(), ui_); });
}

void DocumentController::BatchConvert() {
  Run([&](Document&) { tavilo::BatchConvert(ui_); });
}

void DocumentController::Envelope() {
  // Written beside the program's working directory, where it always went.
  Run([](Document& document) { document.Envelope("Envelope.pef"); });
}

void DocumentController::SortReynolds() {
  Run([](Document& document) { document.Sort(false); });
}

void DocumentController::SortMach() {
  Run([](Document& document) { document.Sort(true); });
}

}  // namespace tavilo
