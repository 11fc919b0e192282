// The main window as a reader meets it: start, books, pages, type size, windows that are closed and come
// back.
#include "main_window_fixture.h"

#include <QLineEdit>
#include <QMdiArea>
#include <QScreen>
#include <QToolBar>
#include <QWebEngineView>

using namespace lirovan;
using namespace lirovan::test;

TEST_F(MainWindowTest, StartsMaximizedWithBothWindowsSideBySideAndItsBarsFilled) {
    ASSERT_TRUE(start());
    EXPECT_EQ(window->windowTitle(), u"Veskaran`nin Lirovan"_s);
    EXPECT_TRUE(window->isMaximized());
    EXPECT_TRUE(dialogs.messages.empty());

    const QRect browse = child(u"frm_Arama"_s)->geometry(), beside = child(u"frm_Icerik"_s)->geometry();
    const QRect area = find<QMdiArea>(u"workArea"_s)->rect();
    EXPECT_EQ(browse, QRect(0, 0, 321, area.height()));
    EXPECT_EQ(beside, QRect(321, 0, area.width() - 321, area.height()));

    EXPECT_EQ(find<QComboBox>(u"cmb_Kitaplar"_s)->currentText(), u"<Lirovan>"_s);
    EXPECT_FALSE(find(u"cmb_Kitaplar"_s)->isVisible());
    EXPECT_EQ(find<QTabWidget>(u"tb_Arama"_s)->currentIndex(), 0);
    EXPECT_TRUE(shows(*content().wb_Icerik2, u"Hoş geldiniz"_s));
    EXPECT_FALSE(content().wb_Icerik->isShown());

    QStringList bars, items;
    for (QAction* menu : window->menuBar()->actions()) {
        bars << menu->text();
        for (QAction* item : menu->menu()->actions()) {
            if (item->isVisible() && !item->isSeparator())
                items << item->text() + u'|' + item->shortcut().toString() +
                             (item->isChecked() ? u"|x"_s : QString());
        }
    }
    EXPECT_EQ(bars, QStringList({u"&Ana Menü"_s, u"&Düzen"_s, u"&Yardım"_s}));
    EXPECT_EQ(items,
              QStringList({u"&Arama Penceresi|Ctrl+A|x"_s, u"&İçerik Penceresi|Ctrl+I|x"_s,
                           u"Yeni P&encerede Aç|Ctrl+E"_s, u"&Not Defteri|Ctrl+N"_s, u"&Çıkış|"_s,
                           u"&Kopyala|Ctrl+C"_s, u"&Yapıştır|Ctrl+V"_s, u"&Yardım|"_s, u"&Hakkında|"_s}));
    QStringList shown;
    for (QToolButton* each : find<QToolBar>(u"Toolbar1"_s)->findChildren<QToolButton*>()) {
        if (each->isVisible() && !each->toolTip().isEmpty())
            shown << each->objectName() + u'|' + each->toolTip();
    }
    EXPECT_EQ(shown, QStringList({u"tlbtn_Kitap|Kitaplar"_s, u"tlbtn_Arama|Arama"_s, u"tlbtn_Icerik|İçerik"_s,
                                  u"cut|Kes"_s, u"copy|Kopyala"_s, u"paste|Yapıştır"_s, u"not|Not Defteri"_s,
                                  u"print|Yazdır"_s}));
    EXPECT_FALSE(button(u"New"_s)->isEnabled());
    EXPECT_EQ(button(u"Up"_s)->toolTip(), u"Yukarıdaki Kelime"_s);
}

TEST_F(MainWindowTest, OpensATopicEnlargesItsTypeAndReducesItAgain) {
    ASSERT_TRUE(start());
    EXPECT_EQ(image(u"C1"_s), u"Acik"_s);
    clickNode(u"C1"_s);
    EXPECT_EQ(image(u"C1"_s), u"Incele"_s);
    EXPECT_EQ(image(u"P1"_s), u"Ac"_s);
    EXPECT_TRUE(content().wb_Icerik->isShown());
    EXPECT_FALSE(content().wb_Icerik2->isShown());
    EXPECT_EQ(content().windowTitle(), u"İçerik Penceresi - "_s + node(u"C1"_s).data().toString());
    for (const QString& key : {u"buyult"_s, u"kucult"_s, u"New"_s, u"Up"_s, u"Down"_s})
        EXPECT_TRUE(appears(button(key))) << key.toStdString();
    ASSERT_TRUE(shows(*content().wb_Icerik, u"<TITLE>"_s));
    EXPECT_EQ(window->frame().fontSize(), 16);

    press(u"buyult"_s);
    EXPECT_TRUE(shows(*content().wb_Icerik, u"td {font-size: 17px;"_s));
    press(u"kucult"_s);
    press(u"kucult"_s);
    EXPECT_TRUE(shows(*content().wb_Icerik, u"td {font-size: 15px;"_s));
    EXPECT_FALSE(content().wb_Icerik->innerHtml().valueOr({}).contains(u"17px"_s));

    clickNode(u"C2"_s);
    EXPECT_EQ(window->frame().fontSize(), 16);
    clickNode(u"P1"_s);
    EXPECT_TRUE(content().wb_Icerik2->isShown()) << "a book shows the start page";
    EXPECT_EQ(content().windowTitle(), u"İçerik Penceresi"_s);
    EXPECT_TRUE(disappears(button(u"buyult"_s)));
}

