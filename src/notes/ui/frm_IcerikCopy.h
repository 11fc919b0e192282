// frm_IcerikCopy — the notebook's window: menus, Toolbar1, the edit box. What they do is NoteEditor's matter.
#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>
#include <functional>

#include "notes/note_editor.h"
#include "notes/ui/note_box.h"
#include "notes/ui/system_clipboard.h"

class QMenu;

namespace lirovan::notes {

class frm_IcerikCopy : public QMainWindow, private EditorWindow {
    Q_OBJECT

  public:
    struct Surroundings {
        platform::Dialogs& dialogs;
        platform::Printing& printing;
        NoteEditor::OpenNotes openNotes;
        std::function<void(NoteEditor&)> showNoteList;  ///< runs frm_NotList until it is closed
    };

    frm_IcerikCopy(Surroundings surroundings, QWidget* parent = nullptr);

    NoteEditor& editor() { return editor_; }
    NoteBox& box() { return *txt_Icerik; }

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void makeMenus();
    void makeToolbar();
    void watchTheBox();
    void addItem(QMenu* menu, QStringView name, const QString& caption, const QKeySequence& shortcut = {});
    void giveShortcut(QAction& action, const QKeySequence& shortcut);
    QAction* itemFor(const QKeyEvent& event) const;
    void keepDraft();
    void showDraftState();

    void setCaption(const QString& caption) override { setWindowTitle(caption); }
    QPoint onScreen(platform::Twips x, platform::Twips y) const override;
    void setButtonPressed(QStringView key, bool pressed) override;
    void setButtonEnabled(QStringView key, bool enabled) override;
    void setItemEnabled(QStringView item, bool enabled) override;
    void popUpSizes() override;
    void showNoteList() override { surroundings_.showNoteList(editor_); }
    void closeWindow() override;
    bool print(const platform::PrintTarget& target) override;

    Surroundings surroundings_;
    NoteBox* txt_Icerik;
    NoteBox* txt_Icerik2;  // never shown
    QMenu* mnu_yazi = nullptr;
    SystemClipboard clipboard_;
    NoteEditor editor_;
    QTimer draftTimer_, draftDoneTimer_;
    QElapsedTimer unkept_;  // since the first change that is in no draft
    bool draftIsSlow_ = false;
};

}  // namespace lirovan::notes
