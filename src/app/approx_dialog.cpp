#include "approx_dialog.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <charconv>

#include "base/number_text.h"
#include "caption_apply.h"
#include "qt_user_interface.h"
#include "strings/captions.h"
#include "strings/string_table.h"
#include "tools/approx_fit.h"

namespace tavilo {

namespace {

// The label of each field, in field order. The StallCdAtClMin label reads
// "Stall Cd at Cl Max:" as it always did, so messages name that field by
// Text::StallCdAtClMinName instead.
constexpr std::array<Text, kApproxFieldCount> kFieldLabels = {
    Text::CdTiltLabel,     Text::StallCdAtClMaxLabel, Text::StallCdAtClMinLabel,  Text::CdShiftLabel,
    Text::CdExponentLabel, Text::CdMinLabel,          Text::StallRangeClMinLabel, Text::StallRangeClMaxLabel,
    Text::ClMaxLabel,      Text::ClMinLabel,          Text::AlfaZeroLabel,
};

// Enough digits to read a fitted value, few enough to read it at a glance.
std::string SixDigits(double value) { return SignificantNumberText(value, 6); }

QLineEdit* NewAngleField(QWidget* parent, const char* name) {
  auto* field = new QLineEdit(parent);
  field->setObjectName(name);
  field->setMaximumWidth(70);
  return field;
}

QPushButton* NewButton(QWidget* parent, const char* name) {
  auto* button = new QPushButton(parent);
  button->setObjectName(name);
  button->setAutoDefault(false);
  return button;
}

}  // namespace

ApproxDialog::ApproxDialog(QtUserInterface& ui, PolarSource polar, CurveSink show, QWidget* parent)
    : QDialog(parent), ui_(ui), polar_(std::move(polar)), show_(std::move(show)) {
  setObjectName("frmApprox");
  auto* grid = new QGridLayout;
  for (int i = 0; i < kApproxFieldCount; ++i) {
    fields_[i] = new QLineEdit(this);
    fields_[i]->setObjectName("txtValue");
    fields_[i]->setProperty(kItemProperty, i);
    fields_[i]->installEventFilter(this);
    auto* label = new QLabel(this);
    label->setObjectName("lblValue");
    label->setProperty(kItemProperty, i);
    label->setBuddy(fields_[i]);
    holds_[i] = new QCheckBox(this);
    holds_[i]->setObjectName("chkHold");
    holds_[i]->setProperty(kItemProperty, i);
    grid->addWidget(label, i, 0);
    grid->addWidget(fields_[i], i, 1);
    grid->addWidget(holds_[i], i, 2);
    connect(fields_[i], &QLineEdit::textChanged, this, &ApproxDialog::CurveWithdrawn);
  }
  QPushButton* showButton = NewButton(this, "btnShow");
  QPushButton* copy = NewButton(this, "Command1");
  fit_ = NewButton(this, "btnFit");
  connect(showButton, &QPushButton::clicked, this, &ApproxDialog::ShowCurve);
  connect(copy, &QPushButton::clicked, this, &ApproxDialog::CopyInitializer);
  connect(fit_, &QPushButton::clicked, this, &ApproxDialog::FitToPolar);
  auto* buttons = new QVBoxLayout;
  for (QPushButton* button : {showButton, copy, fit_}) buttons->addWidget(button);
  buttons->addStretch();
  grid->addLayout(buttons, 0, 3, kApproxFieldCount, 1);
  // The angles the fit takes; an empty field sets no limit.
  auto* range = new QHBoxLayout;
  rangeLabel_ = new QLabel(this);
  rangeLabel_->setObjectName("lblRange");
  rangeToLabel_ = new QLabel(this);
  rangeToLabel_->setObjectName("lblRangeTo");
  alfaFrom_ = NewAngleField(this, "txtAlfaFrom");
  alfaTo_ = NewAngleField(this, "txtAlfaTo");
  for (QWidget* widget : std::initializer_list<QWidget*>{rangeLabel_, alfaFrom_, rangeToLabel_, alfaTo_})
    range->addWidget(widget);
  range->addStretch();
  grid->addLayout(range, kApproxFieldCount, 0, 1, 4);
  status_ = new QLabel(this);
  status_->setObjectName("lblStatus");
  status_->setWordWrap(true);
  status_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  status_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  grid->addWidget(status_, kApproxFieldCount + 1, 0, 1, 4);
  setLayout(grid);
  setMinimumWidth(420);
  SetValues(ApproxValues{});
  SwitchLanguage(ui_.Language());
}

void ApproxDialog::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  FitReport();
}

