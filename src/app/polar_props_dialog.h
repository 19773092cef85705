#pragma once
// frmPolarProps: the name, Reynolds number and Mach number of one polar.

#include <QDialog>

#include "strings/language.h"
#include "tree/structure_tree.h"

class QLineEdit;

namespace tavilo {

class PolarPropsDialog : public QDialog {
  Q_OBJECT

 public:
  explicit PolarPropsDialog(QWidget* parent = nullptr);

  void SwitchLanguage(Language language);
  // Shows `properties` modally under the title `title` and returns the
  // texts as they stand when the dialog closes, whichever way it closed:
  // Cancel keeps the edits, as it always did.
  PolarProperties Edit(const PolarProperties& properties, const QString& title, Language language);

 private:
  QLineEdit* txtName_;
  QLineEdit* txtReNo_;
  QLineEdit* txtMachNo_;
};

}  // namespace tavilo
