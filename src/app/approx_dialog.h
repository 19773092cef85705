#pragma once
// frmApprox: the eleven values of the approximation model. "&Show" draws
// the model into the graphs, "&Copy" puts it on the clipboard as a C
// initializer, "Fit to polar" fills the fields from the polar that is the
// structure tree's current node, keeping the values whose hold box is
// ticked and taking only the points within the angle range below the
// fields (an empty end sets no limit). The model and the fit live in the core.
// The report below the fields wraps, and the window grows to show all of
// it; the main window lends its keys (Ctrl+Z, Ctrl+S ...) to this one.

#include <QDialog>
#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "model/polar.h"
#include "strings/language.h"
#include "tools/approx_fit.h"
#include "tools/approximation.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tavilo {

class QtUserInterface;

class ApproxDialog : public QDialog {
  Q_OBJECT

 public:
  // The polar to fit to, or null when the tree's current node is none.
  using PolarSource = std::function<PolarPtr()>;
  // Draws a model's curve (Alfa, Cl, Cd from -90 to +90 degrees) into the graphs.
  using CurveSink = std::function<void(const std::vector<PolarPoint>&)>;

  // Opens with the model's initial values.
  ApproxDialog(QtUserInterface& ui, PolarSource polar, CurveSink show, QWidget* parent = nullptr);

  void SwitchLanguage(Language language);
  // Enables "Fit to polar" when there is a polar to fit to.
  void UpdateFitButton();

  // The values as the fields hold them; none, after a message that names
  // the field, when one is no number or the values are refused.
  std::optional<ApproxValues> ReadValues();
  // Fills the fields, each value with six significant digits.
  void SetValues(const ApproxValues& values);

  void ShowCurve();
  void CopyInitializer();
  void FitToPolar();

 signals:
  // The curve shown no longer stands for the fields: one changed, or the
  // dialog closed.
  void CurveWithdrawn();

 protected:
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // Makes the report's every line fit at the label's width.
  void FitReport();
  // The field's name in messages: its label without the colon; the second
  // stall drag's label repeats the first one's text, so it has its own.
  std::string FieldName(ApproxField field) const;
  void ShowError(const std::string& text);
  // Names the field and its range, and puts the cursor into the field.
  void ShowProblem(const ApproxProblem& problem);
  // The number `field` holds, `empty` for a blank one; none, after a
  // message naming it `name`, for anything else.
  std::optional<double> ReadNumber(QLineEdit* field, const std::string& name, double empty);
  // The held values and the angle range; none after a message.
  std::optional<ApproxFitOptions> ReadFitOptions();
  void SetStatus(const std::string& text);

  QtUserInterface& ui_;
  PolarSource polar_;
  CurveSink show_;
  std::array<QLineEdit*, kApproxFieldCount> fields_{};
  std::array<QCheckBox*, kApproxFieldCount> holds_{};
  QLabel* rangeLabel_ = nullptr;
  QLabel* rangeToLabel_ = nullptr;
  QLineEdit* alfaFrom_ = nullptr;
  QLineEdit* alfaTo_ = nullptr;
  QPushButton* fit_ = nullptr;
  QLabel* status_ = nullptr;
};

}  // namespace tavilo
