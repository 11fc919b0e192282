// What of the child windows belongs to a session, and how it comes back.
#include <QBoxLayout>

#include "desk/ui/continue_strip.h"
#include "platform/ui/twips_pixels.h"
#include "shell/ui/child_windows.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
using browse::TreeNode;

void ChildWindows::intoSession(desk::Session& session) {
    if (browse_) {
        session.browseWidth = browse_->normalPlace().width.value;
        session.tab = static_cast<int>(browse_->tab());
        session.unfoldedAuthors.clear();
        session.unfoldedBooks.clear();
        const std::vector<TreeNode>& nodes = browse_->decisions().nodes();
        for (std::size_t n = 0; n < nodes.size(); ++n) {
            if (nodes[n].kind == TreeNode::Kind::Topic || !browse_->isUnfolded(qsizetype(n))) continue;
            if (nodes[n].kind == TreeNode::Kind::Author)
                session.unfoldedAuthors.push_back(nodes[n].author);
            else
                session.unfoldedBooks.push_back(nodes[n].book);
        }
    }
    const qsizetype shown = browse_ ? shownNode() : -1;
    if (shown < 0 || !content_) return;
    const TreeNode& node = browse_->decisions().nodes()[std::size_t(shown)];
    desk::LastPage page{node.topic, node.book, node.text.trimmed(),
                        browse_->decisions().nodes()[std::size_t(node.parent)].text.trimmed(), std::nullopt};
    if (session.page && session.page->topic == page.topic && session.page->book == page.book)
        page.place = session.page->place;
    {
        const platform::MdiChild::Hold hold(*content_);
        if (auto place = content_->shownPage().place(false).value) page.place = std::move(place);
    }
    session.page = std::move(page);
}

void ChildWindows::beginWith(const desk::Session& session) {
    if (session.continues) restore(session);
    frame_.setMenuChecked(u"mnu_Surdur", session.continues);
    if (!session.page) return;
    // Not for a topic that the tree does not have any more; in a library made anew another may have its id.
    const std::vector<TreeNode>& nodes = browseWindow().decisions().nodes();
    const qsizetype node = browse::topicNode(nodes, session.page->topic, session.page->book);
    if (node < 0 || nodes[std::size_t(node)].text.trimmed() != session.page->heading) return;
    if (session.continues)
        continueAt(*session.page);
    else
        offerToContinue(*session.page);
}

void ChildWindows::restore(const desk::Session& session) {
    browse::frm_Arama& window = browseWindow();
    if (session.browseWidth > 0 && !window.isMaximized()) {
        restoredBrowseWidth_ = platform::Twips{session.browseWidth};
        platform::TwipsRect place = window.place();
        place.width = {std::min(session.browseWidth, frame_.width().value / 2)};
        window.setPlace(place);
        window.decisions().resize();
    }
    const std::vector<TreeNode>& nodes = window.decisions().nodes();
    for (std::size_t n = 0; n < nodes.size(); ++n) {
        const bool author = nodes[n].kind == TreeNode::Kind::Author &&
                            std::ranges::count(session.unfoldedAuthors, nodes[n].author) > 0;
        const bool book = nodes[n].kind == TreeNode::Kind::Book &&
                          std::ranges::count(session.unfoldedBooks, nodes[n].book) > 0;
        if (author || book) window.unfold(qsizetype(n));
    }
    if (const auto& searches = session.searches.all(); !searches.empty())
        searchTab_->offer(searches.front().query, searches.front().options);
    putInFront(browse::Tab(session.tab));
}

void ChildWindows::continueAt(const desk::LastPage& page) {
    if (isBusy()) return;
    if (!openPlace(page.topic, page.book, page.place.value_or(platform::PagePlace{.atTop = true}), false))
        frame_.showPassingText(u"Kalınan konu kitaplıkta artık yok."_s);
}

void ChildWindows::offerToContinue(const desk::LastPage& page) {
    auto* rows = qobject_cast<QBoxLayout*>(contentWindow().widget()->layout());
    if (!rows) return;
    auto* strip = new desk::ContinueStrip(page.heading, page.bookTitle);
    rows->insertWidget(0, strip);
    continueStrip_ = strip;
    connect(strip, &desk::ContinueStrip::closed, strip, &QObject::deleteLater);
    connect(strip, &desk::ContinueStrip::continueWanted, this, [this, page] { continueAt(page); });
}

}  // namespace lirovan::shell
