#pragma once
// PEFForm, the main window: file browser, structure tree, range lists, the
// five graphs, menus, toolbar and status bar. It builds and lays out its
// widgets; the actions on the document live in DocumentController.

#include <QMainWindow>
#include <QTranslator>
#include <array>
#include <functional>
#include <memory>

#include "document_controller.h"
#include "graph_view.h"
#include "main_layout.h"
#include "plot/print_page.h"
#include "plotqt/render_context.h"
#include "strings/language.h"

class QAction;
class QComboBox;
class QPrinter;
class QLabel;
class QMenu;
class QTabWidget;
class QToolBar;
class QTreeWidget;

namespace tavilo {

class AboutDialog;
class ApproxDialog;
class FileBrowser;
class GraphController;
class OptionsDialog;
class PointsWindows;
class QtUserInterface;
class RecentFiles;
class TreeController;
class UndoActions;

class PEFForm : public QMainWindow {
  Q_OBJECT

 public:
  // Builds the window and runs the start sequence (settings, language,
  // tabs, range lists, print options, browser directory, empty document).
  explicit PEFForm(QWidget* parent = nullptr);
  ~PEFForm() override;

  // Relabels every window in `language` and redraws what carries a text.
  void SetLanguage(tavilo::Language language);
  tavilo::Language Language() const;
  void EnableItems(bool printing);
  void UpdateTreeView();
  void RefreshPlots();
  // Dispatches a toolbar button by its key ("NEW", "OPEN", ...).
  void ToolbarButtonClick(const QString& key);
  // Opens the file highlighted in Datei1.
  void OpenSelectedFile();
  // Saves the settings; runs when the window closes.
  void SaveSettings();

  // File > Print: the print dialog, then the page of the ticked polars.
  void Print();
  // File > Print Preview: the page as it will be printed.
  void PrintPreview();
  // The page of the current airfoil with the options dialog's switches on
  // `printer`'s paper.
  PageRequest PrintRequestFor(const QPrinter& printer) const;
  // Tests answer the print dialog: the chooser sets up the printer and says
  // whether to print.
  void SetPrinterChooser(std::function<bool(QPrinter&)> chooser) { printerChooser_ = std::move(chooser); }

 signals:
  // Sent once the run has begun: Print is disabled and the status says so.
  void PrintRunStarted();

 public:
  // Lays the window out for its current size and redraws the graphs.
  void LayoutWindow();

  DocumentController& Document() { return *document_; }
  QtUserInterface& UserInterfaceImpl() { return *ui_; }
  OptionsDialog& Options() { return *options_; }
  FileBrowser& Browser() { return *browser_; }
  TreeController& Tree() { return *treeController_; }
  GraphController& Graphs() { return *graphController_; }
  ApproxDialog& Approximation() { return *approx_; }
  // Tools > Approximate: shows frmApprox beside the window.
  void OpenApproximation();
  PointsWindows& Points() { return *points_; }
  RecentFiles& Recent() { return *recent_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  // Swallows status tips, which would wipe "Ready." whenever a menu opens.
  bool event(QEvent* event) override;
  // A polar file dropped on the window opens as if chosen in the file list;
  // several, or one with Ctrl held, are imported one after the other.
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void BuildMenus();
  void BuildToolbar();
  void BuildBrowserAndTree(QWidget* client);
  void BuildRangeColumn(QWidget* client);
  void BuildGraphs(QWidget* client);
  void PlaceDesign();
  void PlaceReadouts();
  void ShowTab(int index);
  void SwitchLanguage();
  // Tools > Run XFOIL...: the dialog, made at its first opening.
  void OpenXfoil();
  // Shows a change of the document: tree, graphs, menus, title.
  void DocumentChanged(const DocumentChange& change);
  // The title names the file the document was opened from ("Tavilo" alone
  // before any, or once that opening is undone); the label beside the tree
  // shows the airfoil's name. The one place that sets either.
  void ShowDocumentName();
  void RunPrint(QPrinter& printer);
  // Sets the View menu's switches and the graphs from stored settings.
  void ApplyViewSettings(bool axisNumbers, bool readableColors);
  // Draws the page on `printer`; false when it could not be started.
  bool PaintOn(QPrinter& printer);
  // The polar that is the tree's current node, or null.
  PolarPtr CurrentTreePolar() const;
  // Draws the approximation's curve over the graphs until their next redraw.
  void ShowApproximation(const std::vector<PolarPoint>& curve);
  QAction* AddAction(QMenu* menu, const char* name, void (PEFForm::*slot)());
  // Adds the menus' and the toolbar's entries that have keys to `window`,
  // so that the keys work while that window is the active one.
  void LendKeysTo(QWidget* window);
  PlotRanges CurrentRanges() const;
  double Dpi() const;
  int Px(double twips) const;

  std::unique_ptr<QtUserInterface> ui_;
  std::unique_ptr<DocumentController> document_;
  FileBrowser* browser_ = nullptr;
  OptionsDialog* options_ = nullptr;
  AboutDialog* about_ = nullptr;
  ApproxDialog* approx_ = nullptr;
  class XfoilDialog* xfoil_ = nullptr;
  TreeController* treeController_ = nullptr;
  GraphController* graphController_ = nullptr;
  UndoActions* undo_ = nullptr;
  PointsWindows* points_ = nullptr;
  RecentFiles* recent_ = nullptr;
  QWidget* client_ = nullptr;
  QToolBar* toolbar_ = nullptr;
  QTreeWidget* tree_ = nullptr;
  QLabel* profilName_ = nullptr;
  QTabWidget* tabStrip_ = nullptr;
  GraphWidgets graphs_;
  RenderContext renderContext_;  // of the graphs' redraws
  ReadoutLabels readouts_;
  std::array<QComboBox*, 4> rangeLists_{};
  std::array<QLabel*, 3> rangeLabels_{};  // Label1, Label2, Label3
  MainLayout layout_;
  QTranslator qtTranslator_;  // Qt's own texts in the window's language
  std::function<bool(QPrinter&)> printerChooser_;
};

}  // namespace tavilo
