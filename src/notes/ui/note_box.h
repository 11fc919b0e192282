// The rich edit box of the notebook: text on white paper, RTF in and out.
#pragma once

#include <QTextEdit>
#include <memory>
#include <optional>

#include "platform/core/rtf/document.h"

namespace lirovan::notes {

class LongWork;

enum class Style { Bold, Italic, Underline };

class NoteBox : public QTextEdit {
    Q_OBJECT

  public:
    explicit NoteBox(QWidget* parent = nullptr);

    platform::rtf::Document document() const;
    void setDocument(const platform::rtf::Document& document);
    /// Shows a NotRTF and gives its text as the box holds it. Nothing when that was stopped: all is as it
    /// was.
    std::optional<platform::rtf::Document> load(const QString& notRtf);

    /// The cursor goes behind the last letter, and into view.
    void moveToEnd();
    bool hasSelection() const { return textCursor().hasSelection(); }
    platform::rtf::Document selection() const;
    void replaceSelection(const platform::rtf::Document& document);

    // Of the selection, or of what would be typed at the cursor. Nothing: mixed.
    std::optional<bool> style(Style style) const;
    void setStyle(Style style, bool on);
    std::optional<platform::rtf::Rgb> color() const;  ///< the box's own text colour is black
    void setColor(platform::rtf::Rgb color);

    /// Size of the box's font in points. Setting it changes all text.
    double fontSize() const;
    void setFontSize(double points);

    /// While a long text is being put in bit by bit and events are handled in between.
    bool isBusy() const { return busy_; }
    /// On the screen, where the last rightButtonDown() asked for a menu: at the mouse, or below the caret.
    QPoint menuPlace() const { return menuPlace_; }

  Q_SIGNALS:
    void inputHandled();     ///< after a key or a mouse button
    void rightButtonDown();  ///< or the menu key
    void linkWanted(const QString& address);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

  private:
    void insert(const platform::rtf::Document& document, const QTextCharFormat* format, LongWork* work);
    void insertLong(const platform::rtf::Document& document, const QTextCharFormat* format, LongWork& work);
    void adopt(std::unique_ptr<QTextDocument> document);
    void setTypeSize(int halfPoints);
    double firstSize() const;  ///< of the first letter, in points; 0: it has none of its own
    void followUndoneSize(int charactersBefore, double sizeBefore);
    /// The address that the text on both sides of the cursor leads to.
    QString linkAtCursor() const;
    bool followsLink(const QKeyEvent& event);
    bool followsLink(const QMouseEvent& event);
    void leaveLink();
    void watchLayout();
    bool layOutSome();

    QPoint menuPlace_;
    bool busy_ = false;
};

}  // namespace lirovan::notes
