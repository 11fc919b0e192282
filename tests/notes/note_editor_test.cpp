// The notebook's rules: every question, every refusal, the buttons and the list.
#include "notes/note_editor.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "notes/fake_editor.h"
#include "notes/note_list.h"
#include "notes/note_text.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::notes;
using namespace lirovan::test;
using namespace Qt::StringLiterals;
using platform::Answer;

namespace {

class NoteEditorTest : public testing::Test {
  protected:
    NoteEditorTest() { editor_.load(); }

    platform::Result<NotesDatabase> openNotes() {
        if (fileUnusable_) return platform::Error{u"Veritabanı dosyası bozuk."_s};
        return NotesDatabase::open(platform::AppFolder(folder_.path()));
    }
    const NotesDatabase& notes() {
        EXPECT_TRUE(editor_.connect());
        return editor_.NotBaglanti();
    }
    QString stored(qint64 id) {
        const auto row = notes().find({id});
        return row && *row ? textOf((*row)->rtf).plainText() : u"(yok)"_s;
    }
    /// Types a text and saves it under a title.
    void saveAs(const QString& text, const QString& title) {
        box_.type(text);
        dialogs_.answerText(title);
        editor_.save();
        dialogs_.messages.clear();
        dialogs_.questions.clear();
    }
    void expectLast(const QString& text, const QString& title, platform::Icon icon) {
        ASSERT_FALSE(dialogs_.messages.empty());
        EXPECT_EQ(dialogs_.messages.back().text, text);
        EXPECT_EQ(dialogs_.messages.back().title, title);
        EXPECT_EQ(dialogs_.messages.back().icon, icon);
    }

    QTemporaryDir folder_;
    bool fileUnusable_ = false;
    FakeEditorWindow window_;
    FakeBox box_, scratch_;
    FakeClipboard clipboard_;
    FakePrinting printing_;
    ScriptedDialogs dialogs_;
    NoteEditor editor_{{window_, box_, scratch_, clipboard_, dialogs_, printing_},
                       [this] { return openNotes(); },
                       [] { return QDate(2008, 3, 14); }};
};

}  // namespace

TEST_F(NoteEditorTest, SavesANewNoteUnderATitle) {
    box_.type(u"Süt, ekmek"_s);
    dialogs_.answerText(u" Alışveriş "_s);
    editor_.save();
    ASSERT_EQ(dialogs_.questions.size(), 1U);
    EXPECT_EQ(dialogs_.questions[0].prompt, u"Not için bir başlık giriniz.");
    EXPECT_EQ(dialogs_.questions[0].title, u"Not Başlığı");
    EXPECT_EQ(dialogs_.questions[0].initial, u"Not");
    EXPECT_EQ(dialogs_.questions[0].place, QPoint(500, 1000));
    EXPECT_EQ(window_.caption, u"Not Defteri -  Alışveriş ");
    EXPECT_EQ(editor_.currentNote().value, 1);
    EXPECT_EQ((**notes().find({1})).date, u"2008-03-14");
    EXPECT_EQ(stored(1), u"Süt, ekmek");
    EXPECT_TRUE(dialogs_.messages.empty());

    editor_.newNote();  // unchanged: nothing to ask
    EXPECT_TRUE(dialogs_.messages.empty());
    EXPECT_EQ(window_.caption, u"Not Defteri");
    saveAs({}, u"boş"_s);
    EXPECT_EQ((**notes().find({2})).rtf, u" ");
}

TEST_F(NoteEditorTest, GivesUpASaveWithoutATitle) {
    for (const std::optional<QString>& title : {std::optional<QString>(), std::optional<QString>(u"  "_s)}) {
        box_.type(u"metin"_s);
        dialogs_.answer(Answer::Yes).answerText(title);
        EXPECT_FALSE(editor_.close());
        expectLast(u"Başlık girmediniz! Kayıt işlemi iptal edildi."_s, u"Başlık Hatası"_s,
                   platform::Icon::Critical);
        EXPECT_TRUE(editor_.KayitIptal());
        EXPECT_EQ(box_.plainText(), u"metin");
        EXPECT_TRUE(notes().list(1)->empty());
    }
    EXPECT_EQ(dialogs_.messages[0].title, u"Not Kayıt");
    EXPECT_TRUE(editor_.close());  // answered No
}

