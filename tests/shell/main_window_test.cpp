// The main window as a reader meets it: start, books, pages, search, windows that close and come back.
#include "main_window_fixture.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QTabWidget>
#include <QTextBrowser>
#include <QWebEngineScript>
#include <QWebEngineView>
#include <cstdio>

#include "shell/ui/frmGiris.h"

using namespace lirovan;
using namespace lirovan::test;

TEST_F(MainWindowTest, StartsMaximizedWithBothWindowsSideBySideAndItsBarsFilled) {
    ASSERT_TRUE(start());
    EXPECT_TRUE(window->isMaximized());
    EXPECT_TRUE(dialogs.messages.empty());
    const QRect room = area().rect();
    EXPECT_EQ(child(u"frm_Arama"_s)->geometry(), QRect(0, 0, 321, room.height()));
    EXPECT_EQ(child(u"frm_Icerik"_s)->geometry(), QRect(321, 0, room.width() - 321, room.height()));
    EXPECT_EQ(find<QComboBox>(u"cmb_Kitaplar"_s)->currentText(), u"<Lirovan>"_s);
    EXPECT_FALSE(find(u"cmb_Kitaplar"_s)->isVisible());
    EXPECT_EQ(find<QTabWidget>(u"tb_Arama"_s)->currentIndex(), 0);
    EXPECT_TRUE(shows(*content().wb_Icerik2, u"Hoş geldiniz"_s));
    EXPECT_FALSE(page().isShown());

    QStringList items;
    for (QAction* menu : window->menuBar()->actions()) {
        items << menu->text() + u':';
        for (QAction* item : menu->menu()->actions())
            if (item->isVisible() && !item->isSeparator())
                items << item->text() + u'|' + item->shortcut().toString();
    }
    EXPECT_EQ(items, QStringList({u"&Ana Menü:"_s,
                                  u"&Arama Penceresi|Ctrl+A"_s,
                                  u"&İçerik Penceresi|Ctrl+I"_s,
                                  u"Yeni P&encerede Aç|Ctrl+E"_s,
                                  u"&Not Defteri|Ctrl+N"_s,
                                  u"&Çıkış|"_s,
                                  u"&Düzen:"_s,
                                  u"&Kopyala|Ctrl+C"_s,
                                  u"&Yapıştır|Ctrl+V"_s,
                                  u"&Okuma:"_s,
                                  u"&Geri|Alt+Left"_s,
                                  u"&İleri|Alt+Right"_s,
                                  u"&Önceki Konu|Ctrl+PgUp"_s,
                                  u"&Sonraki Konu|Ctrl+PgDown"_s,
                                  u"Kitap Ağac&ında Göster|Ctrl+Shift+K"_s,
                                  u"Sonraki İsabe&t|F3"_s,
                                  u"Ö&nceki İsabet|Shift+F3"_s,
                                  u"&Yer İmi Ekle...|Ctrl+D"_s,
                                  u"Yer İm&leri...|Ctrl+Shift+D"_s,
                                  u"Say&fada Bul...|Ctrl+F"_s,
                                  u"Kelime &Şeridi|Ctrl+K"_s,
                                  u"Kaynağıyla K&opyala|Ctrl+Shift+C"_s,
                                  u"Yan Yana &Diz|"_s,
                                  u"Görünü&m|"_s,
                                  u"Da&ğılım|Ctrl+Shift+G"_s,
                                  u"&Bağlam Listesi|Ctrl+Shift+B"_s,
                                  u"Ö&zeti Kaydet...|"_s,
                                  u"Kitap &Ekle...|Ctrl+Shift+O"_s,
                                  u"Kitap &Kaldır...|"_s,
                                  u"Kitaplık &Aç...|"_s,
                                  u"Açılışta Kaldığım Yerden Sü&rdür|"_s,
                                  u"&Yardım:"_s,
                                  u"&Yardım|"_s,
                                  u"&Hakkında|"_s}));
    EXPECT_TRUE(find<QAction>(u"mnu_Arama"_s)->isChecked() && find<QAction>(u"mnu_Icerik"_s)->isChecked());
    EXPECT_FALSE(button(u"New"_s)->isEnabled() || find<QAction>(u"mnu_NewWindow"_s)->isEnabled());
}

