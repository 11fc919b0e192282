// From a file to a search, through the companion: nothing that stands in the book is out of reach, and a
// library is never the worse for a file that is no book.
#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <QStandardPaths>

#include "support/epub_writer.h"
#include "support/places.h"
#include "tools/book_reader/reader_run.h"

namespace lirovan::test {
namespace {

using namespace Qt::StringLiterals;

class Adding : public ::testing::Test {
  protected:
    struct Called {
        int status = -1;
        QByteArray out, error;
    };
    static Called call(const QStringList& words) {
        QProcess companion;
        companion.start(test::builtProgram(u"lirovan-kitaplik"_s), words);
        if (!companion.waitForFinished(60'000) || companion.exitStatus() != QProcess::NormalExit) return {};
        return {companion.exitCode(), companion.readAllStandardOutput(), companion.readAllStandardError()};
    }
    QString path(const QString& name) const { return folder_.filePath(name); }
    Called add(const QString& file) { return call({u"ekle"_s, library, file}); }
    /// How often a word is found as a whole one; -1: the search failed.
    int found(const QString& word) {
        const Called search = call({u"ara"_s, library, word, u"--tum-kelime"_s});
        const QJsonObject answer = QJsonDocument::fromJson(search.out).object();
        return search.status == 0 ? answer[u"bulunan"].toInt() : -1;
    }

    QTemporaryDir folder_;
    const QString library = path(u"k.vq"_s);
};

TEST_F(Adding, EveryWordIsFoundHoweverTheFileWritesIt) {
    const struct {
        const char* markup;
        const char* word;
    } cases[] = {
        {"go\xcc\x88lge", "gölge"},                  // o and a mark above it
        {"I\xcc\x87stanbul", "İstanbul"},            // I and a dot above it
        {"s\xc3\xa2nat&#173;k&#xE2;r", "sânatkâr"},  // a soft hyphen
        {"deniz&#x200B;ci", "denizci"},              // a blank of no width
        {"<span>ki</span>tap", "kitap"},
        {"<b>yan</b><i>kı</i>", "yankı"},
        {"Ali\xe2\x80\x99nin", "Ali'nin"},
        {"\xe2\x80\x9c"
         "fener\xe2\x80\x9d",
         "fener"},
        {"\xef\xac\x81rtına", "fırtına"},  // one sign for f and i: told apart below
        {"on&#xA0;bir&#xA0;kayık", "kayık"},
        {"IŞIKLAR", "ışıklar"},
        {"<a href=\"http://x.y/\">bağlantı</a>", "bağlantı"},
        {"yokuş<br/>iniş", "iniş"},
        {"martı<sup>12</sup>", "martı"},
        {"<q>alıntı</q>", "alıntı"},
        {"&ccedil;ınar", "çınar"},
    };
    QByteArray body;
    for (const auto& one : cases) body += "<p>önce " + QByteArray(one.markup) + " sonra</p>";
    body += "<table><tr><th>başköşe</th></tr><tr><td>hücre</td></tr></table><ul><li>madde</li></ul>";
    ASSERT_EQ(add(writeZip(path(u"a.epub"_s), entries({{{"a.xhtml", body}}}))).status, 0);
    for (const auto& one : cases) {
        const QString word = QString::fromUtf8(one.word);
        // The ligature is f and i with a dot, whatever the word means to say.
        EXPECT_EQ(found(word == u"fırtına" ? u"firtına"_s : word), 1) << one.word;
    }
    for (const char* word : {"başköşe", "hücre", "madde", "önce", "sonra"})
        EXPECT_EQ(found(QString::fromUtf8(word)), 1) << word;
}

TEST_F(Adding, WordsOfTableHeadsComeThroughPandoc) {
    if (QStandardPaths::findExecutable(u"pandoc"_s).isEmpty()) GTEST_SKIP() << "pandoc is not installed";
    const QString source =
        writeFile(path(u"a.md"_s), "# Bir\n\n| Maltaşı | Yerköy |\n|---|---|\n| Kâğıt | İzmit |\n");
    for (const QString& format : {u"odt"_s, u"docx"_s, u"rtf"_s}) {
        const QString file = path(u"a."_s + format);
        ASSERT_EQ(QProcess::execute(u"pandoc"_s, {u"-s"_s, source, u"-o"_s, file}), 0);
        const ReaderRun run = readBook(file);
        EXPECT_EQ(run.book("ad"), "a") << "the file's name, not that of a temporary one";
        for (const char* word : {"Maltaşı", "Yerköy", "Kâğıt", "İzmit"})
            EXPECT_NE(run.topics().find(word), std::string::npos) << format.toStdString() << ' ' << word;
    }
}

TEST_F(Adding, TitlesThatTopicsShareHaveThatOfTheirParentBeforeThem) {
    const EpubDocument one{"a.xhtml", "<p id=\"b\">bir</p><p id=\"c\">iki</p><p id=\"d\">üç</p>"};
    const ReaderRun run = readBook(
        writeZip(path(u"a.epub"_s), entries({{one},
                                             "<ol><li><span>Kış</span><ol><li><a "
                                             "href=\"a.xhtml#b\">Giriş</a></li></ol></li><li><span>Yaz</span>"
                                             "<ol><li><a href=\"a.xhtml#c\">GİRİŞ</a></li><li><a "
                                             "href=\"a.xhtml#d\">Son</a></li></ol></li></ol>"})));
    EXPECT_EQ(run.topics(),
              "Kış: \n  Kış – Giriş: <P>bir</P>\nYaz: \n  Yaz – GİRİŞ: <P>iki</P>\n  Son: <P>üç</P>\n");
}

TEST_F(Adding, ALibraryIsNoneTheWorseForWhatIsNoBook) {
    const auto good = entries({{{"a.xhtml", "<p>söz</p>"}}});
    ASSERT_EQ(add(writeZip(path(u"iyi.epub"_s), good)).status, 0);
    const QByteArray before = readFile(library);
    const auto epub = [&](const QByteArray& page) { return entries({{{"a.xhtml", {}, {}, page}}}); };
    auto leadsOut = good, bomb = good, encrypted = good;
    leadsOut.push_back({"../../x", "x"});
    bomb.push_back({"b.xhtml", QByteArray(100 << 20, ' ')});
    encrypted.push_back(
        {"META-INF/encryption.xml",
         "<encryption><EncryptionMethod Algorithm=\"http://www.w3.org/2001/04/xmlenc#aes128-cbc\"/>"
         "</encryption>"});
    const QByteArray packed = readFile(path(u"iyi.epub"_s));
    const QString files[] = {
        writeZip(path(u"disari.epub"_s), leadsOut),
        writeZip(path(u"bomba.epub"_s), bomb),
        writeZip(path(u"sifreli.epub"_s), encrypted),
        writeZip(path(u"derin.epub"_s), epub("<html><body>" + QByteArray("<b>").repeated(100'000))),
        writeZip(path(u"gulen.epub"_s),
                 epub("<!DOCTYPE html [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;&a;\">]><html>&b;</html>")),
        writeFile(path(u"yarim.epub"_s), packed.left(packed.size() / 2)),
        writeFile(path(u"bos.epub"_s), {}),
        writeFile(path(u"bos.txt"_s), " \r\n"),
        writeFile(path(u"bozuk.docx"_s), "PK\x03\x04"),
        writeFile(path(u"ikili.odt"_s), QByteArray(1000, '\0')),
        path(u"yok.epub"_s),
    };
    for (const QString& file : files) {
        const Called called = add(file);
        EXPECT_EQ(called.status, 1) << file.toStdString();
        // "program: file: sentence."
        EXPECT_TRUE(called.error.startsWith("lirovan-kitaplik: " + file.toUtf8() + ": ") &&
                    called.error.trimmed().endsWith('.'))
            << called.error.toStdString();
        EXPECT_EQ(called.out, "");
        EXPECT_TRUE(readFile(library) == before) << file.toStdString();
    }
    EXPECT_EQ(QDir(folder_.path()).entryList({u"k.vq*"_s}, QDir::Files | QDir::Hidden),
              QStringList{u"k.vq"_s});
}

}  // namespace
}  // namespace lirovan::test
