#include "polar_props_dialog.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "caption_apply.h"
#include "strings/captions.h"

namespace tavilo {

namespace {

QLineEdit* NewField(QWidget* parent, const char* name) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  return field;
}

QLabel* NewLabel(QWidget* parent, const char* name, QWidget* buddy) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setBuddy(buddy);
  return label;
}

QString FromText(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

PolarPropsDialog::PolarPropsDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmPolarProps");
  txtName_ = NewField(this, "txtName");
  txtReNo_ = NewField(this, "txtReNo");
  txtMachNo_ = NewField(this, "txtMachNo");
  auto* ok = new QPushButton(this);
  ok->setObjectName("btnOK");
  ok->setDefault(true);
  auto* cancel = new QPushButton(this);
  cancel->setObjectName("btnCancel");

  auto* fields = new QFormLayout;
  fields->addRow(NewLabel(this, "lblName", txtName_), txtName_);
  fields->addRow(NewLabel(this, "lblReNo", txtReNo_), txtReNo_);
  fields->addRow(NewLabel(this, "lblMachNo", txtMachNo_), txtMachNo_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(fields);
  layout->addLayout(buttons);

  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  setMinimumWidth(360);
  SwitchLanguage(Language::English);
}

void PolarPropsDialog::SwitchLanguage(Language language) { ApplyCaptions(this, PolarPropsCaptions(), language); }

PolarProperties PolarPropsDialog::Edit(const PolarProperties& properties, const QString& title, Language language) {
  SwitchLanguage(language);
  setWindowTitle(title);
  txtName_->setText(FromText(properties.name));
  txtReNo_->setText(FromText(properties.reynolds));
  txtMachNo_->setText(FromText(properties.mach));
  txtName_->setFocus();
  txtName_->selectAll();
  exec();
  return {txtName_->text().toStdString(), txtReNo_->text().toStdString(), txtMachNo_->text().toStdString()};
}

}  // namespace tavilo
