// What leaves the view: the selection on the clipboard, pages on paper, the view's own menu.
#include <QClipboard>
#include <QMenu>
#include <QMimeData>
#include <QPrinter>
#include <QProcess>
#include <QSignalSpy>
#include <QtTest/QTest>

#include "platform/ui/clipboard.h"
#include "web_fixture.h"

using namespace lirovan::test;

namespace {

struct OutputTest : WebTest {
    const QString page = topicPage(
        u"BAŞLIK"_s, u"önce <p id=p>Bir <b>koyu "_s + hit(0, u"çığ"_s) +
                         u"</b> <i>eğik</i> <script>1</script>&lt;son&gt;</p><table id=t><tr><td>a<td>b<tr>"
                         "<td>c<td>d</table> sonra"_s);

    void select(const QString& what) {
        inPage(u"getSelection().selectAllChildren(%1), 1"_s.arg(what));
        ASSERT_TRUE(until([&] { return view->hasSelection(); }));
    }

    static const QMimeData& clipboard() { return *QGuiApplication::clipboard()->mimeData(); }

    /// Prints and answers the text of the PDF file, empty where nothing was printed.
    QString printed(PrintTarget target) {
        std::optional<bool> outcome;
        view->print(target, [&](bool done) { outcome = done; });
        EXPECT_TRUE(until([&] { return outcome.has_value(); }));
        if (!outcome.value_or(false)) return {};
        QProcess text;
        text.start(u"pdftotext"_s,
                   {target.pdfPath.isEmpty() ? target.printer->outputFileName() : target.pdfPath, u"-"_s});
        EXPECT_TRUE(text.waitForFinished());
        return QString::fromUtf8(text.readAllStandardOutput()).simplified();
    }
};

}  // namespace

TEST_F(OutputTest, CopiesTheSelectionAsTextHtmlAndRtf) {
    QGuiApplication::clipboard()->setText(u"eski"_s);
    show(page);
    view->copy();
    EXPECT_EQ(clipboard().text(), u"eski") << "without a selection the clipboard is kept";

    select(u"p"_s);
    view->copy();
    EXPECT_EQ(clipboard().text().simplified(), u"Bir koyu çığ eğik <son>");
    EXPECT_TRUE(
        clipboard().html().contains(u"<B>koyu <FONT color=#000080><SPAN style=background-color:#00FF00>çığ"))
        << clipboard().html().toStdString();
    EXPECT_FALSE(clipboard().html().contains(u"ggggittt") || clipboard().html().contains(u"SCRIPT"));
    const QByteArray rtf = rtfIn(clipboard()).value_or(QByteArray());
    EXPECT_TRUE(rtf.startsWith("{\\rtf1")) << rtf.toStdString();
    EXPECT_TRUE(rtf.contains("\\b") && rtf.contains("\\i")) << rtf.toStdString();
    EXPECT_TRUE(clipboardHasText());

    // Inside one text the formats around it stay; rows keep their table.
    select(u"document.querySelector('#p i')"_s);
    view->copy();
    EXPECT_TRUE(clipboard().html().contains(u"<I>eğik</I>")) << clipboard().html().toStdString();
    select(u"t.rows[1]"_s);
    view->copy();
    EXPECT_TRUE(clipboard().html().contains(u"<TR><TD>c</TD><TD>d")) << clipboard().html().toStdString();
    EXPECT_FALSE(clipboard().html().contains(u"BAŞLIK"));
}

