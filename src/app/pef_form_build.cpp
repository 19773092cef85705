// Building the main window's widgets: menus, toolbar, browser, tree, range
// column, graphs and read-outs, at their design positions.
#include <QActionGroup>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>

#include "caption_apply.h"
#include "file_browser.h"
#include "graph_controller.h"
#include "graph_widget.h"
#include "icons.h"
#include "options_dialog.h"
#include "pef_form.h"
#include "recent_files.h"
#include "strings/captions.h"
#include "strings/string_table.h"
#include "undo_actions.h"

namespace tavilo {

namespace {

// Design positions in twips: left, top, width, height.
struct DesignRect {
  double left, top, width, height;
};

constexpr DesignRect kDrivesLabel{120, 60, 4800, 240};
constexpr DesignRect kDrives{120, 300, 4800, 330};
constexpr DesignRect kDirectoriesLabel{120, 720, 2340, 240};
constexpr DesignRect kDirectories{120, 960, 2340, 2280};
constexpr DesignRect kFilesLabel{2580, 720, 2340, 240};
constexpr DesignRect kFiles{2580, 960, 2340, 2280};
constexpr DesignRect kTreeLabel{5100, 60, 5000, 240};
constexpr DesignRect kTree{5100, 300, 6000, 2940};
constexpr double kRangeTops[7] = {60, 300, 690, 1110, 1350, 1770, 2010};  // Label1, cbClMax, cbClMin, Label2, ...
constexpr double kRangeWidth = 1500;
constexpr double kReadoutTop = 3330;
constexpr double kTabStripTop = 3690;
constexpr double kPictureGap = 60;  // between the tab buttons and the pictures

QLabel* NewLabel(QWidget* parent, const char* name, int item = -1) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  if (item >= 0) label->setProperty(kItemProperty, item);
  return label;
}

}  // namespace

QAction* PEFForm::AddAction(QMenu* menu, const char* name, void (PEFForm::*slot)()) {
  auto* action = new QAction(menu);
  action->setObjectName(name);
  menu->addAction(action);
  if (slot != nullptr) connect(action, &QAction::triggered, this, slot);
  return action;
}

