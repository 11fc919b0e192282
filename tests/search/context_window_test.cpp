// The windows "Bağlam Listesi" and "Dağılım" as the reader has them, and the saved summary.
#include "search/ui/context_window.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QTest>

#include "search/runs/search_engine.h"
#include "search/ui/distribution_window.h"
#include "search/ui/summary_file.h"
#include "support/files.h"
#include "support/library_file.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::search;
using namespace Qt::StringLiterals;

namespace {

class ContextWindowTest : public testing::Test {
  protected:
    ContextWindowTest() {
        file.execute(u"BEGIN").author(1, u"Sabri");
        file.book(10, 1, u"YAZ").book(20, 1, u"KIŞ");
        file.topic(1, 10, u"AĞAÇ", u"<P>çam ve ilim yolu</P><P>ışık ilim zor</P>");
        file.topic(2, 20, u"ZİL", u"<P>bir ilim sözü</P>");
        library = file.execute(u"COMMIT").open();
        ResultTree tree;
        RunHost host;
        SearchEngine engine(library, tree);
        const QString query = u"ilim"_s;
        const SearchRun& run = *engine.run({query}, host)->run;
        hits = std::make_shared<RunHits>(RunHits{run, query, *hitListOf(library, engine.outline(), run)});
        window = std::make_unique<ContextWindow>(library, dialogs, hits);
        QObject::connect(window.get(), &ContextWindow::hitWanted,
                         [this](const HitPlace& hit) { opened.push_back(hit); });
        window->resize(900, 300);
        window->show();
        lines = child<QTableView>("lines");
    }
    template <class Widget>
    Widget* child(const char* name) const {
        return window->findChild<Widget*>(QString::fromUtf8(name));
    }
    QString rights() const {
        QStringList all;
        for (int row = 0; row < lines->model()->rowCount(); ++row)
            all += lines->model()->index(row, ContextModel::Right).data().toString().simplified();
        return all.join(u'|');
    }
    // By a click on a column's head.
    bool sortBy(int section) const {
        const QHeaderView* header = lines->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          QPoint(header->sectionViewportPosition(section) + 5, 5));
        return QTest::qWaitFor([&] { return child<QComboBox>("orders")->isEnabled(); });
    }

    test::LibraryFile file;
    data::Library library;
    test::ScriptedDialogs dialogs;
    std::shared_ptr<const RunHits> hits;
    std::unique_ptr<ContextWindow> window;
    QTableView* lines;
    std::vector<HitPlace> opened;
};

}  // namespace

