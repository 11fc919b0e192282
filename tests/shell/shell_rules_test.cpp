// The rules behind the shell: versions, printing, copied pages, the application folder and its record.
#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "notes/fake_printing.h"
#include "shell/application_folder.h"
#include "shell/extra_windows.h"
#include "shell/page_printing.h"
#include "shell/recent_libraries.h"
#include "shell/reg_api.h"
#include "shell/update_check.h"
#include "support/fake_windows.h"
#include "support/files.h"
#include "support/full_disk.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::shell;
using namespace Qt::StringLiterals;

namespace {

QByteArray manifest(const char* parts) {
    return QByteArray("<?xml version='1.0'?><r><v>") + parts + "</v></r>";
}

class GivenManifest : public ManifestSource {
  public:
    std::optional<QByteArray> body;
    void fetch(Answer answer) override { answer(body); }
};

}  // namespace

TEST(UpdateCheckTest, OnlyANewerVersionIsToldAndOnlyAManifestThatWasReadIsDone) {
    const struct {
        std::optional<QByteArray> xml;
        std::optional<QString> version;
        bool told = false;
    } cases[] = {
        {manifest("<a>5</a><b>1</b><c>1</c><d>5</d>"), u"5.1.1.5"_s},
        {manifest("<a>5</a><b>1</b><c>1</c><d>6</d>"), u"5.1.1.6"_s, true},
        {manifest("<a>5</a><b>1</b><c>1</c><d>10</d>"), u"5.1.1.10"_s},  // versions compare as texts
        {manifest("<a> 5 </a><b>1x</b><c>yok</c>"), u"5.1.0.0"_s},
        {manifest("<a>05</a><b>1.50</b><c>-2</c><d><e>7</e></d><f>9</f>"), u"5.1.5.-2.7"_s, true},
        {manifest("<a>100000</a>"), u"100000.0.0.0"_s},
        {"<r/>", u"0.0.0.0"_s},
        {"<r><v/><w><a>9</a></w></r>", u"0.0.0.0"_s},
        {"", std::nullopt},
        {"<html><body>404<br></body>", std::nullopt},
        {manifest("<a>6</a>") + "<r/>", std::nullopt},
        {"<!DOCTYPE r [<!ENTITY a '9'>]><r><v><a>&a;</a></v></r>", std::nullopt},
        {std::nullopt, std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.xml.value_or("no answer").toStdString());
        EXPECT_EQ(manifestVersion(c.xml.value_or(QByteArray())), c.version);
        GivenManifest source;
        source.body = c.xml;
        test::ScriptedDialogs dialogs;
        int downloads = 0;
        std::function<void()> tell = [] {};
        UpdateCheck check(
            u"5.1.1.5"_s, source, dialogs, u"http://site.example"_s, [&](auto act) { tell = std::move(act); },
            [&] { ++downloads; });
        std::optional<bool> done;
        check.check([&](bool value) { done = value; });
        EXPECT_EQ(done, c.version.has_value());
        EXPECT_TRUE(dialogs.messages.empty()) << "the window is busy";
        tell();
        EXPECT_EQ(downloads, c.told ? 1 : 0);
        ASSERT_EQ(dialogs.messages.size(), c.told ? 1U : 0U);
        for (const platform::Message& each : dialogs.messages)
            EXPECT_TRUE(each.text.contains(u"http://site.example adresinden"));
    }
}

TEST(ExtraWindowsTest, ACopiedPageHasAbsoluteImagesAndNoHomeEntry) {
    const QString page =
        u"<DIV class=menuitems url=\"/opt/k\\OKU\\VQ.htm\">Giriş Sayfası</DIV>\r\n<HR>\r\n"
        "<IMG src=\"print.gif\"><IMG src=\"duaimages/1.gif\"><IMG src=\"x/print.gif\"><DIV>Giriş Sayfası</DIV>"_s;
    EXPECT_EQ(copiedPage(page, platform::AppFolder(u"/opt/k"_s)),
              u"\r\n<IMG src=\"/opt/k\\OKU\\print.gif\"><IMG src=\"/opt/k\\OKU\\duaimages/1.gif\">"
              "<IMG src=\"x/print.gif\"><DIV>Giriş Sayfası</DIV>"_s);
}

