// A passage of a page on its way into the notebook, through the page engine and the clipboard.
#include <algorithm>

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
        "<A name='ggggittt'></A><INPUT type='submit' name='ggggittt0' style='width:0px; height:0px;'>"
        "<FONT color='#000080'><SPAN style='background-color:#FFFF00'>ışık</SPAN></FONT> İĞÜŞÖÇ "
        "kur'ân</P><P>devam</P></FONT></TD></TR></TABLE></BODY></HTML>"_s);
    inPage(u"getSelection().selectAllChildren(document.getElementById('p'))"_s);
    ASSERT_TRUE(until([&] { return view->hasSelection(); }));
    view->copy();

    QMdiArea area;
    area.show();
    test::FakeMainFrame frame;
    test::FakePrinting printing;
    notes::Notebook notebook(area, folder, frame, dialogs, printing, {});
    notebook.pasteFromClipboard();
    const rtf::Document note = notebook.window()->box().document();
    EXPECT_EQ(note.plainText(), u"Şu ağaçta ışık İĞÜŞÖÇ kur'ân");
    const auto format = [&runs = note.paragraphs[0].runs](QStringView text) {
        const auto found =
            std::find_if(runs.begin(), runs.end(), [text](const auto& r) { return r.text == text; });
        return found == runs.end() ? rtf::CharFormat() : found->format;
    };
    EXPECT_TRUE(format(u"ağaç").bold);
    EXPECT_EQ(format(u"ağaç").font, u"Arial");
    EXPECT_EQ(format(u"ışık").color, (rtf::Rgb{0, 0, 128}));
    EXPECT_EQ(format(u"ışık").background, (rtf::Rgb{255, 255, 0}));
}