bool ApproxDialog::eventFilter(QObject* watched, QEvent* event) {
  // A field claims Ctrl+Z and Ctrl+Y for its own typing even when it has
  // none to take back, which would leave the document's keys dead in this
  // window; they pass to the document once the field has nothing left.
  auto* field = qobject_cast<QLineEdit*>(watched);
  if (field != nullptr && event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if ((key->matches(QKeySequence::Undo) && !field->isUndoAvailable()) ||
        (key->matches(QKeySequence::Redo) && !field->isRedoAvailable()))
      return true;
  }
  return QDialog::eventFilter(watched, event);
}

void ApproxDialog::FitReport() {
  // A window does not grow for a label's wrapped lines by itself; as the
  // label's least height they raise the window's, which then grows to it.
  // Two lines are kept free so that a fit's usual report needs no growth.
  const int reserved = 2 * status_->fontMetrics().lineSpacing();
  status_->setMinimumHeight(std::max(reserved, status_->heightForWidth(status_->width())));
}

void ApproxDialog::SwitchLanguage(Language language) {
  ApplyCaptions(this, ApproxCaptions(), language);
  fit_->setText(QString::fromStdString(GetResString(Text::FitToPolar, language)));
  fit_->setToolTip(QString::fromStdString(GetResString(Text::FitToPolarTip, language)));
  rangeLabel_->setText(QString::fromStdString(GetResString(Text::ApproxRangeCaption, language)));
  rangeToLabel_->setText(QString::fromStdString(GetResString(Text::ApproxRangeTo, language)));
  for (QCheckBox* hold : holds_) hold->setToolTip(QString::fromStdString(GetResString(Text::ApproxHoldTip, language)));
  SetStatus({});
}

void ApproxDialog::UpdateFitButton() { fit_->setEnabled(polar_ && polar_() != nullptr); }

std::string ApproxDialog::FieldName(ApproxField field) const {
  std::string name = GetResString(
      field == ApproxField::StallCdAtClMin ? Text::StallCdAtClMinName : kFieldLabels[static_cast<size_t>(field)],
      ui_.Language());
  if (!name.empty() && name.back() == ':') name.pop_back();
  return name;
}

void ApproxDialog::ShowError(const std::string& text) {
  ui_.ShowMessageIn(this, text, ErrorTitle(ui_.Language()), MessageIcon::Critical);
}

void ApproxDialog::SetStatus(const std::string& text) {
  status_->setText(QString::fromStdString(text));
  FitReport();
}

std::optional<ApproxValues> ApproxDialog::ReadValues() {
  ApproxValues values;
  for (int i = 0; i < kApproxFieldCount; ++i) {
    const std::string text = fields_[i]->text().toStdString();
    const std::optional<double> number = WholeNumber(text);
    if (!number) {
      ShowError(FormatResString(Text::ApproxNoNumber, ui_.Language(), {FieldName(ApproxFieldAt(i)), text}));
      fields_[i]->setFocus();
      return std::nullopt;
    }
    values[ApproxFieldAt(i)] = *number;
  }
  if (const std::optional<ApproxProblem> problem = FindApproxProblem(values)) {
    ShowProblem(*problem);
    return std::nullopt;
  }
  return values;
}

void ApproxDialog::ShowProblem(const ApproxProblem& problem) {
  ShowError(FormatResString(problem.messageId, ui_.Language(),
                            {FieldName(problem.field), SixDigits(problem.low), SixDigits(problem.high)}));
  fields_[static_cast<int>(problem.field)]->setFocus();
}

