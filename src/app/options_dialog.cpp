#include "options_dialog.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "caption_apply.h"
#include "settings.h"

namespace tavilo {

OptionsDialog::OptionsDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmOptions");
  auto* frame = new QGroupBox(this);
  frame->setObjectName("Frame1");
  chkGrid_ = new QCheckBox(frame);
  chkGrid_->setObjectName("chkGrid");
  chkLegend_ = new QCheckBox(frame);
  chkLegend_->setObjectName("chkLegend");
  legendGroup_ = new QButtonGroup(this);
  for (int i = 0; i < 2; ++i) {
    optLegend_[i] = new QRadioButton(frame);
    optLegend_[i]->setObjectName("optLegend");
    optLegend_[i]->setProperty(kItemProperty, i);
    legendGroup_->addButton(optLegend_[i], i);
  }
  auto* okay = new QPushButton(this);
  okay->setObjectName("btnOkay");
  okay->setDefault(true);
  connect(okay, &QPushButton::clicked, this, &QDialog::accept);

  auto* frameLayout = new QVBoxLayout(frame);
  frameLayout->addWidget(chkGrid_);
  frameLayout->addWidget(chkLegend_);
  // The legend corner belongs to the legend: indented below its box.
  auto* corner = new QVBoxLayout;
  corner->setContentsMargins(20, 0, 0, 0);
  for (QRadioButton* option : optLegend_) corner->addWidget(option);
  frameLayout->addLayout(corner);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(frame);
  layout->addWidget(okay, 0, Qt::AlignRight);
  setMinimumWidth(260);
  SwitchLanguage(Language::English);
}

void OptionsDialog::SwitchLanguage(Language language) { ApplyCaptions(this, OptionsCaptions(), language); }

int OptionsDialog::GridShow() const { return chkGrid_->isChecked() ? 1 : 0; }
int OptionsDialog::LegendShow() const { return chkLegend_->isChecked() ? 1 : 0; }
int OptionsDialog::LegendPosition(int index) const { return optLegend_[index]->isChecked() ? -1 : 0; }

void OptionsDialog::Apply(const AppSettings& settings) {
  chkGrid_->setChecked(settings.gridShow != 0);
  chkLegend_->setChecked(settings.legendShow != 0);
  // Both options may be clear (a first start); setting the second after the
  // first clears the first, as an option pair does.
  legendGroup_->setExclusive(false);
  optLegend_[0]->setChecked(settings.legendPosition1 != 0);
  optLegend_[1]->setChecked(settings.legendPosition2 != 0);
  if (optLegend_[0]->isChecked() && optLegend_[1]->isChecked()) optLegend_[0]->setChecked(false);
  legendGroup_->setExclusive(true);
}

void OptionsDialog::Store(AppSettings& settings) const {
  settings.gridShow = GridShow();
  settings.legendShow = LegendShow();
  settings.legendPosition1 = LegendPosition(0);
  settings.legendPosition2 = LegendPosition(1);
}

}  // namespace tavilo
