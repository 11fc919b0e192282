#include "shell/ui/page_looks.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include "search/runs/run_words.h"
#include "shell/page_look_choice.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;

namespace {

// The values that the program keeps of how pages are shown.
constexpr QStringView LooksKey = u"SOFTWARE\\Lirovan\\Gorunum", LookValue = u"Gorunum",
                      PointsValue = u"Punto", WordsValue = u"KelimeSeridi";

platform::LookColours desktopColours() {
    const QPalette palette = QGuiApplication::palette();
    const auto rgb = [&](QPalette::ColorRole role) {
        return palette.color(QPalette::Active, role).rgb() & 0xFFFFFF;
    };
    platform::LookColours colours;
    colours.ground = rgb(QPalette::Base);
    colours.ink = rgb(QPalette::Text);
    colours.link = rgb(QPalette::Link);
    return colours;
}

}  // namespace

PageLooks::PageLooks(platform::MainFrame& frame, reg_api& registry) : frame_(frame), registry_(registry) {
    const auto kept = registry_.readValue(LooksKey, LookValue);
    if (const auto* text = kept ? std::get_if<QString>(&*kept) : nullptr)
        look_ = platform::lookFromText(*text);
    wordsShown_ = number(WordsValue, 1) != 0;
    showChoice();
    qApp->installEventFilter(this);
}

void PageLooks::choose(QStringView item) {
    look_ = lookAfter(look_, item);
    keep(LookValue, platform::lookText(look_));
    showChoice();
    giveStyle();
}

void PageLooks::apply(std::shared_ptr<platform::WebEngine> engine) {
    if (engine_ == engine) return;
    engine_ = std::move(engine);
    giveStyle();
}

int PageLooks::number(QStringView value, int otherwise) const {
    const auto kept = registry_.readValue(LooksKey, value);
    const auto* found = kept ? std::get_if<std::int32_t>(&*kept) : nullptr;
    return found ? *found : otherwise;
}

void PageLooks::keep(QStringView value, const RegValue& what) {
    registry_.createKey(LooksKey);
    registry_.writeValue(LooksKey, value, what);
}

void PageLooks::showWords(bool shown) {
    wordsShown_ = shown;
    keep(WordsValue, shown ? 1 : 0);
    showChoice();
    giveStyle();
}

int PageLooks::keptPoints(int otherwise) const {
    return number(PointsValue, otherwise);
}

void PageLooks::keepPoints(int points) {
    keep(PointsValue, points);
}

void PageLooks::showChoice() {
    for (const auto& [item, checked] : checkedItems(look_)) frame_.setMenuChecked(item, checked);
    frame_.setMenuChecked(WordsItem, wordsShown_);
}

void PageLooks::giveStyle() {
    if (!engine_) return;
    const platform::LookColours desktop = desktopColours();
    const QString cues = wordsShown_ ? search::cueStyle() : QString();
    engine_->style().set(platform::lookStyle(look_, desktop) + cues,
                         QColor(QRgb(platform::coloursOf(look_.colours, desktop).ground)));
}

bool PageLooks::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange &&
        look_.colours == platform::PageColours::Desktop)
        giveStyle();
    return false;
}

}  // namespace lirovan::shell
