#include "xfoil_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <filesystem>

#include "base/number_text.h"
#include "settings.h"
#include "strings/string_table.h"

namespace tavilo {

// The outline drawn to the width, its chord level.
class OutlineView : public QWidget {
 public:
  explicit OutlineView(QWidget* parent) : QWidget(parent) {
    setObjectName("picOutline");
    setMinimumSize(320, 90);
  }
  void SetOutline(AirfoilOutline outline) {
    outline_ = std::move(outline);
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    if (outline_.points.empty()) return;
    painter.setRenderHint(QPainter::Antialiasing);
    double low = 0, high = 0;
    for (const OutlinePoint& p : outline_.points) low = std::min(low, p.y), high = std::max(high, p.y);
    const double scale = std::min(width() - 16.0, (height() - 8.0) / std::max(high - low, 1e-3));
    const double middle = height() / 2.0 + (high + low) / 2 * scale;
    painter.setPen(QPen(Qt::lightGray, 1, Qt::DashLine));
    painter.drawLine(QPointF(8, middle), QPointF(8 + scale, middle));
    QPainterPath path;
    for (size_t k = 0; k < outline_.points.size(); ++k) {
      const QPointF p(8 + outline_.points[k].x * scale, middle - outline_.points[k].y * scale);
      k == 0 ? path.moveTo(p) : path.lineTo(p);
    }
    painter.setPen(QPen(Qt::black, 1.5));
    painter.drawPath(path);
  }

