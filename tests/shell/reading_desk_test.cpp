// Going on and going back in the real main window.
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QWebEngineScript>
#include <QWebEngineView>

#include "main_window_fixture.h"

inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

using namespace lirovan;
using namespace lirovan::test;

namespace {

struct ReadingDeskTest : MainWindowTest {
    ReadingDeskTest() {
        QString longText;
        for (int i = 0; i < 80; ++i)
            longText += u"<P>Bu konunun %1. satırı; burada kuyu da geçer, uzun uzun.</P>"_s.arg(i);
        file.topic(901, 2, u"Kuyu Bir", longText, 1).topic(902, 2, u"Kuyu İki", longText, 1);
        file.topic(903, 40, u"Kuyu Üç", u"<P>Son kuyu.</P>", 1);
    }

    QString caption() const { return content().windowTitle().section(u" - "_s, 1); }
    QString passing() const { return window->statusBar()->currentMessage(); }
    void clickTopic(const QString& heading) {
        click(books(), match(books(), Qt::DisplayRole, heading, Qt::MatchStartsWith));
        ASSERT_EQ(page().waitUntilComplete(), platform::Outcome::Answered);
    }
    /// What is kept is written when the program has gone.
    void close() {
        window->close();
        window.reset();
    }
    QString inTree() const { return books().currentIndex().data().toString(); }
    double top() { return page().scrollTop().valueOr(-1); }
    QTreeView& results() const { return *find<QTreeView>(u"tvw_Kitaplar_Bul"_s); }
    void search(const QString& query) {
        press(u"tlbtn_Arama"_s);
        auto* box = find<QLineEdit>(u"txt_Bul"_s);
        box->setText(query);
        QTest::keyClick(box, Qt::Key_Return);
    }
    int tab() const { return find<QTabWidget>(u"tb_Arama"_s)->currentIndex(); }
};

}  // namespace

TEST_F(ReadingDeskTest, TheNextTopicIsThatOfTheTreeOnIntoTheNextBook) {
    ASSERT_TRUE(start());
    choose(u"mnu_OncekiKonu"_s);
    EXPECT_TRUE(content().wb_Icerik2->isShown()) << "before the first one there is none";
    choose(u"mnu_SonrakiKonu"_s);
    EXPECT_EQ(image(u"C1"_s), u"Incele"_s);
    EXPECT_EQ(inTree(), node(u"C1"_s).data().toString());
    QStringList read;
    for (int i = 0; i < 20 && passing().isEmpty(); ++i) {
        read << caption();
        EXPECT_EQ(inTree(), caption());
        choose(u"mnu_SonrakiKonu"_s);
    }
    ASSERT_EQ(read.size(), 15) << read.join(u'|').toStdString();
    EXPECT_EQ(passing(), u"Bundan sonra konu yok."_s);
    choose(u"mnu_OncekiKonu"_s);
    EXPECT_EQ(caption(), read.at(13));
}

TEST_F(ReadingDeskTest, BackBringsTopicsMarkedPagesAndTheStartPageWhereTheyStood) {
    ASSERT_TRUE(start());
    clickTopic(u"Kuyu Bir"_s);
    page().setScrollTop(700);
    search(u"kuyu"_s);
    choose(u"mnu_SonrakiIsabet"_s);
    ASSERT_TRUE(shows(page(), u"ggggittt79"_s));
    for (int i = 0; i < 30; ++i) choose(u"mnu_SonrakiIsabet"_s);
    const double atHit = top();
    EXPECT_GT(atHit, 300);
    press(u"tlbtn_Kitap"_s);
    clickTopic(u"Kuyu İki"_s);
    page().setScrollTop(444);

    choose(u"mnu_Geri"_s);
    EXPECT_EQ(tab(), 1);
    EXPECT_EQ(top(), atHit);
    EXPECT_TRUE(page().hasElement(u"ggggittt0"_s).valueOr(false));
    EXPECT_TRUE(button(u"Up"_s)->isEnabled() && button(u"Down"_s)->isEnabled());
    const double before = top();
    choose(u"mnu_SonrakiIsabet"_s);
    EXPECT_GT(top(), before) << "the hit came back too";
    choose(u"mnu_Geri"_s);
    EXPECT_EQ(tab(), 0);
    EXPECT_EQ(caption().trimmed(), u"Kuyu Bir"_s);
    EXPECT_NEAR(top(), 700, 2);
    EXPECT_FALSE(page().hasElement(u"ggggittt0"_s).valueOr(true));
    choose(u"mnu_Geri"_s);
    EXPECT_TRUE(content().wb_Icerik2->isShown());
    choose(u"mnu_Geri"_s);
    EXPECT_FALSE(passing().isEmpty());

    child(u"frm_Icerik"_s)->resize(500, 400);
    for (int i = 0; i < 3; ++i) choose(u"mnu_Ileri"_s);
    EXPECT_EQ(caption().trimmed(), u"Kuyu İki"_s);
    EXPECT_GT(top(), 300) << "another width, another line, the same words";
}

