// A passage of a page on its way into the notebook, through the page engine and the clipboard.
#include <QClipboard>

#include "notes/fake_printing.h"
#include "notes/ui/notebook.h"
#include "platform/web/web_fixture.h"
#include "support/fake_windows.h"

using namespace lirovan;
using namespace Qt::StringLiterals;
namespace rtf = platform::rtf;

using PassageTest = test::WebTest;

TEST_F(PassageTest, ArrivesWithBoldColoursOfHitsAndTurkishLetters) {
    show(
        u"<HTML><HEAD><TITLE></TITLE></HEAD><BODY><TABLE><TR><TD><FONT face=Arial><P id=p>Şu <B>ağaç</B>ta "
        "İĞÜŞÖÇ kur'ân <A name='ggggittt'></A><INPUT type='submit' name='ggggittt0' style='width:0px; "
        "height:0px;'><FONT color='#000080'><SPAN style='background-color:#FFFF00'>ışık</SPAN></FONT></P><P>devam</P></FONT></TD></TR></TABLE></BODY></HTML>"_s);
    inPage(u"getSelection().selectAllChildren(document.getElementById('p'))"_s);
    ASSERT_TRUE(until([&] { return view->hasSelection(); }));
    view->copy();

    QMdiArea area;
    area.show();
    test::FakeMainFrame frame;
    test::FakePrinting printing;
    notes::Notebook notebook(area, folder, frame, dialogs, printing, {});
    notebook.pasteFromClipboard();  // opens it first
    notes::NoteBox& box = notebook.window()->box();
    EXPECT_EQ(box.toPlainText(), u"Şu ağaçta İĞÜŞÖÇ kur'ân ışık");
    QTest::keyClicks(&box, u"! "_s);
    notebook.pasteFromClipboard();
    EXPECT_EQ(box.toPlainText(), u"Şu ağaçta İĞÜŞÖÇ kur'ân ışık! Şu ağaçta İĞÜŞÖÇ kur'ân ışık");
    box.undo();
    EXPECT_EQ(box.toPlainText(), u"Şu ağaçta İĞÜŞÖÇ kur'ân ışık! ");
    const rtf::Document note = box.document();
    const std::vector<rtf::Run>& runs = note.paragraphs[0].runs;
    ASSERT_EQ(runs.size(), 5U);
    EXPECT_TRUE(runs[1].format.bold);
    EXPECT_EQ(runs[1].format.font, u"Arial");
    EXPECT_EQ(runs[3].text, u"ışık");
    EXPECT_EQ(runs[3].format.color, (rtf::Rgb{0, 0, 128}));
    EXPECT_EQ(runs[3].format.background, (rtf::Rgb{255, 255, 0}));
    EXPECT_FALSE(runs[4].format.background);  // the marker ends with the hit
}

TEST_F(PassageTest, ComesWithItsSourceWithoutTheColoursOfTheSearch) {
    show(u"<HTML><BODY><P id=p>Şu <B>ağaç</B> "_s + test::hit(0, u"ışık"_s) + u" altı</P></BODY></HTML>"_s);
    inPage(u"getSelection().selectAllChildren(document.getElementById('p'))"_s);
    ASSERT_TRUE(until([&] { return view->hasSelection(); }));
    const QString source = u"Yazar, Kitap & Defter, Konu"_s, address = u"konu:12?yer=%C5%9Eu"_s;
    view->copyWithSource(source, address);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Şu ağaç ışık altı\n"_s + source + u'\n');

    QMdiArea area;
    area.show();
    test::FakeMainFrame frame;
    test::FakePrinting printing;
    notes::Notebook notebook(area, folder, frame, dialogs, printing, {});
    QStringList followed;
    QObject::connect(&notebook, &notes::Notebook::linkWanted, &notebook,
                     [&](const QString& link) { followed += link; });
    notebook.pasteFromClipboard();
    notes::NoteBox& box = notebook.window()->box();
    const rtf::Document note = box.document();
    ASSERT_GE(note.paragraphs.size(), 2U);
    for (const rtf::Run& run : note.paragraphs[0].runs) EXPECT_FALSE(run.format.background);
    EXPECT_EQ(note.paragraphs[1].runs[0].text, source);
    EXPECT_EQ(note.paragraphs[1].runs[0].format.link, address);

    QTextCursor cursor = box.textCursor();
    cursor.setPosition(box.toPlainText().indexOf(source) + 3);
    box.setTextCursor(cursor);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(followed, QStringList(address));
    EXPECT_EQ(box.document(), note) << "no new line";
    QTest::mouseClick(box.viewport(), Qt::LeftButton, Qt::ControlModifier, box.cursorRect().center());
    EXPECT_EQ(followed.size(), 2);
    // What is typed behind it does not lead anywhere.
    cursor.setPosition(box.toPlainText().indexOf(source) + int(source.size()));
    box.setTextCursor(cursor);
    QTest::keyClicks(&box, u"x"_s);
    EXPECT_TRUE(box.document().paragraphs[1].runs.back().format.link.isEmpty());
    EXPECT_EQ(box.document().paragraphs[1].runs.back().text, u"x");
}