TEST_F(MainWindowTest, GivesEachKeyToOneItem) {
    ASSERT_TRUE(start());
    QHash<QString, QString> taken;
    for (const QAction* item : window->menuBar()->findChildren<QAction*>())
        for (const QKeySequence& each : item->shortcuts()) {
            const QString key = each.toString();
            EXPECT_FALSE(taken.contains(key)) << key.toStdString() << ": " << taken.value(key).toStdString()
                                              << " and " << item->objectName().toStdString();
            taken.insert(key, item->objectName());
        }
    EXPECT_TRUE(taken.contains(u"Ctrl+E"_s));
}

TEST_F(MainWindowTest, OpensATopicEnlargesItsTypeReducesItAgainAndPrintsIt) {
    ASSERT_TRUE(start());
    EXPECT_EQ(image(u"C1"_s), u"Acik"_s);
    clickNode(u"C1"_s);
    EXPECT_EQ(image(u"C1"_s), u"Incele"_s);
    EXPECT_EQ(image(u"P1"_s), u"Ac"_s);
    EXPECT_TRUE(page().isShown());
    EXPECT_FALSE(content().wb_Icerik2->isShown());
    EXPECT_EQ(content().windowTitle(), u"İçerik Penceresi - "_s + node(u"C1"_s).data().toString());
    for (const QString& key : {u"buyult"_s, u"kucult"_s, u"New"_s, u"Up"_s, u"Down"_s})
        EXPECT_TRUE(appears(button(key))) << key.toStdString();
    ASSERT_TRUE(shows(page(), u"<TITLE>"_s));
    EXPECT_FALSE(button(u"Up"_s)->isEnabled() || button(u"Down"_s)->isEnabled());

    press(u"buyult"_s);
    EXPECT_TRUE(shows(page(), u"td {font-size: 17px;"_s));
    press(u"kucult"_s);
    press(u"kucult"_s);
    EXPECT_TRUE(shows(page(), u"td {font-size: 15px;"_s));
    EXPECT_FALSE(page().innerHtml().valueOr({}).contains(u"17px"_s));
    const auto zoomBy = [this](const QString& item, int times) {
        for (int i = 0; i < times; ++i) choose(item);
        return page().findChild<QWebEngineView*>()->zoomFactor();
    };
    EXPECT_DOUBLE_EQ(zoomBy(u"mnu_yBuyult"_s, 2), 1.4);
    EXPECT_DOUBLE_EQ(zoomBy(u"mnu_yNormal"_s, 1), 1);
    EXPECT_DOUBLE_EQ(zoomBy(u"mnu_YKucult"_s, 60), 0.4);
    EXPECT_DOUBLE_EQ(zoomBy(u"mnu_yBuyult"_s, 60), 5);
    Q_EMIT page().printRequested();
    EXPECT_EQ(printing.asked, 1);
    EXPECT_TRUE(dialogs.messages.empty()) << "cancelled";

    clickNode(u"C2"_s);
    EXPECT_EQ(window->frame().fontSize(), 16);
    clickNode(u"P1"_s);
    EXPECT_TRUE(content().wb_Icerik2->isShown()) << "a book shows the start page";
    EXPECT_EQ(content().windowTitle(), u"İçerik Penceresi"_s);
    EXPECT_TRUE(appears(button(u"buyult"_s), false));
    books().collapse(node(u"P1"_s));
    EXPECT_EQ(image(u"P1"_s), u"Lirovan"_s);
}

TEST_F(MainWindowTest, ExtraWindowsKeepTheirPageAndTheirNumbers) {
    ASSERT_TRUE(start());
    const auto& windows = window->windows().extraWindows();
    press(u"New"_s);
    choose(u"mnu_NewWindow"_s);
    EXPECT_EQ(windows.highest(), 0) << "the start page is not copied";

    clickNode(u"C1"_s);
    for (int i = 0; i < 3; ++i) press(u"New"_s);
    ASSERT_EQ(windows.highest(), 3) << "a page that is still loading is waited for";
    ASSERT_TRUE(shows(*extra(1)->wb_Icerik, u"<TITLE>"_s));
    EXPECT_EQ(extra(1)->windowTitle(), node(u"C1"_s).data().toString());
    EXPECT_EQ(extra(1)->geometry().right(), area().rect().right());

    clickNode(u"C2"_s);
    ASSERT_TRUE(shows(page(), u"IRMAK BOYU"_s));
    extra(1)->findChild<QToolButton*>(u"buyult"_s)->click();
    EXPECT_TRUE(shows(*extra(1)->wb_Icerik, u"td {font-size: 17px;"_s));
    EXPECT_FALSE(extra(3)->wb_Icerik->innerHtml().valueOr({}).contains(u"17px"_s)) << "each has its own";

    extra(3)->bringForward();
    extra(2)->bringForward();
    extra(2)->close();
    EXPECT_EQ(extra(2), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return area().activeSubWindow() == extra(3); })) << "active before";
    press(u"New"_s);
    EXPECT_EQ(windows.highest(), 4);
    EXPECT_EQ(windows.open().size(), 3U);
    choose(u"mnu_cik"_s);
    EXPECT_TRUE(windows.open().empty());
    EXPECT_FALSE(window->library().isOpen());
}

