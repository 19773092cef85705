// Settings: defaults on a first start, the round trip over exit and
// restart, and how stored texts are read.
#include <QAbstractButton>
#include <QComboBox>
#include <QStatusBar>

#include "app/file_browser.h"
#include "app/options_dialog.h"
#include "app/settings.h"
#include "app_fixture.h"

namespace tavilo::testing {
namespace {

TEST(SettingNumber, ReadsStoredTextsByTheLeadingNumberRule) {
  struct Case {
    const char* text;
    bool truncate;
    int expected;
  };
  const Case cases[] = {
      {"1", true, 1},    {"2", true, 2},     {"2.9", true, 2},   {"-1", false, -1}, {"0", false, 0},
      {"abc", true, 0},  {"", false, 0},     {" 1 ", false, 1},  {"2.5", false, 2}, {"1e9", false, 0},
      {"1,5", true, 1},  {"-0.6", false, -1},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(SettingNumber(c.text, c.truncate), c.expected) << '"' << c.text << '"';
  }
}

using SettingsTest = MainWindowTest;

TEST_F(SettingsTest, FirstStartIsEnglishWithoutPrintOptionsInTheWorkingDirectory) {
  dir.Write("wing.xml", "");
  PEFForm& form = Start();
  EXPECT_EQ(Language(), kEnglish);
  EXPECT_EQ(form.windowTitle(), "Tavilo");
  EXPECT_EQ(form.statusBar()->currentMessage(), "Ready.");
  EXPECT_EQ(form.Options().GridShow(), 0);
  EXPECT_EQ(form.Options().LegendShow(), 0);
  EXPECT_EQ(form.Options().LegendPosition(0), 0);
  EXPECT_EQ(form.Options().LegendPosition(1), 0);
  EXPECT_EQ(QDir(form.Browser().Path()), QDir(QString::fromStdString(dir.Path().string())));
  EXPECT_EQ(FileList()->count(), 1);
}

TEST_F(SettingsTest, ExitWritesEveryKeyAsIntegerText) {
  Start();
  Find<QAbstractButton>("chkGrid")->setChecked(true);
  Exit();
  EXPECT_EQ(StoredSetting("Language"), "1");
  EXPECT_EQ(StoredSetting("GridShow"), "1");
  EXPECT_EQ(StoredSetting("LegendShow"), "0");
  EXPECT_EQ(StoredSetting("LegendPosition1"), "0");
  EXPECT_EQ(StoredSetting("LegendPosition2"), "0");
  EXPECT_EQ(QDir(StoredSetting("Path")), QDir(QString::fromStdString(dir.Path().string())));
}

TEST_F(SettingsTest, EveryValueSurvivesExitAndRestart) {
  const TempDir elsewhere;
  elsewhere.Write("other.pol", "");
  PEFForm& first = Start();
  Action("mnuLangDeutsch")->trigger();
  Find<QAbstractButton>("chkLegend")->setChecked(true);
  QList<QAbstractButton*> options = window->findChildren<QAbstractButton*>("optLegend");
  ASSERT_EQ(options.size(), 2);
  for (QAbstractButton* option : options) {
    if (option->property("item").toInt() == 1) option->setChecked(true);
  }
  ASSERT_TRUE(first.Browser().SetPath(QString::fromStdString(elsewhere.Path().string())));
  first.resize(1010, 707);
  Exit();
  EXPECT_EQ(StoredSetting("LegendPosition2"), "-1");

  SetLanguage(kEnglish);
  PEFForm& second = Start(QSize());
  EXPECT_EQ(second.size(), QSize(1010, 707));
  EXPECT_EQ(Language(), kGerman);
  EXPECT_EQ(second.statusBar()->currentMessage(), "Bereit.");
  EXPECT_EQ(second.Options().GridShow(), 0);
  EXPECT_EQ(second.Options().LegendShow(), 1);
  EXPECT_EQ(second.Options().LegendPosition(0), 0);
  EXPECT_EQ(second.Options().LegendPosition(1), -1);
  EXPECT_EQ(QDir(second.Browser().Path()), QDir(QString::fromStdString(elsewhere.Path().string())));
  EXPECT_EQ(FileList()->item(0)->text(), "other.pol");
}

TEST_F(SettingsTest, AStoredPathThatIsGoneLeavesTheBrowserInTheWorkingDirectory) {
  StoreSetting("Path", "/no/such/directory/anywhere");
  PEFForm& form = Start();
  EXPECT_EQ(QDir(form.Browser().Path()), QDir(QString::fromStdString(dir.Path().string())));
}

TEST_F(SettingsTest, GarbageInTheStoreReadsAsDefaultsAndDoesNotStopTheStart) {
  StoreSetting("Language", "zero");
  StoreSetting("GridShow", "yes");
  StoreSetting("LegendPosition1", "-1");
  PEFForm& form = Start();
  EXPECT_EQ(Language(), kEnglish);
  EXPECT_EQ(form.Options().GridShow(), 0);
  EXPECT_EQ(form.Options().LegendPosition(0), -1);
}

}  // namespace
}  // namespace tavilo::testing
