// The notebook's rules in its window: every question, every refusal, the buttons and the list.
#include "notes/ui/note_editor.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include "notes/fake_printing.h"
#include "notes/note_list.h"
#include "notes/note_text.h"
#include "notes/ui/frm_IcerikCopy.h"
#include "notes/ui/frm_NotList.h"
#include "platform/core/rtf/reader.h"
#include "support/files.h"
#include "support/full_disk.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::notes;
using namespace lirovan::test;
using namespace Qt::StringLiterals;
using platform::Answer;
namespace rtf = platform::rtf;

namespace {

class NoteEditorTest : public testing::Test {
  protected:
    NoteEditorTest() { editor_.load(); }

    frm_IcerikCopy::Surroundings surroundings() {
        const auto open = [this]() -> platform::Result<NotesDatabase> {
            if (fileUnusable_) return platform::Error{u"Veritabanı dosyası bozuk."_s};
            return NotesDatabase::open(folder_);
        };
        return {dialogs_, printing_, open, [this](NoteEditor&) { ++lists_; }};
    }
    const NotesDatabase& notes() {
        EXPECT_TRUE(editor_.connect());
        return editor_.NotBaglanti();
    }
    Note row(qint64 id) { return (*notes().find({id})).value_or(Note{{}, {}, u"(yok)"_s, u"(yok)"_s}); }
    QString stored(qint64 id) { return textOf(row(id).rtf).plainText(); }
    NoteDraft draft() const { return NoteDraft::in(folder_); }
    static QString failureOf(const NoteDraft& draft) {
        while (!draft.failure()) QThread::yieldCurrentThread();
        return *draft.failure();
    }
    QString text() { return window_.box().toPlainText(); }
    void type(const QString& text) { window_.box().setPlainText(text); }

    /// Types a text and saves it under a title.
    void saveAs(const QString& text, const QString& title) {
        type(text);
        dialogs_.answerText(title);
        editor_.save();
        dialogs_.messages.clear();
    }
    /// Types a text whose saving, if it comes to that, is wanted.
    void typeToSave(const QString& text) {
        type(text);
        dialogs_.answer(Answer::Yes);
    }
    /// The last message since this was last asked; empty: none.
    QString said() {
        const QString text = dialogs_.messages.empty() ? QString() : dialogs_.messages.back().text;
        dialogs_.messages.clear();
        return text;
    }
    void inList(Qt::Key key) { QTest::keyClick(&lines_, key); }
    void mnu_Ac() { list_.findChild<QAction*>(u"mnu_Ac"_s)->trigger(); }
    void press(const QString& button) { window_.findChild<QAction*>(button)->trigger(); }
    /// Names of the buttons and items whose `state` is `wanted`.
    QString named(bool (QAction::*state)() const, bool wanted) const {
        QStringList names;
        for (const QAction* action : window_.findChildren<QAction*>())
            if (!action->objectName().isEmpty() && (action->*state)() == wanted)
                names += action->objectName();
        return names.join(u' ');
    }
    QString pressed() const { return named(&QAction::isChecked, true); }
    QString disabled() const { return named(&QAction::isEnabled, false); }

    QTemporaryDir place_;
    platform::AppFolder folder_{place_.path()};
    bool fileUnusable_ = false;
    int lists_ = 0;
    FakePrinting printing_;
    ScriptedDialogs dialogs_;
    frm_IcerikCopy window_{surroundings()};
    NoteEditor& editor_ = window_.editor();
    frm_NotList list_{editor_, dialogs_};
    QListWidget& lines_ = *list_.findChild<QListWidget*>(u"lst_Notlar"_s);
};

}  // namespace

