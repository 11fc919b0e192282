// What leaves the view: the selection on the clipboard, pages on paper, the view's own menu.
#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QPrinter>
#include <QProcess>
#include <QSignalSpy>

#include "platform/core/page_look.h"
#include "platform/ui/clipboard.h"
#include "web_fixture.h"

using namespace lirovan::test;

namespace {

struct OutputTest : WebTest {
    void SetUp() override {
        WebTest::SetUp();
        QGuiApplication::clipboard()->setText(u"eski"_s);
        show(topicPage(
            u"BAŞLIK"_s,
            u"önce <p id=p>Bir <b>koyu "_s + hit(0, u"çığ"_s) +
                u"</b> <i>eğik</i> <script>1</script>&lt;son&gt;</p>"
                "<table id=t><tr><td>a<td>b<tr><td>c<td>d</table><div id=menü style=display:none>MENÜ</div> sonra"_s));
    }
    void select(const QString& what) {
        inPage(u"getSelection().selectAllChildren(%1), 1"_s.arg(what));
        ASSERT_TRUE(until([&] { return view->hasSelection(); }));
    }
    static const QMimeData& clipboard() { return *QGuiApplication::clipboard()->mimeData(); }
    void expectCopied(const QString& what, const QString& html) {
        select(what);
        view->copy();
        EXPECT_TRUE(clipboard().html().contains(html)) << clipboard().html().toStdString();
        for (const QStringView other : {u"ggggittt", u"SCRIPT", u"BAŞLIK"})
            EXPECT_FALSE(clipboard().html().contains(other)) << clipboard().html().toStdString();
    }

    /// Prints and answers the text of the PDF file, empty where nothing was printed.
    QString printed(const PrintTarget& target, const QString& file) {
        std::optional<bool> outcome;
        view->print(target, [&](bool done) { outcome = done; });
        EXPECT_TRUE(until([&] { return outcome.has_value(); }));
        if (!outcome.value_or(false)) return {};
        QProcess text;
        text.start(u"pdftotext"_s, {file, u"-"_s});
        EXPECT_TRUE(text.waitForFinished());
        return QString::fromUtf8(text.readAllStandardOutput()).simplified();
    }

    /// The colour in the middle of the printed sheet, below the text.
    static QColor paper(const QString& file) {
        QProcess picture;
        picture.start(u"pdftoppm"_s, {u"-r"_s, u"20"_s, u"-f"_s, u"1"_s, u"-l"_s, u"1"_s, file});
        EXPECT_TRUE(picture.waitForFinished());
        const QImage sheet = QImage::fromData(picture.readAllStandardOutput());
        return sheet.isNull() ? QColor() : sheet.pixelColor(sheet.rect().center());
    }
};

}  // namespace

