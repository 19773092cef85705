#include "pef_form.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>

#include "about_dialog.h"
#include "approx_dialog.h"
#include "base/errors.h"
#include "base/number_text.h"
#include "caption_apply.h"
#include "file_browser.h"
#include "fileio/load.h"
#include "graph_controller.h"
#include "graph_widget.h"
#include "icons.h"
#include "options_dialog.h"
#include "points_window.h"
#include "qt_translation.h"
#include "qt_user_interface.h"
#include "recent_files.h"
#include "settings.h"
#include "strings/captions.h"
#include "strings/string_table.h"
#include "tree/structure_tree.h"
#include "tree_controller.h"
#include "undo_actions.h"
#include "xfoil_dialog.h"

namespace tavilo {

namespace {

QString Latin1(std::string_view text) { return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())); }

// The approximation's curve: an orange that no polar takes, since polars
// draw in the classic palette.
constexpr Color kApproxCurveColor = Color::Rgb(230, 115, 0);

// The settings' "./" means the working directory; the classic ".\" too.
QString BrowserStartPath(const QString& stored) {
  if (stored == "./" || stored == ".\\") return QDir::currentPath();
  return stored;
}

}  // namespace

PEFForm::PEFForm(QWidget* parent) : QMainWindow(parent) {
  setObjectName("PEFForm");
  setWindowIcon(AppIcon());
  client_ = new QWidget(this);
  client_->setObjectName("PEFFormClient");
  setCentralWidget(client_);
  auto* status = new QStatusBar(this);
  status->setObjectName("StatusBar1");
  setStatusBar(status);

  BuildBrowserAndTree(client_);
  BuildRangeColumn(client_);
  BuildGraphs(client_);
  ui_ = std::make_unique<QtUserInterface>(this, status, profilName_);
  document_ = std::make_unique<DocumentController>(*ui_);
  ui_->SetDialogDirectory([this] { return browser_->Path(); });
  options_ = new OptionsDialog(this);
  about_ = new AboutDialog(this);
  graphController_ = new GraphController(
      graphs_, *document_, *ui_, renderContext_, [this] { return CurrentRanges(); }, this);
  BuildMenus();
  BuildToolbar();
  treeController_ =
      new TreeController(tree_, findChild<QMenu*>("mnuEdit"), findChild<QMenu*>("mnuEditPolar"), *document_, *ui_);
  approx_ = new ApproxDialog(
      *ui_, [this] { return CurrentTreePolar(); },
      [this](const std::vector<PolarPoint>& curve) { ShowApproximation(curve); }, this);
  connect(tree_, &QTreeWidget::currentItemChanged, approx_, &ApproxDialog::UpdateFitButton);
  LendKeysTo(approx_);
  // The model's curve stands for the values shown; it goes with them.
  connect(approx_, &ApproxDialog::CurveWithdrawn, graphController_, &GraphController::ClearOverlay);
  points_ = new PointsWindows(this, *document_, *ui_, *undo_);
  connect(treeController_, &TreeController::PointsRequested, this,
          [this](const QString& key) { points_->Show(key.toStdString()); });
  document_->Edits().Subscribe([this](const DocumentChange& change) { DocumentChanged(change); });

  const AppSettings settings = ReadSettings();
  // A language without strings would leave every caption unreadable (and
  // every message failing); such a stored value falls back to English.
  ui_->SetLanguage(settings.language == Language::German ? Language::German : Language::English);
  SwitchLanguage();

  tabStrip_->clear();
  for (Graph g : kGraphs) {
    if (!OnTab(g)) continue;
    const int index = tabStrip_->addTab(new QWidget(tabStrip_), Latin1(Describe(g).title));
    tabStrip_->tabBar()->setTabData(index, Latin1(Describe(g).tabKey));
  }
  connect(tabStrip_, &QTabWidget::currentChanged, this, &PEFForm::ShowTab);

  for (std::size_t i = 0; i < rangeLists_.size(); ++i) {
    const RangeList& data = kRangeLists[i];
    for (int item = 0; item < data.count; ++item) {
      rangeLists_[i]->addItem(QString::fromUtf8(data.items[item].data(), data.items[item].size()));
    }
    rangeLists_[i]->setCurrentIndex(data.initialIndex);
    // A new scale from a list ends every zoom.
    connect(rangeLists_[i], &QComboBox::currentIndexChanged, graphController_, &GraphController::ResetZoom);
  }

  options_->Apply(settings);
  ApplyViewSettings(settings.axisNumbers != 0, settings.readableColors != 0);
  recent_->SetFiles(settings.recentFiles);
  if (!browser_->SetPath(BrowserStartPath(settings.path))) browser_->SetPath(QDir::currentPath());
  EnableItems(false);

  PlaceDesign();
  ShowTab(0);
  resize(Px(17700), Px(12300));
  if (!restoreGeometry(ReadWindowGeometry()) && screen() != nullptr) {
    resize(size().boundedTo(screen()->availableSize()));
  }
  client_->installEventFilter(this);
  // Every control and graph stays usable down to this size.
  setMinimumSize(900, 600);
  setAcceptDrops(true);
  browser_->Files()->setFocus();
}