TEST_F(NoteEditorTest, SavesUnderATitleAndAsksBeforeAChangeGoes) {
    saveAs(u"Süt, ekmek"_s, u" Alışveriş "_s);
    ASSERT_EQ(dialogs_.questions.size(), 1U);
    EXPECT_EQ(dialogs_.questions[0].initial, u"Not");
    EXPECT_EQ(dialogs_.questions[0].place, window_.mapToGlobal(QPoint(33, 67)));  // 500 and 1000 twips
    EXPECT_EQ(window_.windowTitle(), u"Not Defteri -  Alışveriş ");
    EXPECT_EQ(row(1).date, QDate::currentDate().toString(Qt::ISODate));
    EXPECT_TRUE(editor_.close());  // unchanged: nothing to ask
    EXPECT_EQ(said(), QString());
    type(u"yeni"_s);
    editor_.save();
    EXPECT_EQ(said(), u"'Alışveriş' notunuzda yaptığınız değişiklikleri kaydetmek istiyormusunuz?");
    EXPECT_EQ(stored(1), u"Süt, ekmek");
    dialogs_.answer(Answer::Yes);
    EXPECT_TRUE(editor_.close());
    EXPECT_EQ(stored(1), u"yeni");
    EXPECT_EQ(window_.windowTitle() + text(), u"Not Defteri");

    saveAs({}, u"boş"_s);
    EXPECT_EQ(row(2).rtf, u" ");
    editor_.newNote();
    type(u" \t "_s);  // blanks are no text
    editor_.open();
    EXPECT_EQ(lists_, 1);
    editor_.newNote();
    EXPECT_EQ(said(), QString());
}

TEST_F(NoteEditorTest, SetsATextAsideThatWasToBeSavedAndGotNoTitle) {
    saveAs(u"başka"_s, u"Başka"_s);
    const Note other = row(1);
    editor_.newNote();
    editor_.close();
    const NoteDraft kept = draft();
    editor_.load(kept);
    for (const QString& own : {u"ilk metin"_s, u"ikinci metin"_s}) {
        typeToSave(own);
        editor_.open();
        editor_.show(other);
        EXPECT_EQ(text(), u"başka");
        EXPECT_TRUE(said().startsWith(u"Kaydetmediğiniz metin saklandı."));
        editor_.newNote();
    }
    EXPECT_EQ(lists_, 2);
    type(u"verilen"_s);  // answered No: given up
    editor_.open();
    editor_.show(other);
    EXPECT_TRUE(editor_.close());

    dialogs_.answer(Answer::No).answer(Answer::Yes);
    editor_.load(kept);
    EXPECT_EQ(text(), u"ikinci metin");
    EXPECT_EQ(window_.windowTitle(), u"Not Defteri");
    EXPECT_TRUE(editor_.close());  // answered No
    editor_.load(kept);
    EXPECT_TRUE(text().isEmpty());

    typeToSave(u"sığmayan"_s);
    editor_.open();
    {
        const FullDisk full;
        editor_.show(other);
    }
    EXPECT_EQ(text(), u"sığmayan");
    EXPECT_TRUE(said().startsWith(u"Kaydetmediğiniz metin saklanamadı."));

    // Where no draft can be kept, or this one cannot be written, the text stays where it is.
    ASSERT_TRUE(QDir().mkpath(place_.filePath(u"Notlar/notlar.draft"_s)));
    for (const NoteDraft& unkept : {NoteDraft(), kept}) {
        editor_.close();
        editor_.load(unkept);
        typeToSave(u"metin"_s);
        editor_.open();
        editor_.show(other);
        EXPECT_EQ(text(), u"metin");
        EXPECT_EQ(editor_.currentNote().value, 0);
    }
}

TEST_F(NoteEditorTest, KeepsBothTextsWhenTwoProgramsChangeANote) {
    const auto changedElsewhere = [this] {
        return *notes().replaceRtf({1}, row(1).rtf, storedRtf(rtf::read(QStringView(u"onların")))) ==
               Change::Done;
    };
    saveAs(u"ilk"_s, u"Ortak"_s);
    ASSERT_TRUE(changedElsewhere());
    editor_.save();  // nothing was changed here, so nothing is asked and nothing overwritten
    EXPECT_EQ(stored(1), u"onların");
    type(u"onların"_s);
    editor_.save();  // the same text again: no quarrel, and the next change goes into this note
    ASSERT_EQ(said(), QString());
    typeToSave(u"ortak"_s);
    editor_.save();
    EXPECT_EQ(stored(1), u"ortak");
    ASSERT_TRUE(changedElsewhere());
    typeToSave(u"bizim"_s);
    editor_.save();
    EXPECT_EQ(stored(1), u"onların");
    EXPECT_EQ(stored(2), u"bizim");
    EXPECT_EQ(editor_.currentNote().value, 2);

    ASSERT_TRUE(notes().remove({2}));  // a row that vanished comes back under its title
    dialogs_.messages.clear();
    editor_.save();
    EXPECT_EQ(said(), QString());
    EXPECT_EQ(stored(3), u"bizim");
    EXPECT_EQ(row(3).title, u"Ortak");
}