 private:
  AirfoilOutline outline_;
};

namespace {

QString Q(const std::string& text) { return QString::fromStdString(text); }

QLineEdit* Field(const char* name, const char* text, QWidget* parent) {
  auto* field = new QLineEdit(QString::fromUtf8(text), parent);
  field->setObjectName(name);
  return field;
}

std::string Percent(double value) { return FormatNumber(value * 100, "0.0"); }

}  // namespace

XfoilDialog::XfoilDialog(Language language, Apply apply, QWidget* parent)
    : QDialog(parent), language_(language), apply_(std::move(apply)) {
  setObjectName("frmXfoil");
  auto* layout = new QVBoxLayout(this);
  auto* airfoilLabel = new QLabel(this);
  layout->addWidget(airfoilLabel);
  labels_.push_back({airfoilLabel, Text::XfoilAirfoilLabel});
  auto* airfoilRow = new QHBoxLayout;
  airfoilField_ = Field("txtAirfoil", "NACA 2412", this);
  browse_ = new QPushButton(this);
  browse_->setObjectName("cmdBrowse");
  airfoilRow->addWidget(airfoilField_);
  airfoilRow->addWidget(browse_);
  layout->addLayout(airfoilRow);
  outline_ = new OutlineView(this);
  layout->addWidget(outline_);
  shape_ = new QLabel(this);
  shape_->setObjectName("lblShape");
  layout->addWidget(shape_);

  auto* form = new QFormLayout;
  auto row = [&](Text id, QWidget* widget) {
    auto* label = new QLabel(this);
    labels_.push_back({label, id});
    form->addRow(label, widget);
  };
  auto pair = [&](QLineEdit* a, QLineEdit* b, QLineEdit* c = nullptr) {
    auto* box = new QWidget(this);
    auto* h = new QHBoxLayout(box);
    h->setContentsMargins(0, 0, 0, 0);
    for (QLineEdit* e : {a, b, c})
      if (e) h->addWidget(e);
    return box;
  };
  reynolds_ = Field("txtReynolds", "1e5, 2e5, 5e5", this);
  polarType_ = new QComboBox(this);
  polarType_->setObjectName("cboPolarType");
  polarType_->addItems({QString(), QString()});
  mach_ = Field("txtMach", "0", this);
  ncrit_ = Field("txtNcrit", "9", this);
  tripTop_ = Field("txtTripTop", "1", this);
  tripBottom_ = Field("txtTripBottom", "1", this);
  from_ = Field("txtAlphaFrom", "-5", this);
  to_ = Field("txtAlphaTo", "15", this);
  step_ = Field("txtAlphaStep", "0.5", this);
  iterations_ = Field("txtIterations", "100", this);
  repanel_ = new QCheckBox(this);
  repanel_->setObjectName("chkRepanel");
  repanel_->setChecked(true);
  timeLimit_ = Field("txtTimeLimit", "120", this);
  program_ = Field("txtProgram", "xfoil", this);
  row(Text::XfoilReynolds, reynolds_);
  row(Text::XfoilPolarType, polarType_);
  row(Text::XfoilMach, mach_);
  row(Text::XfoilNcrit, ncrit_);
  row(Text::XfoilTrip, pair(tripTop_, tripBottom_));
  row(Text::XfoilAngles, pair(from_, to_, step_));
  row(Text::XfoilIterations, iterations_);
  form->addRow(QString(), repanel_);
  row(Text::XfoilTimeLimit, timeLimit_);
  row(Text::XfoilProgram, program_);
  layout->addLayout(form);

  progress_ = new QProgressBar(this);
  progress_->setObjectName("prgRun");
  progress_->setValue(0);
  layout->addWidget(progress_);
  report_ = new QLabel(this);
  report_->setObjectName("lblReport");
  report_->setWordWrap(true);
  layout->addWidget(report_);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  run_ = new QPushButton(this);
  run_->setObjectName("cmdRun");
  cancel_button_ = new QPushButton(this);
  cancel_button_->setObjectName("cmdCancel");
  cancel_button_->setEnabled(false);
  buttons->addWidget(run_);
  buttons->addWidget(cancel_button_);
  layout->addLayout(buttons);

  connect(run_, &QPushButton::clicked, this, &XfoilDialog::Run);
  connect(cancel_button_, &QPushButton::clicked, this, &XfoilDialog::Cancel);
  connect(airfoilField_, &QLineEdit::editingFinished, this, &XfoilDialog::AirfoilChanged);
  connect(browse_, &QPushButton::clicked, this, [this] {
    const QString path = QFileDialog::getOpenFileName(this, QString(), QString(), "*.dat *.txt *.cor;;*");
    if (path.isEmpty()) return;
    airfoilField_->setText(path);
    AirfoilChanged();
  });
  RestoreFields();
  SwitchLanguage(language);
  AirfoilChanged();
}

void XfoilDialog::RestoreFields() {
  const QMap<QString, QString> saved = ReadXfoilFields();
  for (QLineEdit* field : findChildren<QLineEdit*>())
    if (saved.contains(field->objectName())) field->setText(saved[field->objectName()]);
  const int type = saved.value(polarType_->objectName(), "0").toInt();
  if (type >= 0 && type < polarType_->count()) polarType_->setCurrentIndex(type);
  repanel_->setChecked(saved.value(repanel_->objectName(), "1") != "0");
}

void XfoilDialog::SaveFields() const {
  QMap<QString, QString> fields;
  for (const QLineEdit* field : findChildren<QLineEdit*>())
    if (!field->objectName().isEmpty()) fields[field->objectName()] = field->text();
  fields[polarType_->objectName()] = QString::number(polarType_->currentIndex());
  fields[repanel_->objectName()] = repanel_->isChecked() ? "1" : "0";
  WriteXfoilFields(fields);
}

XfoilDialog::~XfoilDialog() {
  // Hiding the dialog as it goes takes the focus from the field, whose
  // signal would reach members already gone.
  disconnect(airfoilField_, nullptr, this, nullptr);
  cancel_ = true;
  if (worker_.joinable()) worker_.join();
}

void XfoilDialog::SwitchLanguage(Language language) {
  language_ = language;
  auto text = [language](Text id) { return Q(GetResString(id, language)); };
  setWindowTitle(text(Text::RunXfoilTitle));
  for (const auto& [label, id] : labels_) label->setText(text(id));
  browse_->setText(text(Text::XfoilBrowse));
  polarType_->setItemText(0, text(Text::XfoilTypeFixedRe));
  polarType_->setItemText(1, text(Text::XfoilTypeReSqrtCl));
  repanel_->setText(text(Text::XfoilRepanel));
  run_->setText(text(Text::XfoilRun));
  cancel_button_->setText(Q(GetResString(Text::Cancel, language)));
}

void XfoilDialog::AirfoilChanged() {
  const std::string text = airfoilField_->text().trimmed().toStdString();
  airfoil_ = {};
  airfoilValid_ = false;
  std::error_code error;
  std::string problem;
  if (std::filesystem::is_regular_file(text, error)) {
    try {
      const ReadReport report = ReadCoordinates(airfoil_.outline, text);
      for (const Diagnostic& d : report.diagnostics)
        problem += (d.line > 0 ? text + ":" + std::to_string(d.line) + ": " : "") +
                   FormatResString(d.messageId, language_, {d.text, d.file});
      airfoilValid_ = !report.HasError();
    } catch (const std::exception& e) {
      problem = e.what();
    }
    outline_->SetOutline(airfoil_.outline);
  } else if (!NacaDigits(text).empty()) {
    airfoil_.designation = NacaDigits(text);
    const AirfoilOutline drawn = NacaOutline(airfoil_.designation);
    airfoil_.outline = drawn;
    airfoilValid_ = true;
    outline_->SetOutline(drawn);
  } else {
    problem = FormatResString(Text::XfoilUnknownAirfoil, language_, {text});
    outline_->SetOutline({});
  }
  if (!airfoilValid_) {
    shape_->setText(Q(problem));
    return;
  }
  const OutlineShape shape = ShapeOf(airfoil_.outline);
  shape_->setText(Q(FormatResString(
      Text::XfoilShape, language_,
      {Percent(shape.thickness), Percent(shape.thicknessAt), Percent(shape.camber), Percent(shape.camberAt)})));
}

std::optional<XfoilConditions> XfoilDialog::ReadConditions() {
  XfoilConditions c;
  std::string bad;
  auto number = [&](QLineEdit* field) {
    const std::optional<double> value = WholeNumber(field->text().toStdString());
    if (!value && bad.empty()) bad = FormatResString(Text::XfoilBadValue, language_, {"", field->text().toStdString()});
    return value.value_or(0);
  };
  for (const QString& part : reynolds_->text().split(',', Qt::SkipEmptyParts)) {
    const std::optional<double> re = WholeNumber(part.trimmed().toStdString());
    if (!re || !(*re > 0)) {
      bad = FormatResString(Text::XfoilBadValue, language_, {"Re", part.trimmed().toStdString()});
      break;
    }
    c.reynolds.push_back(*re);
  }
  if (c.reynolds.empty() && bad.empty()) bad = GetResString(Text::XfoilNoReynolds, language_);
  c.reSqrtClFixed = polarType_->currentIndex() == 1;
  c.mach = number(mach_);
  c.ncrit = number(ncrit_);
  c.tripTop = number(tripTop_);
  c.tripBottom = number(tripBottom_);
  c.alphaFrom = number(from_);
  c.alphaTo = number(to_);
  c.alphaStep = number(step_);
  c.iterations = static_cast<int>(number(iterations_));
  c.repanel = repanel_->isChecked();
  c.timeLimit = number(timeLimit_);
  c.program = program_->text().trimmed().toStdString();
  if (bad.empty() && SweepAngles(c.alphaFrom, c.alphaTo, c.alphaStep).empty())
    bad = FormatResString(Text::XfoilBadValue, language_, {"", step_->text().toStdString()});
  if (!bad.empty()) {
    Report(bad);
    return std::nullopt;
  }
  return c;
}

void XfoilDialog::Run() {
  if (Running()) return;
  AirfoilChanged();
  if (!airfoilValid_) return;
  const std::optional<XfoilConditions> conditions = ReadConditions();
  if (!conditions) return;
  SaveFields();
  XfoilAirfoil airfoil = airfoil_;
  if (!airfoil.designation.empty()) airfoil.outline = {};
  cancel_ = false;
  progress_->setValue(0);
  report_->setText(Q(GetResString(Text::XfoilRunning, language_)));
  run_->setEnabled(false);
  cancel_button_->setEnabled(true);
  const int jobs = static_cast<int>(std::max(std::thread::hardware_concurrency(), 1u));
  worker_ = std::thread([this, airfoil, c = *conditions, jobs] {
    XfoilRun run;
    std::string setupError;
    try {
      run = RunXfoil(
          airfoil, c, jobs,
          [this](int done, int total) {
            QMetaObject::invokeMethod(
                this,
                [this, done, total] {
                  progress_->setMaximum(std::max(total, 1));
                  progress_->setValue(done);
                },
                Qt::QueuedConnection);
          },
          &cancel_);
    } catch (const XfoilSetupError& error) {
      setupError = FormatResString(error.id, language_, {error.detail});
    }
    QMetaObject::invokeMethod(
        this, [this, run, c, setupError] { Finished(run, c, setupError); }, Qt::QueuedConnection);
  });
}

void XfoilDialog::Cancel() { cancel_ = true; }

void XfoilDialog::Finished(const XfoilRun& run, const XfoilConditions& conditions, const std::string& setupError) {
  if (worker_.joinable()) worker_.join();
  run_->setEnabled(true);
  cancel_button_->setEnabled(false);
  if (!setupError.empty()) {
    Report(setupError);
    return;
  }
  std::vector<std::string> lines = RunReportLines(run, conditions, language_);
  if (!run.cancelled) {
    const AirfoilPtr result = RunAirfoil(run);
    int points = 0;
    for (const XfoilJob& job : run.jobs) points += job.polar->PointCount();
    apply_(*result);
    lines.insert(lines.begin(), FormatResString(Text::XfoilDone, language_,
                                                {FormatNumber(result->Configuration(1)->PolarCount(), "0"),
                                                 FormatNumber(points, "0")}));
  }
  std::string text;
  for (const std::string& line : lines) text += (text.empty() ? "" : "\n") + line;
  Report(text);
}

void XfoilDialog::Report(const std::string& text) { report_->setText(Q(text)); }

}  // namespace tavilo
