#pragma once
// Puts the string table's captions on a window's controls, found by their
// object names. Members of a control array share the object name and carry
// their index in the dynamic property "item".

#include <QString>
#include <span>

#include "strings/captions.h"
#include "strings/string_table.h"

class QObject;
class QWidget;

namespace tavilo {

inline constexpr const char* kItemProperty = "item";

// Applies `captions` in `language` in order to `window` and its children. A caption whose
// control does not exist is skipped, so a window may leave out controls
// that a later version adds.
void ApplyCaptions(QWidget* window, std::span<const Caption> captions, Language language);

// The control `name` (with `item` >= 0: the member with that index) inside
// `window`, or the window itself for an empty name; null when absent.
QObject* FindControl(QWidget* window, const QString& name, int item);

// The caption text of a label, button, group box, menu or menu entry.
QString ControlText(const QObject* control);

}  // namespace tavilo
