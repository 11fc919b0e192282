#include "shell/ui/frm_IcerikN.h"

#include <QApplication>
#include <QMouseEvent>
#include <QVBoxLayout>
#include <utility>

#include "browse/content_window.h"
#include "browse/page_file.h"
#include "browse/ui/frm_Icerik.h"
#include "platform/ui/clipboard.h"
#include "platform/ui/icons.h"
#include "search/pages/highlighter.h"
#include "shell/page_printing.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
using platform::WebView;
namespace button = platform::button;

namespace {

constexpr int IconSize = 20;

// The lines that a page moves on once its first hit has the focus, so that the hit does not stick to an edge.
constexpr int LinesPastHit = 4;

}  // namespace

frm_IcerikN::frm_IcerikN(Parts parts, int number)
    : MdiChild(u"frm_IcerikN"_s),
      wb_Icerik(new WebView(parts.engine, parts.dialogs)),
      wb_Icerik2(new WebView(parts.engine, parts.dialogs)),
      words(new search::WordsStrip),
      parts_(std::move(parts)),
      fontSize_(parts_.frame.fontSize()),
      Toolbar1(new QToolBar),
      hits_(*wb_Icerik, [this](QStringView key, bool enabled) {
          if (auto* action = Toolbar1->findChild<QAction*>(key.toString())) action->setEnabled(enabled);
      }) {
    setProperty("tag", QString::number(number));
    setWindowIcon(platform::icon(button::New));
    buildToolbar();

    auto* surface = new QWidget;
    auto* layout = new QVBoxLayout(surface);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(Toolbar1);
    layout->addWidget(words);
    layout->addWidget(browse::pageSurface(wb_Icerik, wb_Icerik2), 1);
    wb_Icerik->setShown(true);
    wb_Icerik2->setShown(false);
    setWidget(surface);
    wb_Icerik2->navigate(parts_.folder.pageText(browse::StartPageOfWindow));

    connect(wb_Icerik, &WebView::gotFocus, this,
            [this] { browse::pageFocused(parts_.frame, platform::clipboardHasText()); });
    connect(wb_Icerik, &WebView::printRequested, this,
            [this] { printWithDialog(*wb_Icerik, parts_.printing, parts_.dialogs); });
    onActivate = [this] { activated(); };
    words->chosen = [this](const search::RunWord& word) {
        const Hold hold(*this);
        hits_.goToNextOf(word.hits);
    };
}

// Of the main toolbar's buttons those that are about a page, each about this window's.
const frm_IcerikN::Button frm_IcerikN::Buttons[] = {
    {button::Cut, [](frm_IcerikN&) { platform::cutInFocus(); }},
    {button::Copy,
     [](frm_IcerikN& window) {
         window.wb_Icerik->setFocus();
         window.wb_Icerik->copy();
     }},
    {button::Paste, [](frm_IcerikN& window) { Q_EMIT window.notebookWanted(true); }},
    {{}},
    {button::Not, [](frm_IcerikN& window) { Q_EMIT window.notebookWanted(false); }},
    {{}},
    {button::Print,
     [](frm_IcerikN& window) {
         printDirectly(*window.wb_Icerik, window.parts_.printing, window.parts_.dialogs);
     }},
    {{}, nullptr, true},
    {button::Buyult, [](frm_IcerikN& window) { window.ChangeFontSizeN(+1); }},
    {button::Kucult, [](frm_IcerikN& window) { window.ChangeFontSizeN(-1); }},
    {{}},
    {button::Up, [](frm_IcerikN& window) { window.hits_.UpperPos(); }},
    {button::Down, [](frm_IcerikN& window) { window.hits_.DownerPos(); }},
};

void frm_IcerikN::buildToolbar() {
    Toolbar1->setObjectName(u"Toolbar1"_s);
    Toolbar1->setIconSize(QSize(IconSize, IconSize));
    Toolbar1->setContextMenuPolicy(Qt::PreventContextMenu);
    for (const Button& button : Buttons) {
        if (button.run)
            addButton(button);
        else if (button.isSpacer)
            addSpacer();
        else
            Toolbar1->addSeparator();
    }
}

void frm_IcerikN::addButton(const Button& button) {
    const CommandRow& row = toolbarRow(button.key);
    QAction* action = Toolbar1->addAction(platform::icon(row.name), row.caption.toString());
    action->setObjectName(row.name.toString());
    connect(action, &QAction::triggered, this, [this, &button] {
        const Hold hold(*this);
        button.run(*this);
    });
    QWidget* widget = Toolbar1->widgetForAction(action);
    widget->setObjectName(row.name.toString());
    widget->setAccessibleName(row.caption.toString());
    widget->setFocusPolicy(Qt::TabFocus);
}

void frm_IcerikN::addSpacer() {
    auto* spacer = new QWidget;
    spacer->setObjectName(button::Bosluk.toString());
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    Toolbar1->addWidget(spacer);
}

void frm_IcerikN::fill(const CopiedPage& page) {
    const Hold hold(*this);
    if (page.same) {
        wb_Icerik->showSameAs(*page.same);
    } else {
        wb_Icerik->navigateToText(page.location, page.html);
        wb_Icerik->waitUntilComplete();
    }
    setWindowTitle(page.caption);
    identity = page.identity;
    words->setWords(page.words);
    FontSizeN(page.fontSize);
}

void frm_IcerikN::focusPage() {
    const Hold hold(*this);
    const auto hit = [](int number) { return search::HitAnchor.toString() + QString::number(number); };
    wb_Icerik->setFocus();
    if (wb_Icerik->isLarge()) return;
    if (!wb_Icerik->hasElement(hit(0)).valueOr(false)) return;
    wb_Icerik->focusElement(hit(0));
    if (wb_Icerik->isInFirstView(search::HitAnchor).valueOr(false)) return;
    // The stop of a single hit lies lower already; more lines would move it out of sight.
    if (wb_Icerik->hasElement(hit(1)).valueOr(false)) wb_Icerik->scrollLinesDown(LinesPastHit);
}

void frm_IcerikN::ChangeFontSizeN(int step) {
    const Hold hold(*this);
    const int oldSize = std::exchange(fontSize_, browse::steppedFontSize(fontSize_, step));
    if (fontSize_ == oldSize) return;
    // Its images are absolute already.
    browse::rewriteWithFontSize(*wb_Icerik, oldSize, fontSize_, nullptr);
    hits_.ReOrderPos();
    // Pressed by the keyboard, the toolbar has the keys that now move the page.
    const QWidget* focused = QApplication::focusWidget();
    if (focused && Toolbar1->isAncestorOf(focused)) wb_Icerik->setFocus();
}

void frm_IcerikN::activated() {
    const Hold hold(*this);
    browse::contentActivated(parts_.frame);
    hits_.firstActivation();
}

void frm_IcerikN::mousePressEvent(QMouseEvent* event) {
    MdiChild::mousePressEvent(event);
    if (browse::isSurfaceRightClick(*this, *event)) parts_.frame.popUpMenu(u"mnu_yazi");
}

}  // namespace lirovan::shell
