#pragma once
// The structure tree TreeView1: mirrors the document's nodes, toggles the
// active marks on a left click, opens the edit pop-ups on a right click and
// runs their commands (delete, rename, copy, paste, points) on the selected
// node.

#include <QIcon>
#include <QObject>
#include <QPoint>
#include <QString>
#include <vector>

#include "document_controller.h"
#include "strings/language.h"
#include "tree/structure_tree.h"

class QAction;
class QMenu;
class QTreeWidget;
class QTreeWidgetItem;

namespace tavilo {

class PolarPropsDialog;
class QtUserInterface;

class TreeController : public QObject {
  Q_OBJECT

 public:
  // The item data role that holds a node's key ("r", "c 1", "c 1|p 2").
  static constexpr int kKeyRole = Qt::UserRole;

  // Wires the tree and the entries of the pop-ups `edit` (mnuEdit) and
  // `editPolar` (mnuEditPolar).
  TreeController(QTreeWidget* tree, QMenu* edit, QMenu* editPolar, DocumentController& document, QtUserInterface& ui);
  ~TreeController() override;

  // Rebuilds every node from the document; the node that was selected
  // stays selected while its key exists.
  void UpdateTreeView();
  // Follows a change of the document: marks changed by a click, or nothing
  // the tree shows, are shown as they are; anything else rebuilds the tree.
  void DocumentChanged(const DocumentChange& change);

  // A click on `item` with the mouse button pressed last: the left button
  // toggles, any other opens the pop-up at `globalPos`.
  void NodeClick(QTreeWidgetItem* item, QPoint globalPos);

  // The commands on the selected node; with no node selected they do nothing.
  void EditDelete();
  void EditName();
  void EditCopy();
  void EditPaste();
  // "Points..." or Enter on a polar node: asks for its points table.
  void EditPoints();

  // The key of the selected node, "" when none is.
  QString SelectedKey() const;
  void SwitchLanguage(Language language);

 signals:
  // The points table of the polar at `key` is wanted.
  void PointsRequested(const QString& key);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Toggle(QTreeWidgetItem* item);
  void ShowPopup(QTreeWidgetItem* item, QPoint globalPos);
  void ShowMarks();
  void WireMenus();

  QTreeWidget* tree_;
  QWidget* viewport_;  // kept: while the tree is destroyed it can no longer be asked
  QMenu* edit_;
  QMenu* editPolar_;
  DocumentController& document_;
  QtUserInterface& ui_;
  PolarPropsDialog* polarProps_;
  std::vector<TreeNode> nodes_;
  std::vector<QTreeWidgetItem*> items_;  // one per node, in the same order
  QIcon activeIcon_;
  QIcon inactiveIcon_;
  int lastButton_ = 0;  // 1 left, 2 right, 4 middle, as the tree's tag held it
};

}  // namespace tavilo