TEST_F(OutputTest, CopiesTheSelectionAsTextHtmlAndRtf) {
    view->copy();
    EXPECT_EQ(clipboard().text(), u"eski") << "without a selection the clipboard is kept";
    // Inside one text the formats around it stay; rows keep their table.
    expectCopied(u"document.querySelector('#p i')"_s, u"<I>eğik</I>"_s);
    expectCopied(u"t.rows[1]"_s, u"<TR><TD>c</TD><TD>d"_s);
    expectCopied(u"p"_s, u"<B>koyu <FONT color=#000080><SPAN style=background-color:#00FF00>çığ"_s);
    EXPECT_EQ(clipboard().text().simplified(), u"Bir koyu çığ eğik <son>");
    const QByteArray rtf = rtfIn(clipboard()).value_or(QByteArray());
    EXPECT_TRUE(rtf.startsWith("{\\rtf1") && rtf.contains("\\b") && rtf.contains("\\i")) << rtf.toStdString();
    EXPECT_TRUE(clipboardHasText());

    select(u"document.body"_s);
    view->copy();
    EXPECT_TRUE(clipboard().html().contains(u"sonra"));
    EXPECT_FALSE(clipboard().html().contains(u"MENÜ")) << "what the page does not show";

    QGuiApplication::clipboard()->clear();
    QTest::keyClick(input(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(until([] { return rtfIn(clipboard()).has_value(); }, 2000)) << "by the keys of the page";
}

TEST(Clipboard, HasRtfUnderEveryNameInUse) {
    for (const QString& format : {u"text/rtf"_s, u"application/rtf"_s, u"Rich Text Format"_s}) {
        QMimeData data;
        data.setData(format, "{\\rtf1 x}");
        EXPECT_EQ(rtfIn(data), QByteArray("{\\rtf1 x}")) << format.toStdString();
        data.setData(format, "no rtf");
        EXPECT_EQ(rtfIn(data), std::nullopt);
    }
}

TEST_F(OutputTest, PrintsThePageOrItsSelectionIntoAFileOrOnAPrinter) {
    const QString file = onDisk(u"çıktı.pdf"), wrong = onDisk(u"yok/x.pdf");
    const QString all = printed({nullptr, file}, file);
    EXPECT_TRUE(all.contains(u"BAŞLIK") && all.contains(u"sonra")) << all.toStdString();
    select(u"p"_s);
    EXPECT_EQ(printed({nullptr, file, PrintRange::Selection}, file), u"Bir koyu çığ eğik <son>");
    EXPECT_TRUE(view->hasSelection());
    EXPECT_EQ(printed({nullptr, wrong}, wrong), QString());
    EXPECT_EQ(printed({}, file), QString());

    const auto printer = std::make_shared<QPrinter>();
    printer->setOutputFormat(QPrinter::PdfFormat);
    printer->setOutputFileName(onDisk(u"printer.pdf"));
    EXPECT_TRUE(printed({printer, {}}, printer->outputFileName()).contains(u"BAŞLIK"));
}

TEST_F(OutputTest, PrintsTheSameInEveryLook) {
    const QString file = onDisk(u"gece.pdf");
    select(u"p"_s);
    const auto papers = [&] {
        EXPECT_FALSE(printed({nullptr, file}, file).isEmpty());
        const QColor whole = paper(file);
        EXPECT_FALSE(printed({nullptr, file, PrintRange::Selection}, file).isEmpty());
        return std::pair(whole.name(), paper(file).name());
    };
    const auto plain = papers();
    EXPECT_EQ(plain, std::pair(u"#c0c0c0"_s, u"#ffffff"_s)) << "the page's own ground, and none";
    const PageLook night{PageColours::Night};
    engine->style().set(lookStyle(night, {}), QColor(QRgb(coloursOf(night.colours, {}).ground)));
    EXPECT_EQ(papers(), plain);
}

TEST_F(OutputTest, PrintsOneAfterTheOtherAndForgetsAPrintingWhenTheViewGoes) {
    int calls = 0, good = 0;
    const auto print = [&] {
        view->print({nullptr, onDisk(u"x.pdf")}, [&](bool done) { ++calls, good += done; });
    };
    for (int i = 0; i < 3; ++i) print();
    EXPECT_TRUE(until([&] { return calls == 3; }));
    EXPECT_EQ(good, 3);
    print();
    view.reset();
    engine.reset();
    EXPECT_TRUE(until([&] { return QApplication::topLevelWidgets().isEmpty(); }))
        << "the page goes when it is printed";
    EXPECT_EQ(calls, 3);
}

TEST_F(OutputTest, OffersItsOwnMenuOnlyWhereThePageHasNone) {
    const QSignalSpy printing(view.get(), &WebView::printRequested);
    const auto menu = [&] { return view->findChild<QMenu*>(); };
    const auto rightClick = [&] { QTest::mouseClick(input(), Qt::RightButton, {}, {300, 300}); };
    rightClick();
    ASSERT_TRUE(until([&] { return menu() != nullptr; }, 3000));
    EXPECT_EQ(menu()->actions().first()->text(), u"&Kopyala");
    EXPECT_FALSE(menu()->actions().first()->isEnabled());
    menu()->actions().last()->trigger();
    EXPECT_EQ(printing.count(), 1);
    menu()->close();
    ASSERT_TRUE(until([&] { return menu() == nullptr; }));

    show(u"<body style='height:400px' oncontextmenu='document.title=\"own\"; return false'>x"_s);
    rightClick();
    EXPECT_TRUE(until([&] { return inPage(u"document.title"_s) == u"own"; }, 3000));
    EXPECT_FALSE(until([&] { return menu() != nullptr; }, 200));
}