PEFForm::~PEFForm() = default;

double PEFForm::Dpi() const { return logicalDpiY() > 0 ? logicalDpiY() : 96.0; }

tavilo::Language PEFForm::Language() const { return ui_->Language(); }

void PEFForm::SwitchLanguage() {
  const tavilo::Language language = Language();
  ApplyCaptions(this, MainWindowCaptions(), language);
  findChild<QAction*>("mnuBatch")->setText(QString::fromStdString(GetResString(Text::BatchPefToXml, language)));
  auto text = [language](Text id) { return QString::fromStdString(GetResString(id, language)); };
  findChild<QMenu*>("mnuView")->setTitle(text(Text::ViewMenu));
  const std::pair<const char*, Text> later[] = {
      {"mnuFilePrintPreview", Text::PrintPreview}, {"mnuFileSaveGraphs", Text::SaveGraphsAs},
      {"mnuViewAxisNumbers", Text::AxisNumbers},   {"mnuViewReadableColors", Text::ReadableColours},
      {"mnuViewResetZoom", Text::ResetZoom},       {"mnuToolsRunXfoil", Text::RunXfoilMenu}};
  for (const auto& [name, id] : later) findChild<QAction*>(name)->setText(text(id));
  graphController_->SwitchLanguage(language);
  if (xfoil_ != nullptr) xfoil_->SwitchLanguage(language);
  InstallQtTranslation(qtTranslator_, language);
  if (QAction* help = findChild<QAction*>("Toolbar1_HELP"))
    help->setToolTip(QString::fromStdString(GetResString(Text::AboutTitle, language)));
  statusBar()->showMessage(QString::fromStdString(GetResString(Text::Ready, language)));
  findChild<QAction*>("mnuLangEnglish")->setChecked(language == Language::English);
  findChild<QAction*>("mnuLangDeutsch")->setChecked(language == Language::German);
  options_->SwitchLanguage(language);
  about_->SwitchLanguage(language);
  approx_->SwitchLanguage(language);
  if (treeController_ != nullptr) treeController_->SwitchLanguage(language);
  undo_->Update(language);
  if (points_ != nullptr) points_->SwitchLanguage();
  // The captions reset the title to the program's name alone.
  ShowDocumentName();
}

void PEFForm::SetLanguage(tavilo::Language language) {
  ui_->SetLanguage(language);
  SwitchLanguage();
  // The polar nodes and the Cl-Cd title carry a translated word.
  UpdateTreeView();
  RefreshPlots();
}

void PEFForm::EnableItems(bool printing) {
  const bool hasData = document_->Current().ConfigCount() != 0;
  QAction* print = findChild<QAction*>("mnuFilePrint");
  QAction* exportFile = findChild<QAction*>("mnuFileExport");
  print->setEnabled(hasData && !printing);
  findChild<QAction*>("mnuFilePrintPreview")->setEnabled(hasData && !printing);
  for (const char* name : {"mnuFileExport", "mnuFileSaveGraphs", "mnuToolsApproximate", "mnuToolsEnvelope",
                           "mnuToolsSortRe", "mnuToolsSortMach"}) {
    findChild<QAction*>(name)->setEnabled(hasData);
  }
  findChild<QAction*>("Toolbar1_PRINT")->setEnabled(print->isEnabled());
  findChild<QAction*>("Toolbar1_SAVE")->setEnabled(exportFile->isEnabled());
}