TEST_F(MainWindowTest, ClosedWindowsComeBackAndClosedBrowsingStartsAnew) {
    ASSERT_TRUE(start());
    clickNode(u"C1"_s);
    choose(u"mnu_Arama"_s);
    EXPECT_FALSE(child(u"frm_Arama"_s)->isVisible());
    EXPECT_EQ(status(), u"Veskaran`nin Lirovan"_s);
    EXPECT_EQ(area().activeSubWindow(), child(u"frm_Icerik"_s));
    EXPECT_TRUE(child(u"frm_Icerik"_s)->isAncestorOf(window->focusWidget()));
    press(u"not"_s);
    EXPECT_EQ(status(), child(u"notebookFrame"_s)->windowTitle());
    choose(u"mnu_Arama"_s);
    EXPECT_TRUE(child(u"frm_Arama"_s)->isVisible());
    EXPECT_EQ(image(u"C1"_s), u"Incele"_s) << "hidden, not unloaded";

    child(u"frm_Arama"_s)->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(child(u"frm_Arama"_s), nullptr);
    EXPECT_FALSE(find<QAction>(u"mnu_Arama"_s)->isChecked() || find(u"cmb_Kitaplar"_s)->isVisible());
    press(u"tlbtn_Kitap"_s);
    EXPECT_EQ(image(u"C1"_s), u"Acik"_s) << "loaded again";
    EXPECT_EQ(child(u"frm_Arama"_s)->geometry().right() + 1, child(u"frm_Icerik"_s)->geometry().left());

    {
        const platform::MdiChild::Hold whileItWorks(content());
        choose(u"mnu_Icerik"_s);
        EXPECT_TRUE(child(u"frm_Icerik"_s)->isVisible());
    }
    EXPECT_TRUE(QTest::qWaitFor([this] { return !child(u"frm_Icerik"_s); }));
    EXPECT_FALSE(find<QAction>(u"mnu_Icerik"_s)->isChecked());
    window->windows().printPageWithDialog();
    EXPECT_EQ(printing.asked, 0) << "no page";
    clickNode(u"C1"_s);
    EXPECT_TRUE(shows(page(), u"<TITLE>"_s));
    EXPECT_TRUE(find<QAction>(u"mnu_Icerik"_s)->isChecked());

    for (const QString& each : {u"notebookFrame"_s, u"frm_Arama"_s, u"frm_Icerik"_s}) child(each)->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(status(), u"Veskaran`nin Lirovan"_s);
    press(u"tlbtn_Kitap"_s);
    EXPECT_EQ(window->focusWidget(), &books());
    EXPECT_EQ(child(u"frm_Arama"_s)->height(), area().height());
    EXPECT_GT(child(u"frm_Arama"_s)->widget()->height(), area().height() * 3 / 4);
}