TEST_F(NoteEditorTest, AsksBeforeAChangedNoteGoes) {
    saveAs(u"eski"_s, u" Başlık "_s);
    EXPECT_TRUE(editor_.close());
    EXPECT_TRUE(dialogs_.messages.empty());

    box_.type(u"yeni"_s);
    editor_.save();
    expectLast(u"'Başlık' notunuzda yaptığınız değişiklikleri kaydetmek istiyormusunuz?"_s, u"Kaydet"_s,
               platform::Icon::Question);
    EXPECT_EQ(stored(1), u"eski");
    dialogs_.answer(Answer::Yes);
    EXPECT_TRUE(editor_.close());
    EXPECT_EQ(stored(1), u"yeni");
    EXPECT_EQ(box_.plainText(), QString());
    EXPECT_TRUE(scratch_.plainText().isEmpty());
}

TEST_F(NoteEditorTest, TakesBlanksForNoText) {
    box_.type(u" \t "_s);
    editor_.newNote();
    box_.type(u"  "_s);
    editor_.open();
    EXPECT_EQ(window_.lists, 1);
    EXPECT_TRUE(editor_.close());
    EXPECT_TRUE(dialogs_.messages.empty());
}

TEST_F(NoteEditorTest, SetsATextAsideThatWasToBeSavedAndGotNoTitle) {
    saveAs(u"başka"_s, u"Başka"_s);
    const Note other = **notes().find({1});
    editor_.newNote();
    editor_.close();
    const NoteDraft draft = NoteDraft::in(platform::AppFolder(folder_.path()));
    editor_.load(draft);
    for (const QString& text : {u"ilk metin"_s, u"ikinci metin"_s}) {
        box_.type(text);
        dialogs_.answer(Answer::Yes).answerText({});
        editor_.open();
        editor_.show(other);
        EXPECT_EQ(box_.plainText(), u"başka");
        expectLast(u"Kaydetmediğiniz metin saklandı. Not defterini bir dahaki açışınızda size sunulacak."_s,
                   u"Not Defteri"_s, platform::Icon::Information);
        editor_.newNote();
    }
    EXPECT_EQ(window_.lists, 2);
    box_.type(u"verilen"_s);  // answered No: given up
    editor_.open();
    editor_.show(other);
    EXPECT_TRUE(editor_.close());

    dialogs_.answer(Answer::No).answer(Answer::Yes);
    editor_.load(draft);
    EXPECT_EQ(box_.plainText(), u"ikinci metin");
    EXPECT_EQ(window_.caption, u"Not Defteri");
    EXPECT_TRUE(editor_.close());  // answered No
    editor_.load(draft);
    EXPECT_TRUE(box_.plainText().isEmpty());

    // Where no draft can be kept, or this one cannot be written, the text stays where it is.
    ASSERT_TRUE(QDir().mkpath(folder_.filePath(u"Notlar/notlar.draft"_s)));
    for (const NoteDraft& unkept : {NoteDraft(), draft}) {
        editor_.close();
        editor_.load(unkept);
        box_.type(u"metin"_s);
        dialogs_.answer(Answer::Yes).answerText({});
        editor_.open();
        editor_.show(other);
        EXPECT_EQ(box_.plainText(), u"metin");
        EXPECT_EQ(editor_.currentNote().value, 0);
    }
}

