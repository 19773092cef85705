#include "tree_controller.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QCursor>
#include <QMenu>
#include <QMouseEvent>
#include <QTreeWidget>
#include <algorithm>
#include <map>

#include "error_guard.h"
#include "fileio/clipboard.h"
#include "icons.h"
#include "polar_props_dialog.h"
#include "qt_user_interface.h"
#include "strings/string_table.h"

namespace tavilo {

namespace {

QString FromUtf8(const std::string& text) { return QString::fromStdString(text); }

// The mouse button numbers the tree's tag has always held.
int ButtonNumber(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton: return 1;
    case Qt::RightButton: return 2;
    case Qt::MiddleButton: return 4;
    default: return 0;
  }
}

QAction* Entry(QMenu* menu, const char* name) { return menu->findChild<QAction*>(QString::fromLatin1(name)); }

}  // namespace

TreeController::TreeController(QTreeWidget* tree, QMenu* edit, QMenu* editPolar, DocumentController& document,
                               QtUserInterface& ui)
    : QObject(tree),
      tree_(tree),
      viewport_(tree->viewport()),
      edit_(edit),
      editPolar_(editPolar),
      document_(document),
      ui_(ui),
      polarProps_(new PolarPropsDialog(tree->window())),
      activeIcon_(NodeIcon(true)),
      inactiveIcon_(NodeIcon(false)) {
  tree_->setContextMenuPolicy(Qt::DefaultContextMenu);
  tree_->setSelectionMode(QAbstractItemView::SingleSelection);
  tree_->installEventFilter(this);
  viewport_->installEventFilter(this);
  connect(tree_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item) { NodeClick(item, QCursor::pos()); });
  WireMenus();
}

TreeController::~TreeController() = default;

void TreeController::WireMenus() {
  struct Command {
    QMenu* menu;
    const char* name;
    void (TreeController::*handler)();
    QKeySequence key;
  };
  const Command commands[] = {
      {edit_, "mnuEditDelete", &TreeController::EditDelete, QKeySequence::Delete},
      {edit_, "mnuEditName", &TreeController::EditName, QKeySequence(Qt::Key_F2)},
      {editPolar_, "mnuEditPolarDelete", &TreeController::EditDelete, QKeySequence::Delete},
      {editPolar_, "mnuEditCopy", &TreeController::EditCopy, QKeySequence::Copy},
      {editPolar_, "mnuEditPolarPaste", &TreeController::EditPaste, QKeySequence::Paste},
      {editPolar_, "mnuEditPolarName", &TreeController::EditName, QKeySequence(Qt::Key_F2)},
      {editPolar_, "mnuEditPolarPoints", &TreeController::EditPoints, QKeySequence(Qt::Key_Return)},
  };
  for (const Command& command : commands) {
    QAction* entry = Entry(command.menu, command.name);
    connect(entry, &QAction::triggered, this, command.handler);
    // Shown in the pop-ups; the tree's own key actions below do the work,
    // so that a key never means two entries at once.
    entry->setShortcut(command.key);
    entry->setShortcutContext(Qt::WidgetShortcut);
  }
  for (int i : {0, 1, 3, 4, 6}) {
    auto* key = new QAction(tree_);
    key->setObjectName(QStringLiteral("TreeKey_") + QString::fromLatin1(commands[i].name));
    key->setShortcut(commands[i].key);
    key->setShortcutContext(Qt::WidgetShortcut);
    connect(key, &QAction::triggered, this, commands[i].handler);
    tree_->addAction(key);
  }
  // The keypad's Enter too.
  tree_->findChild<QAction*>("TreeKey_mnuEditPolarPoints")
      ->setShortcuts({QKeySequence(Qt::Key_Return), QKeySequence(Qt::Key_Enter)});
  // Space ticks the current node as a left click does; moving with the
  // arrow keys only moves.
  auto* space = new QAction(tree_);
  space->setObjectName(QStringLiteral("TreeKey_Toggle"));
  space->setShortcut(QKeySequence(Qt::Key_Space));
  space->setShortcutContext(Qt::WidgetShortcut);
  connect(space, &QAction::triggered, this, [this] {
    if (QTreeWidgetItem* item = tree_->currentItem()) Toggle(item);
  });
  tree_->addAction(space);
}

QString TreeController::SelectedKey() const {
  const QTreeWidgetItem* item = tree_->currentItem();
  return item == nullptr ? QString() : item->data(0, kKeyRole).toString();
}

void TreeController::UpdateTreeView() {
  const QString selected = SelectedKey();
  tree_->clear();
  items_.clear();
  nodes_ = BuildTree(document_.Current(), ui_.Language());
  std::map<std::string, QTreeWidgetItem*> byKey;
  QTreeWidgetItem* current = nullptr;
  for (const TreeNode& node : nodes_) {
    auto* item = node.parentKey.empty() ? new QTreeWidgetItem(tree_) : new QTreeWidgetItem(byKey.at(node.parentKey));
    item->setText(0, FromUtf8(node.text));
    item->setData(0, kKeyRole, FromUtf8(node.key));
    item->setIcon(0, node.active ? activeIcon_ : inactiveIcon_);
    byKey[node.key] = item;
    items_.push_back(item);
    if (FromUtf8(node.key) == selected) current = item;
  }
  tree_->expandAll();
  if (current != nullptr) tree_->setCurrentItem(current);
}

