// The notebook's windows with real widgets.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QListWidget>
#include <QMainWindow>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPrinter>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include "notes/fake_editor.h"
#include "notes/note_text.h"
#include "notes/ui/notebook.h"
#include "platform/ui/rtf_document.h"
#include "support/fake_windows.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::notes;
using namespace lirovan::test;
using namespace Qt::StringLiterals;
using platform::Answer;

namespace {

class NotebookTest : public testing::Test {
  protected:
    NotebookTest()
        : area_(new QMdiArea(&main_)),
          notebook_(*area_, platform::AppFolder(folder_.path()), frame_, dialogs_, printing_, {}) {
        main_.setCentralWidget(area_);
        main_.resize(1200, 800);
        main_.show();
        notebook_.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&main_));
    }

    frm_IcerikCopy& window() { return *notebook_.window(); }
    NoteBox& box() { return window().box(); }
    QAction& item(const QString& name) { return *window().findChild<QAction*>(name); }
    void press(const QString& key) {
        QTest::mouseClick(window().findChild<QToolButton*>(key), Qt::LeftButton);
    }
    bool pressed(const QString& key) { return window().findChild<QToolButton*>(key)->isChecked(); }
    void type(const QString& text) {
        for (const QChar letter : text)
            for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
                QKeyEvent event(kind, 0, Qt::NoModifier, letter);
                QApplication::sendEvent(&box(), &event);
            }
    }
    void select(int from, int to) {
        QTextCursor cursor(box().textCursor());
        cursor.setPosition(from);
        cursor.setPosition(to, QTextCursor::KeepAnchor);
        box().setTextCursor(cursor);
    }
    void save(const QString& title) {
        dialogs_.answerText(title);
        QTest::keyClick(&box(), Qt::Key_S, Qt::ControlModifier);
    }
    /// Runs `action` in the note list once it is on the screen, and closes the list.
    void inList(const std::function<void(QDialog&, QListWidget&)>& action) {
        QTimer::singleShot(0, &main_, [&] {
            auto* list = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(list, nullptr);
            EXPECT_EQ(list->windowTitle(), u"Notlar Litesi");
            action(*list, *list->findChild<QListWidget*>(u"lst_Notlar"_s));
            list->reject();
        });
        QTest::keyClick(&box(), Qt::Key_O, Qt::ControlModifier);
    }

    QTemporaryDir folder_;
    FakeMainFrame frame_;
    ScriptedDialogs dialogs_;
    FakePrinting printing_;
    QMainWindow main_;
    QMdiArea* area_;
    Notebook notebook_;
};

}  // namespace

TEST_F(NotebookTest, StandsWhereItShouldWithItsMenusAndButtons) {
    EXPECT_EQ(window().windowTitle(), u"Not Defteri");
    // 20000 x 12000 twips at 15 twips a pixel
    EXPECT_EQ(window().parentWidget()->geometry(), QRect(267, 33, 789, 698));
    QStringList items;
    for (const QAction* action : window().actions())
        items += action->text() + u' ' + action->shortcut().toString();
    EXPECT_EQ(items.join(u'|'),
              u"Ye&ni Ctrl+N|&Aç Ctrl+O|Kayde&t Ctrl+S|Ya&zdır... Ctrl+P|&Çıkış |Yazı Boyutunu Büyült |"
              "Normal Yazı Boyutu |Yazı Boyutunu Küçült |Ke&s Ctrl+X|&Kopyala Ctrl+C|&Yapıştır Ctrl+V");
    QStringList keys;
    for (QAction* action : window().findChild<QToolBar*>(u"Toolbar1"_s)->actions())
        keys += action->isSeparator() ? u"|"_s : action->objectName();
    EXPECT_EQ(keys.join(u' '),
              u"new open save | cut copy paste | print | bold italic underline | kirmizi mavi yesil siyah");
}

