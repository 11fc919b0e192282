#include "tour.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QTreeView>
#include <utility>

#include "shell/ui/KitaplarMDI.h"
#include "shell/ui/child_windows.h"

namespace lirovan::tour {

using namespace Qt::StringLiterals;

namespace {

// Together in a long topic of the sample library: three colours, and a page to step through.
const QString Query = u"kuyu yüzük kardeş"_s;
const QString QueryTopic = u"Bir Yüzük, Üç Kardeş"_s;
const QString LongQuery = u"bir ve bu da su yol gün"_s;
// Words that change before an ending.
const QString StudiedQuery = u"ağaç renk toprak"_s;
const QString NoteTitle = u"Üç kardeş ve kuyu"_s;

constexpr int PageMs = 1200;
constexpr int ModalMs = 700;
constexpr int TypeSteps = 4;
constexpr int HitSteps = 16;
constexpr int SummaryAndBooks = 5;
// In settlings.
constexpr int Patience = 20;

QModelIndex find(const QTreeView* tree, const QString& start) {
    return tree->model()
        ->match(tree->model()->index(0, 0), Qt::DisplayRole, start, 1,
                Qt::MatchStartsWith | Qt::MatchRecursive)
        .value(0);
}

/// The long query with every syllable of two letters behind it: busy for a while even in a small library.
QString busyQuery() {
    QString query = LongQuery;
    for (const QChar first : u"bcçdfgğhjklmnprsştvyz"_s)
        for (const QChar second : u"aeıioöuü"_s) query += u' ' + QString(first) + second;
    return query;
}

void send(QWidget* widget, QEvent::Type type, const QPointF& place, Qt::MouseButtons buttons) {
    QMouseEvent event(type, place, widget->mapToGlobal(place),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

}  // namespace

Tour::Tour(const shell::Services& services, const QDir& folder) : services_(services), folder_(folder) {}

Tour::~Tour() = default;

bool Tour::run() {
    folder_.mkpath(u"."_s);
    return start() && picture(u"giris"_s) && readTopic() && stopSearch() && search() && openHit() &&
           readAtNight() && findOnPage() && bookmarks() && summary() && extraWindow() && notebook() &&
           study() && addBook() && modalWindow(u"mnu_Yardimm"_s, u"yardim"_s) &&
           modalWindow(u"mnu_Hakkında"_s, u"hakkinda"_s) && comeBack();
}

bool Tour::start() {
    window_ = std::make_unique<shell::KitaplarMDI>(services_);
    if (!window_->load()) return false;
    settle(PageMs);
    return true;
}

bool Tour::readTopic() {
    auto* tree = window_->findChild<QTreeView*>(u"tvw_Kitaplar"_s);
    if (!tree) return false;
    // The first topic of the last author: the first author's books are the long ones.
    const QModelIndex author = tree->model()->index(tree->model()->rowCount() - 1, 0);
    const QModelIndex book = tree->model()->index(0, 0, author);
    tree->expand(author);
    tree->expand(book);
    if (!click(tree, tree->model()->index(0, 0, book))) return false;
    settle(PageMs);
    if (!picture(u"konu"_s)) return false;
    for (int i = 0; i < TypeSteps; ++i) press(u"buyult"_s);
    settle();
    return picture(u"buyuk-yazi"_s);
}

bool Tour::stopSearch() {
    auto* box = press(u"tlbtn_Arama"_s) ? window_->findChild<QLineEdit*>(u"txt_Bul"_s) : nullptr;
    auto* results = window_->findChild<QTreeView*>(u"tvw_Kitaplar_Bul"_s);
    auto* find = window_->findChild<QPushButton*>(u"cmd_Bul"_s);
    auto* stop = window_->findChild<QPushButton*>(u"cmdDur"_s);
    if (!box || !results || !find || !stop) return false;
    bool saved = false;
    // Looks in whenever the search lets events run, and holds it among the second author's books.
    QTimer turn;
    connect(&turn, &QTimer::timeout, this, [&] {
        const QModelIndex run = results->model()->index(results->model()->rowCount() - 1, 0);
        if (results->model()->rowCount(results->model()->index(1, 0, run)) < SummaryAndBooks) return;
        turn.stop();
        box->home(false);
        settle();
        saved = picture(u"arama-surerken"_s);
        stop->click();
    });
    turn.start(0);
    box->setText(busyQuery());
    find->click();
    settle();
    return saved;
}

bool Tour::search() {
    auto* box = window_->findChild<QLineEdit*>(u"txt_Bul"_s);
    auto* clear = window_->findChild<QCheckBox*>(u"chk_ClearResult"_s);
    auto* find = window_->findChild<QPushButton*>(u"cmd_Bul"_s);
    if (!box || !clear || !find) return false;
    clear->setChecked(true);
    box->setText(Query);
    find->click();
    clear->setChecked(false);
    settle();
    return picture(u"arama"_s);
}

bool Tour::openHit() {
    if (!openFoundTopic() || !picture(u"renkli-sayfa"_s)) return false;
    for (int i = 0; i < HitSteps; ++i) press(u"Down"_s);
    settle();
    return picture(u"isabetler"_s);
}

bool Tour::openFoundTopic() {
    auto* results = window_->findChild<QTreeView*>(u"tvw_Kitaplar_Bul"_s);
    const QModelIndex topic = find(results, QueryTopic);
    results->expand(topic.parent());
    if (!click(results, topic)) return false;
    settle(PageMs);
    return true;
}

bool Tour::readAtNight() {
    if (!choose(u"mnu_Gece"_s)) return false;
    settle();
    return picture(u"gece"_s) && choose(u"mnu_Beyaz"_s);
}

bool Tour::findOnPage() {
    if (!choose(u"mnu_SayfadaBul"_s)) return false;
    auto* line = window_->windows().contentWindow().findChild<QLineEdit*>(u"txt_SayfadaBul"_s);
    if (!line) return false;
    line->setText(u"kardeş"_s);
    settle(PageMs);
    const bool saved = picture(u"sayfada-bul"_s);
    if (auto* close = line->parentWidget()->findChild<QAbstractButton*>(u"cmd_BulKapat"_s)) close->click();
    return saved;
}

bool Tour::bookmarks() {
    for (const QString& line : {u"Yüzüğün hikâyesi"_s, u"Kuyunun başı: yeniden oku"_s}) {
        whenModal([&line](QWidget& dialog) {
            if (auto* input = qobject_cast<QInputDialog*>(&dialog)) input->setTextValue(line);
        });
        if (!choose(u"mnu_YerImiEkle"_s)) return false;
        press(u"Up"_s);
        settle();
    }
    return modalWindow(u"mnu_YerImleri"_s, u"yer-imleri"_s);
}

// The start after this one offers the page that was read last.
bool Tour::comeBack() {
    window_->close();
    window_.reset();
    return start() && picture(u"kalinan-yer"_s);
}

bool Tour::summary() {
    auto* results = window_->findChild<QTreeView*>(u"tvw_Kitaplar_Bul"_s);
    // The summary of the author whose topic was opened.
    const QModelIndex author = find(results, QueryTopic).parent().parent();
    if (!click(results, author.isValid() ? author.model()->index(0, 0, author) : author)) return false;
    settle(PageMs);
    return picture(u"ozet"_s);
}

bool Tour::extraWindow() {
    if (!openFoundTopic() || !press(u"New"_s)) return false;
    settle(PageMs);
    if (!picture(u"yeni-pencere"_s) || !choose(u"mnu_YanYana"_s)) return false;
    settle(PageMs);
    return picture(u"yan-yana"_s);
}

bool Tour::notebook() {
    window_->windows().closeExtraWindows();
    settle();
    selectPassage();
    if (!picture(u"secim"_s) || !press(u"copy"_s)) return false;
    settle();
    if (!press(u"paste"_s)) return false;
    settle();
    if (!picture(u"not-defteri"_s)) return false;

    whenModal([](QWidget& dialog) {
        if (auto* input = qobject_cast<QInputDialog*>(&dialog)) input->setTextValue(NoteTitle);
    });
    if (!choose(u"mnu_Kaydet"_s)) return false;
    settle();
    bool saved = false;
    whenModal([this, &saved](QWidget& dialog) {
        saved = picture(u"not-listesi"_s);
        auto* box = dialog.findChild<QLineEdit*>(u"noteSearch"_s);
        if (box) box->setText(u"yüzük"_s);
        settle();
        saved = saved && box && picture(u"notlarda-arama"_s);
    });
    if (!choose(u"mnu_ac"_s)) return false;
    settle();
    window_->windows().closeNotebook();
    return saved;
}

// One subject: words with the forms that their endings change, the windows of all hits, words offered while
// typing.
bool Tour::study() {
    auto* box = press(u"tlbtn_Arama"_s) ? window_->findChild<QLineEdit*>(u"txt_Bul"_s) : nullptr;
    auto* sounds = window_->findChild<QCheckBox*>(u"chk_Ses"_s);
    auto* results = window_->findChild<QTreeView*>(u"tvw_Kitaplar_Bul"_s);
    auto* find = window_->findChild<QPushButton*>(u"cmd_Bul"_s);
    if (!box || !sounds || !results || !find) return false;
    sounds->setChecked(true);
    box->setText(StudiedQuery);
    find->click();
    sounds->setChecked(false);
    settle();
    const QModelIndex run = results->model()->index(results->model()->rowCount() - 1, 0);
    if (!openFirstTopic(results, run) || !picture(u"ses-degisimleri"_s)) return false;
    for (const auto& [item, name] :
         {std::pair{u"mnu_Dagilim"_s, u"dagilim"_s}, {u"mnu_Baglam"_s, u"baglam-listesi"_s}}) {
        if (!choose(item)) return false;
        settle(PageMs);
        auto* area = window_->findChild<QMdiArea*>(u"workArea"_s);
        if (!picture(name) || !area || !area->activeSubWindow()) return false;
        area->activeSubWindow()->close();
    }
    box->clear();
    box->setFocus();
    for (const QChar letter : u"kuyu"_s) {
        QKeyEvent key(QEvent::KeyPress, letter.toUpper().unicode(), Qt::NoModifier, letter);
        QApplication::sendEvent(box, &key);
    }
    settle(PageMs);
    const auto* offered = window_->findChild<QListWidget*>(u"suggestions"_s);
    return offered && offered->isVisible() && picture(u"oneriler"_s);
}

bool Tour::openFirstTopic(QTreeView* tree, const QModelIndex& run) {
    QModelIndex node = run;
    // The first node of an author is the summary.
    for (int depth = 0; node.isValid() && tree->model()->hasChildren(node); ++depth) {
        tree->expand(node);
        const int row = depth == 1 && tree->model()->rowCount(node) > 1 ? 1 : 0;
        node = tree->model()->index(row, 0, node);
    }
    if (!click(tree, node)) return false;
    settle(PageMs);
    return true;
}

// A book of the reader's own, with what such a book holds.
bool Tour::addBook() {
    const QString file = QFileInfo(window_->library().path()).dir().filePath(u"Kıyı Defteri.html"_s);
    QFile book(file);
    if (!book.open(QIODevice::WriteOnly)) return false;
    book.write(R"(<html lang="tr"><head><meta charset="utf-8"><title>Kıyı Defteri</title><meta name="author"
content="Selin Ada"></head><body><h1>İskelede Bir Gün</h1><p>Sabahın ilk vapuru yanaşırken deftere üç satır yazdım.</p>
<h2>Gelenler, Gidenler</h2><p>Hancı her akşam iskelenin hesabını tutardı; bir haftası şöyledir:</p>
<table><caption>Bir haftanın vapurları</caption><tr><th>Gün</th><th>Vapur</th><th>Yolcu</th></tr><tr><td>Pazartesi</td>
<td>Martı</td><td>12</td></tr><tr><td>Salı</td><td>Poyraz</td><td>45</td></tr><tr><td>Çarşamba</td><td>Lodos</td><td>7</td></tr>
</table><blockquote><p>Deniz, gideni unutmaz; yalnız geç hatırlar.</p></blockquote><p><img src="OKU/duaimages/deniz.png" alt="Deniz"></p>
<h2>Gece</h2><p>Fener yandı, defter kapandı.</p></body></html>)");
    book.close();

    bool saved = false;
    whenModal([this, &saved](QWidget& dialog) {
        auto* add = dialog.findChild<QAbstractButton*>(u"add"_s);
        auto* state = dialog.findChild<QLabel*>(u"state"_s);
        for (int i = 0; add && !add->isEnabled() && i < Patience; ++i) settle();
        saved = add && state && picture(u"kitap-ekle"_s);
        if (!saved) return;
        add->click();
        for (int i = 0; !state->text().contains(u"eklendi"_s) && i < Patience; ++i) settle();
    });
    window_->windows().addBooks({file});
    auto* tree = press(u"tlbtn_Kitap"_s) ? window_->findChild<QTreeView*>(u"tvw_Kitaplar"_s) : nullptr;
    if (!saved || !tree) return false;
    const QModelIndex topic = find(tree, u"Gelenler"_s);
    tree->expand(topic.parent().parent());
    tree->expand(topic.parent());
    if (!click(tree, topic)) return false;
    settle(PageMs);
    return picture(u"eklenen-konu"_s);
}

bool Tour::modalWindow(const QString& menuItem, const QString& name) {
    bool saved = false;
    whenModal([this, &saved, &name](QWidget& dialog) {
        if (auto* topic = dialog.findChild<QAbstractButton*>(u"cmdArama"_s)) topic->click();
        settle();
        saved = picture(name);
    });
    return choose(menuItem) && saved;
}

// ---- How the steps are carried out ----

bool Tour::picture(const QString& name) {
    QPixmap shot = window_->screen()->grabWindow(0);
    if (shot.isNull()) shot = window_->grab();
    const QString number = QString::number(++pictures_).rightJustified(2, u'0');
    return shot.save(folder_.filePath(number + u'-' + name + u".png"_s));
}

bool Tour::press(const QString& button) {
    auto* bar = window_->findChild<QWidget*>(u"Toolbar1"_s, Qt::FindDirectChildrenOnly);
    auto* found = bar ? bar->findChild<QAbstractButton*>(button) : nullptr;
    if (found) found->click();
    return found && found->isEnabled();
}

bool Tour::choose(const QString& item) {
    for (QAction* action : window_->findChildren<QAction*>(item)) {
        if (!action->isVisible() || !action->isEnabled()) continue;
        action->trigger();
        return true;
    }
    return false;
}

bool Tour::click(QTreeView* tree, const QModelIndex& index) {
    if (!index.isValid()) return false;
    tree->scrollTo(index);
    settle();
    const QPointF place = tree->visualRect(index).intersected(tree->viewport()->rect()).center();
    send(tree->viewport(), QEvent::MouseButtonPress, place, Qt::LeftButton);
    send(tree->viewport(), QEvent::MouseButtonRelease, place, Qt::NoButton);
    return true;
}

void Tour::settle(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void Tour::whenModal(std::function<void(QWidget&)> answer) {
    QTimer::singleShot(ModalMs, this, [answer = std::move(answer)] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog) return;
        answer(*dialog);
        if (auto* closing = qobject_cast<QDialog*>(dialog)) closing->accept();
    });
}

void Tour::selectPassage() {
    browse::frm_Icerik& content = window_->windows().contentWindow();
    content.wb_Icerik->setFocus();
    QWidget* page = QApplication::focusWidget();
    if (!page) return;
    // From the margin beside the first lines, so that no word is cut in two.
    const QPointF from(page->width() * 0.012, page->height() * 0.18),
        to(page->width() * 0.7, page->height() * 0.46);
    send(page, QEvent::MouseButtonPress, from, Qt::LeftButton);
    settle(100);
    send(page, QEvent::MouseMove, (from + to) / 2, Qt::LeftButton);
    settle(100);
    send(page, QEvent::MouseMove, to, Qt::LeftButton);
    settle(100);
    send(page, QEvent::MouseButtonRelease, to, Qt::NoButton);
    settle();
}

}  // namespace lirovan::tour
