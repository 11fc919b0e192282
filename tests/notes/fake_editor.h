// The note editor's surroundings as values that a test sets and looks at.
#pragma once

#include <QMap>
#include <QStringList>

#include "notes/editor_ports.h"
#include "platform/core/rtf/reader.h"
#include "platform/core/rtf/writer.h"

namespace lirovan::test {

namespace rtf = platform::rtf;

inline rtf::Document textDocument(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return rtf::read(QByteArrayView(bytes));
}

class FakeBox : public notes::RichBox {
  public:
    rtf::Document text = textDocument({}), selected;
    std::optional<bool> styles[3] = {false, false, false};
    std::optional<rtf::Rgb> shownColor = rtf::Black;
    double points = 10;
    bool focused = false, atEnd = false;

    void type(const QString& typed) { text = textDocument(typed); }

    QString plainText() const override { return text.plainText(); }
    rtf::Document document() const override { return text; }
    void setDocument(const rtf::Document& document) override {
        text = document.paragraphs.empty() ? textDocument({}) : document;
    }
    void moveToEnd() override { atEnd = true; }
    bool hasSelection() const override { return !selected.isEmpty(); }
    rtf::Document selection() const override { return selected; }
    void replaceSelection(const rtf::Document& document) override {
        replacedWith += document.plainText();
        selected = {};
    }
    std::optional<bool> style(notes::Style style) const override { return styles[static_cast<int>(style)]; }
    void setStyle(notes::Style style, bool on) override { styles[static_cast<int>(style)] = on; }
    std::optional<rtf::Rgb> color() const override { return shownColor; }
    void setColor(rtf::Rgb color) override { shownColor = color; }
    double fontSize() const override { return points; }
    void setFontSize(double size) override { points = size; }
    void setFocus() override { focused = true; }

    QStringList replacedWith;
};

class FakeEditorWindow : public notes::EditorWindow {
  public:
    QString caption;
    QMap<QString, bool> pressed, enabled;
    int lists = 0, popUps = 0, closings = 0;
    bool printerWorks = true;
    std::vector<platform::PrintTarget> printed;

    QString pressedKeys() const {
        QStringList keys;
        for (auto it = pressed.begin(); it != pressed.end(); ++it)
            if (*it) keys += it.key();
        return keys.join(u' ');
    }

    void setCaption(const QString& text) override { caption = text; }
    QPoint onScreen(platform::Twips x, platform::Twips y) const override {
        return {int(x.value), int(y.value)};
    }
    void setButtonPressed(QStringView key, bool on) override { pressed[key.toString()] = on; }
    void setButtonEnabled(QStringView key, bool on) override { enabled[key.toString()] = on; }
    void setItemEnabled(QStringView item, bool on) override { enabled[item.toString()] = on; }
    void popUpSizes() override { ++popUps; }
    void showNoteList() override { ++lists; }
    void closeWindow() override { ++closings; }
    bool print(const platform::PrintTarget& target) override {
        printed.push_back(target);
        return printerWorks;
    }
};

class FakeClipboard : public notes::NoteClipboard {
  public:
    std::optional<rtf::Document> rich;
    bool plain = false;
    void put(const rtf::Document& document) override { rich = document, plain = true; }
    std::optional<rtf::Document> richText() const override { return rich; }
    bool hasPlainText() const override { return plain; }
};

class FakePrinting : public platform::Printing {
  public:
    std::optional<platform::PrintTarget> printer, chosen;
    bool offeredSelection = false;
    std::optional<platform::PrintTarget> defaultPrinter() override { return printer; }
    std::optional<platform::PrintTarget> ask(bool hasSelection) override {
        offeredSelection = hasSelection;
        return chosen;
    }
};

}  // namespace lirovan::test
