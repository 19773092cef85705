#pragma once
// frmXfoil, Tools > Run XFOIL...: the airfoil (a NACA designation or a
// coordinate file, drawn with its thickness and camber), the conditions, Run
// and Cancel. The run itself is the core's; it runs on a thread of its own
// so that the window stays responsive, and its polars arrive on the GUI
// thread as one step of the document.

#include <QDialog>
#include <atomic>
#include <functional>
#include <thread>

#include "strings/language.h"
#include "tools/xfoil_run.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace tavilo {

class OutlineView;

class XfoilDialog : public QDialog {
  Q_OBJECT

 public:
  // `apply` takes the run's airfoil (RunAirfoil) into the document.
  using Apply = std::function<void(const Airfoil& run)>;
  XfoilDialog(Language language, Apply apply, QWidget* parent = nullptr);
  ~XfoilDialog() override;

  void SwitchLanguage(Language language);
  // Starts the run from the fields; a message in the report when one is wrong.
  void Run();
  // Stops a run; what the jobs computed is dropped.
  void Cancel();
  bool Running() const { return worker_.joinable(); }

 private:
  void AirfoilChanged();
  // The fields as the last run left them, so that a user picks up there.
  void RestoreFields();
  void SaveFields() const;
  std::optional<XfoilConditions> ReadConditions();
  void Finished(const XfoilRun& run, const XfoilConditions& conditions, const std::string& setupError);
  void Report(const std::string& text);

  Language language_;
  Apply apply_;
  XfoilAirfoil airfoil_;
  bool airfoilValid_ = false;
  std::thread worker_;
  std::atomic<bool> cancel_{false};

  QLineEdit* airfoilField_;
  OutlineView* outline_;
  QLabel* shape_;
  QLineEdit *reynolds_, *mach_, *ncrit_, *tripTop_, *tripBottom_, *from_, *to_, *step_, *iterations_, *timeLimit_,
      *program_;
  QComboBox* polarType_;
  QCheckBox* repanel_;
  QProgressBar* progress_;
  QLabel* report_;
  QPushButton *run_, *cancel_button_, *browse_;
  std::vector<std::pair<QLabel*, Text>> labels_;
};

}  // namespace tavilo
