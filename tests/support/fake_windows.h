// The main window, page views and child windows as values that a test can look at.
#pragma once

#include <QMap>
#include <QStringList>

#include "browse/window_ports.h"
#include "platform/core/main_frame.h"

namespace lirovan::test {

/// Holds the last state of everything; buttons and menu items by lower-case name.
struct FakeMainFrame : platform::MainFrame {
    struct State {
        bool visible = true, enabled = true, checked = false;
    };
    QMap<QString, State> buttons, menus;
    QMap<int, QString> panels;
    QMap<int, bool> panelVisible;
    platform::Twips toolTextWidth;
    bool progressVisible = false, toolTextVisible = false, selectorVisible = true, busy = false,
         locked = false;
    int progressMaximum = 0, pixels = 12, reorders = 0, zeros = 0;
    QString toolText, poppedUp, passingText;
    platform::BookSelection selection;

    State button(QStringView key) const { return buttons.value(key.toString()); }
    State menu(QStringView item) const { return menus.value(item.toString().toLower()); }

    void setButtonVisible(QStringView key, bool on) override { buttons[key.toString()].visible = on; }
    void setButtonEnabled(QStringView key, bool on) override { buttons[key.toString()].enabled = on; }
    void setSpacerWidth(platform::Twips) override {}
    void setMenuChecked(QStringView item, bool on) override { menus[item.toString().toLower()].checked = on; }
    bool isMenuChecked(QStringView item) const override { return menu(item).checked; }
    void setMenuEnabled(QStringView item, bool on) override { menus[item.toString().toLower()].enabled = on; }
    void setMenuVisible(QStringView item, bool on) override { menus[item.toString().toLower()].visible = on; }
    void popUpMenu(QStringView item) override { poppedUp = item.toString(); }
    void setPanelText(int panel, const QString& text) override { panels[panel] = text; }
    void showPassingText(const QString& text) override { passingText = text; }
    void setPanelVisible(int panel, bool on) override { panelVisible[panel] = on; }
    void setProgressVisible(bool on) override { progressVisible = on; }
    void setProgressMaximum(int maximum) override { progressMaximum = maximum; }
    void setProgressValue(int) override {}
    void setToolTextVisible(bool on) override { toolTextVisible = on; }
    void setToolText(const QString& text) override { toolText = text; }
    void setToolTextWidth(platform::Twips width) override { toolTextWidth = width; }
    void setSelectorVisible(bool on) override { selectorVisible = on; }
    platform::BookSelection selectedBooks() const override { return selection; }
    platform::Twips width() const override { return {20000}; }
    platform::Twips height() const override { return {12000}; }
    void setBusyPointer(bool on) override { busy = on; }
    void setCommandsLocked(bool on) override { locked = on; }
    int fontSize() const override { return pixels; }
    void FontSize(int size) override { pixels = size; }
    void ReOrderPos() override { ++reorders; }
    void SetPosZero() override { ++zeros; }
};

/// A page that answers with what the test put there.
struct FakePageView : platform::PageView {
    QStringList navigated;
    QByteArray given;
    QString notice;  ///< since the last navigate()
    bool shown = true, focused = false;
    platform::Outcome outcome = platform::Outcome::Answered;  ///< of every question
    QString html;                                             ///< innerHtml(); rewrite() replaces it
    QStringList elements;
    std::vector<double> positions;
    bool firstIsInView = false;
    int scrolledTo = -1, outlined = -1;
    double zoom = 1;
    QString selection;

    void navigate(const QString& path) override {
        navigated += path;
        notice.clear();
    }
    void navigate(const QString& path, const QByteArray& page) override {
        navigate(path);
        given = page;
    }
    void showNotice(const QString& text) override { notice = text; }
    platform::Outcome waitUntilComplete() override { return outcome; }
    QString location() const override { return navigated.isEmpty() ? QString() : navigated.last(); }
    void setShown(bool on) override { shown = on; }
    bool isShown() const override { return shown; }
    void setFocus() override { focused = true; }
    platform::Reply<QString> innerHtml() override { return reply(html); }
    platform::Outcome rewrite(const QString& text) override {
        if (outcome == platform::Outcome::Answered) html = text;
        return outcome;
    }
    platform::Reply<bool> hasElement(QStringView name) override { return reply(elements.contains(name)); }
    platform::Outcome focusElement(QStringView) override { return outcome; }
    platform::Reply<std::vector<double>> offsets(QStringView) override { return reply(positions); }
    platform::Reply<bool> isInFirstView(QStringView) override { return reply(firstIsInView); }
    void outlineMark(QStringView, int number) override { outlined = number; }
    platform::Outcome setScrollTop(int pixels) override { return scrolledTo = pixels, outcome; }
    platform::Reply<double> scrollTop() override { return reply(double(scrolledTo)); }
    platform::Outcome scrollLinesDown(int) override { return outcome; }
    void setZoom(double factor) override { zoom = factor; }
    bool hasSelection() const override { return !selection.isEmpty(); }
    QString selectedText() const override { return selection; }
    void copy() override {}
    void print(const platform::PrintTarget&, std::function<void(bool)> finished) override { finished(true); }

  private:
    template <class T>
    platform::Reply<T> reply(T value) const {
        return {outcome, outcome == platform::Outcome::Answered ? std::optional(value) : std::nullopt};
    }
};

struct FakeContentView : browse::ContentView {
    platform::TwipsRect rect;
    bool minimized = false, maximized = false, loaded = true;
    int shows = 0;
    QString title;
    FakePageView page, startPage;

    platform::TwipsRect place() const override { return rect; }
    void setPlace(const platform::TwipsRect& place) override { rect = place; }
    bool isMinimized() const override { return minimized; }
    bool isMaximized() const override { return maximized; }
    bool isLoaded() const override { return loaded; }
    void show() override { ++shows; }
    QString caption() const override { return title; }
    void setCaption(const QString& text) override { title = text; }
    platform::PageView& wb_Icerik() override { return page; }
    platform::PageView& wb_Icerik2() override { return startPage; }
};

struct FakeBrowseView : browse::BrowseView {
    platform::TwipsRect rect;
    bool minimized = false, mainMaximized = false, searchFocused = false;
    std::optional<browse::Tab> tab;
    QMap<qsizetype, QString> images;

    platform::TwipsRect place() const override { return rect; }
    void setPlace(const platform::TwipsRect& place) override { rect = place; }
    bool isMinimized() const override { return minimized; }
    void maximizeMainWindow() override { mainMaximized = true; }
    void showTab(browse::Tab shown) override { tab = shown; }
    void focusSearchBox() override { searchFocused = true; }
    void setNodeImage(qsizetype node, QStringView image) override { images[node] = image.toString(); }
};

}  // namespace lirovan::test