void PEFForm::ToolbarButtonClick(const QString& key) {
  if (key == "NEW") {
    document_->NewAirfoil();
  } else if (key == "OPEN") {
    document_->Import();
  } else if (key == "SAVE") {
    document_->Export();
  } else if (key == "PRINT") {
    Print();
  } else if (key == "HELP") {
    about_->SwitchLanguage(Language());
    about_->exec();
  }
}

void PEFForm::OpenXfoil() {
  if (xfoil_ == nullptr) {
    xfoil_ = new XfoilDialog(
        Language(), [this](const Airfoil& run) { document_->Edits().AddXfoilRun(run); }, this);
    LendKeysTo(xfoil_);
  }
  xfoil_->SwitchLanguage(Language());
  xfoil_->show();
  xfoil_->raise();
  xfoil_->activateWindow();
}

void PEFForm::OpenApproximation() {
  approx_->UpdateFitButton();
  approx_->show();
  approx_->raise();
  approx_->activateWindow();
}

PolarPtr PEFForm::CurrentTreePolar() const {
  const std::string key = treeController_->SelectedKey().toStdString();
  if (KindOfKey(key) != NodeKind::Polar) return nullptr;
  const ConfigurationPtr set = document_->Current().Configuration(SetIndexOfKey(key));
  return set ? set->Polar(PolarIndexOfKey(key)) : nullptr;
}

void PEFForm::ShowApproximation(const std::vector<PolarPoint>& curve) {
  graphController_->SetOverlay(curve, kApproxCurveColor);
}

void PEFForm::OpenSelectedFile() {
  const QString path = browser_->SelectedFile();
  if (path.isEmpty()) return;
  document_->OpenFile(path.toStdString());
}

void PEFForm::UpdateTreeView() { treeController_->UpdateTreeView(); }

void PEFForm::DocumentChanged(const DocumentChange& change) {
  treeController_->DocumentChanged(change);
  // Another airfoil is looked at afresh, every graph in its ranges' view.
  const EditKind kind = change.command->Kind();
  if (kind == EditKind::Open || kind == EditKind::New) graphController_->ForgetZoom();
  RefreshPlots();
  undo_->Update(Language());
  points_->DocumentChanged();
  if (change.step == ChangeStep::Do) {
    for (const std::string& file : change.command->Files()) recent_->Add(QString::fromStdString(file));
  }
  if (change.Changes() & kContentChanged) EnableItems(false);
  if ((change.Changes() & kFileChanged) && change.command->Changed()) {
    // The read-outs spoke of the airfoil that was shown before.
    for (QLabel* readout : readouts_) readout->clear();
  }
  ShowDocumentName();
}

void PEFForm::ShowDocumentName() {
  const tavilo::Document& document = document_->Edits();
  ui_->SetWindowTitle(WindowTitleOf(document.FileName()));
  ui_->SetAirfoilName(document.Current().Name);
}

PlotRanges PEFForm::CurrentRanges() const {
  auto text = [this](int i) { return rangeLists_[i]->currentText().toStdString(); };
  return ParseRanges(text(0), text(1), text(2), text(3));
}

void PEFForm::RefreshPlots() { graphController_->Redraw(); }

void PEFForm::ApplyViewSettings(bool axisNumbers, bool readableColors) {
  findChild<QAction*>("mnuViewAxisNumbers")->setChecked(axisNumbers);
  findChild<QAction*>("mnuViewReadableColors")->setChecked(readableColors);
  graphController_->SetAxisNumbers(axisNumbers);
  graphController_->SetReadableColors(readableColors);
}

void PEFForm::ShowTab(int index) {
  const QString key = tabStrip_->tabBar()->tabData(index).toString();
  for (Graph g : kGraphs) {
    if (!OnTab(g)) continue;
    const bool visible = key == Latin1(Describe(g).tabKey);
    graphs_[g]->setVisible(visible);
    readouts_[g]->setVisible(visible);
    if (visible) graphs_[g]->raise();
  }
}

