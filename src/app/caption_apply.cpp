#include "caption_apply.h"

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QToolBar>
#include <QWidget>

#include "strings/string_table.h"

namespace tavilo {

namespace {

constexpr const char* kSeparatorCaption = "separatorCaption";

QString FromUtf8(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

// A toolbar's buttons are its actions that carry a key, in button order.
QAction* ToolbarButton(QToolBar* toolbar, int item) {
  int index = 0;
  for (QAction* action : toolbar->actions()) {
    if (action->data().toString().isEmpty()) continue;
    if (index++ == item) return action;
  }
  return nullptr;
}

void SetText(QObject* control, const QString& text) {
  if (auto* label = qobject_cast<QLabel*>(control)) {
    label->setText(text);
  } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
    button->setText(text);
  } else if (auto* group = qobject_cast<QGroupBox*>(control)) {
    group->setTitle(text);
  } else if (auto* menu = qobject_cast<QMenu*>(control)) {
    menu->setTitle(text);
  } else if (auto* action = qobject_cast<QAction*>(control)) {
    // A separator keeps its "-" caption aside: some styles would print a
    // separator's text beside the line.
    if (action->isSeparator()) {
      action->setProperty(kSeparatorCaption, text);
    } else {
      action->setText(text);
    }
  }
}

}  // namespace

QObject* FindControl(QWidget* window, const QString& name, int item) {
  if (name.isEmpty()) return window;
  const QList<QObject*> matches = window->findChildren<QObject*>(name);
  for (QObject* match : matches) {
    if (auto* toolbar = qobject_cast<QToolBar*>(match); toolbar && item >= 0) {
      return ToolbarButton(toolbar, item);
    }
    if (item < 0) return match;
    const QVariant index = match->property(kItemProperty);
    if (index.isValid() && index.toInt() == item) return match;
  }
  return nullptr;
}

QString ControlText(const QObject* control) {
  if (auto* label = qobject_cast<const QLabel*>(control)) return label->text();
  if (auto* button = qobject_cast<const QAbstractButton*>(control)) return button->text();
  if (auto* group = qobject_cast<const QGroupBox*>(control)) return group->title();
  if (auto* menu = qobject_cast<const QMenu*>(control)) return menu->title();
  if (auto* action = qobject_cast<const QAction*>(control)) {
    return action->isSeparator() ? action->property(kSeparatorCaption).toString() : action->text();
  }
  if (auto* widget = qobject_cast<const QWidget*>(control)) return widget->windowTitle();
  return {};
}

void ApplyCaptions(QWidget* window, std::span<const Caption> captions, Language language) {
  for (const Caption& caption : captions) {
    const QString text = FromUtf8(GetResString(caption.id, language));
    QObject* control = FindControl(window, FromUtf8(caption.element), caption.item);
    if (control == nullptr) continue;
    switch (caption.target) {
      case CaptionTarget::WindowTitle:
        window->setWindowTitle(FromUtf8(DialogTitle(GetResString(caption.id, language))));
        break;
      case CaptionTarget::ControlText: SetText(control, text); break;
      case CaptionTarget::ToolTip:
        if (auto* action = qobject_cast<QAction*>(control)) action->setToolTip(text);
        if (auto* widget = qobject_cast<QWidget*>(control)) widget->setToolTip(text);
        break;
    }
  }
}

}  // namespace tavilo