TEST(ExtraWindowsTest, ACopyIsCalledAsItsPageIs) {
    const std::pair<QString, QString> cases[] = {
        {u"İçerik Penceresi - Sabır"_s, u"Sabır"_s},
        {u"İçerik Penceresi"_s, u"Giriş & <son>"_s},
    };
    for (const auto& [caption, copied] : cases)
        EXPECT_EQ(copiedCaption(caption, u"<HEAD><TITLE>\r\n Giriş &amp; &lt;son&gt;</TITLE></HEAD>"_s),
                  copied);
    EXPECT_EQ(copiedCaption(u"İçerik Penceresi"_s, u"<TITLE></TITLE>"_s), u"İçerik Penceresi"_s);
}

namespace {

class PrintedPage : public test::FakePageView {
  public:
    bool printerWorks = true;
    std::optional<platform::PrintRange> printed;
    void print(const platform::PrintTarget& target, std::function<void(bool)> finished) override {
        printed = target.range;
        finished(printerWorks);
    }
};

}  // namespace

TEST(PagePrinting, PrintsThePageOrItsSelectionAndReportsOnlyAFailureBehindTheDialog) {
    PrintedPage page;
    test::FakePrinting printing;
    test::ScriptedDialogs dialogs;
    page.selection = u"seçim"_s;
    printDirectly(page, printing, dialogs);
    EXPECT_TRUE(printing.offeredSelection) << "no printer: the dialog can print to a file";
    EXPECT_FALSE(page.printed) << "cancelled";
    page.selection.clear();
    printing.printer = platform::PrintTarget{};
    printDirectly(page, printing, dialogs);
    EXPECT_EQ(page.printed, platform::PrintRange::Page);
    page.selection = u"seçim"_s;
    printDirectly(page, printing, dialogs);
    EXPECT_EQ(page.printed, platform::PrintRange::Selection);

    page.printed.reset();
    printWithDialog(page, printing, dialogs);
    EXPECT_TRUE(printing.offeredSelection);
    EXPECT_FALSE(page.printed) << "cancelled";
    printing.chosen = platform::PrintTarget{};
    printWithDialog(page, printing, dialogs);
    EXPECT_TRUE(page.printed);
    page.printerWorks = false;
    printDirectly(page, printing, dialogs);
    EXPECT_TRUE(dialogs.messages.empty());
    printWithDialog(page, printing, dialogs);
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(dialogs.messages[0].text, u"Yazıcı algılanamadı!"_s);
}

TEST(ApplicationFolder, IsTheOptionThenTheProgramsThenTheUsersWhichIsFilledOnce) {
    QTemporaryDir temporary;
    const auto at = [&](const QString& name) { return temporary.filePath(name); };
    const QString library = test::writeFile(at(u"bin/Kitaplar.VQ"_s), "own");
    const QString file = test::writeFile(at(u"file"_s), "no folder");
    test::writeFile(at(u"share/kitaplar.vq"_s), "library");
    test::writeFile(at(u"share/OKU/VQ.htm"_s), "start");
    FolderCandidates candidates{at(u"chosen"_s), at(u"bin"_s), at(u"share"_s), at(u"home/l"_s)};
    const auto chosen = [&candidates] {
        const auto folder = applicationFolder(candidates);
        return folder ? folder->text() : folder.error().message;
    };
    EXPECT_EQ(chosen(), *candidates.option);
    candidates.option.reset();
    EXPECT_EQ(chosen(), candidates.executable);
    QFile::remove(library);

    EXPECT_EQ(chosen(), candidates.user);
    EXPECT_EQ(test::readFile(at(u"home/l/kitaplar.vq"_s)), "library");
    // The second start keeps what the user has and brings back only what is missing.
    test::writeFile(at(u"home/l/kitaplar.vq"_s), "changed");
    QFile::remove(at(u"home/l/OKU/VQ.htm"_s));
    {
        const test::FullDisk full;
        EXPECT_TRUE(chosen().contains(u"VQ.htm"));
        EXPECT_FALSE(QFile::exists(at(u"home/l/OKU/VQ.htm"_s)));
    }
    test::writeFile(at(u"home/l/OKU/VQ.htm"_s), "");  // as an earlier start left it on a full disk
    EXPECT_EQ(chosen(), candidates.user);
    EXPECT_EQ(test::readFile(at(u"home/l/kitaplar.vq"_s)), "changed");
    EXPECT_EQ(test::readFile(at(u"home/l/OKU/VQ.htm"_s)), "start");

    candidates.user = file;
    EXPECT_TRUE(chosen().contains(file)) << "cannot be filled";
    candidates.shipped = at(u"nowhere"_s);
    EXPECT_EQ(chosen(), candidates.executable) << "nothing is shipped";
}