TEST_F(MainWindowTest, ThePageFollowsTheReaderWithoutTakingTheKeys) {
    ASSERT_TRUE(start());
    clickNode(u"C1"_s);
    child(u"frm_Icerik"_s)->showMinimized();
    child(u"frm_Arama"_s)->setFocus();
    area().setActiveSubWindow(child(u"frm_Arama"_s));
    books().setFocus();
    clickNode(u"C2"_s);
    EXPECT_FALSE(child(u"frm_Icerik"_s)->isMinimized());
    EXPECT_EQ(area().activeSubWindow(), child(u"frm_Arama"_s));
    EXPECT_EQ(window->focusWidget(), &books());
    const auto hasKeys = [this] { return page().isAncestorOf(window->focusWidget()); };
    ASSERT_TRUE(shows(page(), u"IRMAK BOYU"_s));
    area().activateNextSubWindow();
    EXPECT_TRUE(QTest::qWaitFor(hasKeys)) << "as Ctrl+Tab does";
    button(u"buyult"_s)->setFocus();
    ASSERT_FALSE(hasKeys());
    press(u"buyult"_s);
    EXPECT_TRUE(hasKeys()) << "pressed by keyboard";

    child(u"frm_Icerik"_s)->close();
    EXPECT_TRUE(appears(button(u"buyult"_s), false) && appears(button(u"New"_s), false));
    window->showNormal();
    child(u"frm_Arama"_s)->resize(400, child(u"frm_Arama"_s)->height());
    child(u"frm_Arama"_s)->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    press(u"tlbtn_Kitap"_s);
    EXPECT_EQ(child(u"frm_Arama"_s)->width(), 400);
    EXPECT_FALSE(window->isMaximized());
    EXPECT_TRUE(find<QAction>(u"mnu_Arama"_s)->isChecked());
}

TEST_F(MainWindowTest, SizesAreTwoThirdsOfTheScreenAtFirstAndThenTheUsers) {
    ASSERT_TRUE(start());
    const QSizeF screen = window->screen()->size();
    window->showNormal();
    EXPECT_EQ(window->frameGeometry().size(), (screen / 1.5).toSize());
    EXPECT_EQ(window->x(), qRound(screen.width() / 5));
    window->resize(620, 430);
    QMdiSubWindow *browse = child(u"frm_Arama"_s), *beside = child(u"frm_Icerik"_s);
    EXPECT_LE(beside->geometry().right(), area().rect().right());
    window->showMaximized();
    EXPECT_EQ(browse->width(), 321);
    window->showNormal();
    EXPECT_EQ(window->size(), QSize(620, 430));

    // The border between the two windows moves from either side.
    window->showMaximized();
    const auto expectBorderAt = [&](int x) {
        const QSize room = area().size();
        EXPECT_EQ(browse->geometry(), QRect(0, 0, x, room.height()));
        EXPECT_EQ(beside->geometry(), QRect(x, 0, room.width() - x, room.height()));
    };
    browse->resize(400, browse->height());
    expectBorderAt(400);
    beside->setGeometry(350, 0, area().width() - 350, area().height());
    expectBorderAt(350);
    beside->setGeometry(370, 0, area().width() - 390, area().height());  // stands free
    EXPECT_EQ(browse->width(), 350);
    beside->setGeometry(350, 0, area().width() - 350, area().height());

    // Places beside a maximised browse window are those beside the place that it goes back to.
    clickNode(u"C1"_s);
    browse->showMaximized();
    press(u"New"_s);
    ASSERT_NE(extra(1), nullptr);
    extra(1)->showNormal();
    EXPECT_NEAR(extra(1)->geometry().left(), 350, 3);
    EXPECT_EQ(extra(1)->geometry().right(), area().rect().right());
    browse->showNormal();
    expectBorderAt(350);
}

TEST_F(MainWindowTest, ALibraryThatCannotBeReadIsReportedAndLeftAlone) {
    for (const QByteArray content : {"", "no database, and long enough to be read as one", "missing"}) {
        const bool missing = content == "missing";
        writeFile(file.path(), content);
        if (missing) QFile::remove(file.path());
        dialogs.messages.clear();
        EXPECT_FALSE(start());
        ASSERT_EQ(dialogs.messages.size(), 1U);
        EXPECT_EQ(dialogs.messages[0].icon, platform::Icon::Critical);
        EXPECT_EQ(dialogs.messages[0].text == u"kitaplar.vq dosyası bulunamadı. Kitaplar okunamıyor..."_s,
                  missing);
        EXPECT_EQ(readFile(file.path()), missing ? "(missing)" : content);
    }
}

