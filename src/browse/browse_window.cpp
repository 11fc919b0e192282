#include "browse/browse_window.h"

#include <utility>

#include "browse/page_file.h"
#include "browse/topic_page.h"
#include "browse/window_places.h"
#include "text/blanks.h"

namespace lirovan::browse {

using namespace Qt::StringLiterals;
namespace button = platform::button;
namespace menu = platform::menu;

const BookTree& BrowseWindow::load(const TreeProgress& progress, std::optional<platform::Twips> widthBefore) {
    if (progress.started) progress.started();
    parts_.frame.setMenuChecked(menu::Arama, true);
    platform::TwipsRect place = parts_.view.place();
    if (widthBefore) {
        place.width = *widthBefore;
        parts_.view.setPlace(browsePlace(place, parts_.frame.height()));
    } else {
        parts_.view.maximizeMainWindow();
        parts_.view.setPlace(browsePlaceAtLoad(place, parts_.frame.width()));
    }
    parts_.view.showTab(Tab::Books);
    parts_.page.setBooksInFront(true);
    tree_ = readBookTree(parts_.library, progress);
    return tree_;
}

void BrowseWindow::activate() {
    parts_.frame.setPanelText(1, u"Arama Penceresi"_s);
    for (const QStringView key : {button::Cut, button::Copy, button::Paste, button::Print})
        parts_.frame.setButtonEnabled(key, false);
    for (const QStringView item : {menu::Kes, menu::Kopyala, menu::Yapistir})
        parts_.frame.setMenuEnabled(item, false);
    for (const QStringView item : {menu::Yazdir, menu::Sep2}) parts_.frame.setMenuVisible(item, false);
}

void BrowseWindow::resize() {
    if (parts_.view.isMinimized()) return;
    parts_.view.setPlace(browsePlace(parts_.view.place(), parts_.frame.height()));
    placeContentBeside();
}

BrowseWindow::Reloaded BrowseWindow::reload() {
    Reloaded reloaded{std::exchange(tree_, readBookTree(parts_.library)).nodes, {}};
    reloaded.now = sameNodes(reloaded.before, tree_.nodes);
    for (std::size_t i = 0; i < reloaded.now.size(); ++i)
        if (reloaded.now[i] >= 0) at(reloaded.now[i]).image = reloaded.before[i].image;
    return reloaded;
}

// The content window follows only when the browse window really has the height that it was given.
void BrowseWindow::placeContentBeside() {
    const platform::TwipsRect browse = parts_.view.place();
    if (!parts_.frame.isMenuChecked(menu::Icerik) || browse.height != parts_.frame.height() - ChromeHeight)
        return;
    parts_.content.setPlace(contentPlaceBeside(browse, parts_.frame.width()));
}

bool BrowseWindow::unload() {
    if (parts_.search.running) return false;
    parts_.frame.setSelectorVisible(false);
    parts_.frame.setPanelVisible(2, false);
    parts_.frame.setPanelVisible(3, false);
    parts_.search.showPanel2 = parts_.search.showPanel3 = false;
    parts_.frame.setMenuChecked(menu::Arama, false);
    return true;
}

void BrowseWindow::selectTab(Tab tab) {
    const bool search = tab == Tab::Search;
    parts_.page.setBooksInFront(!search);
    parts_.frame.setSelectorVisible(search);
    if (search) {
        parts_.frame.setPanelText(1, u"Arama Penceresi - Arama"_s);
    } else {
        parts_.frame.setPanelVisible(2, false);
        parts_.frame.setPanelVisible(3, false);
        parts_.frame.setPanelText(1, u"Arama Penceresi - Kitaplar"_s);
    }
    parts_.view.showTab(tab);
    if (!search) return;
    if (!parts_.isHelpShown || !parts_.isHelpShown()) parts_.view.focusSearchBox();
    if (parts_.search.showPanel2) parts_.frame.setPanelVisible(2, true);
    // It counts the hits of a page that may have gone meanwhile.
    if (parts_.search.showPanel3 && parts_.page.shown() == ShownPage::MarkedPage)
        parts_.frame.setPanelVisible(3, true);
}

void BrowseWindow::setImage(qsizetype node, QStringView image) {
    if (at(node).image == image) return;
    at(node).image = image;
    parts_.view.setNodeImage(node, image);
}

void BrowseWindow::expanded(qsizetype node) {
    setImage(node, expandedImage(at(node).image));
}

void BrowseWindow::collapsed(qsizetype node) {
    setImage(node, collapsedImage(at(node).image));
}

void BrowseWindow::NodeClick(qsizetype node) {
    if (parts_.search.running) return;
    const bool isTopic = clickTarget(tree_.nodes, node) == ClickTarget::Topic;
    parts_.content.aboutToShow(isTopic ? pageOf(at(node)) : PageIdentity());
    parts_.frame.FontSize(TopicFontSize);
    if (!isTopic) return showStartPage(parts_.content, parts_.page);
    setImage(node, openedImage(at(node).image));
    parts_.content.show();
    showGeneratedPage(parts_.content);
    parts_.page.showPageCommands(ShownPage::Topic);
    showTopic(at(node));
}

namespace {

// The tree was filled once; the lookup by its title gives the author as the library has it now. Where it
// finds nothing (a title with markup) or another book of that title, the ids of the node serve.
TopicRequest request(const data::Library& library, const TreeNode& node, const TreeNode& book) {
    TopicRequest request{node.book, node.author, node.topic, {}, book.text};
    const auto found = library.bookByTitle(text::trimBlanks(book.text));
    if (found && *found && (**found).id == node.book) request.author = (**found).author;
    const auto heading = library.heading(request.book, request.topic);
    if (heading && *heading) request.title = (**heading).title;
    return request;
}

}  // namespace

void BrowseWindow::showTopic(const TreeNode& node) {
    const std::optional<QString> page =
        topicPage(parts_.library, parts_.folder, request(parts_.library, node, at(node.parent)));
    if (!page) return;
    const platform::Result<QByteArray> written = writePage(parts_.folder, *page);
    parts_.content.setCaption(contentCaption(node.text));
    showPageFile(parts_.content, parts_.folder.pageText(PageFile), written);
}

}  // namespace lirovan::browse
