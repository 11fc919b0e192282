// The notebook among the main window's children, as its user has it.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMimeData>
#include <QProgressDialog>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "notes/fake_printing.h"
#include "notes/ui/notebook.h"
#include "platform/core/rtf/writer.h"
#include "support/fake_windows.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::notes;
using namespace lirovan::test;
using namespace Qt::StringLiterals;
using platform::Answer;
namespace rtf = platform::rtf;

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
    QString text() { return box().toPlainText(); }
    std::vector<rtf::Run> runs() { return box().document().paragraphs[0].runs; }
    void press(const QString& key, int times = 1) {
        while (times-- > 0) window().findChild<QAction*>(key)->trigger();
    }
    bool pressed(const QString& key) { return window().findChild<QAction*>(key)->isChecked(); }
    void control(Qt::Key key) { QTest::keyClick(&box(), key, Qt::ControlModifier); }
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
        control(Qt::Key_S);
    }
    /// Runs `action` in the note list once it is on the screen, and closes the list.
    void inList(const std::function<void(QDialog&, QListWidget&)>& action) {
        QTimer::singleShot(0, &main_, [&] {
            auto* list = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(list, nullptr);
            action(*list, *list->findChild<QListWidget*>(u"lst_Notlar"_s));
            list->reject();
        });
        control(Qt::Key_O);
    }
    void openFirst() {
        inList([](QDialog&, QListWidget& list) {
            list.setCurrentRow(1);
            QTest::keyClick(&list, Qt::Key_Return);
        });
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

TEST_F(NotebookTest, WritesFormatsSavesReopensAndDeletes) {
    type(u"Bugün "_s);
    press(u"bold"_s);
    type(u"kalın"_s);
    EXPECT_TRUE(pressed(u"bold"_s));
    press(u"bold"_s);
    press(u"mavi"_s);
    type(u" mavi"_s);
    EXPECT_TRUE(pressed(u"mavi"_s) && !pressed(u"bold"_s));
    const rtf::Document written = box().document();
    ASSERT_EQ(runs().size(), 3U);
    EXPECT_TRUE(runs()[1].format.bold);
    EXPECT_EQ(runs()[2].format.color, (rtf::Rgb{0, 0, 255}));
    save(u"İlk"_s);
    EXPECT_EQ(window().windowTitle(), u"Not Defteri - İlk");
    select(0, 11);
    EXPECT_FALSE(pressed(u"bold"_s));  // mixed: left as it was

    control(Qt::Key_N);
    EXPECT_EQ(text(), QString());
    openFirst();
    EXPECT_EQ(box().document(), written);
    control(Qt::Key_S);
    EXPECT_TRUE(dialogs_.messages.empty());  // no false alarm

    inList([this](QDialog& dialog, QListWidget& list) {
        EXPECT_TRUE(list.item(1)->text().contains(u"İlk"));
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
    EXPECT_TRUE(notebook_.confirmClose());  // answered No
    EXPECT_EQ(dialogs_.messages.back().text, u"Notunuzu kaydetmek istiyor musunuz?");
}

TEST_F(NotebookTest, StaysOpenUntilTheTextIsSaved) {
    // 20000 x 12000 twips at 15 twips a pixel
    EXPECT_EQ(window().parentWidget()->geometry(), QRect(267, 33, 789, 698));
    type(u"metin"_s);
    for (const std::optional<QString>& title : {std::optional<QString>(), std::optional(u"  "_s)}) {
        dialogs_.answer(Answer::Yes).answerText(title);
        EXPECT_FALSE(notebook_.confirmClose());
        EXPECT_EQ(dialogs_.messages.back().text, u"Başlık girmediniz! Kayıt işlemi iptal edildi.");
        ASSERT_NE(notebook_.window(), nullptr);
        EXPECT_EQ(text(), u"metin");
    }
    dialogs_.answer(Answer::Yes).answerText(u"Başlık"_s);
    EXPECT_TRUE(notebook_.confirmClose());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(notebook_.window(), nullptr);
    EXPECT_TRUE(notebook_.confirmClose());
    notebook_.show();
    EXPECT_EQ((*window().editor().NotBaglanti().list(100)).size(), 1U);
}

TEST_F(NotebookTest, CopiesAndPastesInEveryForm) {
    // The main window has the same keys; neither may take the other's.
    int mainTook = 0;
    for (const Qt::Key key : {Qt::Key_V, Qt::Key_N, Qt::Key_I}) {
        QAction* item = main_.addAction(QString(), &main_, [&mainTook] { ++mainTook; });
        item->setShortcut(Qt::CTRL | key);
    }
    type(u"şık"_s);
    select(0, 3);
    for (const Qt::Key key : {Qt::Key_I, Qt::Key_U, Qt::Key_B, Qt::Key_U, Qt::Key_I}) control(key);
    EXPECT_TRUE(pressed(u"bold"_s) && !pressed(u"italic"_s) && !pressed(u"underline"_s));
    control(Qt::Key_C);
    const QMimeData* copied = QApplication::clipboard()->mimeData();
    EXPECT_EQ(copied->text(), u"şık");
    EXPECT_TRUE(copied->html().contains(u"<b>şık</b>"));
    for (const QString& format : {u"text/rtf"_s, u"application/rtf"_s})
        EXPECT_EQ(copied->data(format), rtf::write(box().selection(), rtf::Ending::Inline));

    QTest::keyClick(&box(), Qt::Key_End);
    control(Qt::Key_V);
    EXPECT_EQ(text(), u"şıkşık");
    EXPECT_EQ(runs().size(), 1U);  // bold like the first
    press(u"mnu_Yapistir"_s);      // with the mouse, after Ctrl+V
    EXPECT_EQ(text(), u"şıkşıkşık");
    EXPECT_EQ(mainTook, 0);
    type(QString(QChar()));  // a key that the system knows no name for is no item's shortcut
    EXPECT_TRUE(dialogs_.messages.empty());

    // Every command pastes plain text, and leaves the selection where there is nothing to paste.
    for (const QString& plain : {u"düz"_s, QString()}) {
        QApplication::clipboard()->setText(plain);
        for (const QString& command : {u"paste"_s, u"mnu_Yapistir"_s, u"main"_s, u"key"_s}) {
            select(0, 3);
            if (command == u"main")
                notebook_.pasteFromClipboard();
            else if (command == u"key")
                control(Qt::Key_V);
            else
                press(command);
            EXPECT_EQ(text(), (plain.isEmpty() ? u"şık"_s : plain) + u"şıkşık"_s) << command.toStdString();
            if (!plain.isEmpty()) control(Qt::Key_Z);
        }
    }
    auto* html = new QMimeData;  // from a program that knows no RTF
    html->setHtml(u"<i>ak</i>"_s);
    QApplication::clipboard()->setMimeData(html);
    select(3, 3);
    control(Qt::Key_V);
    EXPECT_EQ(text(), u"şıkakşıkşık");
    EXPECT_TRUE(runs()[1].format.italic);
}

TEST_F(NotebookTest, PastesAndOpensALongTextOrLeavesTheNoteAsItWas) {
    bool stops = true;
    int stopped = 0;
    QTimer watch;
    watch.callOnTimeout([&] {
        auto* work = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
        if (work && stops && !work->wasCanceled()) work->cancel(), ++stopped;
    });
    watch.start(0);
    const QByteArray longText = "{\\rtf1 " + QByteArray("a\\par ").repeated(100'000) + "b}";
    auto* data = new QMimeData;
    data->setData(u"text/rtf"_s, longText);
    QApplication::clipboard()->setMimeData(data);
    type(u"önce"_s);
    select(0, 2);
    control(Qt::Key_V);
    EXPECT_EQ(stopped, 1);
    EXPECT_EQ(text(), u"önce");
    EXPECT_EQ(box().textCursor().selectedText(), u"ön");
    stops = false;
    control(Qt::Key_V);
    EXPECT_EQ(text(), u"a\n"_s.repeated(100'000) + u"bce"_s);
    control(Qt::Key_Z);
    EXPECT_EQ(text(), u"önce");

    ASSERT_TRUE(window().editor().NotBaglanti().add(u"Uzun"_s, QString::fromLatin1(longText), {}));
    stops = true;
    openFirst();  // asks about the text before; No
    EXPECT_EQ(stopped, 2);
    EXPECT_EQ(text(), u"önce");
    stops = false;
    openFirst();
    EXPECT_EQ(text(), u"a\n"_s.repeated(100'000) + u"b"_s);
    dialogs_.messages.clear();
    control(Qt::Key_S);
    EXPECT_TRUE(dialogs_.messages.empty());  // unchanged
}

TEST_F(NotebookTest, SizesAllTextAndGoesOnInTheSizeOfTheNote) {
    type(u"metin"_s);
    press(u"mnu_yKucult"_s, 6);
    EXPECT_EQ(box().fontSize(), 2);
    press(u"mnu_yBuyult"_s, 6);
    type(u" büyük"_s);
    EXPECT_EQ(rtf::prevailingHalfPoints(box().document()), 28);
    EXPECT_EQ(runs().size(), 1U);
    save(u"Büyük"_s);
    press(u"mnu_yNormal"_s);
    EXPECT_EQ(box().fontSize(), 10);
    control(Qt::Key_N);  // changed; No
    EXPECT_EQ(dialogs_.messages.size(), 1U);
    openFirst();
    EXPECT_EQ(box().fontSize(), 14);
    press(u"mnu_yKucult"_s);
    EXPECT_EQ(rtf::prevailingHalfPoints(box().document()), 24);

    rtf::Document mixed = box().document();  // a first letter of another size than the rest
    mixed.paragraphs[0].runs.insert(mixed.paragraphs[0].runs.begin(),
                                    {u"B"_s, mixed.paragraphs[0].runs[0].format});
    mixed.paragraphs[0].runs[0].format.halfPoints = 60;
    box().setDocument(mixed);
    EXPECT_EQ(box().fontSize(), 12);
    type(u"a"_s);
    control(Qt::Key_Z);
    EXPECT_EQ(box().fontSize(), 12);
}

TEST_F(NotebookTest, SearchesInTheListAndMarksWhatItOpens) {
    for (const QString& words : {u"ilim ve irfan"_s, u"irfan, sonra irfan"_s}) {
        type(words);
        save(words.left(5));
        control(Qt::Key_N);
    }
    inList([](QDialog& dialog, QListWidget& list) {
        auto* search = dialog.findChild<QLineEdit*>(u"noteSearch"_s);
        QTest::keyClicks(search, u"irfan"_s);
        EXPECT_EQ(list.count(), 3);
        EXPECT_TRUE(list.item(2)->text().endsWith(u"(2 isabet)"));
        QTest::keyClick(search, Qt::Key_Escape);
        EXPECT_TRUE(search->text().isEmpty() && dialog.isVisible());
        QTest::keyClicks(search, u"sonra"_s);
        EXPECT_EQ(list.count(), 2);
        QTest::keyClick(search, Qt::Key_Return);
    });
    EXPECT_EQ(text(), u"irfan, sonra irfan");
    EXPECT_EQ(box().extraSelections().size(), 1);
    EXPECT_EQ(box().textCursor().selectedText(), u"sonra");

    control(Qt::Key_F);
    auto* find = window().findChild<QLineEdit*>(u"noteFindText"_s);
    ASSERT_TRUE(find && find->isVisible());
    find->setText(u"irfan"_s);
    EXPECT_EQ(window().findChild<QLabel*>(u"noteFindCount"_s)->text(), u"1 / 2");
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(box().textCursor().selectionStart(), 13);
    QTest::keyClick(find, Qt::Key_Return);
    EXPECT_EQ(box().textCursor().selectionStart(), 0);
    select(13, 18);
    control(Qt::Key_F);
    EXPECT_EQ(box().textCursor().selectionStart(), 13);
    EXPECT_EQ(window().findChild<QLabel*>(u"noteFindCount"_s)->text(), u"2 / 2");
    select(0, 0);
    type(u"şu "_s);
    QTest::keyClick(find, Qt::Key_Return);  // at once, when the hits are not found anew yet
    EXPECT_EQ(box().textCursor().selectedText(), u"irfan");
    EXPECT_EQ(box().textCursor().selectionStart(), 3);
    QTest::keyClick(find, Qt::Key_Escape);
    EXPECT_TRUE(box().extraSelections().isEmpty() && !find->isVisible());
}

TEST_F(NotebookTest, UndoesAndRedoesEveryCommand) {
    type(u"bir iki"_s);
    select(0, 3);
    const auto command = [this](const char* name) {
        window().findChild<QAction*>(QLatin1String(name))->trigger();
    };
    std::vector<rtf::Document> states{box().document()};
    for (const char* name : {"bold", "kirmizi", "mnu_yBuyult", "cut", "paste", "mnu_yKucult"}) {
        command(name);
        states.push_back(box().document());
    }
    for (size_t i = states.size() - 1; i > 0; --i) {
        ASSERT_EQ(box().document(), states[i]);
        QTest::keyClick(&box(), Qt::Key_Z, Qt::ControlModifier);
    }
    EXPECT_EQ(box().document(), states[0]);
    EXPECT_EQ(box().fontSize(), 10);
    for (size_t i = 1; i < states.size(); ++i)
        QTest::keyClick(&box(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(box().document(), states.back());
    EXPECT_EQ(box().fontSize(), 10);
}