TEST_F(NoteEditorTest, KeepsBothTextsWhenTwoProgramsChangeANote) {
    saveAs(u"ilk"_s, u"Ortak"_s);
    const QString theirs = storedRtf(textDocument(u"onların"_s));
    ASSERT_EQ(*notes().replaceRtf({1}, (**notes().find({1})).rtf, theirs), Change::Done);
    editor_.save();  // nothing was changed here, so nothing is asked and nothing overwritten
    EXPECT_TRUE(dialogs_.messages.empty());
    EXPECT_EQ(stored(1), u"onların");
    box_.type(u"onların"_s);
    editor_.save();  // the same text again: no quarrel, and the next change goes into this note
    ASSERT_TRUE(dialogs_.messages.empty());
    box_.type(u"ortak"_s);
    dialogs_.answer(Answer::Yes);
    editor_.save();
    EXPECT_EQ(stored(1), u"ortak");
    ASSERT_EQ(*notes().replaceRtf({1}, (**notes().find({1})).rtf, theirs), Change::Done);
    box_.type(u"bizim"_s);
    dialogs_.answer(Answer::Yes);
    editor_.save();
    EXPECT_EQ(stored(1), u"onların");
    EXPECT_EQ(stored(2), u"bizim");
    EXPECT_EQ(editor_.currentNote().value, 2);

    ASSERT_TRUE(notes().remove({2}));  // a row that vanished comes back under its title
    dialogs_.messages.clear();
    editor_.save();
    EXPECT_TRUE(dialogs_.messages.empty());
    EXPECT_EQ(stored(3), u"bizim");
    EXPECT_EQ((**notes().find({3})).title, u"Ortak");
}

