// The windows that add books from files and take them out, on a real library file.
#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include "browse/ui/add_books_window.h"
#include "browse/ui/remove_books_window.h"
#include "platform/core/library_layout.h"
#include "support/book_lines.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::browse;
using namespace Qt::StringLiterals;
using test::FakeReader;

namespace {

QByteArray book(const QByteArray& title, char digest, const QByteArray& text = "<P>Söz söz söz.</P>") {
    return test::headLine(title, "Selin Ada", "urn:" + title, digest) + test::topicLine(0, "Bir", "") +
           test::topicLine(1, "Alt", text, 0, 1) + test::topicLine(2, "İki", text) + test::doneLine(3);
}

class BookWindowsTest : public testing::Test {
  protected:
    FakeReader reader;
    QString library = reader.path(u"kitaplar.vq"_s);

    BookWindowsTest() {
        const auto database = platform::Database::open(library, platform::OpenMode::Create);
        EXPECT_TRUE(platform::createLayout(*database, platform::LayoutKind::Library));
    }
    QString file(const QString& name, const QByteArray& lines) {
        return test::writeFile(reader.path(name), lines);
    }
    std::vector<data::AddedBook> books() const {
        return *data::addedBooks(*platform::Database::open(library, platform::OpenMode::ReadOnly));
    }
    template <class W>
    static W* find(QWidget& window, const QString& name) {
        return window.findChild<W*>(name);
    }
    static bool press(QWidget& window, const QString& button) {
        auto* found = find<QPushButton>(window, button);
        if (!QTest::qWaitFor([found] { return found->isEnabled(); })) return false;
        found->click();
        return true;
    }
};

}  // namespace

TEST_F(BookWindowsTest, ShowsWhatIsInTheFilesAndAddsWhatIsWanted) {
    const QStringList files = {file(u"a.epub"_s, book("Kıyı", 'a')), file(u"b.epub"_s, "bozuk\n"),
                               file(u"c.epub"_s, book("Deniz", 'b')), file(u"d.epub"_s, book("Göl", 'c'))};
    AddBooksWindow window(files, library, nullptr, reader.options);
    QSignalSpy changed(&window, &AddBooksWindow::libraryChanged);
    auto* list = find<QListWidget>(window, u"books"_s);
    ASSERT_TRUE(QTest::qWaitFor([list] { return list->count() == 4; }));
    EXPECT_EQ(list->item(0)->text(), u"Kıyı – Selin Ada"_s);
    EXPECT_TRUE(list->item(1)->text().startsWith(u"b.epub: "_s));
    EXPECT_EQ(find<QLabel>(window, u"count"_s)->text(), u"2 konu, 6 sözcük, 0 resim"_s);

    // Another author and title, and the level "Bir" with what is below it left out.
    auto* title = find<QLineEdit>(window, u"title"_s);
    title->selectAll();
    QTest::keyClicks(title, u"Sahil"_s);
    find<QTreeWidget>(window, u"outline"_s)->topLevelItem(0)->setCheckState(0, Qt::Unchecked);
    EXPECT_EQ(find<QLabel>(window, u"count"_s)->text(), u"1 konu, 3 sözcük, 0 resim"_s);
    list->item(2)->setCheckState(Qt::Unchecked);

    ASSERT_TRUE(press(window, u"add"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return changed.count() == 1; }));
    ASSERT_EQ(books().size(), 2U);
    EXPECT_EQ(books()[0].title, u"Sahil"_s);
    EXPECT_EQ(books()[0].topics, 1);
    EXPECT_EQ(books()[1].title, u"Göl"_s);
    EXPECT_EQ(find<QLabel>(window, u"state"_s)->text(), u"2 kitap eklendi. 1 dosya okunamadı."_s);
}

TEST_F(BookWindowsTest, ABookThatIsThereStaysUnlessTheReaderSaysOtherwise) {
    const QString path = file(u"a.epub"_s, book("Kıyı", 'a'));
    const struct {
        int choice;
        std::size_t books;
    } cases[] = {{0, 1}, {0, 1}, {1, 1}, {2, 2}};
    for (const auto& c : cases) {
        AddBooksWindow window({path}, library, nullptr, reader.options);
        auto* same = find<QComboBox>(window, u"same"_s);
        ASSERT_TRUE(QTest::qWaitFor([&] { return find<QPushButton>(window, u"add"_s)->isEnabled(); }));
        same->setCurrentIndex(c.choice);
        Q_EMIT same->activated(c.choice);
        ASSERT_TRUE(press(window, u"add"_s));
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return !find<QLabel>(window, u"state"_s)->text().startsWith(u"Ekl"); }));
        EXPECT_EQ(books().size(), c.books) << c.choice;
    }
}

TEST_F(BookWindowsTest, StopEndsAReaderThatHangsAndLeavesTheWindow) {
    FakeReader hanging("sleep 60");
    AddBooksWindow window({file(u"a.epub"_s, "x")}, library, nullptr, hanging.options);
    window.show();
    window.reject();
    EXPECT_TRUE(QTest::qWaitFor([&] { return find<QPushButton>(window, u"close"_s)->text() == u"&Kapat"; }));
    EXPECT_TRUE(window.isVisible());
    window.reject();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(BookWindowsTest, TakesABookOutOnlyAfterAYes) {
    {
        AddBooksWindow window({file(u"a.epub"_s, book("Kıyı", 'a'))}, library, nullptr, reader.options);
        ASSERT_TRUE(press(window, u"add"_s));
        ASSERT_TRUE(QTest::qWaitFor([&] { return window.added() == 1; }));
    }
    test::ScriptedDialogs dialogs;
    RemoveBooksWindow window(library, dialogs);
    QSignalSpy changed(&window, &RemoveBooksWindow::libraryChanged);
    EXPECT_EQ(find<QListWidget>(window, u"books"_s)->item(0)->text(), u"Kıyı – Selin Ada (2 konu)"_s);
    dialogs.answer(platform::Answer::No).answer(platform::Answer::Yes);
    ASSERT_TRUE(press(window, u"remove"_s));
    EXPECT_EQ(books().size(), 1U);
    ASSERT_TRUE(press(window, u"remove"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return changed.count() == 1; }));
    EXPECT_TRUE(books().empty());
    EXPECT_FALSE(find<QPushButton>(window, u"remove"_s)->isEnabled());
}