TEST_F(MainWindowTest, ShowsWhatAnotherProgramAddedWhenTheReaderComesBack) {
    ASSERT_TRUE(start());
    const auto added = [this] { return match(books(), Qt::DisplayRole, u"Sonradan "_s, Qt::MatchExactly); };
    const auto other = platform::Database::open(file.path(), platform::OpenMode::ReadWrite);
    ASSERT_TRUE(
        other->execute(u"INSERT INTO tbl_Kitaplar (KitapID, KitapAdi, YazarID, KitapSiraID) "
                       u"SELECT 1001, 'Sonradan', min(YazarID), 9 FROM tbl_Yazar"));
    EXPECT_FALSE(added().isValid());
    QWidget elsewhere;
    elsewhere.show();
    elsewhere.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return elsewhere.isActiveWindow(); }));
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return added().isValid(); }));
}

TEST_F(MainWindowTest, SearchesColoursTheHitsAndCarriesThemIntoAnExtraWindow) {
    for (int topic = 901; topic <= 903; ++topic)
        file.topic(topic, 1, u"Kuyu %1"_s.arg(1804 - topic), u"<P>bir kuyu, iki kuyu</P>"_s.repeated(40), 1);
    ASSERT_TRUE(start());
    child(u"frm_Arama"_s)->showMinimized();
    press(u"tlbtn_Arama"_s);
    EXPECT_FALSE(child(u"frm_Arama"_s)->isMinimized());
    EXPECT_EQ(find<QTabWidget>(u"tb_Arama"_s)->currentIndex(), 1);
    EXPECT_EQ(status(), u"Arama Penceresi - Arama"_s);
    EXPECT_TRUE(appears(find(u"cmb_Kitaplar"_s)));
    auto* box = find<QLineEdit>(u"txt_Bul"_s);
    QTest::keyClicks(box, u"kuyu"_s);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(find<QLabel>(u"StatusBar1_2"_s)->text(), u"Arama Sonucu: 3 başlık bulundu."_s);
    EXPECT_TRUE(appears(find(u"prg_gosterge"_s), false));

    auto& results = *find<QTreeView>(u"tvw_Kitaplar_Bul"_s);
    results.expandAll();
    click(results, match(results, Qt::DisplayRole, u"Kuyu 902"_s, Qt::MatchStartsWith));
    ASSERT_TRUE(shows(page(), u"ggggittt79"_s));
    press(u"Down"_s);
    press(u"Down"_s);
    EXPECT_TRUE(button(u"Up"_s)->isEnabled());
    const double second = page().scrollTop().valueOr(0);
    EXPECT_GT(second, 0);
    for (int i = 0; i < 10; ++i) press(u"Down"_s);
    for (int i = 0; i < 10; ++i) press(u"Up"_s);
    EXPECT_EQ(page().scrollTop().valueOr(0), second);

    press(u"New"_s);
    ASSERT_TRUE(extra(1));
    platform::WebView& copy = *extra(1)->wb_Icerik;
    EXPECT_TRUE(shows(copy, u"ggggittt79"_s));
    EXPECT_FALSE(extra(1)->findChild<QToolButton*>(u"Up"_s)->isEnabled());
    const double before = copy.scrollTop().valueOr(0);
    for (int i = 0; i < 30; ++i) extra(1)->findChild<QToolButton*>(u"Down"_s)->click();
    EXPECT_GT(copy.scrollTop().valueOr(0), before);

    find<QCheckBox>(u"chk_ClearResult"_s)->setChecked(true);
    QStringList first;
    for (const QString& item : {u"mnu_Kitap"_s, u"mnu_Konu"_s}) {
        choose(item);
        first << match(results, Qt::DisplayRole, u"Kuyu"_s, Qt::MatchStartsWith).data().toString().left(8);
    }
    EXPECT_EQ(first, QStringList({u"Kuyu 903"_s, u"Kuyu 901"_s})) << "by their order in the book, by name";

    auto* found = find<QLabel>(u"StatusBar1_2"_s);
    press(u"tlbtn_Kitap"_s);
    EXPECT_FALSE(found->isVisible() || button(u"Up"_s)->isEnabled());
    press(u"tlbtn_Arama"_s);
    EXPECT_TRUE(found->isVisible());
    EXPECT_EQ(window->focusWidget(), box);

    // A text box keeps its editing keys.
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    box->setFocus();
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(box->selectedText(), u"kuyu"_s);
    EXPECT_TRUE(find<QAction>(u"mnu_Arama"_s)->isChecked());
    results.setFocus();
    QTest::keyClick(&results, Qt::Key_A, Qt::ControlModifier);
    EXPECT_FALSE(find<QAction>(u"mnu_Arama"_s)->isChecked());
}

