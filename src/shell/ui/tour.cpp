#include "shell/ui/tour.h"

#include <QAction>
#include <QApplication>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>
#include <QTimer>
#include <QTreeView>

#include "shell/ui/KitaplarMDI.h"
#include "shell/ui/child_windows.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;

namespace {

// Found in many topics of the sample library, and in most Turkish prose.
const QString QueryWord = u"kuyu"_s;
const QString LongQuery = u"bir ve bu da su yol gün"_s;
const QString NoteTitle = u"Altını çizdiğim satırlar"_s;

constexpr int PageMs = 1200;
constexpr int ModalMs = 700;
constexpr int TypeSteps = 4;
constexpr int HitSteps = 3;

QModelIndex find(const QTreeView* tree, const QString& start) {
    return tree->model()
        ->match(tree->model()->index(0, 0), Qt::DisplayRole, start, 1,
                Qt::MatchStartsWith | Qt::MatchRecursive)
        .value(0);
}

void send(QWidget* widget, QEvent::Type type, const QPointF& place, Qt::MouseButtons buttons) {
    QMouseEvent event(type, place, widget->mapToGlobal(place),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

}  // namespace

Tour::Tour(KitaplarMDI& window, const QDir& folder) : window_(window), folder_(folder) {}

bool Tour::run() {
    folder_.mkpath(u"."_s);
    settle(PageMs);
    return picture(u"giris"_s) && readTopic() && search() && stopSearch() && openHit() && summary() &&
           extraWindow() && notebook() && modalWindow(u"mnu_Yardimm"_s, u"yardim"_s) &&
           modalWindow(u"mnu_Hakkında"_s, u"hakkinda"_s);
}

bool Tour::readTopic() {
    auto* tree = window_.findChild<QTreeView*>(u"tvw_Kitaplar"_s);
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

bool Tour::search() {
    auto* box = press(u"tlbtn_Arama"_s) ? window_.findChild<QLineEdit*>(u"txt_Bul"_s) : nullptr;
    auto* find = window_.findChild<QPushButton*>(u"cmd_Bul"_s);
    if (!box || !find) return false;
    box->setText(QueryWord);
    find->click();
    settle();
    return picture(u"arama"_s);
}

bool Tour::stopSearch() {
    auto* box = window_.findChild<QLineEdit*>(u"txt_Bul"_s);
    auto* find = window_.findChild<QPushButton*>(u"cmd_Bul"_s);
    auto* stop = window_.findChild<QPushButton*>(u"cmdDur"_s);
    if (!stop) return false;
    bool saved = false;
    // Comes with the first events that the search lets run, and holds the search until the picture is taken.
    QTimer::singleShot(0, this, [&] {
        settle();
        saved = picture(u"arama-surerken"_s);
        stop->click();
    });
    box->setText(LongQuery);
    find->click();
    settle();
    box->setText(QueryWord);
    return saved;
}

bool Tour::openHit() {
    auto* results = window_.findChild<QTreeView*>(u"tvw_Kitaplar_Bul"_s);
    if (!results) return false;
    const QModelIndex run = results->model()->index(0, 0);
    const QModelIndex author = results->model()->index(0, 0, run);
    const QModelIndex book = results->model()->index(1, 0, author);  // behind the summary
    results->expand(book);
    if (!click(results, results->model()->index(0, 0, book))) return false;
    settle(PageMs);
    if (!picture(u"renkli-sayfa"_s)) return false;
    for (int i = 0; i < HitSteps; ++i) press(u"Down"_s);
    settle();
    return picture(u"isabetler"_s);
}

bool Tour::summary() {
    auto* results = window_.findChild<QTreeView*>(u"tvw_Kitaplar_Bul"_s);
    if (!click(results, find(results, u"Özet"_s))) return false;
    settle(PageMs);
    return picture(u"ozet"_s);
}

bool Tour::extraWindow() {
    if (!press(u"New"_s)) return false;
    settle(PageMs);
    return picture(u"yeni-pencere"_s);
}

bool Tour::notebook() {
    auto* browse = window_.findChild<QTreeView*>(u"tvw_Kitaplar"_s);
    window_.windows().closeExtraWindows();
    press(u"tlbtn_Kitap"_s);
    if (!click(browse, browse->currentIndex())) return false;
    settle(PageMs);
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
    whenModal([this, &saved](QWidget&) { saved = picture(u"not-listesi"_s); });
    if (!choose(u"mnu_ac"_s)) return false;
    settle();
    window_.windows().closeNotebook();
    return saved;
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
    QPixmap shot = window_.screen()->grabWindow(0);
    if (shot.isNull()) shot = window_.grab();
    const QString number = QString::number(++pictures_).rightJustified(2, u'0');
    return shot.save(folder_.filePath(number + u'-' + name + u".png"_s));
}

bool Tour::press(const QString& button) {
    auto* bar = window_.findChild<QWidget*>(u"Toolbar1"_s, Qt::FindDirectChildrenOnly);
    auto* found = bar ? bar->findChild<QAbstractButton*>(button) : nullptr;
    if (found) found->click();
    return found && found->isEnabled();
}

bool Tour::choose(const QString& item) {
    for (QAction* action : window_.findChildren<QAction*>(item)) {
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
    const QPointF place = tree->visualRect(index).center();
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
    browse::frm_Icerik& content = window_.windows().contentWindow();
    content.wb_Icerik->setFocus();
    QWidget* page = QApplication::focusWidget();
    if (!page) return;
    const QPointF from(page->width() * 0.06, page->height() * 0.30),
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

}  // namespace lirovan::shell