TEST_F(ContextWindowTest, SortsFiltersAndOpens) {
    const QAbstractItemModelTester tester(lines->model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(rights(), u"yolu ışık ilim zor|zor|sözü");
    EXPECT_EQ(child<QLabel>("state")->text(), u"3 isabet");
    EXPECT_TRUE(sortBy(ContextModel::Right));
    EXPECT_EQ(rights(), u"sözü|yolu ışık ilim zor|zor");
    EXPECT_TRUE(sortBy(ContextModel::Left));
    EXPECT_EQ(rights(), u"sözü|zor|yolu ışık ilim zor");
    auto* books = child<QComboBox>("books");
    EXPECT_EQ(books->itemText(1), u"Yaz (2)");
    books->setCurrentIndex(1);
    EXPECT_EQ(rights(), u"zor|yolu ışık ilim zor");
    QTest::keyClick(lines, Qt::Key_Down);
    QTest::keyClick(lines, Qt::Key_Return);
    QTest::mouseClick(lines->viewport(), Qt::LeftButton, {},
                      lines->visualRect(lines->model()->index(0, 0)).center());
    QTest::mouseClick(lines->viewport(), Qt::LeftButton, Qt::ShiftModifier,
                      lines->visualRect(lines->model()->index(1, 0)).center());
    ASSERT_EQ(opened.size(), 2u);
    EXPECT_TRUE(opened[0].topic.value == 1 && opened[0].position == 11);
    EXPECT_EQ(opened[1].position, 32);
    QTest::keySequence(lines, QKeySequence::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text(),
              u"… çam ve ilim yolu ışık ilim zor … (Sabri, Yaz, Ağaç)\n"
              "… çam ve ilim yolu ışık ilim zor … (Sabri, Yaz, Ağaç)\n");
}

TEST_F(ContextWindowTest, SavesAndSaysWhatWentWrong) {
    const auto save = [&](const QString& path) {
        dialogs.answerSavePath(path);
        child<QPushButton>("save")->click();
        return QTest::qWaitFor([&] { return child<QPushButton>("save")->isEnabled(); });
    };
    EXPECT_TRUE(save(file.filePath(u"liste.csv"_s)));
    EXPECT_EQ(test::readFile(file.filePath(u"liste.csv"_s)).count('\n'), 4);
    EXPECT_TRUE(dialogs.messages.empty());
    EXPECT_TRUE(save(file.filePath(u"yok/liste.csv"_s)));
    EXPECT_EQ(dialogs.messages.size(), 1u);
    file.execute(u"DROP TABLE tbl_Konu");
    EXPECT_TRUE(sortBy(ContextModel::Left));
    EXPECT_EQ(dialogs.messages.size(), 2u);
    EXPECT_EQ(child<QComboBox>("orders")->currentIndex(), 0);
}

TEST_F(ContextWindowTest, DistributionShowsZoomsOpensAndSaves) {
    DistributionWindow picture(library, dialogs, hits);
    picture.resize(900, 300);
    picture.show();
    auto* view = picture.findChild<DistributionView*>(u"strips"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return view->strips().size() == 2; }));
    QObject::connect(&picture, &DistributionWindow::hitWanted,
                     [this](const HitPlace& hit) { opened.push_back(hit); });
    QTest::keyClick(view, Qt::Key_Right);
    QTest::keyClick(view, Qt::Key_Right);
    QTest::keyClick(view, Qt::Key_Return);
    QTest::keyClick(view, Qt::Key_Down);
    QTest::keyClick(view, Qt::Key_Left);
    QTest::keyClick(view, Qt::Key_Return);
    ASSERT_EQ(opened.size(), 2u);
    EXPECT_TRUE(opened[0].topic.value == 1 && opened[0].position == 32 && opened[1].topic.value == 2);

    // The same by the mouse: the tick, then the name of the strip.
    const StripLayout layout(view->lanes(), view->strips(), view->fontMetrics(), view->viewport()->width());
    const QRect strip = layout.strip(0, layout.legendHeight());
    const int x = strip.left() + static_cast<int>(strip.width() * 10 / view->strips()[0].length);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(x, strip.center().y()));
    ASSERT_EQ(opened.size(), 3u);
    EXPECT_EQ(opened[2].position, 11);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(20, strip.center().y()));
    ASSERT_EQ(view->strips().size(), 1u);
    EXPECT_EQ(view->strips()[0].name, u"Ağaç");
    QTest::keyClick(view, Qt::Key_Escape);
    EXPECT_EQ(view->strips().size(), 2u);

    auto* table = picture.findChild<QTableView*>(u"table"_s);
    picture.findChild<QPushButton*>(u"asTable"_s)->click();
    EXPECT_EQ(table->model()->index(0, 0).data().toString(), u"Sabri, Yaz");
    EXPECT_EQ(table->model()->index(0, 2).data().toString(), u"2");
    QTest::keyClick(table, Qt::Key_Return);
    EXPECT_EQ(table->model()->index(0, 0).data().toString(), u"Ağaç");
    QTest::keyClick(table, Qt::Key_Return);
    EXPECT_EQ(opened.size(), 4u);

    for (const QString& name : {u"d.png"_s, u"d.svg"_s, u"yok/d.svg"_s}) {
        dialogs.answerSavePath(file.filePath(name));
        picture.findChild<QPushButton*>(u"save"_s)->click();
    }
    EXPECT_FALSE(QImage(file.filePath(u"d.png"_s)).isNull());
    EXPECT_TRUE(test::readFile(file.filePath(u"d.svg"_s)).contains("<svg"));
    EXPECT_EQ(dialogs.messages.size(), 1u);
}

TEST_F(ContextWindowTest, SummaryIsSavedInThreeForms) {
    const std::pair<QString, QByteArray> files[] = {
        {u"ozet.pdf"_s, "%PDF"}, {u"ozet.odt"_s, "PK"}, {u"ozet.html"_s, "<!DOCTYPE html>"}};
    for (const auto& [name, beginning] : files) {
        dialogs.answerSavePath(file.filePath(name));
        saveSummaryOf(library, hits, -1, dialogs, window.get());
        EXPECT_TRUE(test::readFile(file.filePath(name)).startsWith(beginning)) << name.toStdString();
    }
    dialogs.answerSavePath(file.filePath(u"yok/ozet.pdf"_s));
    saveSummaryOf(library, hits, -1, dialogs, window.get());
    EXPECT_EQ(dialogs.messages.size(), 1u);
}