TEST_F(MainWindowTest, ExtraWindowsKeepTheirPageAndTheirNumbers) {
    ASSERT_TRUE(start());
    press(u"New"_s);
    choose(u"mnu_NewWindow"_s);
    EXPECT_EQ(window->windows().extraWindows().highest(), 0) << "the start page is not copied";

    clickNode(u"C1"_s);
    for (int i = 0; i < 3; ++i) press(u"New"_s);
    const auto& extra = window->windows().extraWindows();
    ASSERT_EQ(extra.highest(), 3) << "a page that is still loading is waited for";
    ASSERT_TRUE(shows(*extra.at(1)->wb_Icerik, u"<TITLE>"_s));
    EXPECT_EQ(extra.at(1)->windowTitle(), node(u"C1"_s).data().toString());
    EXPECT_EQ(extra.at(1)->geometry().right(), find<QMdiArea>(u"workArea"_s)->rect().right());

    clickNode(u"C2"_s);
    ASSERT_TRUE(shows(*content().wb_Icerik, u"IRMAK BOYU"_s));
    extra.at(1)->findChild<QToolButton*>(u"buyult"_s)->click();
    EXPECT_TRUE(shows(*extra.at(1)->wb_Icerik, u"td {font-size: 17px;"_s));
    EXPECT_FALSE(extra.at(3)->wb_Icerik->innerHtml().valueOr({}).contains(u"17px"_s))
        << "each has its own type size";

    extra.at(3)->bringForward();
    extra.at(2)->bringForward();
    extra.at(2)->close();
    EXPECT_EQ(extra.at(2), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        return find<QMdiArea>(u"workArea"_s)->activeSubWindow() == extra.at(3);
    })) << "the window that was active before";
    press(u"New"_s);
    EXPECT_EQ(extra.highest(), 4);
    EXPECT_EQ(extra.open().size(), 3U);
    window->close();
    EXPECT_TRUE(extra.open().empty());
    EXPECT_FALSE(window->library().isOpen());
}

TEST_F(MainWindowTest, ClosedWindowsComeBackAndClosedBrowsingStartsAnew) {
    ASSERT_TRUE(start());
    clickNode(u"C1"_s);
    choose(u"mnu_Arama"_s);
    EXPECT_FALSE(child(u"frm_Arama"_s)->isVisible());
    EXPECT_EQ(status(), u"Veskaran`nin Lirovan"_s);
    EXPECT_EQ(find<QMdiArea>(u"workArea"_s)->activeSubWindow(), child(u"frm_Icerik"_s));
    EXPECT_TRUE(child(u"frm_Icerik"_s)->isAncestorOf(window->focusWidget()));
    press(u"not"_s);
    EXPECT_EQ(status(), child(u"notebookFrame"_s)->windowTitle());
    choose(u"mnu_Arama"_s);
    EXPECT_TRUE(child(u"frm_Arama"_s)->isVisible());
    EXPECT_EQ(image(u"C1"_s), u"Incele"_s) << "hidden, not unloaded";

    child(u"frm_Arama"_s)->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(child(u"frm_Arama"_s), nullptr);
    EXPECT_FALSE(find<QAction>(u"mnu_Arama"_s)->isChecked());
    press(u"tlbtn_Kitap"_s);
    EXPECT_EQ(image(u"C1"_s), u"Acik"_s) << "loaded again";
    EXPECT_EQ(child(u"frm_Arama"_s)->geometry().right() + 1, child(u"frm_Icerik"_s)->geometry().left());

    choose(u"mnu_Icerik"_s);
    EXPECT_FALSE(find<QAction>(u"mnu_Icerik"_s)->isChecked());
    clickNode(u"C1"_s);
    EXPECT_TRUE(shows(*content().wb_Icerik, u"<TITLE>"_s));
    EXPECT_TRUE(find<QAction>(u"mnu_Icerik"_s)->isChecked());

    for (const QString& each : {u"notebookFrame"_s, u"frm_Arama"_s, u"frm_Icerik"_s}) child(each)->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(status(), u"Veskaran`nin Lirovan"_s);
    press(u"tlbtn_Kitap"_s);
    EXPECT_EQ(window->focusWidget(), find(u"tvw_Kitaplar"_s));
    EXPECT_EQ(child(u"frm_Arama"_s)->height(), find<QMdiArea>(u"workArea"_s)->height());
    EXPECT_GT(child(u"frm_Arama"_s)->widget()->height(), child(u"frm_Arama"_s)->height() * 3 / 4);
}