void PEFForm::LayoutWindow() {
  MainLayout current;
  current.tabStrip = tabStrip_->geometry();
  current.clCdPicture = graphs_[Graph::ClCd]->geometry();
  current.smallPicture = graphs_[Graph::Bll]->geometry();
  current.treeView = tree_->geometry();
  current.rangeLeft = rangeLabels_[0]->x();
  LayoutMetrics metrics;
  metrics.client = QSize(client_->width(), client_->height() + statusBar()->height());
  metrics.statusBarHeight = statusBar()->height();
  metrics.firstTabHeight = tabStrip_->tabBar()->tabRect(0).height();
  metrics.label1Width = rangeLabels_[0]->width();
  metrics.dpi = Dpi();
  layout_ = LayoutMainWindow(current, metrics);

  tabStrip_->setGeometry(layout_.tabStrip);
  for (Graph g : kGraphs) graphs_[g]->setGeometry(OnTab(g) ? layout_.smallPicture : layout_.clCdPicture);
  tree_->setGeometry(layout_.treeView);
  QWidget* column[7] = {rangeLabels_[0], rangeLists_[0],  rangeLists_[1], rangeLabels_[1],
                        rangeLists_[2],  rangeLabels_[2], rangeLists_[3]};
  for (QWidget* widget : column) widget->move(layout_.rangeLeft, widget->y());
  PlaceReadouts();
  RefreshPlots();
}

void PEFForm::PlaceReadouts() {
  // The read-outs ride just above their graphs: the Cl-Cd one at the right
  // end of the big graph beside the airfoil name, the tab strip's one above
  // the strip.
  const int top = profilName_->y();
  const int height = profilName_->height();
  const QRect big = graphs_[Graph::ClCd]->geometry();
  profilName_->setGeometry(profilName_->x(), top, std::max(Px(500), big.width() / 2), height);
  for (Graph g : kGraphs) {
    if (OnTab(g))
      readouts_[g]->setGeometry(layout_.tabStrip.left(), top, layout_.tabStrip.width(), height);
    else
      readouts_[g]->setGeometry(big.left() + big.width() / 2, top, big.width() / 2, height);
  }
}

bool PEFForm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == client_ && event->type() == QEvent::Resize) LayoutWindow();
  return QMainWindow::eventFilter(watched, event);
}

void PEFForm::SaveSettings() {
  AppSettings settings;
  settings.language = Language();
  options_->Store(settings);
  settings.path = browser_->Path();
  settings.axisNumbers = graphController_->AxisNumbers() ? 1 : 0;
  settings.readableColors = graphController_->ReadableColors() ? 1 : 0;
  settings.recentFiles = recent_->Files();
  WriteSettings(settings);
  WriteWindowGeometry(saveGeometry());
}

namespace {

QStringList DroppedFiles(const QMimeData* data) {
  QStringList files;
  if (data == nullptr) return files;
  for (const QUrl& url : data->urls())
    if (url.isLocalFile()) files << url.toLocalFile();
  return files;
}

}  // namespace

void PEFForm::dragEnterEvent(QDragEnterEvent* event) {
  if (!DroppedFiles(event->mimeData()).isEmpty()) event->acceptProposedAction();
}

void PEFForm::dropEvent(QDropEvent* event) {
  const QStringList files = DroppedFiles(event->mimeData());
  if (files.isEmpty()) return;
  event->acceptProposedAction();
  if (files.size() == 1 && !(event->modifiers() & Qt::ControlModifier)) {
    document_->OpenFile(files.first().toStdString());
    return;
  }
  std::vector<std::string> paths;
  for (const QString& file : files) paths.push_back(file.toStdString());
  document_->ImportFiles(paths);
}

bool PEFForm::event(QEvent* event) {
  // The status bar's text changes only when the program changes it.
  if (event->type() == QEvent::StatusTip) return true;
  return QMainWindow::event(event);
}

void PEFForm::closeEvent(QCloseEvent* event) {
  SaveSettings();
  options_->close();
  event->accept();
}

}  // namespace tavilo
