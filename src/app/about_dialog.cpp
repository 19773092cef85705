#include "about_dialog.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "caption_apply.h"
#include "fileio/formats_table.h"
#include "icons.h"

namespace tavilo {

AboutDialog::AboutDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("frmAbout");
  auto* picture = new QLabel(this);
  picture->setPixmap(AppIcon().pixmap(64, 64));
  picture->setAlignment(Qt::AlignTop);
  text_ = new QLabel(this);
  text_->setObjectName("lblAbout");
  text_->setTextFormat(Qt::PlainText);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* okay = new QPushButton(this);
  okay->setObjectName("btnOkay");
  okay->setDefault(true);
  connect(okay, &QPushButton::clicked, this, &QDialog::accept);

  auto* top = new QHBoxLayout;
  top->addWidget(picture);
  top->addWidget(text_, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(okay, 0, Qt::AlignRight);
  SwitchLanguage(Language::English);
}

void AboutDialog::SwitchLanguage(Language language) {
  ApplyCaptions(this, AboutCaptions(), language);
  // The table joins lines with CR LF; a label wants plain line feeds, and
  // tabs line the format descriptions up.
  const std::string text = AboutText(language, AboutReadLines(), AboutWrittenLines());
  text_->setText(QString::fromStdString(text).replace("\r\n", "\n"));
}

}  // namespace tavilo
