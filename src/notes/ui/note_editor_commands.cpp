// NoteEditor's commands for the text, and the states of their items and buttons.
#include <QMdiSubWindow>
#include <array>

#include "notes/ui/note_editor.h"
#include "notes/ui/note_printing.h"
#include "notes/ui/passages.h"

namespace lirovan::notes {

using namespace Qt::StringLiterals;

namespace {

namespace rtf = platform::rtf;

struct ColorCommand {
    NoteCommand command;
    rtf::Rgb value;
};

// In the order in which the state refresh tests them.
constexpr std::array colors{
    ColorCommand{NoteCommand::Red, {255, 0, 0}}, ColorCommand{NoteCommand::Blue, {0, 0, 255}},
    ColorCommand{NoteCommand::Green, {0, 255, 0}}, ColorCommand{NoteCommand::Black, rtf::Black}};

struct StyleCommand {
    NoteCommand command;
    Style style;
};

constexpr std::array styles{StyleCommand{NoteCommand::Bold, Style::Bold},
                            StyleCommand{NoteCommand::Italic, Style::Italic},
                            StyleCommand{NoteCommand::Underline, Style::Underline}};

constexpr double NormalPoints = 10, StepPoints = 2, LeastPoints = 2;

}  // namespace

// The size 1.5, at which shrinking once stopped, lies below the least size.
void NoteEditor::stepFontSize(int direction) {
    const double points = direction == 0 ? NormalPoints : parts_.box.fontSize() + direction * StepPoints;
    if (points >= LeastPoints) parts_.box.setFontSize(points);
}

void NoteEditor::cut() {
    copy();
    parts_.box.replaceSelection({});
    parts_.box.setFocus();
}

void NoteEditor::copy() {
    putOnClipboard(parts_.box.selection());
    parts_.box.setFocus();
}

void NoteEditor::printWithDialog() {
    const std::optional<platform::PrintTarget> target = parts_.printing.ask(parts_.box.hasSelection());
    if (target && !printNote(parts_.box, parts_.window.windowTitle(), *target))
        parts_.dialogs.show(platform::errorMessage(u"Yazıcı algılanamadı!"_s, u"Yazıcı Hatası"_s));
}

void NoteEditor::printDirectly() {
    std::optional<platform::PrintTarget> target = parts_.printing.defaultPrinter();
    if (!target) return;
    target->range = parts_.box.hasSelection() ? platform::PrintRange::Selection : platform::PrintRange::Page;
    (void)printNote(parts_.box, parts_.window.windowTitle(), *target);
}

void NoteEditor::closeWindow() {
    // The frame asks this window in turn.
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parts_.window.parentWidget()))
        frame->close();
    else
        parts_.window.close();
}

void NoteEditor::toggle(NoteCommand style) {
    const Style of = std::ranges::find(styles, style, &StyleCommand::command)->style;
    const bool on = !parts_.box.style(of).value_or(false);
    parts_.box.setStyle(of, on);
    parts_.actions.setPressed(style, on);
}

void NoteEditor::toggleColor(NoteCommand color) {
    const auto asked = std::ranges::find(colors, color, &ColorCommand::command);
    const bool again = parts_.box.color() == asked->value;
    const ColorCommand& other = color == NoteCommand::Black ? colors.front() : colors.back();
    const ColorCommand& now = again ? other : *asked;
    parts_.box.setColor(now.value);
    pressOnly(now.command);
}

void NoteEditor::pressOnly(NoteCommand color) {
    for (const ColorCommand& each : colors) parts_.actions.setPressed(each.command, each.command == color);
}

void NoteEditor::refreshState() {
    parts_.actions.setEnabled(NoteCommand::SmallerType, parts_.box.fontSize() - StepPoints >= LeastPoints);
    for (const StyleCommand& style : styles)
        if (const std::optional<bool> on = parts_.box.style(style.style))
            parts_.actions.setPressed(style.command, *on);
    const std::optional<rtf::Rgb> shown = parts_.box.color();
    for (const ColorCommand& color : colors)
        if (shown == color.value) return pressOnly(color.command);
    if (shown) pressOnly(NoteCommand::None);  // a colour that none of the buttons gives
}

void NoteEditor::selectionChanged() {
    const bool selected = parts_.box.hasSelection();
    parts_.actions.setEnabled(NoteCommand::Cut, selected);
    parts_.actions.setEnabled(NoteCommand::Copy, selected);
    if (selected) {
        refreshState();
    } else {
        for (const StyleCommand& style : styles) parts_.actions.setPressed(style.command, false);
        pressOnly(NoteCommand::None);
    }
    if (!pasteEnabled_) clipboardChanged();  // some systems tell of a change late
}

void NoteEditor::clipboardChanged() {
    pasteEnabled_ = platform::clipboardHasText();
    parts_.actions.setEnabled(NoteCommand::Paste, pasteEnabled_);
}

void NoteEditor::rightButtonDown() {
    parts_.actions.popUpSizes(parts_.box.menuPlace());
    refreshState();
}

}  // namespace lirovan::notes
