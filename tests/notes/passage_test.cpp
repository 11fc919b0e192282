// A passage of a page on its way into the notebook, through the page engine and the clipboard.
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