TEST_F(ReadingDeskTest, BackPassesOverTheRunsAndTopicsThatAreGone) {
    ASSERT_TRUE(start());
    clickTopic(u"Kuyu Bir"_s);
    search(u"kuyu"_s);
    choose(u"mnu_SonrakiIsabet"_s);
    press(u"tlbtn_Kitap"_s);
    clickTopic(u"Kuyu İki"_s);
    clickTopic(u"Kuyu Üç"_s);
    child(u"frm_Arama"_s)->close();  // the runs go with it
    press(u"tlbtn_Kitap"_s);
    file.execute(u"DELETE FROM tbl_Konu WHERE KonuID=902");
    QTest::mouseClick(window->centralWidget(), Qt::BackButton);
    EXPECT_TRUE(QTest::qWaitFor([this] { return caption().trimmed() == u"Kuyu Bir"_s; }));
    EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(ReadingDeskTest, F3GoesOnAcrossTopicsBooksAndAuthorsAndSaysWhereTheRunEnds) {
    ASSERT_TRUE(start());
    choose(u"mnu_SonrakiIsabet"_s);
    EXPECT_EQ(passing(), u"Gösterilecek arama sonucu yok."_s);
    search(u"kuyu"_s);
    QStringList read;
    for (int i = 0; i < 300 && passing() != u"Aramanın sonuna gelindi."_s; ++i) {
        choose(u"mnu_SonrakiIsabet"_s);
        if (read.isEmpty() || read.last() != caption().trimmed()) read << caption().trimmed();
    }
    EXPECT_EQ(read, QStringList({u"Kuyu Bir"_s, u"Kuyu İki"_s, u"Kuyu Üç"_s}));
    EXPECT_EQ(results().currentIndex().data().toString().left(7), u"Kuyu Üç"_s);
    choose(u"mnu_OncekiIsabet"_s);
    EXPECT_EQ(caption().trimmed(), u"Kuyu İki"_s);
    EXPECT_GT(top(), 1000) << "its last hit";
    choose(u"mnu_AgactaGoster"_s);
    EXPECT_EQ(tab(), 0);
    EXPECT_EQ(inTree().trimmed(), u"Kuyu İki"_s);
}

TEST_F(ReadingDeskTest, OffersAtTheNextStartToGoOnAndGoesOnByItselfWhenAsked) {
    ASSERT_TRUE(start());
    EXPECT_EQ(find(u"kaldiginizYer"_s), nullptr) << "nothing was read yet";
    EXPECT_FALSE(find<QAction>(u"mnu_Surdur"_s)->isChecked());
    search(u"kuyu"_s);
    choose(u"mnu_SonrakiIsabet"_s);
    page().setScrollTop(900);
    ASSERT_TRUE(page().place(false).valueOr({}).passage.contains(u" 15. satırı"_s));
    close();

    ASSERT_TRUE(start());
    EXPECT_TRUE(content().wb_Icerik2->isShown()) << "the start is as laid down";
    EXPECT_EQ(tab(), 0);
    ASSERT_NE(find(u"kaldiginizYer"_s), nullptr);
    EXPECT_EQ(find<QLabel>(u"kaldiginizYerMetni"_s)->text(),
              u"Kaldığınız yer: Kuyu Bir – Kuran (Kuran Sırası)"_s);
    find<QPushButton>(u"cmdSurdur"_s)->click();
    EXPECT_EQ(caption().trimmed(), u"Kuyu Bir"_s);
    EXPECT_TRUE(page().place(false).valueOr({}).passage.contains(u" 15. satırı"_s));
    EXPECT_TRUE(QTest::qWaitFor([this] { return find(u"kaldiginizYer"_s) == nullptr; }));
    choose(u"mnu_Geri"_s);
    EXPECT_TRUE(content().wb_Icerik2->isShown());

    clickTopic(u"Kuyu İki"_s);
    page().setScrollTop(500);
    choose(u"mnu_Surdur"_s);
    EXPECT_TRUE(find<QAction>(u"mnu_Surdur"_s)->isChecked());
    window->showNormal();
    window->setGeometry(40, 50, 700, 500);
    child(u"frm_Arama"_s)->resize(260, child(u"frm_Arama"_s)->height());
    const int width = child(u"frm_Arama"_s)->width();
    books().expand(node(u"T1"_s));
    books().expand(node(u"P4"_s));
    press(u"tlbtn_Arama"_s);
    find<QLineEdit>(u"txt_Bul"_s)->clear();
    close();

    ASSERT_TRUE(start());
    EXPECT_TRUE(find<QAction>(u"mnu_Surdur"_s)->isChecked());
    EXPECT_EQ(window->geometry(), QRect(40, 50, 700, 500));
    EXPECT_FALSE(window->isMaximized());
    EXPECT_NEAR(child(u"frm_Arama"_s)->width(), width, 1);
    EXPECT_EQ(tab(), 1);
    EXPECT_TRUE(books().isExpanded(node(u"P4"_s)));
    EXPECT_EQ(caption().trimmed(), u"Kuyu İki"_s);
    EXPECT_NEAR(top(), 500, 40) << "another width, the same words";
    EXPECT_EQ(find<QLineEdit>(u"txt_Bul"_s)->text(), u"kuyu"_s);
}

TEST_F(ReadingDeskTest, StartsWithoutASessionThatIsDamagedOrWhoseTopicIsGone) {
    const QString path = file.filePath(u"Notlar/okur.vq"_s);
    QDir().mkpath(file.filePath(u"Notlar"_s));
    writeFile(path, "bozuk");
    ASSERT_TRUE(start());
    EXPECT_TRUE(dialogs.messages.empty());
    clickTopic(u"Kuyu Bir"_s);
    for (const platform::Answer answer : {platform::Answer::No, platform::Answer::Yes}) {
        dialogs.answer(answer);
        dialogs.answerText(u"benim satırım"_s);
    }
    choose(u"mnu_YerImiEkle"_s);
    EXPECT_EQ(dialogs.questions.back().initial, u"benim satırım"_s) << "what was typed is not lost";
    EXPECT_EQ(dialogs.messages.size(), 3U) << "asked twice, and told the new name";
    EXPECT_EQ(passing(), u"Yer imi eklendi."_s);
    close();
    file.execute(u"DELETE FROM tbl_KonuBaslik WHERE KonuID=901");
    ASSERT_TRUE(start());
    EXPECT_EQ(find(u"kaldiginizYer"_s), nullptr);
}

TEST_F(ReadingDeskTest, KeepsABookmarkAtASelectionAndOpensItThere) {
    ASSERT_TRUE(start());
    choose(u"mnu_YerImiEkle"_s);
    EXPECT_FALSE(passing().isEmpty()) << "the start page is no topic";
    clickTopic(u"Kuyu Bir"_s);
    page().findChild<QWebEngineView*>()->page()->runJavaScript(
        u"getSelection().selectAllChildren(document.querySelectorAll('p')[50])"_s,
        QWebEngineScript::ApplicationWorld);
    ASSERT_TRUE(QTest::qWaitFor([this] { return page().hasSelection(); }));
    dialogs.answerText(u"  elliyi an  "_s);
    choose(u"mnu_YerImiEkle"_s);
    EXPECT_TRUE(dialogs.questions.back().prompt.contains(u"Bu konunun 50. satırı"_s));
    choose(u"mnu_YerImiEkle"_s);  // cancelled
    clickTopic(u"Kuyu Üç"_s);
    dialogs.answerText(QString());
    choose(u"mnu_YerImiEkle"_s);

    inDialog([this] { choose(u"mnu_YerImleri"_s); },
             [this](QWidget* list) {
                 auto& rows = *list->findChild<QTreeView*>(u"lstYerImleri"_s);
                 ASSERT_EQ(rows.model()->rowCount(), 2);
                 EXPECT_EQ(rows.model()->index(0, 2).data().toString(), u"Kuyu Üç – Ağaçlar"_s);
                 EXPECT_EQ(rows.model()->index(0, 3).data().toString(), u"Son kuyu."_s);
                 QTest::keyClick(&rows, Qt::Key_Delete);
                 EXPECT_EQ(rows.model()->rowCount(), 1);
                 QTest::keyClick(&rows, Qt::Key_Z, Qt::ControlModifier);
                 EXPECT_EQ(rows.model()->rowCount(), 2);
                 auto* box = list->findChild<QLineEdit*>(u"txtYerImiAra"_s);
                 box->setText(u"ELLİYİ"_s);
                 EXPECT_TRUE(QTest::qWaitFor([&] { return rows.model()->rowCount() == 1; }));
                 dialogs.answerText(u"yeni ad"_s);
                 QTest::keyClick(&rows, Qt::Key_F2);
                 box->setText(u"yeni"_s);
                 EXPECT_TRUE(QTest::qWaitFor(
                     [&] { return rows.model()->index(0, 1).data().toString() == u"yeni ad"_s; }));
                 dialogs.answerSavePath(file.filePath(u"imler.txt"_s));
                 list->findChild<QPushButton*>(u"cmd_ymKaydet"_s)->click();
                 EXPECT_TRUE(readFile(file.filePath(u"imler.txt"_s)).startsWith("yeni ad\n\"Bu konunun 50."));
                 list->findChild<QPushButton*>(u"cmd_ymAc"_s)->click();
             });
    EXPECT_EQ(caption().trimmed(), u"Kuyu Bir"_s);
    EXPECT_EQ(page().place(true).valueOr({}).passage,
              u"Bu konunun 50. satırı; burada kuyu da geçer, uzun uzun."_s);
    EXPECT_GT(top(), 800);
}
