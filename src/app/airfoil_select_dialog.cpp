#include "airfoil_select_dialog.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "caption_apply.h"

namespace tavilo {

AirfoilSelectDialog::AirfoilSelectDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmAirfoilSelect");
  auto* label1 = new QLabel(this);
  label1->setObjectName("Label1");
  label1->setWordWrap(true);
  auto* label2 = new QLabel(this);
  label2->setObjectName("Label2");
  label2->setWordWrap(true);
  lstAirfoils_ = new QListWidget(this);
  lstAirfoils_->setObjectName("lstAirfoils");
  auto* okay = new QPushButton(this);
  okay->setObjectName("btnOkay");
  okay->setDefault(true);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label1);
  layout->addWidget(label2);
  layout->addWidget(lstAirfoils_, 1);
  layout->addWidget(okay, 0, Qt::AlignRight);

  connect(okay, &QPushButton::clicked, this, &QDialog::accept);
  connect(lstAirfoils_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
  resize(420, 320);
  SwitchLanguage(Language::English);
}

void AirfoilSelectDialog::SwitchLanguage(Language language) { ApplyCaptions(this, AirfoilSelectCaptions(), language); }

int AirfoilSelectDialog::SelectedIndex() const {
  const QList<QListWidgetItem*> selected = lstAirfoils_->selectedItems();
  return selected.isEmpty() ? -1 : lstAirfoils_->row(selected.first());
}

int AirfoilSelectDialog::Choose(const QStringList& names, Language language) {
  lstAirfoils_->clear();
  lstAirfoils_->addItems(names);
  SwitchLanguage(language);
  exec();
  // Closing the window counts as OK, as it always did: the caller takes a
  // missing choice as the first airfoil.
  return SelectedIndex();
}

}  // namespace tavilo
