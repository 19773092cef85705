#include "points_window.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QMenu>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>
#include <set>

#include "document/points_table.h"
#include "document_controller.h"
#include "points_model.h"
#include "qt_user_interface.h"
#include "strings/string_table.h"
#include "tree/structure_tree.h"
#include "undo_actions.h"

namespace tavilo {

namespace {

QString FromUtf8(const std::string& text) { return QString::fromStdString(text); }

// The text of the tree node `key` of `airfoil` ("Polar 2, Re= 200000").
std::string NodeText(const Airfoil& airfoil, const std::string& key, Language language) {
  for (const TreeNode& node : BuildTree(airfoil, language))
    if (node.key == key) return node.text;
  return {};
}

}  // namespace

PointsWindow::PointsWindow(PolarPtr polar, DocumentController& document, QtUserInterface& ui, UndoActions& undo,
                           QWidget* mainWindow)
    : QWidget(mainWindow, Qt::Window),
      document_(document),
      ui_(ui),
      model_(new PointsModel(std::move(polar), document, ui, this)),
      view_(new QSortFilterProxyModel(this)),
      table_(new QTableView(this)),
      addRow_(new QPushButton(this)),
      deleteRows_(new QPushButton(this)) {
  setObjectName("frmPoints");
  setAttribute(Qt::WA_DeleteOnClose);
  view_->setSourceModel(model_);
  view_->setSortRole(PointsModel::kValueRole);
  table_->setObjectName("grdPoints");
  table_->setModel(view_);
  // Unsorted until a column is clicked; a third click gives the file's order back.
  table_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
  table_->horizontalHeader()->setSortIndicatorClearable(true);
  table_->setSortingEnabled(true);
  table_->setSelectionBehavior(QAbstractItemView::SelectItems);
  table_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                          QAbstractItemView::AnyKeyPressed);
  table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + 8);
  table_->setContextMenuPolicy(Qt::ActionsContextMenu);
  addRow_->setObjectName("btnAddRow");
  deleteRows_->setObjectName("btnDeleteRows");

  struct Entry {
    const char* name;
    QKeySequence key;
    void (PointsWindow::*handler)();
  };
  const Entry entries[] = {
      {"mnuPointsAddRow", QKeySequence(Qt::Key_Insert), &PointsWindow::AddRow},
      {"mnuPointsDeleteRows", QKeySequence::Delete, &PointsWindow::DeleteRows},
      {"mnuPointsCopy", QKeySequence::Copy, &PointsWindow::CopyRows},
      {"mnuPointsPaste", QKeySequence::Paste, &PointsWindow::PasteRows},
  };
  for (const Entry& entry : entries) {
    auto* action = new QAction(table_);
    action->setObjectName(entry.name);
    action->setShortcut(entry.key);
    // Only on the table: in a cell's editor these keys edit the text.
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, entry.handler);
    table_->addAction(action);
  }
  // Escape closes the table as it closes a dialog; in a cell's editor it
  // only drops the entry, since the editor claims the key first.
  auto* closeKey = new QAction(this);
  closeKey->setObjectName("mnuPointsClose");
  closeKey->setShortcut(QKeySequence(Qt::Key_Escape));
  connect(closeKey, &QAction::triggered, this, &QWidget::close);
  addAction(closeKey);
  connect(addRow_, &QPushButton::clicked, this, &PointsWindow::AddRow);
  connect(deleteRows_, &QPushButton::clicked, this, &PointsWindow::DeleteRows);
  undo.AddTo(this);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(addRow_);
  buttons->addWidget(deleteRows_);
  buttons->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(table_);
  layout->addLayout(buttons);
  resize(620, 460);
  SwitchLanguage();
}

const PolarPtr& PointsWindow::Polar() const { return model_->Polar(); }

void PointsWindow::DocumentChanged() {
  if (KeyOfPolar(document_.Current(), Polar().get()).empty()) {
    close();
    return;
  }
  model_->Refresh();
  SwitchLanguage();
}

void PointsWindow::SwitchLanguage() {
  const Language language = ui_.Language();
  const Airfoil& airfoil = document_.Current();
  const std::string key = KeyOfPolar(airfoil, Polar().get());
  const std::string setKey = key.substr(0, key.find('|'));
  setWindowTitle(FromUtf8(FormatResString(Text::PointsTitle, language,
                                          {NodeText(airfoil, key, language), NodeText(airfoil, setKey, language)})));
  addRow_->setText(FromUtf8(GetResString(Text::AddRow, language)));
  deleteRows_->setText(FromUtf8(GetResString(Text::DeleteRows, language)));
  const std::pair<const char*, Text> captions[] = {{"mnuPointsAddRow", Text::AddRow},
                                                   {"mnuPointsDeleteRows", Text::DeleteRows},
                                                   {"mnuPointsCopy", Text::PolarMenuCopy},
                                                   {"mnuPointsPaste", Text::PolarMenuPaste}};
  for (const auto& [name, id] : captions)
    table_->findChild<QAction*>(name)->setText(FromUtf8(GetResString(id, language)));
}

