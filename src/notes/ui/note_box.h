// The rich edit box of the notebook: text on white paper, RTF in and out.
#pragma once

#include <QTextEdit>
#include <memory>

#include "notes/editor_ports.h"

namespace lirovan::notes {

class LongWork;

class NoteBox : public QTextEdit, public RichBox {
    Q_OBJECT

  public:
    explicit NoteBox(QWidget* parent = nullptr);

    QString plainText() const override { return toPlainText(); }
    platform::rtf::Document document() const override;
    void setDocument(const platform::rtf::Document& document) override;
    std::optional<platform::rtf::Document> load(const QString& notRtf) override;
    void moveToEnd() override;
    bool hasSelection() const override { return textCursor().hasSelection(); }
    platform::rtf::Document selection() const override;
    void replaceSelection(const platform::rtf::Document& document) override;
    void paste() override { QTextEdit::paste(); }
    std::optional<bool> style(Style style) const override;
    void setStyle(Style style, bool on) override;
    std::optional<platform::rtf::Rgb> color() const override;
    void setColor(platform::rtf::Rgb color) override;
    double fontSize() const override;
    void setFontSize(double points) override;
    void setFocus() override { QTextEdit::setFocus(); }

    /// While a long text is being put in bit by bit and events are handled in between.
    bool isBusy() const { return busy_; }
    /// On the screen, where the last rightButtonDown() asked for a menu: at the mouse, or below the caret.
    QPoint menuPlace() const { return menuPlace_; }

  Q_SIGNALS:
    void inputHandled();     ///< after a key or a mouse button
    void rightButtonDown();  ///< or the menu key

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
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
    void watchLayout();
    bool layOutSome();

    QPoint menuPlace_;
    bool busy_ = false;
};

}  // namespace lirovan::notes