TEST_F(MainWindowTest, OpensTheTopicOfASummarysPassage) {
    for (int topic = 901; topic <= 902; ++topic)
        file.topic(topic, 1, u"Kuyu %1"_s.arg(topic), u"<P>bir kuyu %1</P>"_s.arg(topic), 1);
    ASSERT_TRUE(start());
    press(u"tlbtn_Arama"_s);
    auto* box = find<QLineEdit>(u"txt_Bul"_s);
    QTest::keyClicks(box, u"kuyu"_s);
    QTest::keyClick(box, Qt::Key_Return);
    auto& results = *find<QTreeView>(u"tvw_Kitaplar_Bul"_s);
    results.expandAll();
    const auto summary = [&] {
        click(results, match(results, Qt::DisplayRole, u"Özet"_s, Qt::MatchExactly));
        EXPECT_TRUE(shows(page(), u"kuyu"_s));
    };
    summary();
    Q_EMIT page().passageWanted(1);
    EXPECT_TRUE(content().windowTitle().contains(u"Kuyu 902"_s));
    EXPECT_TRUE(shows(page(), u"902"_s));
    EXPECT_EQ(results.currentIndex().data().toString().left(8), u"Kuyu 902");
    summary();
    Q_EMIT page().passageWanted(2);  // there is none
    EXPECT_TRUE(content().windowTitle().endsWith(u"ÖZET"_s)) << content().windowTitle().toStdString();
}

TEST_F(MainWindowTest, ClosingWhileASearchRunsStopsItAndThenCloses) {
    for (int topic = 901; topic <= 950; ++topic)
        file.topic(topic, 1, u"Kuyu %1"_s.arg(topic), u"<P>bir kuyu, iki kuyu</P>"_s.repeated(2000), 1);
    ASSERT_TRUE(start());
    press(u"tlbtn_Arama"_s);
    bool running = false;
    QTimer::singleShot(0, window.get(), [&] {
        running = window->windows().isBusy();
        window->whenIdle([] { ADD_FAILURE() << "told during a search"; });
        child(u"frm_Arama"_s)->close();
        EXPECT_TRUE(child(u"frm_Arama"_s)->isVisible() && !window->close());
        EXPECT_FALSE(button(u"tlbtn_Icerik"_s)->isEnabled() ||
                     find<QAction>(u"mnu_NewWindow"_s)->isEnabled());
        EXPECT_TRUE(button(u"not"_s)->isEnabled()) << "notes can be taken meanwhile";
        window->windows().browseWindow().decisions().NodeClick(2);
        EXPECT_FALSE(page().isShown());
    });
    auto* box = find<QLineEdit>(u"txt_Bul"_s);
    box->setText(u"kuyu"_s);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_TRUE(running);
    EXPECT_TRUE(appears(window.get(), false));
    EXPECT_FALSE(window->library().isOpen());
}

TEST_F(MainWindowTest, ReadsAnotherLibraryThatTakesThePlaceOfItsOwn) {
    ASSERT_TRUE(start());
    press(u"tlbtn_Arama"_s);
    auto* box = find<QLineEdit>(u"txt_Bul"_s);
    const auto found = [&](const QString& word, const QString& heading) {
        box->setText(word);
        QTest::keyClick(box, Qt::Key_Return);
        return match(*find<QTreeView>(u"tvw_Kitaplar_Bul"_s), Qt::DisplayRole, heading, Qt::MatchStartsWith);
    };
    ASSERT_TRUE(found(u"yatağını"_s, u"Irmak"_s).isValid());
    LibraryFile other;
    other.author(1, u"Sabri Işık")
        .book(1, 1, u"YAZ DEFTERİ")
        .topic(101, 1, u"TUZ GÖLÜ", u"<P>Tuz ağarır.</P>");
    ASSERT_EQ(std::rename(QFile::encodeName(other.path()), QFile::encodeName(file.path())), 0);
    const auto heading = [this] { return match(books(), Qt::DisplayRole, u"Tuz G"_s, Qt::MatchStartsWith); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return heading().isValid(); }));
    EXPECT_TRUE(found(u"ağarır"_s, u"Tuz G"_s).isValid());
    press(u"tlbtn_Kitap"_s);
    click(books(), heading());
    EXPECT_TRUE(shows(page(), u"Tuz ağarır"_s));
}

