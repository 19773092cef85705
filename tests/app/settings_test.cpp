// Settings: the round trip over exit and restart, how stored texts are read,
// and defaults where the store holds garbage.
#include "app/settings.h"

#include <QAbstractButton>
#include <QStatusBar>
#include <QStatusTipEvent>

#include "app/file_browser.h"
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
      {"2.9", true, 2},  {"-1", false, -1}, {"abc", true, 0}, {"", false, 0},      {" 1 ", false, 1},
      {"2.5", false, 2}, {"1e9", false, 0}, {"1,5", true, 1}, {"-0.6", false, -1},
  };
  for (const Case& c : cases) EXPECT_EQ(SettingNumber(c.text, c.truncate), c.expected) << '"' << c.text << '"';
}

using SettingsTest = MainWindowTest;

TEST_F(SettingsTest, EveryValueIsWrittenAsIntegerTextAndSurvivesExitAndRestart) {
  const TempDir elsewhere;
  elsewhere.Write("other.pol", "");
  PEFForm& first = Start();
  Action("mnuLangDeutsch")->trigger();
  Find<QAbstractButton>("chkGrid")->setChecked(true);
  Find<QAbstractButton>("chkLegend")->setChecked(true);
  for (QAbstractButton* option : window->findChildren<QAbstractButton*>("optLegend"))
    if (option->property("item").toInt() == 1) option->setChecked(true);
  ASSERT_TRUE(first.Browser().SetPath(QString::fromStdString(elsewhere.Path().string())));
  first.resize(1010, 707);
  Exit();
  QStringList stored;
  for (const char* key : {"Language", "GridShow", "LegendShow", "LegendPosition1", "LegendPosition2"})
    stored << StoredSetting(key);
  EXPECT_EQ(stored, QStringList({"2", "1", "1", "0", "-1"}));
  EXPECT_EQ(QDir(StoredSetting("Path")), DirOf(elsewhere));

  PEFForm& second = Start(QSize());
  EXPECT_EQ(second.size(), QSize(1010, 707));
  EXPECT_EQ(second.Language(), Language::German);
  EXPECT_EQ(second.statusBar()->currentMessage(), "Bereit.");
  const OptionsDialog& shown = second.Options();
  EXPECT_EQ(std::vector<int>({shown.GridShow(), shown.LegendShow(), shown.LegendPosition(0), shown.LegendPosition(1)}),
            std::vector<int>({1, 1, 0, -1}));
  EXPECT_EQ(FileList()->item(0)->text(), "other.pol");
}

TEST_F(SettingsTest, GarbageOrAVanishedPathInTheStoreReadsAsDefaults) {
  StoreSetting("Language", "zero");
  StoreSetting("GridShow", "yes");
  StoreSetting("Path", "/no/such/directory/anywhere");
  dir.Write("wing.xml", "");
  PEFForm& form = Start();
  EXPECT_EQ(form.Language(), Language::English);
  EXPECT_EQ(form.Options().GridShow(), 0);
  EXPECT_EQ(QDir(form.Browser().Path()), DirOf(dir));
  EXPECT_EQ(FileList()->count(), 1);
  QStatusTipEvent tip{QString()};  // as a menu opening sends, which once wiped the text
  QApplication::sendEvent(&form, &tip);
  EXPECT_EQ(form.statusBar()->currentMessage(), "Ready.");
}

}  // namespace
}  // namespace tavilo::testing