void PEFForm::BuildMenus() {
  QMenu* file = menuBar()->addMenu(QString());
  file->setObjectName("mnuFile");
  AddAction(file, "mnuFileImport", nullptr)->setShortcut(QKeySequence::Open);
  AddAction(file, "mnuFileExport", nullptr)->setShortcut(QKeySequence::Save);
  QAction* batch = AddAction(file, "mnuBatch", nullptr);
  QAction* saveGraphs = AddAction(file, "mnuFileSaveGraphs", nullptr);
  saveGraphs->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
  AddAction(file, "mnuFilePrint", &PEFForm::Print)->setShortcut(QKeySequence::Print);
  AddAction(file, "mnuFilePrintPreview", &PEFForm::PrintPreview);
  AddAction(file, "mnuPrintOptions", nullptr);
  AddAction(file, "mnuSeparator", nullptr)->setSeparator(true);
  AddAction(file, "mnuFileExit", nullptr)->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
  connect(findChild<QAction*>("mnuFileImport"), &QAction::triggered, this, [this] { document_->Import(); });
  connect(findChild<QAction*>("mnuFileExport"), &QAction::triggered, this, [this] { document_->Export(); });
  connect(batch, &QAction::triggered, this, [this] { document_->BatchConvert(); });
  connect(saveGraphs, &QAction::triggered, graphController_, &GraphController::SaveGraphs);
  connect(findChild<QAction*>("mnuPrintOptions"), &QAction::triggered, this, [this] { options_->exec(); });
  connect(findChild<QAction*>("mnuFileExit"), &QAction::triggered, this, &QWidget::close);
  recent_ = new RecentFiles(file, findChild<QAction*>("mnuSeparator"), *ui_,
                            [this](const QString& path) { document_->OpenFile(path.toStdString()); });

  QMenu* edit = menuBar()->addMenu(QString());
  edit->setObjectName("mnuMainEdit");  // the tree's pop-up is mnuEdit
  undo_ = new UndoActions(edit, *document_);

  QMenu* tools = menuBar()->addMenu(QString());
  tools->setObjectName("mnuTools");
  QAction* envelope = AddAction(tools, "mnuToolsEnvelope", nullptr);
  connect(envelope, &QAction::triggered, this, [this] { document_->Envelope(); });
  AddAction(tools, "mnuToolsApproximate", &PEFForm::OpenApproximation);
  AddAction(tools, "mnuToolsRunXfoil", &PEFForm::OpenXfoil);
  QAction* sortRe = AddAction(tools, "mnuToolsSortRe", nullptr);
  QAction* sortMach = AddAction(tools, "mnuToolsSortMach", nullptr);
  connect(sortRe, &QAction::triggered, this, [this] { document_->SortReynolds(); });
  connect(sortMach, &QAction::triggered, this, [this] { document_->SortMach(); });

  QMenu* view = menuBar()->addMenu(QString());
  view->setObjectName("mnuView");
  QAction* numbers = AddAction(view, "mnuViewAxisNumbers", nullptr);
  QAction* readable = AddAction(view, "mnuViewReadableColors", nullptr);
  for (QAction* action : {numbers, readable}) action->setCheckable(true);
  view->addSeparator();
  QAction* resetZoom = AddAction(view, "mnuViewResetZoom", nullptr);
  connect(numbers, &QAction::toggled, graphController_, &GraphController::SetAxisNumbers);
  connect(readable, &QAction::toggled, graphController_, &GraphController::SetReadableColors);
  connect(resetZoom, &QAction::triggered, graphController_, &GraphController::ResetZoom);

  QMenu* language = menuBar()->addMenu(QString());
  language->setObjectName("mnuLanguage");
  auto* languages = new QActionGroup(this);
  QAction* english = AddAction(language, "mnuLangEnglish", nullptr);
  QAction* german = AddAction(language, "mnuLangDeutsch", nullptr);
  english->setText(QString::fromUtf8(kEnglishMenuCaption.data(), kEnglishMenuCaption.size()));
  german->setText(QString::fromUtf8(kGermanMenuCaption.data(), kGermanMenuCaption.size()));
  for (QAction* action : {english, german}) {
    action->setCheckable(true);
    languages->addAction(action);
  }
  connect(english, &QAction::triggered, this, [this] { SetLanguage(Language::English); });
  connect(german, &QAction::triggered, this, [this] { SetLanguage(Language::German); });

  // The tree's pop-up menus; the tree's own handlers show them.
  auto* editNode = new QMenu(this);
  editNode->setObjectName("mnuEdit");
  AddAction(editNode, "mnuEditDelete", nullptr);
  AddAction(editNode, "mnuEditName", nullptr);
  auto* editPolar = new QMenu(this);
  editPolar->setObjectName("mnuEditPolar");
  AddAction(editPolar, "mnuEditPolarDelete", nullptr);
  AddAction(editPolar, "mnuEditCopy", nullptr);
  AddAction(editPolar, "mnuEditPolarPaste", nullptr);
  AddAction(editPolar, "mnuEditPolarSeparator", nullptr)->setSeparator(true);
  AddAction(editPolar, "mnuEditPolarName", nullptr);
  AddAction(editPolar, "mnuEditPolarPoints", nullptr);
}

void PEFForm::LendKeysTo(QWidget* window) {
  QList<QAction*> entries = toolbar_->actions();
  for (QAction* menu : menuBar()->actions())
    if (menu->menu() != nullptr) entries += menu->menu()->actions();
  for (QAction* entry : entries)
    if (!entry->shortcut().isEmpty() && entry->shortcutContext() == Qt::WindowShortcut) window->addAction(entry);
}

void PEFForm::BuildToolbar() {
  toolbar_ = addToolBar(QStringLiteral("Toolbar"));
  toolbar_->setObjectName("Toolbar1");
  toolbar_->setMovable(false);
  toolbar_->setIconSize(QSize(24, 24));
  struct Button {
    const char* key;
    const char* theme;
    const char* fallback;
    QKeySequence shortcut;
  };
  const Button buttons[] = {
      {"NEW", "document-new", "new", QKeySequence()},  // no key: it deletes without asking
      {"OPEN", "document-open", "open", QKeySequence()},
      {"SAVE", "document-save", "save", QKeySequence()},
      {"PRINT", "document-print", "print", QKeySequence()},
      {nullptr, nullptr, nullptr, QKeySequence()},
      {"HELP", "help-about", "help", QKeySequence::HelpContents},
  };
  for (const Button& button : buttons) {
    if (button.key == nullptr) {
      toolbar_->addSeparator();
      continue;
    }
    QAction* action = toolbar_->addAction(ThemedIcon(button.theme, button.fallback), QString::fromLatin1(button.key));
    action->setData(QString::fromLatin1(button.key));
    action->setObjectName(QStringLiteral("Toolbar1_%1").arg(button.key));
    if (!button.shortcut.isEmpty()) action->setShortcut(button.shortcut);
    const QString key = QString::fromLatin1(button.key);
    connect(action, &QAction::triggered, this, [this, key] { ToolbarButtonClick(key); });
  }
}