TEST_F(NotebookTest, WritesFormatsSavesReopensAndDeletes) {
    type(u"Bugün "_s);
    press(u"bold"_s);
    type(u"kalın"_s);
    EXPECT_TRUE(pressed(u"bold"_s));
    press(u"bold"_s);
    press(u"mavi"_s);
    type(u" mavi"_s);
    EXPECT_FALSE(pressed(u"bold"_s));
    EXPECT_TRUE(pressed(u"mavi"_s));
    const rtf::Document written = box().document();
    ASSERT_EQ(written.paragraphs[0].runs.size(), 3U);
    EXPECT_TRUE(written.paragraphs[0].runs[1].format.bold);
    EXPECT_EQ(written.paragraphs[0].runs[2].format.color, (rtf::Rgb{0, 0, 255}));
    save(u"İlk"_s);
    EXPECT_EQ(window().windowTitle(), u"Not Defteri - İlk");
    select(0, 11);
    EXPECT_TRUE(item(u"mnu_Kes"_s).isEnabled());
    EXPECT_FALSE(pressed(u"bold"_s));  // mixed: left as it was

    QTest::keyClick(&box(), Qt::Key_N, Qt::ControlModifier);
    EXPECT_TRUE(dialogs_.messages.empty());
    EXPECT_EQ(box().toPlainText(), QString());
    inList([](QDialog&, QListWidget& list) {
        EXPECT_EQ(list.count(), 2);
        EXPECT_TRUE(list.item(1)->text().contains(u"İlk"));
        list.setCurrentRow(1);
        QTest::keyClick(&list, Qt::Key_Return);
    });
    EXPECT_EQ(box().document(), written);
    QTest::keyClick(&box(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(dialogs_.messages.empty());  // no false alarm

    inList([this](QDialog& dialog, QListWidget& list) {
        const QPoint place = list.visualItemRect(list.item(1)).center();
        QTest::mouseClick(list.viewport(), Qt::RightButton, {}, place);
        EXPECT_EQ(list.currentRow(), 1);
        dialogs_.answer(Answer::Yes);
        dialog.findChild<QAction*>(u"mnu_Sil"_s)->trigger();
        EXPECT_EQ(list.count(), 1);
        dialog.findChild<QMenu*>(u"PopUp"_s)->close();
    });
    EXPECT_EQ(window().windowTitle(), u"Not Defteri");
    EXPECT_EQ(box().document(), written);
    EXPECT_TRUE(notebook_.confirmClose());  // "Notunuzu kaydetmek istiyor musunuz?" No
    EXPECT_EQ(dialogs_.messages.back().text, u"Notunuzu kaydetmek istiyor musunuz?");
}

TEST_F(NotebookTest, StaysOpenUntilTheTextIsSaved) {
    type(u"metin"_s);
    dialogs_.answer(Answer::Yes);
    EXPECT_FALSE(notebook_.confirmClose());
    ASSERT_NE(notebook_.window(), nullptr);
    EXPECT_EQ(box().toPlainText(), u"metin");
    dialogs_.answer(Answer::Yes).answerText(u"Başlık"_s);
    EXPECT_TRUE(notebook_.confirmClose());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(notebook_.window(), nullptr);
    EXPECT_TRUE(notebook_.confirmClose());
    notebook_.show();
    EXPECT_EQ((*window().editor().NotBaglanti().list(100)).size(), 1U);
}

TEST_F(NotebookTest, CopiesInEveryFormAndPastesOnce) {
    // The main window has the same keys; neither may take the other's.
    QAction mainPaste(&main_), mainNew(&main_);
    mainPaste.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_V));
    mainNew.setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
    int mainTook = 0;
    for (QAction* action : {&mainPaste, &mainNew}) {
        main_.addAction(action);
        QObject::connect(action, &QAction::triggered, [&mainTook] { ++mainTook; });
    }
    type(u"şık"_s);
    select(0, 3);
    press(u"bold"_s);
    QTest::keyClick(&box(), Qt::Key_C, Qt::ControlModifier);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), u"şık");
    EXPECT_TRUE(copied->html().contains(u"<b>şık</b>"));
    for (const QString& format : {u"text/rtf"_s, u"application/rtf"_s})
        EXPECT_EQ(copied->data(format), rtf::write(box().selection(), rtf::Ending::Inline));
    EXPECT_TRUE(item(u"mnu_Yapistir"_s).isEnabled());

    QTest::keyClick(&box(), Qt::Key_End);
    QTest::keyClick(&box(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box().toPlainText(), u"şıkşık");
    EXPECT_EQ(box().document().paragraphs[0].runs.size(), 1U);  // bold like the first
    item(u"mnu_Yapistir"_s).trigger();                          // with the mouse, after Ctrl+V
    EXPECT_EQ(box().toPlainText(), u"şıkşık");
    QTest::keyClick(&box(), Qt::Key_End);
    item(u"mnu_Yapistir"_s).trigger();
    EXPECT_EQ(box().toPlainText(), u"şıkşıkşık");
    QApplication::clipboard()->setText(u"düz"_s);
    QTest::keyClick(&box(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(box().toPlainText(), u"şıkşıkşıkdüz");
    EXPECT_EQ(mainTook, 0);
    QKeyEvent unknown(QEvent::KeyPress, 0, Qt::NoModifier);  // a key that the system knows no name for
    QApplication::sendEvent(&box(), &unknown);
    EXPECT_TRUE(dialogs_.messages.empty());  // it is no item's shortcut: nothing was closed

    // No rich text takes the place of the selection; the selection can be had back.
    select(0, 3);
    press(u"paste"_s);
    EXPECT_EQ(box().toPlainText(), u"şıkşıkdüz");
    QTest::keyClick(&box(), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(box().toPlainText(), u"şıkşıkşıkdüz");
}

TEST_F(NotebookTest, TakesAPassageOfAPage) {
    const QString html =
        u"<p><b>Şu</b> <font color='#000080'><span style='background-color:#FFFF00'>ışık</span>"
        "</font>.</p>"_s;
    auto* passage = new QMimeData;
    passage->setText(u"Şu ışık."_s);
    passage->setData(u"text/rtf"_s, rtf::htmlToRtf(html));
    QApplication::clipboard()->setMimeData(passage);
    type(u"Önce  sonra"_s);
    select(5, 5);
    notebook_.pasteFromClipboard();
    EXPECT_EQ(box().toPlainText(), u"Önce Şu ışık. sonra");
    const rtf::Document note = box().document();
    const auto& runs = note.paragraphs[0].runs;
    EXPECT_TRUE(std::any_of(runs.begin(), runs.end(), [](const rtf::Run& run) {
        return run.text == u"ışık" && run.format.color == rtf::Rgb{0, 0, 128} &&
               run.format.background == rtf::Rgb{255, 255, 0};
    }));
    box().undo();
    EXPECT_EQ(box().toPlainText(), u"Önce  sonra");

    notebook_.confirmClose();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    notebook_.pasteFromClipboard();  // opens the notebook first
    EXPECT_EQ(box().toPlainText(), u"Şu ışık.");

    auto* hit = new QMimeData;
    hit->setHtml(u"<span style='background-color:#FFFF00'>söz</span>"_s);
    QApplication::clipboard()->setMimeData(hit);
    notebook_.pasteFromClipboard();
    type(u" sonra"_s);
    const auto& last = box().document().paragraphs[0].runs.back();
    EXPECT_EQ(last.text, u" sonra");
    EXPECT_FALSE(last.format.background);  // the marker ends with the hit
}

TEST_F(NotebookTest, SizesAllTextAndGoesOnInTheSizeOfTheNote) {
    type(u"metin"_s);
    for (int i = 0; i < 6; ++i) item(u"mnu_yKucult"_s).trigger();
    EXPECT_EQ(box().fontSize(), 2);
    for (int i = 0; i < 6; ++i) item(u"mnu_yBuyult"_s).trigger();
    type(u" büyük"_s);
    EXPECT_EQ(rtf::prevailingHalfPoints(box().document()), 28);
    EXPECT_EQ(box().document().paragraphs[0].runs.size(), 1U);
    save(u"Büyük"_s);
    item(u"mnu_yNormal"_s).trigger();
    EXPECT_EQ(box().fontSize(), 10);
    QTest::keyClick(&box(), Qt::Key_N, Qt::ControlModifier);  // changed; No
    EXPECT_EQ(dialogs_.messages.size(), 1U);
    inList([](QDialog&, QListWidget& list) {
        list.setCurrentRow(1);
        QTest::keyClick(&list, Qt::Key_Return);
    });
    EXPECT_EQ(box().fontSize(), 14);
    item(u"mnu_yKucult"_s).trigger();
    EXPECT_EQ(rtf::prevailingHalfPoints(box().document()), 24);
}

TEST_F(NotebookTest, PrintsToAPdf) {
    type(u"Yazdırılan not"_s);
    printing_.chosen.emplace();
    printing_.chosen->pdfPath = folder_.filePath(u"not.pdf"_s);
    QTest::keyClick(&box(), Qt::Key_P, Qt::ControlModifier);
    QFile pdf(printing_.chosen->pdfPath);
    ASSERT_TRUE(pdf.open(QIODevice::ReadOnly));
    EXPECT_TRUE(pdf.read(5) == "%PDF-");
}