TEST(RegApi, ReadsBackWhatItWroteKeepsItBetweenRunsAndHoldsTheInstallPath) {
    QTemporaryDir folder;
    const QString file = folder.filePath(u"yeni/kayit.ini"_s);
    reg_api api(file);
    api.writeValue(u"A\\B", u"v", u"no key yet"_s);
    EXPECT_EQ(api.readValue(u"A\\B", u"v"), std::nullopt);
    api.createKey(u"A\\B");
    for (const RegValue& value : {RegValue(u"/home/ışık/Kitaplığım @x=1; \"y\""_s), RegValue(u""_s),
                                  RegValue(-2), RegValue(0x41424344)}) {
        api.writeValue(u"A\\B", u"v", value);
        EXPECT_EQ(api.readValue(u"A\\B", u"v"), value);
        EXPECT_EQ(reg_api(file).readValue(u"A\\B", u"v"), value);
    }

    // The application folder is recorded unless it is already.
    for (const RegValue& before : {RegValue(u"/opt"_s), RegValue(u"/SRV/lirovan"_s), RegValue(7)}) {
        api.createKey(InstallKey);
        api.writeValue(InstallKey, InstallValue, before);
        recordInstallPath(api, u"/srv/lirovan "_s);
        EXPECT_EQ(api.readValue(InstallKey, InstallValue), RegValue(u"/srv/lirovan "_s));
    }
    recordInstallPath(api, u" /srv/lirovan"_s);
    EXPECT_EQ(api.readValue(InstallKey, InstallValue), RegValue(u"/srv/lirovan "_s)) << "but for blanks";
    EXPECT_TRUE(
        test::readFile(file).contains("[SOFTWARE]\nLirovan\\LirovanKey\\LirovanKey=\"/srv/lirovan \""));
}

TEST(RecentLibraries, AreTheLastEightWithoutTheOneThatIsOpen) {
    const QTemporaryDir place;
    const QString file = place.filePath(u"ayar.ini"_s);
    for (int i = 1; i <= 12; ++i) {
        reg_api run(file);  // each a run of its own
        rememberLibrary(run, u"/k/%1 ğ"_s.arg(i));
    }
    reg_api api(file);
    rememberLibrary(api, u"/k/7 ğ"_s);
    const auto numbers = [&](const QString& open) {
        QString all;
        for (const QString& folder : recentLibraries(api, open)) all += folder.mid(3).chopped(2) + u' ';
        return all;
    };
    EXPECT_EQ(numbers(u"/k/7 ğ"_s), u"12 11 10 9 8 6 5 4 ");
    EXPECT_EQ(numbers(u"/baska"_s), u"7 12 11 10 9 8 6 5 ");
    forgetLibrary(api, u"/k/10 ğ"_s);
    EXPECT_EQ(numbers(u"/k/7 ğ"_s), u"12 11 9 8 6 5 4 ");
    EXPECT_EQ(libraryCaption(u"/uzun/yol/Kitaplarım"_s, 5), u"Kitaplarım  (…/yol)");
    EXPECT_EQ(libraryCaption(u"/"_s), u"/");
}