std::optional<double> ApproxDialog::ReadNumber(QLineEdit* field, const std::string& name, double empty) {
  const std::string text = field->text().toStdString();
  if (TrimBlanks(text).empty()) return empty;
  const std::optional<double> number = WholeNumber(text);
  if (!number) {
    ShowError(FormatResString(Text::ApproxNoNumber, ui_.Language(), {name, text}));
    field->setFocus();
  }
  return number;
}

std::optional<ApproxFitOptions> ApproxDialog::ReadFitOptions() {
  ApproxFitOptions options;
  for (int i = 0; i < kApproxFieldCount; ++i) {
    if (!holds_[i]->isChecked()) continue;
    const std::string name = FieldName(ApproxFieldAt(i));
    const std::optional<double> value = ReadNumber(fields_[i], name, NAN);
    if (!value) return std::nullopt;
    options.held[i] = true;
    options.values[ApproxFieldAt(i)] = *value;
  }
  const std::optional<double> from = ReadNumber(alfaFrom_, DialogTitle(rangeLabel_->text().toStdString()), -90);
  if (!from) return std::nullopt;
  const std::optional<double> to = ReadNumber(alfaTo_, DialogTitle(rangeLabel_->text().toStdString()), 90);
  if (!to) return std::nullopt;
  if (!(*from < *to)) {
    ShowError(FormatResString(Text::ApproxEmptyRange, ui_.Language(), {SixDigits(*from), SixDigits(*to)}));
    alfaFrom_->setFocus();
    return std::nullopt;
  }
  options.alfaFrom = *from;
  options.alfaTo = *to;
  return options;
}

void ApproxDialog::SetValues(const ApproxValues& values) {
  const ApproxValues shown = ApproxShownValues(values);
  for (int i = 0; i < kApproxFieldCount; ++i)
    fields_[i]->setText(QString::fromStdString(ShortestNumberText(shown[ApproxFieldAt(i)])));
}

void ApproxDialog::hideEvent(QHideEvent* event) {
  emit CurveWithdrawn();
  QDialog::hideEvent(event);
}

void ApproxDialog::ShowCurve() {
  const std::optional<ApproxValues> values = ReadValues();
  if (!values) return;
  show_(ApproxModel(*values).Curve());
  SetStatus(GetResString(Text::ApproxShown, ui_.Language()));
}

void ApproxDialog::CopyInitializer() {
  const std::optional<ApproxValues> values = ReadValues();
  if (!values) return;
  ui_.SetClipboardText(ApproxInitializer(*values));
  SetStatus(GetResString(Text::CopiedToClipboard, ui_.Language()));
}

void ApproxDialog::FitToPolar() {
  const PolarPtr polar = polar_ ? polar_() : nullptr;
  if (!polar) return;
  const std::optional<ApproxFitOptions> options = ReadFitOptions();
  if (!options) return;
  ApproxFit fit;
  try {
    fit = FitApproximation(*polar, *options);
  } catch (const ApproxInputError& error) {
    ShowProblem(error.Problem());  // held values that cannot stand together
    return;
  } catch (const RuntimeError& error) {
    ShowError(ErrorText(error, ui_.Language(), false));
    return;
  }
  SetValues(fit.values);
  const Language language = ui_.Language();
  std::string text =
      FormatResString(Text::ApproxFitted, language,
                      {FormatNumber(fit.fittedCount, "0"), FormatNumber(fit.errors.points, "0"),
                       SignificantNumberText(fit.errors.rmsCl, 3), SignificantNumberText(fit.errors.rmsCd, 3)});
  std::string estimated;
  for (int i = 0; i < kApproxFieldCount; ++i) {
    if (!fit.estimated[i]) continue;
    if (!estimated.empty()) estimated += ", ";
    estimated += FieldName(ApproxFieldAt(i));
  }
  if (!estimated.empty()) text += "\n" + FormatResString(Text::ApproxEstimated, language, {estimated});
  SetStatus(text);
}

}  // namespace tavilo
