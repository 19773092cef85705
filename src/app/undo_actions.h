#pragma once
// The Edit menu's Undo and Redo: captions that name the step ("Undo Delete
// Polar 2"), enabled while there is a step, and keys (Ctrl+Z; Ctrl+Shift+Z
// and Ctrl+Y) that work in every window they are added to.

#include <QObject>

#include "strings/language.h"

class QAction;
class QMenu;
class QWidget;

namespace tavilo {

class DocumentController;

class UndoActions : public QObject {
  Q_OBJECT

 public:
  // Adds the entries mnuEditUndo and mnuEditRedo to `edit`.
  UndoActions(QMenu* edit, DocumentController& document);

  // Lets the keys work in `window` as well (a points table).
  void AddTo(QWidget* window);
  // Captions in `language` and enabled states, after any change.
  void Update(Language language);

 private:
  DocumentController& document_;
  QAction* undo_;
  QAction* redo_;
};

}  // namespace tavilo