TEST_F(NoteEditorTest, KeepsTheTextWhenTheFileCannotBeWritten) {
    saveAs(u"ilk"_s, u"Başlık"_s);
    ASSERT_TRUE(notes().database().execute(u"PRAGMA max_page_count=1"));
    const QString longText(300'000, u'x');
    box_.type(longText);
    dialogs_.answer(Answer::Yes).answer(Answer::Yes).answerSavePath(folder_.filePath(u"yok/not.rtf"_s));
    EXPECT_FALSE(editor_.close());
    expectLast(u"Dosyaya yazılamadı: "_s + folder_.filePath(u"yok/not.rtf"_s), u"Kayıt Hatası"_s,
               platform::Icon::Critical);
    dialogs_.answer(Answer::Yes);
    EXPECT_FALSE(editor_.close());
    expectLast(
        u"Diskte yer kalmadı.\n\nNotunuz kaydedilemedi; metni pencerede duruyor. Metni bir RTF dosyasına "
        "kaydetmek ister misiniz?"_s,
        u"Kayıt Hatası"_s, platform::Icon::Critical);
    EXPECT_EQ(box_.plainText(), longText);
    EXPECT_EQ(stored(1), u"ilk");
    dialogs_.answer(Answer::Yes);
    editor_.open();  // and no other note takes its place
    EXPECT_EQ(window_.lists, 0);

    // Once it lies in a file the window may close.
    const QString rescue = folder_.filePath(u"kurtarılan.rtf"_s);
    dialogs_.answer(Answer::Yes).answer(Answer::Yes).answerSavePath(rescue);
    EXPECT_TRUE(editor_.close());
    QFile file(rescue);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(rtf::read(QByteArrayView(file.readAll())).plainText(), longText);
}

TEST_F(NoteEditorTest, ClosesAnUnchangedNoteWhenItsFileCanNoLongerBeRead) {
    saveAs(u"metin"_s, u"Başlık"_s);
    ASSERT_TRUE(notes().database().execute(u"alter table tbl_Notlar rename to tbl_Baska"));
    box_.type(u"değişti"_s);
    EXPECT_FALSE(editor_.close());
    box_.type(u"metin"_s);
    dialogs_.messages.clear();
    EXPECT_TRUE(editor_.close());
    EXPECT_TRUE(dialogs_.messages.empty());
}

TEST_F(NoteEditorTest, WorksWithoutAFileAndSavesOnceThereIsOne) {
    editor_.close();
    fileUnusable_ = true;
    editor_.load();
    ASSERT_EQ(dialogs_.messages.size(), 1U);
    EXPECT_TRUE(dialogs_.messages[0].text.contains(u"Veritabanı dosyası bozuk."));
    box_.type(u"metin"_s);
    dialogs_.answerText(u"Başlık"_s);
    editor_.save();
    EXPECT_TRUE(editor_.KayitIptal());
    fileUnusable_ = false;
    dialogs_.answerText(u"Başlık"_s);
    editor_.save();
    EXPECT_EQ(stored(1), u"metin");
}

TEST_F(NoteEditorTest, OffersTheDraftOfACrash) {
    const platform::AppFolder folder(folder_.path());
    saveAs(u"ilk"_s, u"Başlık"_s);
    editor_.close();
    {
        NoteEditor crashed({window_, box_, scratch_, clipboard_, dialogs_, printing_},
                           [this] { return openNotes(); });
        crashed.load(NoteDraft::in(folder));
        crashed.show(**crashed.NotBaglanti().find({1}));
        box_.type(u"yarım kalan"_s);
        crashed.keepDraft();
        EXPECT_FALSE(NoteDraft::in(folder).left()) << "a second program must not take the draft";
    }
    box_.type({});
    // As if the folder had been copied from another computer on which the program did not end by itself.
    QFile lock(folder_.filePath(u"Notlar/notlar.draft.lock"_s));
    ASSERT_TRUE(lock.open(QIODevice::WriteOnly));
    lock.write("1234\nlirovan\nbaska-bilgisayar\n\n\n");
    lock.close();
    dialogs_.answer(Answer::Yes);
    const NoteDraft draft = NoteDraft::in(folder);
    editor_.load(draft);
    ASSERT_FALSE(dialogs_.messages.empty());
    EXPECT_TRUE(
        dialogs_.messages.back().text.startsWith(u"Kaydedilmemiş bir not bulundu. Açmak istiyor musunuz?"));
    EXPECT_EQ(box_.plainText(), u"yarım kalan");
    EXPECT_TRUE(box_.atEnd);
    EXPECT_TRUE(draft.left()) << "a second crash must not lose it";
    EXPECT_EQ(window_.caption, u"Not Defteri - Başlık");
    const QString first = (**notes().find({1})).rtf;
    dialogs_.answer(Answer::Yes);
    EXPECT_TRUE(editor_.close());
    EXPECT_EQ(stored(1), u"yarım kalan");
    EXPECT_FALSE(draft.left());

    // A note that another program has changed since is not overwritten with what was made from the old one.
    draft.keep({{1}, u"Başlık"_s, {}, textDocument(u"eskiden kalan"_s)}, first);
    dialogs_.answer(Answer::Yes).answer(Answer::Yes);
    editor_.load(draft);
    editor_.save();
    EXPECT_EQ(stored(1), u"yarım kalan");
    EXPECT_EQ(stored(2), u"eskiden kalan");
    EXPECT_EQ((**notes().find({2})).title, u"Başlık");
}

TEST_F(NoteEditorTest, TogglesStylesAndColours) {
    box_.styles[0] = std::nullopt;  // mixed
    editor_.button(u"bold");
    EXPECT_EQ(box_.styles[0], true);
    EXPECT_EQ(window_.pressedKeys(), u"bold siyah");
    editor_.button(u"bold");
    EXPECT_EQ(window_.pressedKeys(), u"siyah");
    QStringList pressed;
    for (const QStringView key : {u"mavi", u"mavi", u"siyah", u"siyah", u"yesil", u"kirmizi", u"kirmizi"}) {
        editor_.button(key);
        pressed += window_.pressedKeys();
    }
    EXPECT_EQ(pressed.join(u' '), u"mavi siyah kirmizi siyah yesil kirmizi siyah");
    EXPECT_EQ(box_.shownColor, rtf::Black);
    box_.shownColor = std::nullopt;
    box_.styles[1] = true;
    editor_.keyUpOrPress();
    EXPECT_EQ(window_.pressedKeys(), u"italic siyah");  // a mixed colour leaves the buttons alone
}

TEST_F(NoteEditorTest, FollowsTheSelection) {
    EXPECT_FALSE(window_.enabled[u"mnu_Kes"_s]);
    EXPECT_FALSE(window_.enabled.contains(u"paste"_s));
    box_.selected = textDocument(u"seçili"_s);
    box_.styles[2] = true;
    clipboard_.plain = true;
    editor_.selectionChanged();
    for (const QString& name :
         {u"mnu_Kes"_s, u"mnu_Kopyala"_s, u"cut"_s, u"copy"_s, u"paste"_s, u"mnu_Yapistir"_s})
        EXPECT_TRUE(window_.enabled[name]) << name.toStdString();
    EXPECT_EQ(window_.pressedKeys(), u"siyah underline");
    editor_.button(u"copy");
    EXPECT_FALSE(window_.enabled[u"mnu_Kopyala"_s]);
    EXPECT_TRUE(box_.hasSelection());
    editor_.button(u"cut");
    EXPECT_FALSE(window_.enabled[u"mnu_Kes"_s]);
    EXPECT_EQ(clipboard_.rich->plainText(), u"seçili");
    EXPECT_FALSE(box_.hasSelection());
    EXPECT_TRUE(box_.focused);
    editor_.selectionChanged();
    EXPECT_EQ(window_.pressedKeys(), QString());
    EXPECT_TRUE(window_.enabled[u"cut"_s]);
}

TEST_F(NoteEditorTest, Prints) {
    editor_.button(u"print");
    editor_.menu(u"mnu_Yazdir");
    EXPECT_TRUE(window_.printed.empty());  // no printer, a cancelled dialog
    EXPECT_TRUE(dialogs_.messages.empty());
    printing_.printer.emplace();
    printing_.chosen.emplace();
    box_.selected = textDocument(u"seçili"_s);
    editor_.button(u"print");
    editor_.menu(u"mnu_Yazdir");
    EXPECT_TRUE(printing_.offeredSelection);
    ASSERT_EQ(window_.printed.size(), 2U);
    EXPECT_EQ(window_.printed[0].range, platform::PrintRange::Selection);
    EXPECT_EQ(window_.printed[1].range, platform::PrintRange::Page);  // as chosen in the dialog
    window_.printerWorks = false;
    editor_.button(u"print");
    EXPECT_TRUE(dialogs_.messages.empty());
    editor_.menu(u"mnu_Yazdir");
    expectLast(u"Yazıcı algılanamadı!"_s, u"Yazıcı Hatası"_s, platform::Icon::Critical);
}

// --- The list
// ---------------------------------------------------------------------------------------------------

namespace {

struct FakeListWindow : NoteListWindow {
    std::vector<NoteLine> lines;
    int selected = -1, closings = 0;
    void setLines(const std::vector<NoteLine>& shown) override { lines = shown; }
    int selectedLine() const override { return selected; }
    void closeWindow() override { ++closings; }
};

class NoteListTest : public NoteEditorTest {
  protected:
    FakeListWindow listWindow_;
    NoteList list_{listWindow_, editor_, dialogs_, [](QDate date) { return date.toString(u"dd.MM.yyyy"); }};
};

}  // namespace

TEST_F(NoteListTest, ShowsALineForEachNote) {
    saveAs(u"Süt # ekmek"_s, u" Alışveriş listesi ve başka şeyler "_s);
    editor_.newNote();
    saveAs(QString(200, u'x') + u"\nson"_s, u"#3"_s);
    editor_.newNote();
    saveAs(u"bir\niki"_s, QString());  // refused: not in the list
    dialogs_.messages.clear();
    list_.load();
    EXPECT_TRUE(dialogs_.messages.empty());
    ASSERT_EQ(listWindow_.lines.size(), 3U);
    EXPECT_EQ(listWindow_.lines[0].text, u"Not Tarihi   Başlık                   Not");
    EXPECT_EQ(listWindow_.lines[1].text, u"14.03.2008   Alışveriş listesi ve     Süt # ekmek...");
    EXPECT_EQ(listWindow_.lines[2].text,
              u"14.03.2008   #3                       "_s + QString(50, u'x') + u"..."_s);
    const auto shortDate = [](QDate date) { return date.toString(u"d.M.yyyy"); };
    EXPECT_EQ(listLine({{}, u"1899-01-02T21:05:00"_s, u"t"_s, u"a\nb"_s}, shortDate),
              u"2.1.1899   t"_s + QString(24, u' ') + u"a b..."_s);
    EXPECT_EQ(listLine({{}, {}, u"iki\r\nsatır"_s, u"\t"_s}, shortDate),
              QString(13, u' ') + u"iki  satır"_s + QString(15, u' ') + u"..."_s);
    // Neither cut goes through a character of two units.
    EXPECT_EQ(listLine({{}, {}, QString(19, u'b') + u"😀"_s, QString(49, u'x') + u"😀"_s}, shortDate),
              QString(13, u' ') + QString(19, u'b') + QString(6, u' ') + QString(49, u'x') + u"..."_s);
    EXPECT_EQ(listLine({}, shortDate), QString(10 + 3 + 25, u' ') + u"..."_s);
}

TEST_F(NoteListTest, OpensAndDeletes) {
    editor_.close();
    const NoteDraft draft = NoteDraft::in(platform::AppFolder(folder_.path()));
    editor_.load(draft);
    list_.load();
    expectLast(u"Gösterilecek not bulunamadı!"_s, u"Not Açma Hatası"_s, platform::Icon::Critical);
    saveAs(u"bir"_s, u"Bir"_s);
    editor_.newNote();
    saveAs(u"iki"_s, u"İki"_s);
    list_.load();
    for (const int line : {-1, 0}) {
        listWindow_.selected = line;
        list_.mnu_Ac();
        expectLast(u"Not seçmelisiniz!"_s, u"Not Açma Hatası"_s, platform::Icon::Critical);
        list_.mnu_Sil();
        expectLast(u"Not seçmelisiniz!"_s, u"Not Silme Hatası"_s, platform::Icon::Critical);
        dialogs_.messages.clear();
        list_.doubleClickOrEnter();
        EXPECT_TRUE(dialogs_.messages.empty());
    }
    EXPECT_EQ(listWindow_.closings, 0);
    listWindow_.selected = 1;
    list_.doubleClickOrEnter();
    EXPECT_EQ(listWindow_.closings, 1);
    EXPECT_EQ(box_.plainText(), u"bir");
    EXPECT_EQ(window_.caption, u"Not Defteri - Bir");

    list_.mnu_Sil();  // No
    expectLast(u"Seçili notu silmek istediğinize eminmisiniz?"_s, u"Not Silme"_s, platform::Icon::None);
    EXPECT_EQ(listWindow_.lines.size(), 3U);
    dialogs_.answer(Answer::Yes);
    list_.mnu_Sil();
    EXPECT_EQ(listWindow_.lines.size(), 2U);
    EXPECT_EQ(window_.caption, u"Not Defteri");
    EXPECT_EQ(editor_.currentNote().value, 0);
    EXPECT_EQ(box_.plainText(), u"bir");  // its text stays, as a new note that a crash does not take away
    ASSERT_TRUE(draft.left());
    EXPECT_EQ(draft.left()->note.value, 0);
    EXPECT_EQ(draft.left()->text.plainText(), u"bir");

    ASSERT_TRUE(notes().database().execute(u"PRAGMA query_only=1"));
    dialogs_.answer(Answer::Yes);
    list_.mnu_Sil();
    expectLast(u"Hata oluştu!"_s, u"Hata"_s, platform::Icon::Critical);

    ASSERT_TRUE(notes().database().execute(u"PRAGMA query_only=0; drop table tbl_Notlar"));
    dialogs_.messages.clear();
    list_.load();  // says what is wrong, not that there is no note
    ASSERT_EQ(dialogs_.messages.size(), 1U);
    EXPECT_TRUE(dialogs_.messages[0].text.contains(u"tbl_Notlar"));
    editor_.close();
    fileUnusable_ = true;
    list_.load();
    expectLast(u"Veritabanı dosyası bozuk."_s, u"Not Açma Hatası"_s, platform::Icon::Critical);
}