TEST_F(MainWindowTest, SizesAreTwoThirdsOfTheScreenAtFirstAndThenTheUsers) {
    ASSERT_TRUE(start());
    const QSize screen = window->screen()->size();
    window->showNormal();
    EXPECT_EQ(window->frameGeometry().size(),
              QSize(qRound(screen.width() / 1.5), qRound(screen.height() / 1.5)));
    EXPECT_EQ(window->x(), qRound(screen.width() / 5.0));
    window->resize(620, 430);
    EXPECT_LE(child(u"frm_Icerik"_s)->geometry().right(), find<QMdiArea>(u"workArea"_s)->rect().right());
    window->showMaximized();
    EXPECT_EQ(child(u"frm_Arama"_s)->width(), 321);
    window->showNormal();
    EXPECT_EQ(window->size(), QSize(620, 430));

    // The border between the two windows moves from either side.
    window->showMaximized();
    QMdiSubWindow *browse = child(u"frm_Arama"_s), *beside = child(u"frm_Icerik"_s);
    const QRect area = find<QMdiArea>(u"workArea"_s)->rect();
    browse->resize(400, browse->height());
    EXPECT_EQ(beside->geometry(), QRect(400, 0, area.width() - 400, area.height()));
    beside->setGeometry(350, 0, area.width() - 350, area.height());
    EXPECT_EQ(browse->geometry(), QRect(0, 0, 350, area.height()));
    EXPECT_EQ(beside->geometry(), QRect(350, 0, area.width() - 350, area.height()));

    // Places beside a maximised browse window are those beside the place that it goes back to.
    clickNode(u"C1"_s);
    browse->showMaximized();
    press(u"New"_s);
    const shell::frm_IcerikN* extra = window->windows().extraWindows().at(1);
    ASSERT_NE(extra, nullptr);
    child(u"frm_IcerikN"_s)->showNormal();
    EXPECT_NEAR(extra->geometry().left(), 350, 3);
    const QRect now = find<QMdiArea>(u"workArea"_s)->rect();
    EXPECT_EQ(extra->geometry().right(), now.right());
    browse->showNormal();
    EXPECT_EQ(browse->geometry(), QRect(0, 0, 350, now.height()));
    EXPECT_EQ(beside->geometry(), QRect(350, 0, now.width() - 350, now.height()));
}

TEST_F(MainWindowTest, ALibraryThatCannotBeReadIsReportedAndLeftAlone) {
    const QByteArray foreign = "no database, and long enough to be read as one";
    for (const QByteArray& content : {QByteArray(), foreign, QByteArray("missing")}) {
        const bool missing = content == "missing";
        write(u"kitaplar.vq", content);
        if (missing) QFile::remove(file.path());
        dialogs.messages.clear();
        EXPECT_FALSE(start());
        ASSERT_EQ(dialogs.messages.size(), 1U);
        EXPECT_EQ(dialogs.messages[0].title, u"Okuma Hatası"_s);
        EXPECT_EQ(dialogs.messages[0].icon, platform::Icon::Critical);
        EXPECT_EQ(dialogs.messages[0].text == u"kitaplar.vq dosyası bulunamadı. Kitaplar okunamıyor..."_s,
                  missing);
        QFile library(file.path());
        EXPECT_EQ(library.open(QIODevice::ReadOnly) ? library.readAll() : "missing", content);
    }
}

