#pragma once
// frmAbout: the version, the formats read and written, and the graphs.

#include <QDialog>

#include "strings/language.h"

class QLabel;

namespace tavilo {

class AboutDialog : public QDialog {
  Q_OBJECT

 public:
  explicit AboutDialog(QWidget* parent = nullptr);

  // Captions and the About text in the current language.
  void SwitchLanguage(Language language);

 private:
  QLabel* text_;
};

}  // namespace tavilo
