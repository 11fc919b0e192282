#include "shell/ui/frm_IcerikN.h"

#include <QMouseEvent>
#include <QVBoxLayout>
#include <utility>

#include "browse/content_window.h"
#include "browse/page_file.h"
#include "browse/ui/frm_Icerik.h"
#include "platform/ui/clipboard.h"
#include "platform/ui/icons.h"
#include "search/highlighter.h"
#include "shell/page_printing.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
using platform::WebView;
namespace button = platform::button;

namespace {

constexpr int IconSize = 20;

// The lines that a page moves on once its first hit has the focus, so that the hit does not stick to an edge.
constexpr int LinesPastHit = 4;

struct Entry {
    QStringView key;  ///< empty: a separator; "bosluk": the spacer
    QStringView name;
};

constexpr Entry Buttons[] = {
    {button::Cut, u"Kes"},
    {button::Copy, u"Kopyala"},
    {button::Paste, u"Yapıştır"},
    {{}, {}},
    {button::Not, u"Not Defteri"},
    {{}, {}},
    {button::Print, u"Yazdır"},
    {button::Bosluk, {}},
    {button::Buyult, u"Yazı Boyutunu Büyült"},
    {button::Kucult, u"Yazı Boyutunu Küçült"},
    {{}, {}},
    {button::Up, u"Yukarıdaki Kelime"},
    {button::Down, u"Aşağıdaki Kelime"},
};

}  // namespace

frm_IcerikN::frm_IcerikN(Parts parts, int number)
    : MdiChild(u"frm_IcerikN"_s),
      wb_Icerik(new WebView(parts.engine, parts.dialogs)),
      wb_Icerik2(new WebView(parts.engine, parts.dialogs)),
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
}

void frm_IcerikN::buildToolbar() {
    Toolbar1->setObjectName(u"Toolbar1"_s);
    Toolbar1->setIconSize(QSize(IconSize, IconSize));
    Toolbar1->setContextMenuPolicy(Qt::PreventContextMenu);
    for (const Entry& entry : Buttons) {
        if (entry.key.empty()) {
            Toolbar1->addSeparator();
            continue;
        }
        if (entry.key == button::Bosluk) {
            auto* spacer = new QWidget;
            spacer->setObjectName(entry.key.toString());
            spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
            Toolbar1->addWidget(spacer);
            continue;
        }
        QAction* action = Toolbar1->addAction(platform::icon(entry.key), entry.name.toString());
        action->setObjectName(entry.key.toString());
        connect(action, &QAction::triggered, this, [this, key = entry.key] { pressed(key); });
        QWidget* pressedButton = Toolbar1->widgetForAction(action);
        pressedButton->setObjectName(entry.key.toString());
        pressedButton->setAccessibleName(entry.name.toString());
        pressedButton->setFocusPolicy(Qt::TabFocus);
    }
}

void frm_IcerikN::pressed(QStringView key) {
    const Hold hold(*this);
    if (key == button::Cut) {
        platform::cutInFocus();
    } else if (key == button::Copy) {
        wb_Icerik->setFocus();
        wb_Icerik->copy();
    } else if (key == button::Paste) {
        Q_EMIT notebookWanted(true);
    } else if (key == button::Not) {
        Q_EMIT notebookWanted(false);
    } else if (key == button::Print) {
        printDirectly(*wb_Icerik, parts_.printing, parts_.dialogs);
    } else if (key == button::Buyult) {
        ChangeFontSizeN(+1);
    } else if (key == button::Kucult) {
        ChangeFontSizeN(-1);
    } else if (key == button::Up) {
        hits_.UpperPos();
    } else if (key == button::Down) {
        hits_.DownerPos();
    }
}

void frm_IcerikN::fill(const CopiedPage& page) {
    const Hold hold(*this);
    wb_Icerik->navigate(page.location);
    wb_Icerik->waitUntilComplete();
    wb_Icerik->rewrite(page.html);
    setWindowTitle(page.caption);
    FontSizeN(page.fontSize);
}

void frm_IcerikN::focusPage() {
    const Hold hold(*this);
    const auto hit = [](int number) { return search::HitAnchor.toString() + QString::number(number); };
    wb_Icerik->setFocus();
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