TEST_F(MainWindowTest, CutsCopiesAndPastesBetweenItsWindows) {
    ASSERT_TRUE(start());
    clickNode(u"C1"_s);
    ASSERT_TRUE(shows(page(), u"<TITLE>"_s));
    page().findChild<QWebEngineView*>()->page()->runJavaScript(
        u"getSelection().selectAllChildren(document.body)"_s, QWebEngineScript::ApplicationWorld);
    ASSERT_TRUE(QTest::qWaitFor([this] { return page().hasSelection(); }));
    QClipboard* clipboard = QApplication::clipboard();
    clipboard->clear();
    press(u"tlbtn_Arama"_s);
    for (const QString& key : {u"cut"_s, u"copy"_s, u"paste"_s, u"print"_s})
        EXPECT_FALSE(button(key)->isEnabled()) << "nothing here to " << key.toStdString();
    EXPECT_FALSE(find<QAction>(u"mnu_Yapistir"_s)->isEnabled());
    press(u"tlbtn_Icerik"_s);
    EXPECT_TRUE(button(u"print"_s)->isEnabled());
    page().setFocus();
    EXPECT_TRUE(QTest::qWaitFor([this] { return button(u"copy"_s)->isEnabled(); }));
    press(u"copy"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return clipboard->text().contains(u"ardı ışıktır"_s); }));
    EXPECT_FALSE(button(u"cut"_s)->isEnabled());

    choose(u"mnu_Yapistir"_s);
    auto* note = find<QTextEdit>(u"txt_Icerik"_s);
    EXPECT_TRUE(note->toPlainText().contains(u"ardı ışıktır"_s));
    clipboard->clear();
    note->selectAll();
    note->setFocus();
    window->windows().cut();
    EXPECT_TRUE(clipboard->text().contains(u"ardı ışıktır"_s));
    EXPECT_TRUE(note->toPlainText().isEmpty());
}

TEST_F(MainWindowTest, HelpShowsOneTextAtATimeAndSwitchesTheBrowseWindowBehindIt) {
    ASSERT_TRUE(start());
    choose(u"mnu_Arama"_s);
    EXPECT_FALSE(find<QAction>(u"mnu_Arama"_s)->isChecked());
    inHelp([this](QWidget* help) {
        const struct {
            QString button, text, word;
            int tab;
        } cases[] = {{u"cmdArama"_s, u"lblArama"_s, u"Tüm Kelimeleri"_s, 1},
                     {u"cmdKitap"_s, u"lblKitaplar"_s, u"çift tıklayın"_s, 0},
                     {u"cmdNot"_s, u"lblNotlar"_s, u"Düzen → Yapıştır"_s, 0}};
        for (const auto& c : cases) {
            help->findChild<QToolButton*>(c.button)->click();
            EXPECT_EQ(find<QTabWidget>(u"tb_Arama"_s)->currentIndex(), c.tab);
            EXPECT_TRUE(child(u"frm_Arama"_s)->isVisible() && find<QAction>(u"mnu_Arama"_s)->isChecked());
            for (const auto* text : help->findChildren<QTextBrowser*>())
                EXPECT_EQ(text->isVisible(), text->objectName() == c.text) << qPrintable(c.button);
            EXPECT_TRUE(help->findChild<QTextBrowser*>(c.text)->toPlainText().contains(c.word));
        }
    });
}

TEST_F(MainWindowTest, TheSplashWindowPaintsItsLinesAtOnceAndKnowsWhenItIsClosed) {
    shell::frmGiris splash(registry, file.folder());
    EXPECT_EQ(registry.readValue(shell::InstallKey, shell::InstallValue), shell::RegValue(file.folder()));
    splash.showAtOnce();
    const QImage before = splash.grab().toImage();
    splash.Label1->setText(u"Kitap Adı: <b>"_s + u"uzun bir ad "_s.repeated(40));
    splash.repaintLabels();
    const QImage after = splash.grab().toImage();
    EXPECT_NE(after, before);
    EXPECT_EQ(after.size(), before.size());
    EXPECT_TRUE(splash.splashShown);
    splash.close();
    EXPECT_FALSE(splash.splashShown);
}