TEST_F(MainWindowTest, SearchesColoursTheHitsAndCarriesThemIntoAnExtraWindow) {
    for (int topic = 901; topic <= 903; ++topic)
        file.topic(topic, 1, u"Kuyu %1"_s.arg(topic), u"<P>bir kuyu, iki kuyu</P>"_s.repeated(40), 1);
    ASSERT_TRUE(start());
    press(u"tlbtn_Arama"_s);
    auto* box = find<QLineEdit>(u"txt_Bul"_s);
    QTest::keyClicks(box, u"kuyu"_s);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(find<QLabel>(u"StatusBar1_2"_s)->text(), u"Arama Sonucu: 3 başlık bulundu."_s);
    EXPECT_TRUE(disappears(find(u"prg_gosterge"_s)));

    auto* results = find<QTreeView>(u"tvw_Kitaplar_Bul"_s);
    const QModelIndex topic = results->model()
                                  ->match(results->model()->index(0, 0), Qt::DisplayRole, u"Kuyu 902"_s, 1,
                                          Qt::MatchStartsWith | Qt::MatchRecursive)
                                  .value(0);
    ASSERT_TRUE(topic.isValid());
    results->expandAll();
    results->scrollTo(topic);
    QTest::mouseClick(results->viewport(), Qt::LeftButton, {}, results->visualRect(topic).center());
    ASSERT_TRUE(shows(*content().wb_Icerik, u"ggggittt79"_s));
    press(u"Down"_s);
    press(u"Down"_s);
    EXPECT_TRUE(button(u"Up"_s)->isEnabled());
    EXPECT_GT(content().wb_Icerik->scrollTop().valueOr(0), 0);

    press(u"New"_s);
    shell::frm_IcerikN* extra = window->windows().extraWindows().at(1);
    ASSERT_TRUE(extra);
    EXPECT_TRUE(shows(*extra->wb_Icerik, u"ggggittt79"_s));
    EXPECT_FALSE(extra->findChild<QToolButton*>(u"Up"_s)->isEnabled());
    const double before = extra->wb_Icerik->scrollTop().valueOr(0);
    for (int i = 0; i < 30; ++i) extra->findChild<QToolButton*>(u"Down"_s)->click();
    EXPECT_GT(extra->wb_Icerik->scrollTop().valueOr(0), before);
}

TEST_F(MainWindowTest, TheTabsSwitchByTheToolbarAndATextBoxKeepsItsEditingKeys) {
    ASSERT_TRUE(start());
    child(u"frm_Arama"_s)->showMinimized();
    press(u"tlbtn_Arama"_s);
    EXPECT_FALSE(child(u"frm_Arama"_s)->isMinimized());
    EXPECT_EQ(find<QTabWidget>(u"tb_Arama"_s)->currentIndex(), 1);
    EXPECT_EQ(status(), u"Arama Penceresi - Arama"_s);
    EXPECT_TRUE(appears(find(u"cmb_Kitaplar"_s)));
    auto* box = find<QLineEdit>(u"txt_Bul"_s);
    box->setText(u"kuyu"_s);
    box->setFocus();
    QTest::keyClick(box, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(box->selectedText(), u"kuyu"_s);
    EXPECT_TRUE(find<QAction>(u"mnu_Arama"_s)->isChecked());
    ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
    auto* results = find<QTreeView>(u"tvw_Kitaplar_Bul"_s);
    results->setFocus();
    QTest::keyClick(results, Qt::Key_A, Qt::ControlModifier);
    EXPECT_FALSE(find<QAction>(u"mnu_Arama"_s)->isChecked());
}

TEST_F(MainWindowTest, ClosingWhileASearchRunsStopsItAndThenCloses) {
    for (int topic = 901; topic <= 950; ++topic)
        file.topic(topic, 1, u"Kuyu %1"_s.arg(topic), u"<P>bir kuyu, iki kuyu</P>"_s.repeated(2000), 1);
    ASSERT_TRUE(start());
    press(u"tlbtn_Arama"_s);
    bool running = false, refused = false;
    QTimer::singleShot(0, window.get(), [&] {
        running = window->windows().isBusy();
        child(u"frm_Arama"_s)->close();
        refused = child(u"frm_Arama"_s)->isVisible() && !window->close();
    });
    auto* box = find<QLineEdit>(u"txt_Bul"_s);
    box->setText(u"kuyu"_s);
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_TRUE(running);
    EXPECT_TRUE(refused);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !window->isVisible(); }));
    EXPECT_FALSE(window->library().isOpen());
}

TEST_F(MainWindowTest, APageCanBePrintedByItsLinkAndZoomedByTheMenu) {
    ASSERT_TRUE(start());
    clickNode(u"C1"_s);
    ASSERT_TRUE(shows(*content().wb_Icerik, u"<TITLE>"_s));
    Q_EMIT content().wb_Icerik->printRequested();
    EXPECT_EQ(printing.asked, 1);
    EXPECT_TRUE(dialogs.messages.empty()) << "cancelled";
    choose(u"mnu_yBuyult"_s);
    EXPECT_DOUBLE_EQ(content().wb_Icerik->findChild<QWebEngineView*>()->zoomFactor(), 1.2);
}
