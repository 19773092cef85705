#pragma once
// frmOptions: the options of printed graphs (grid, legend and its corner).
// It lives for the whole run; the print run reads the values from it.

#include <QDialog>

#include "strings/language.h"

class QButtonGroup;
class QCheckBox;
class QRadioButton;

namespace tavilo {

struct AppSettings;

class OptionsDialog : public QDialog {
  Q_OBJECT

 public:
  explicit OptionsDialog(QWidget* parent = nullptr);

  void SwitchLanguage(Language language);

  // Check box values: 0 clear, 1 set.
  int GridShow() const;
  int LegendShow() const;
  // Option values as stored: -1 set, 0 clear; index 0 "lower right", 1 "upper left".
  int LegendPosition(int index) const;

  // Takes the four print options from `settings` (non-zero sets a box or option).
  void Apply(const AppSettings& settings);
  // Puts the four print options into `settings`.
  void Store(AppSettings& settings) const;

 private:
  QCheckBox* chkGrid_;
  QCheckBox* chkLegend_;
  QRadioButton* optLegend_[2];
  QButtonGroup* legendGroup_;
};

}  // namespace tavilo
