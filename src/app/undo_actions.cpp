#include "undo_actions.h"

#include <QAction>
#include <QMenu>

#include "document_controller.h"
#include "strings/string_table.h"

namespace tavilo {

UndoActions::UndoActions(QMenu* edit, DocumentController& document)
    : QObject(edit), document_(document), undo_(new QAction(edit)), redo_(new QAction(edit)) {
  undo_->setObjectName("mnuEditUndo");
  redo_->setObjectName("mnuEditRedo");
  undo_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
  redo_->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
  edit->addAction(undo_);
  edit->addAction(redo_);
  connect(undo_, &QAction::triggered, this, [this] { document_.Undo(); });
  connect(redo_, &QAction::triggered, this, [this] { document_.Redo(); });
}

void UndoActions::AddTo(QWidget* window) { window->addActions({undo_, redo_}); }

void UndoActions::Update(Language language) {
  const History& history = document_.Edits().Steps();
  auto caption = [language](QAction* action, const CommandPtr& step, Text plain, Text named) {
    action->setEnabled(step != nullptr);
    const std::string text =
        step ? FormatResString(named, language, {StepName(*step, language)}) : GetResString(plain, language);
    action->setText(QString::fromStdString(text));
  };
  caption(undo_, history.NextUndo(), Text::Undo, Text::UndoStep);
  caption(redo_, history.NextRedo(), Text::Redo, Text::RedoStep);
}

}  // namespace tavilo