void TreeController::NodeClick(QTreeWidgetItem* item, QPoint globalPos) {
  if (item == nullptr) return;
  tree_->setCurrentItem(item);
  if (lastButton_ == 1) {
    Toggle(item);
  } else {
    ShowPopup(item, globalPos);
  }
}

void TreeController::DocumentChanged(const DocumentChange& change) {
  if (!(change.Changes() & kContentChanged) && change.step == ChangeStep::Do && nodes_.size() == items_.size()) {
    ShowMarks();
  } else {
    UpdateTreeView();
  }
}

void TreeController::ShowMarks() {
  for (size_t i = 0; i < nodes_.size(); ++i) items_[i]->setIcon(0, nodes_[i].active ? activeIcon_ : inactiveIcon_);
}

void TreeController::Toggle(QTreeWidgetItem* item) {
  const auto found = std::find(items_.begin(), items_.end(), item);
  if (found == items_.end()) return;
  const size_t clicked = static_cast<size_t>(found - items_.begin());
  document_.Run([&](Document& document) { document.Toggle(nodes_, clicked); });
}

void TreeController::ShowPopup(QTreeWidgetItem* item, QPoint globalPos) {
  const std::string key = item->data(0, kKeyRole).toString().toStdString();
  QMenu* menu = (KindOfKey(key) == NodeKind::Polar && key.find("|p") != std::string::npos) ? editPolar_ : edit_;
  // Not exec(): the entries act on the selected node whenever they fire.
  menu->popup(globalPos);
}

bool TreeController::eventFilter(QObject* watched, QEvent* event) {
  if (watched == viewport_ && event->type() == QEvent::MouseButtonPress) {
    lastButton_ = ButtonNumber(static_cast<QMouseEvent*>(event)->button());
  } else if (watched == viewport_ && event->type() == QEvent::MouseButtonRelease) {
    // Qt reports clicks of the left button only; a middle click counts as
    // a right one here, as it always did.
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (mouse->button() == Qt::MiddleButton) {
      NodeClick(tree_->itemAt(mouse->position().toPoint()), mouse->globalPosition().toPoint());
    }
  } else if (event->type() == QEvent::ContextMenu && (watched == tree_ || watched == viewport_)) {
    auto* menuEvent = static_cast<QContextMenuEvent*>(event);
    if (menuEvent->reason() == QContextMenuEvent::Mouse) {
      NodeClick(tree_->itemAt(tree_->viewport()->mapFromGlobal(menuEvent->globalPos())), menuEvent->globalPos());
    } else if (QTreeWidgetItem* item = tree_->currentItem()) {
      // The menu key: the pop-up opens at the selected node.
      ShowPopup(item, tree_->viewport()->mapToGlobal(tree_->visualItemRect(item).center()));
    }
    return true;
  }
  return QObject::eventFilter(watched, event);
}

void TreeController::EditDelete() {
  const std::string key = SelectedKey().toStdString();
  if (key.empty()) return;
  document_.Run([&](Document& document) { document.Delete(key); });
}

void TreeController::EditName() {
  const QTreeWidgetItem* item = tree_->currentItem();
  if (item == nullptr) return;
  const std::string key = item->data(0, kKeyRole).toString().toStdString();
  const QString title = item->text(0);
  const Language language = ui_.Language();
  auto text = [language](Text id) { return FromUtf8(GetResString(id, language)); };
  document_.Run([&](Document& document) {
    const Airfoil& airfoil = document.Current();
    const NodeKind kind = KindOfKey(key);
    if (kind == NodeKind::Root) {
      document.RenameAirfoil(
          ui_.InputBox(text(Text::EnterAirfoilName), text(Text::ChangeAirfoilName), FromUtf8(airfoil.Name))
              .toStdString());
    } else if (kind != NodeKind::None) {
      const int setIndex = SetIndexOfKey(key);
      ConfigurationPtr set = airfoil.Configuration(setIndex);
      if (!set) return;
      if (kind == NodeKind::Set) {
        document.RenameSet(setIndex, ui_.InputBox(text(Text::EnterSetDescription), text(Text::ChangeSetDescription),
                                                  FromUtf8(set->Name))
                                         .toStdString());
      } else if (PolarPtr polar = set->Polar(PolarIndexOfKey(key))) {
        document.SetPolarProperties(setIndex, PolarIndexOfKey(key),
                                    polarProps_->Edit(PropertiesOf(*polar), title, language));
      }
    }
  });
}

void TreeController::EditCopy() {
  const std::string key = SelectedKey().toStdString();
  if (KindOfKey(key) != NodeKind::Polar) return;
  document_.Run([&](Document& document) {
    ConfigurationPtr set = document.Current().Configuration(SetIndexOfKey(key));
    if (PolarPtr polar = set ? set->Polar(PolarIndexOfKey(key)) : nullptr) CopyPolar(*polar, ui_);
  });
}

void TreeController::EditPaste() {
  const std::string key = SelectedKey().toStdString();
  if (KindOfKey(key) != NodeKind::Polar) return;
  document_.Run([&](Document& document) { document.Paste(SetIndexOfKey(key), ui_); });
}

void TreeController::EditPoints() {
  const QString key = SelectedKey();
  if (KindOfKey(key.toStdString()) == NodeKind::Polar) emit PointsRequested(key);
}

void TreeController::SwitchLanguage(Language language) { polarProps_->SwitchLanguage(language); }

}  // namespace tavilo