std::vector<int> PointsWindow::SelectedRows() const {
  std::set<int> viewRows;
  for (const QModelIndex& index : table_->selectionModel()->selectedIndexes()) viewRows.insert(index.row());
  std::vector<int> rows;
  for (int viewRow : viewRows) rows.push_back(view_->mapToSource(view_->index(viewRow, 0)).row());
  return rows;
}

void PointsWindow::SelectRow(int row) {
  if (row < 0 || row >= model_->rowCount()) return;
  const QModelIndex shown = view_->mapFromSource(model_->index(row, 0));
  table_->setCurrentIndex(shown);
  table_->selectionModel()->select(shown, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void PointsWindow::Change(EditKind kind, std::vector<PolarPoint> points, int selectRow) {
  if (document_.Run([&](Document& document) { document.SetPoints(kind, Polar(), std::move(points)); }))
    SelectRow(selectRow);
}

void PointsWindow::AddRow() {
  const auto shown = Polar()->Points();
  std::vector<PolarPoint> points(shown.begin(), shown.end());
  const QModelIndex current = view_->mapToSource(table_->currentIndex());
  const size_t at = current.isValid() ? static_cast<size_t>(current.row()) + 1 : points.size();
  PolarPoint added = at > 0 ? points[at - 1] : PolarPoint{};
  if (points.empty()) added.Alfa = added.Cl = added.Cd = 0;
  points.insert(points.begin() + static_cast<std::ptrdiff_t>(at), added);
  Change(EditKind::AddPoint, std::move(points), static_cast<int>(at));
}

void PointsWindow::DeleteRows() {
  std::vector<int> rows = SelectedRows();
  if (rows.empty()) return;
  std::sort(rows.begin(), rows.end());
  std::vector<PolarPoint> points;
  const auto shown = Polar()->Points();
  for (size_t k = 0; k < shown.size(); ++k) {
    if (!std::binary_search(rows.begin(), rows.end(), static_cast<int>(k))) points.push_back(shown[k]);
  }
  Change(EditKind::DeletePoints, std::move(points), std::min(rows.front(), static_cast<int>(points.size()) - 1));
}

void PointsWindow::CopyRows() {
  const std::vector<int> rows = SelectedRows();
  if (!rows.empty()) ui_.SetClipboardText(PointRowsText(Polar()->Points(), rows));
}

void PointsWindow::PasteRows() {
  const PastedRows pasted = ReadPointRows(ui_.ClipboardText(), ui_.Language());
  if (!pasted.refusal.empty()) {
    ui_.ShowMessageIn(this, pasted.refusal, ErrorTitle(ui_.Language()), MessageIcon::Warning);
    return;
  }
  const std::vector<int> rows = SelectedRows();
  const auto shown = Polar()->Points();
  std::vector<PolarPoint> points(shown.begin(), shown.end());
  const size_t at = rows.empty() ? points.size() : static_cast<size_t>(*std::max_element(rows.begin(), rows.end())) + 1;
  points.insert(points.begin() + static_cast<std::ptrdiff_t>(at), pasted.points.begin(), pasted.points.end());
  Change(EditKind::PastePoints, std::move(points), static_cast<int>(at));
}

PointsWindows::PointsWindows(QWidget* mainWindow, DocumentController& document, QtUserInterface& ui, UndoActions& undo)
    : QObject(mainWindow), mainWindow_(mainWindow), document_(document), ui_(ui), undo_(undo) {}

std::vector<PointsWindow*> PointsWindows::Windows() const {
  std::vector<PointsWindow*> open;
  for (const QPointer<PointsWindow>& window : windows_)
    if (window) open.push_back(window);
  return open;
}

void PointsWindows::Show(const std::string& key) {
  const ConfigurationPtr set = document_.Current().Configuration(SetIndexOfKey(key));
  const PolarPtr polar = set ? set->Polar(PolarIndexOfKey(key)) : nullptr;
  if (!polar) return;
  for (PointsWindow* window : Windows()) {
    if (window->Polar() == polar) {
      window->raise();
      window->activateWindow();
      return;
    }
  }
  auto* window = new PointsWindow(polar, document_, ui_, undo_, mainWindow_);
  windows_.push_back(window);
  window->show();
}

void PointsWindows::DocumentChanged() {
  std::erase_if(windows_, [](const QPointer<PointsWindow>& window) { return window.isNull(); });
  for (PointsWindow* window : Windows()) window->DocumentChanged();
}

void PointsWindows::SwitchLanguage() {
  for (PointsWindow* window : Windows()) window->SwitchLanguage();
}

}  // namespace tavilo