TEST_F(OutputTest, CopiesByTheKeysOfThePage) {
    show(page);
    select(u"p"_s);
    QGuiApplication::clipboard()->clear();
    QTest::keyClick(view->findChild<QWebEngineView*>()->focusProxy(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(until([] { return rtfIn(clipboard()).has_value(); }, 2000));
}

TEST_F(OutputTest, FindsRtfUnderEveryNameInUse) {
    for (const QString& format : {u"text/rtf"_s, u"application/rtf"_s, u"Rich Text Format"_s}) {
        QMimeData data;
        data.setData(format, "{\\rtf1 x}");
        EXPECT_EQ(rtfIn(data), QByteArray("{\\rtf1 x}")) << format.toStdString();
    }
    QMimeData other;
    other.setData(u"text/rtf"_s, "no rtf");
    other.setText(u"x"_s);
    EXPECT_EQ(rtfIn(other), std::nullopt);
}

TEST_F(OutputTest, PrintsThePageOrItsSelection) {
    show(page);
    PrintTarget target;
    target.pdfPath = onDisk(u"çıktı.pdf");
    QString text = printed(target);
    EXPECT_TRUE(text.contains(u"BAŞLIK") && text.contains(u"sonra")) << text.toStdString();

    target.range = PrintRange::Selection;
    target.pdfPath = onDisk(u"seçim.pdf");
    select(u"p"_s);
    text = printed(target);
    EXPECT_EQ(text, u"Bir koyu çığ eğik <son>");
    EXPECT_TRUE(view->hasSelection());

    target.pdfPath = onDisk(u"yok/x.pdf");
    EXPECT_EQ(printed(target), QString());
}

TEST_F(OutputTest, PrintsToAPrinterThatWritesAFile) {
    show(page);
    PrintTarget target;
    target.printer = std::make_shared<QPrinter>();
    target.printer->setOutputFormat(QPrinter::PdfFormat);
    target.printer->setOutputFileName(onDisk(u"printer.pdf"));
    EXPECT_TRUE(printed(target).contains(u"BAŞLIK"));
    view->print({}, [](bool done) { EXPECT_FALSE(done); });
}

TEST_F(OutputTest, PrintsOneAfterTheOtherAndForgetsAPrintingWhenTheViewGoes) {
    show(page);
    int calls = 0, good = 0;
    PrintTarget target;
    target.pdfPath = onDisk(u"x.pdf");
    const auto print = [&] { view->print(target, [&](bool done) { ++calls, good += done; }); };
    for (int i = 0; i < 3; ++i) print();
    EXPECT_TRUE(until([&] { return calls == 3; }));
    EXPECT_EQ(good, 3) << "one after the other";
    print();
    view.reset();
    engine.reset();
    EXPECT_TRUE(until([&] { return QApplication::topLevelWidgets().isEmpty(); }))
        << "the page goes when it is printed";
    EXPECT_EQ(calls, 3);
}

TEST_F(OutputTest, OffersItsOwnMenuOnlyWhereThePageHasNone) {
    const QSignalSpy printing(view.get(), &WebView::printRequested);
    const auto rightClick = [&] {
        QTest::mouseClick(view->findChild<QWebEngineView*>()->focusProxy(), Qt::RightButton, {}, {300, 300});
        QTest::mouseRelease(view->findChild<QWebEngineView*>()->focusProxy(), Qt::RightButton, {},
                            {300, 300});
    };
    show(u"<body>düz"_s);
    rightClick();
    ASSERT_TRUE(until([&] { return view->findChild<QMenu*>() != nullptr; }, 3000));
    auto* menu = view->findChild<QMenu*>();
    QStringList entries;
    for (const QAction* action : menu->actions()) entries << action->text();
    EXPECT_EQ(entries.first(), u"&Kopyala");
    EXPECT_FALSE(menu->actions().first()->isEnabled());
    menu->actions().last()->trigger();
    EXPECT_EQ(printing.count(), 1);
    menu->close();
    ASSERT_TRUE(until([&] { return view->findChild<QMenu*>() == nullptr; }));

    show(u"<body style='height:400px' oncontextmenu='document.title=\"own\"; return false'>x"_s);
    rightClick();
    EXPECT_TRUE(until([&] { return inPage(u"document.title"_s) == u"own"; }, 3000));
    until([&] { return view->findChild<QMenu*>() != nullptr; }, 200);
    EXPECT_EQ(view->findChild<QMenu*>(), nullptr);
}