TEST_F(NoteEditorTest, KeepsTheTextWhenTheFileCannotBeWritten) {
    saveAs(u"ilk"_s, u"Başlık"_s);
    ASSERT_TRUE(notes().database().execute(u"PRAGMA max_page_count=1"));
    const QString longText(300'000, u'x');
    typeToSave(longText);
    dialogs_.answer(Answer::Yes).answerSavePath(place_.filePath(u"yok/not.rtf"_s));
    EXPECT_FALSE(editor_.close());
    EXPECT_TRUE(said().startsWith(u"Dosyaya yazılamadı: "));
    {
        const FullDisk full;
        const QString rescue = place_.filePath(u"boş.rtf"_s);
        dialogs_.answer(Answer::Yes).answer(Answer::Yes).answerSavePath(rescue);
        EXPECT_FALSE(editor_.close());
        EXPECT_TRUE(said().startsWith(u"Dosyaya yazılamadı: "));
        EXPECT_FALSE(QFile::exists(rescue));
    }
    dialogs_.answer(Answer::Yes);
    EXPECT_FALSE(editor_.close());
    EXPECT_EQ(said(),
              u"Diskte yer kalmadı.\n\nNotunuz kaydedilemedi; metni pencerede duruyor. Metni bir RTF "
              "dosyasına kaydetmek ister misiniz?");
    EXPECT_EQ(text(), longText);
    EXPECT_EQ(stored(1), u"ilk");
    dialogs_.answer(Answer::Yes);
    editor_.open();  // and no other note takes its place
    EXPECT_EQ(lists_, 0);

    // Once it lies in a file the window may close.
    const QString rescue = place_.filePath(u"kurtarılan.rtf"_s);
    dialogs_.answer(Answer::Yes).answer(Answer::Yes).answerSavePath(rescue);
    EXPECT_TRUE(editor_.close());
    EXPECT_EQ(rtf::read(QByteArrayView(readFile(rescue))).plainText(), longText);
}

TEST_F(NoteEditorTest, GoesOnWithoutItsFile) {
    saveAs(u"metin"_s, u"Başlık"_s);
    ASSERT_TRUE(notes().database().execute(u"alter table tbl_Notlar rename to tbl_Baska"));
    type(u"değişti"_s);
    EXPECT_FALSE(editor_.close());
    type(u"metin"_s);
    dialogs_.messages.clear();
    EXPECT_TRUE(editor_.close());  // unchanged: nothing is lost with it
    EXPECT_EQ(said(), QString());

    fileUnusable_ = true;
    editor_.load();
    EXPECT_TRUE(said().contains(u"Veritabanı dosyası bozuk."));
    list_.load();
    EXPECT_EQ(said(), u"Veritabanı dosyası bozuk.");
    editor_.newNote();
    saveAs(u"yeni metin"_s, u"Yeni"_s);
    fileUnusable_ = false;
    ASSERT_TRUE(QFile::remove(folder_.path(NotesFile)));
    saveAs(u"yeni metin"_s, u"Yeni"_s);
    EXPECT_EQ(stored(1), u"yeni metin");
}

TEST_F(NoteEditorTest, OffersTheDraftOfACrash) {
    saveAs(u"ilk"_s, u"Başlık"_s);
    const QString first = row(1).rtf;
    editor_.close();
    {
        frm_IcerikCopy crashed(surroundings());
        crashed.editor().load(draft());
        crashed.editor().show(**crashed.editor().NotBaglanti().find({1}));
        crashed.box().setPlainText(u"yarım kalan"_s);
        crashed.editor().keepDraft();
        const NoteDraft second = draft();
        EXPECT_FALSE(second.left()) << "a second program must not take the draft";
        second.keep({{}, {}, {}, rtf::read(QStringView(u"ikincinin metni"))}, {});
        EXPECT_EQ(failureOf(second), QString());
        const FullDisk full;
        crashed.box().setPlainText(u"sığmayan"_s);
        crashed.editor().keepDraft();  // the draft that is there stays
        EXPECT_TRUE(failureOf(crashed.editor().draft()).contains(u"notlar.draft"));
    }
    // As if the folder had been copied from another computer on which the program did not end by itself.
    writeFile(place_.filePath(u"Notlar/notlar.draft.lock"_s), "1234\nlirovan\nbaska-bilgisayar\n\n\n");
    dialogs_.answer(Answer::Yes);
    const NoteDraft kept = draft();
    editor_.load(kept);
    EXPECT_TRUE(said().startsWith(u"Kaydedilmemiş bir not bulundu. Açmak istiyor musunuz?"));
    EXPECT_EQ(text(), u"yarım kalan");
    EXPECT_TRUE(window_.box().textCursor().atEnd());
    EXPECT_TRUE(kept.left()) << "a second crash must not lose it";
    EXPECT_EQ(window_.windowTitle(), u"Not Defteri - Başlık");
    dialogs_.answer(Answer::Yes);
    EXPECT_TRUE(editor_.close());
    EXPECT_EQ(stored(1), u"yarım kalan");
    EXPECT_EQ(kept.left().value_or(Unsaved()).text.plainText(), u"ikincinin metni");
    EXPECT_TRUE(kept.clear());
    EXPECT_FALSE(kept.left());

    // A note that another program has changed since is not overwritten with what was made from the old one.
    kept.keep({{1}, u"Başlık"_s, {}, rtf::read(QStringView(u"eskiden kalan"))}, first);
    dialogs_.answer(Answer::Yes).answer(Answer::Yes);
    editor_.load(kept);
    editor_.save();
    EXPECT_EQ(stored(1), u"yarım kalan");
    EXPECT_EQ(stored(2), u"eskiden kalan");
    EXPECT_EQ(row(2).title, u"Başlık");
}

TEST_F(NoteEditorTest, FollowsTheSelectionWithItsButtons) {
    QApplication::clipboard()->clear();
    type(u"bir iki"_s);
    EXPECT_EQ(pressed(), QString());
    EXPECT_EQ(disabled(), u"mnu_Kes mnu_Kopyala mnu_Yapistir cut copy paste");
    window_.box().selectAll();
    EXPECT_EQ(disabled(), u"mnu_Yapistir paste");
    QStringList keys;
    for (const QString& key : u"bold bold mavi mavi siyah siyah yesil kirmizi bold"_s.split(u' ')) {
        press(key);
        keys += pressed();
    }
    EXPECT_EQ(keys.join(u'|'), u"bold siyah|siyah|mavi|siyah|kirmizi|siyah|yesil|kirmizi|bold kirmizi");
    window_.box().moveCursor(QTextCursor::End);
    EXPECT_EQ(pressed(), QString());
    window_.box().selectAll();
    press(u"copy"_s);
    EXPECT_EQ(disabled(), QString());
    press(u"cut"_s);
    EXPECT_EQ(disabled(), u"mnu_Kes mnu_Kopyala cut copy");
    EXPECT_EQ(QApplication::clipboard()->text(), u"bir iki");
    EXPECT_EQ(text(), QString());
    QApplication::clipboard()->clear();
    EXPECT_EQ(disabled(), u"mnu_Kes mnu_Kopyala mnu_Yapistir cut copy paste");
}

TEST_F(NoteEditorTest, PrintsTheSelectionOrAll) {
    const auto pages = [this](std::optional<platform::PrintTarget>& target, const QString& command) {
        target.emplace().pdfPath = place_.filePath(u"not.pdf"_s);
        press(command);
        const QByteArray printed = readFile(target->pdfPath);
        return printed.startsWith("%PDF-") ? printed.count("/Type /Page\n") : -1;
    };
    press(u"print"_s);
    press(u"mnu_Yazdir"_s);
    EXPECT_EQ(said(), QString());  // no printer, a cancelled dialog
    type(u"bir sayfadan uzun\n"_s.repeated(300));
    EXPECT_GT(pages(printing_.printer, u"print"_s), 1);
    window_.box().moveCursor(QTextCursor::Down, QTextCursor::KeepAnchor);
    EXPECT_EQ(pages(printing_.printer, u"print"_s), 1);
    EXPECT_GT(pages(printing_.chosen, u"mnu_Yazdir"_s), 1);  // as chosen in the dialog
    EXPECT_TRUE(printing_.offeredSelection);
    printing_.printer.emplace();  // of no use
    printing_.chosen.emplace();
    press(u"print"_s);
    EXPECT_EQ(said(), QString());
    for (const QString& place : {QString(), u"/dev/full"_s}) {
        printing_.chosen->pdfPath = place;
        press(u"mnu_Yazdir"_s);
        EXPECT_EQ(said(), u"Yazıcı algılanamadı!");
    }
}

TEST_F(NoteEditorTest, ListsALineForEachNote) {
    const QString b(19, u'b'), x(49, u'x');
    const std::tuple<QString, QString, QString, QString> cases[] = {
        {u"2008-03-14"_s, u" Alışveriş listesi ve başka şeyler "_s, u"Süt # ekmek"_s,
         u"14.3.2008   Alışveriş listesi ve     Süt # ekmek..."_s},
        {u"1899-01-02T21:05:00"_s, u"t"_s, u"a\nb"_s, u"2.1.1899   t                        a b..."_s},
        {{}, u"iki\r\nsatır"_s, u"\t"_s, u"             iki  satır               ..."_s},
        // Neither cut goes through a character of two units.
        {{}, b + u"😀"_s, x + u"😀"_s, u"             "_s + b + u"      "_s + x + u"..."_s},
        {{}, {}, x + x, QString(10 + 3 + 25, u' ') + x + u"x..."_s},
        {{}, {}, {}, QString(10 + 3 + 25, u' ') + u"..."_s},
    };
    for (const auto& [date, title, rtf, line] : cases)
        EXPECT_EQ(listLine({{}, date, title, rtf}, [](QDate d) { return d.toString(u"d.M.yyyy"); }), line);
}

TEST_F(NoteEditorTest, OpensAndDeletesFromTheList) {
    editor_.close();
    const NoteDraft kept = draft();
    editor_.load(kept);
    list_.load();
    EXPECT_EQ(said(), u"Gösterilecek not bulunamadı!");
    saveAs(u"bir"_s, u"Bir"_s);
    editor_.newNote();
    saveAs(u"iki"_s, u"İki"_s);
    list_.load();
    EXPECT_EQ(said(), QString());
    ASSERT_EQ(lines_.count(), 3);
    EXPECT_EQ(lines_.item(0)->text(), u"Not Tarihi   Başlık                   Not");
    for (const int line : {-1, 0}) {
        lines_.setCurrentRow(line);
        inList(Qt::Key_Return);
        EXPECT_EQ(said(), QString());
        mnu_Ac();
        EXPECT_EQ(said(), u"Not seçmelisiniz!");
        inList(Qt::Key_Delete);
        EXPECT_EQ(said(), u"Not seçmelisiniz!");
    }
    lines_.setCurrentRow(1);
    inList(Qt::Key_Return);
    EXPECT_EQ(list_.result(), QDialog::Accepted);
    EXPECT_EQ(text(), u"bir");
    EXPECT_EQ(window_.windowTitle(), u"Not Defteri - Bir");

    inList(Qt::Key_Delete);  // No
    EXPECT_EQ(said(), u"Seçili notu silmek istediğinize eminmisiniz?");
    EXPECT_EQ(lines_.count(), 3);
    dialogs_.answer(Answer::Yes);
    inList(Qt::Key_Delete);
    EXPECT_EQ(lines_.count(), 2);
    EXPECT_EQ(window_.windowTitle(), u"Not Defteri");
    EXPECT_EQ(editor_.currentNote().value, 0);
    EXPECT_EQ(text(), u"bir");  // its text stays, as a new note that a crash does not take away
    ASSERT_TRUE(kept.left());
    EXPECT_EQ(kept.left()->note.value, 0);
    EXPECT_EQ(kept.left()->text.plainText(), u"bir");

    inList(Qt::Key_Return);  // another note: nobody was asked about this text yet
    EXPECT_EQ(said(), u"Notunuzu kaydetmek istiyor musunuz?");
    EXPECT_EQ(text(), u"iki");
    dialogs_.answer(Answer::Yes);
    inList(Qt::Key_Delete);
    ASSERT_TRUE(notes().add(u"Üç"_s, storedRtf(rtf::read(QStringView(u"üç"))), {}));
    ASSERT_TRUE(list_.notlistele());
    lines_.setCurrentRow(1);
    dialogs_.answer(Answer::Yes).answerText(u"Başlık"_s);
    ASSERT_TRUE(notes().database().execute(u"PRAGMA max_page_count=1"));
    type(QString(300'000, u'x'));
    inList(Qt::Key_Return);
    EXPECT_EQ(text().size(), 300'000) << "it could not be saved";

    ASSERT_TRUE(notes().database().execute(u"PRAGMA query_only=1"));
    dialogs_.answer(Answer::Yes);
    inList(Qt::Key_Delete);
    EXPECT_EQ(said(), u"Hata oluştu!");
    ASSERT_TRUE(notes().database().execute(u"PRAGMA query_only=0; drop table tbl_Notlar"));
    list_.load();  // says what is wrong, not that there is no note
    EXPECT_TRUE(said().contains(u"tbl_Notlar"));
}
