// Splash and help windows as the user meets them.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "shell/settings_registry.h"
#include "shell/ui/frmGiris.h"
#include "shell/ui/frm_yardim.h"
#include "support/fake_windows.h"

using namespace lirovan;
using namespace lirovan::shell;
using namespace Qt::StringLiterals;

TEST(Splash, RecordsTheFolderShowsItsLinesAndKnowsWhenItIsClosed) {
    QTemporaryDir folder;
    SettingsRegistry store(folder.filePath(u"kayit.ini"_s));
    reg_api registry(store);
    frmGiris splash(registry, u"/opt/lirovan"_s);
    EXPECT_EQ(registry.readValue(InstallKey, InstallValue), RegValue(u"/opt/lirovan"_s));

    splash.showAtOnce();
    const QImage before = splash.grab().toImage();
    const QSize size = splash.size();
    splash.Label1->setText(u"Kitap Adı: <b>"_s + u"uzun bir ad "_s.repeated(40));
    splash.repaintLabels();
    EXPECT_EQ(splash.size(), size);
    EXPECT_NE(splash.grab().toImage(), before);
    EXPECT_TRUE(splash.splashShown);
    splash.close();
    EXPECT_FALSE(splash.splashShown);
}

TEST(Help, ShowsOneTextAtATimeAndSwitchesTheBrowseWindowBehindIt) {
    test::FakeMainFrame frame;
    std::optional<browse::Tab> tab;
    frm_yardim help(frame, [&tab](browse::Tab shown) { tab = shown; });
    help.show();
    EXPECT_TRUE(help.lblIcerik->isVisible());
    EXPECT_FALSE(help.lblKBaslik->isVisible());
    const struct {
        QString button, title, text, word;
        std::optional<browse::Tab> tab;
    } cases[] = {
        {u"cmdKitap"_s, u"Kitaplar"_s, u"lblKitaplar"_s, u"çift tıklayın"_s, browse::Tab::Books},
        {u"cmdArama"_s, u"Arama"_s, u"lblArama"_s, u"Tüm Kelimeleri"_s, browse::Tab::Search},
        {u"cmdNot"_s, u"Not Defteri"_s, u"lblNotlar"_s, u"Düzen → Yapıştır"_s, std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(qPrintable(c.button));
        tab.reset();
        help.findChild<QToolButton*>(c.button)->click();
        EXPECT_EQ(tab, c.tab);
        EXPECT_EQ(help.lblKBaslik->text(), c.title);
        EXPECT_TRUE(help.lblKBaslik->isVisible());
        EXPECT_FALSE(help.lblIcerik->isVisible());
        for (const auto* text : help.findChildren<QTextBrowser*>())
            EXPECT_EQ(text->isVisible(), text->objectName() == c.text) << qPrintable(text->objectName());
        EXPECT_TRUE(help.findChild<QTextBrowser*>(c.text)->toPlainText().contains(c.word));
    }
    EXPECT_TRUE(help.helpShown);
    help.reject();
    EXPECT_FALSE(help.helpShown);
}
