#include "document_controller.h"

#include "error_guard.h"
#include "fileio/load.h"
#include "fileio/transfer.h"
#include "tools/envelope.h"
#include "tree/structure_tree.h"

namespace tavilo {

DocumentController::DocumentController(UserInterface& ui, DocumentView& view)
    : ui_(ui), view_(view), current_(std::make_shared<Airfoil>()) {}

void DocumentController::ShowChanged() {
  view_.UpdateTreeView();
  view_.RefreshPlots();
  view_.EnableItems(false);
}

void DocumentController::OpenFile(const std::string& path) {
  RunGuarded(ui_, [&] {
    AirfoilPtr loaded = LoadFile(path, ui_);
    if (loaded) current_ = std::move(loaded);
    ShowChanged();
  });
}

void DocumentController::NewAirfoil() {
  RunGuarded(ui_, [&] {
    const int count = current_->ConfigCount();
    for (int i = 0; i < count; ++i) current_->DeleteConfiguration(1);
    ShowChanged();
  });
}

void DocumentController::Import() {
  RunGuarded(ui_, [&] {
    if (ImportFile(*current_, ui_)) ShowChanged();
  });
}

void DocumentController::Export() {
  RunGuarded(ui_, [&] { ExportFile(*current_, ui_); });
}

void DocumentController::BatchConvert() {
  RunGuarded(ui_, [&] { tavilo::BatchConvert(ui_); });
}

void DocumentController::Envelope() {
  RunGuarded(ui_, [&] {
    // Written beside the program's working directory, where it always went.
    if (MakeEnvelope(*current_, "Envelope.pef") == nullptr) return;
    ShowChanged();
  });
}

void DocumentController::SortReynolds() { Sort(false); }

void DocumentController::SortMach() { Sort(true); }

void DocumentController::Sort(bool byMach) {
  RunGuarded(ui_, [&] {
    SortAllSets(*current_, byMach);
    view_.UpdateTreeView();
    view_.RefreshPlots();
  });
}

}  // namespace tavilo