void PEFForm::BuildBrowserAndTree(QWidget* client) {
  browser_ = new FileBrowser(client);
  connect(browser_, &FileBrowser::FileOpened, this, &PEFForm::OpenSelectedFile);
  NewLabel(client, "Bezeichnung1", 0);
  NewLabel(client, "Bezeichnung1", 1)->setBuddy(browser_->Drives());
  NewLabel(client, "Bezeichnung1", 2)->setBuddy(browser_->Directories());
  NewLabel(client, "Bezeichnung1", 3)->setBuddy(browser_->Files());
  tree_ = new QTreeWidget(client);
  tree_->setObjectName("TreeView1");
  tree_->setHeaderHidden(true);
}

void PEFForm::BuildRangeColumn(QWidget* client) {
  const char* labels[] = {"Label1", "Label2", "Label3"};
  for (int i = 0; i < 3; ++i) {
    rangeLabels_[i] = NewLabel(client, labels[i]);
  }
  int index = 0;
  for (const RangeList& data : kRangeLists) {
    auto* list = new QComboBox(client);
    list->setObjectName(QString::fromUtf8(data.name.data(), data.name.size()));
    rangeLists_[index++] = list;
  }
  rangeLabels_[0]->setBuddy(rangeLists_[0]);
  rangeLabels_[1]->setBuddy(rangeLists_[2]);
  rangeLabels_[2]->setBuddy(rangeLists_[3]);
}

void PEFForm::BuildGraphs(QWidget* client) {
  profilName_ = NewLabel(client, "ProfilName");
  QFont bold = profilName_->font();
  bold.setBold(true);
  profilName_->setFont(bold);

  tabStrip_ = new QTabWidget(client);
  tabStrip_->setObjectName("theTabStrip");
  for (Graph g : kGraphs) {
    const std::string_view name = Describe(g).picture;
    const QString objectName = QString::fromLatin1(name.data(), qsizetype(name.size()));
    graphs_[g] = new GraphWidget(objectName, client);
  }
  for (Graph g : kGraphs) {
    readouts_[g] = NewLabel(client, std::string(Describe(g).readoutLabel).c_str());
    readouts_[g]->setTextInteractionFlags(Qt::TextSelectableByMouse);
    // The one beside the tab strip stands at the right end of its graph.
    if (!OnTab(g)) readouts_[g]->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  }
  ConnectReadouts(graphs_, readouts_);
}

int PEFForm::Px(double twips) const { return TwipsToPixels(twips, Dpi()); }

void PEFForm::PlaceDesign() {
  auto label = [this](int item) { return qobject_cast<QWidget*>(FindControl(this, "Bezeichnung1", item)); };
  // Labels and drop-down lists keep at least the height their font needs.
  auto place = [this](QWidget* widget, const DesignRect& r) {
    int height = Px(r.height);
    if (qobject_cast<QLabel*>(widget) || qobject_cast<QComboBox*>(widget)) {
      height = std::max(height, widget->sizeHint().height());
    }
    widget->setGeometry(Px(r.left), Px(r.top), Px(r.width), height);
  };
  place(label(1), kDrivesLabel);
  place(browser_->Drives(), kDrives);
  place(label(2), kDirectoriesLabel);
  place(browser_->Directories(), kDirectories);
  place(label(3), kFilesLabel);
  place(browser_->Files(), kFiles);
  place(label(0), kTreeLabel);
  place(tree_, kTree);

  QWidget* column[7] = {rangeLabels_[0], rangeLists_[0],  rangeLists_[1], rangeLabels_[1],
                        rangeLists_[2],  rangeLabels_[2], rangeLists_[3]};
  const double rangeLeft = kTree.left + kTree.width + 300;
  for (int i = 0; i < 7; ++i) place(column[i], {rangeLeft, kRangeTops[i], kRangeWidth, 330});
  place(profilName_, {120, kReadoutTop, 4800, 300});

  const int tabHeight = tabStrip_->tabBar()->sizeHint().height();
  place(tabStrip_, {11400, kTabStripTop, 4000, 4000});
  const QRect strip = tabStrip_->geometry();
  const QRect picture(strip.left() + Px(50), strip.top() + tabHeight + Px(kPictureGap), strip.width() - Px(100),
                      strip.height() - tabHeight - Px(160));
  for (Graph g : kGraphs) {
    if (OnTab(g))
      graphs_[g]->setGeometry(picture);
    else
      graphs_[g]->setGeometry(Px(100), picture.top(), Px(11200), picture.height());
  }

  layout_.tabStrip = strip;
  layout_.smallPicture = picture;
  layout_.clCdPicture = graphs_[Graph::ClCd]->geometry();
  layout_.treeView = tree_->geometry();
  layout_.rangeLeft = rangeLabels_[0]->x();
}

}  // namespace tavilo
