// Commands of "Okuma" on the page that is read: finding on it, and pages beside each other.
#include <QDesktopServices>
#include <QVBoxLayout>
#include <algorithm>

#include "browse/topic_link.h"
#include "browse/ui/find_strip.h"
#include "shell/ui/child_windows.h"
#include "shell/ui/page_looks.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;

void ChildWindows::findOnPage() {
    QMdiSubWindow* window = qobject_cast<frm_IcerikN*>(area_.activeSubWindow());
    if (!window) window = content_;
    if (!window || window->isHidden()) return;
    if (window->isMinimized()) window->showNormal();
    area_.setActiveSubWindow(window);
    if (auto* strip = window->findChild<browse::FindStrip*>()) strip->open();
}

void ChildWindows::copyWithSource() {
    auto* extra = qobject_cast<frm_IcerikN*>(area_.activeSubWindow());
    if ((!extra && !content_) || isBusy()) return;
    platform::WebView& page = extra ? *extra->wb_Icerik : *content_->wb_Icerik;
    const browse::PageIdentity& shown = extra ? extra->identity : shown_;
    if (!page.isShown() || !shown.isOfTopic())
        return frame_.showPassingText(u"Kaynağı bilinen bir konu açık değil."_s);
    if (!page.hasSelection()) return frame_.showPassingText(u"Önce kopyalanacak yeri seçin."_s);
    const platform::MdiChild::Hold hold(extra ? static_cast<platform::MdiChild&>(*extra) : *content_);
    // A topic may stand in two books: the one that it was opened from is meant.
    const qsizetype at = nodeOf(shown);
    if (at < 0) return frame_.showPassingText(u"Bu konu kitaplıkta yok."_s);
    const std::vector<browse::TreeNode>& nodes = browseWindow().decisions().nodes();
    const browse::TreeNode& node = nodes[static_cast<std::size_t>(at)];
    const auto author = library_.author(node.author);
    const QString source =
        browse::sourceLine(author && *author ? (**author).name : QString(),
                           nodes[static_cast<std::size_t>(node.parent)].text.trimmed(), node.text.trimmed());
    const auto place = page.place(true);
    page.copyWithSource(source,
                        browse::topicAddress({shown.topic, place ? place.value->passage : QString()}));
    frame_.showPassingText(u"Kopyalandı: "_s + source);
}

void ChildWindows::placeSideBySide() {
    frm_IcerikN* const window = extra_.at(extra_.highest());
    if (!window) return frame_.showPassingText(u"Yan yana dizilecek yeni pencere yok."_s);
    browse::frm_Icerik& content = contentWindow();
    content.bringForward();
    window->bringForward();
    QRect room = area_.contentsRect();
    if (browse_ && browse_->isVisible() && !browse_->isMinimized() && !browse_->isMaximized())
        room.setLeft(std::min(browse_->geometry().right() + 1, room.right() - room.width() / 3));
    for (QMdiSubWindow* each : {static_cast<QMdiSubWindow*>(&content), static_cast<QMdiSubWindow*>(window)})
        if (each->isMaximized() || each->isMinimized()) each->showNormal();
    QRect left = room;
    left.setWidth(room.width() / 2);
    content.setGeometry(left);
    window->setGeometry(room.adjusted(left.width(), 0, 0, 0));
}

// A page that a tree shows would not be seen under an extra window.
void ChildWindows::uncoverContent() {
    QMdiSubWindow* active = area_.activeSubWindow();
    const std::vector<frm_IcerikN*> open = extra_.open();
    const bool covered = std::any_of(open.begin(), open.end(), [this](const frm_IcerikN* window) {
        return window->isVisible() && window->geometry().intersects(content_->geometry());
    });
    if (!covered || content_ == active) return;
    content_->raise();
    if (active && !qobject_cast<frm_IcerikN*>(active)) active->raise();
}

void ChildWindows::addWordsStrip() {
    words_ = new search::WordsStrip(content_->widget());
    static_cast<QVBoxLayout*>(content_->widget()->layout())->insertWidget(0, words_);
    words_->setWanted(looks_->wordsShown());
    words_->chosen = [this](const search::RunWord& word) {
        if (isBusy() || !content_) return;
        const platform::MdiChild::Hold hold(*content_);
        hits_->goToNextOf(word.hits);
    };
}

void ChildWindows::toggleWords() {
    looks_->showWords(!looks_->wordsShown());
    if (words_) words_->setWanted(looks_->wordsShown());
    for (frm_IcerikN* window : extra_.open()) window->words->setWanted(looks_->wordsShown());
}

std::vector<search::RunWord> ChildWindows::pageWords() const {
    return words_ ? words_->words() : std::vector<search::RunWord>();
}

void ChildWindows::openLink(const QString& address) {
    if (const auto link = browse::topicLinkOf(address)) {
        if (isBusy()) return;
        platform::PagePlace place;
        place.passage = link->passage;
        place.atTop = link->passage.isEmpty();
        if (!openPlace(link->topic, {}, place, !place.atTop))
            return frame_.showPassingText(u"Bu konu kitaplıkta yok."_s);
        return content_->bringForward();
    }
    const platform::Message question{
        u"Bu bağ programın dışına çıkar:\n\n%1\n\n"
        "Masaüstünün tarayıcısında açılsın mı?"_s.arg(address),
        u"Bağ"_s, platform::Icon::Question, platform::Buttons::YesNo};
    if (services_.dialogs.show(question) == platform::Answer::Yes) QDesktopServices::openUrl(QUrl(address));
}

}  // namespace lirovan::shell
