#pragma once
// frmAirfoilSelect: picks one airfoil out of a file that holds several.

#include <QDialog>
#include <QStringList>

#include "strings/language.h"

class QListWidget;

namespace tavilo {

class AirfoilSelectDialog : public QDialog {
  Q_OBJECT

 public:
  explicit AirfoilSelectDialog(QWidget* parent = nullptr);

  void SwitchLanguage(Language language);
  // Shows `names` modally; the 0-based index chosen with OK or a
  // double-click, -1 when none was selected.
  int Choose(const QStringList& names, Language language);
  // The index the dialog returns when closed now.
  int SelectedIndex() const;

 private:
  QListWidget* lstAirfoils_;
};

}  // namespace tavilo
