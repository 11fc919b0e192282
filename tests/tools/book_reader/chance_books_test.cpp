// Books made by chance: whatever their markup, contents list, files and code pages, each word of the source
// stands in the topics once.
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <random>

#include "support/epub_writer.h"
#include "tools/book_reader/reader_run.h"

namespace lirovan::test {

using namespace Qt::StringLiterals;
namespace {

class ChanceBook {
  public:
    explicit ChanceBook(unsigned seed) : random_(seed) {
        const int documents = 1 + below(4);
        for (int i = 0; i < documents; ++i) {
            file_ = "d" + QByteArray::number(i) + ".xhtml";
            QByteArray body;
            for (int block = 2 + below(6); block > 0; --block) body += this->block(0);
            book_.documents.push_back({file_, {}, {}, encoded(body)});
        }
        book_.navigation = "<ol>" + list(0) + "</ol>";
        if (below(3) == 0) {
            book_.ncx = points(0);
            book_.navigation.clear();
        }
    }
    const Epub& book() const { return book_; }
    const QStringList& words() const { return words_; }

  private:
    int below(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
    QByteArray word() {
        words_ += u"söz%1ğ"_s.arg(words_.size());
        return words_.back().toUtf8() + ' ';
    }
    // Some targets lie before, some after what comes earlier in the list; some nowhere.
    QByteArray target() {
        if (ids_.isEmpty() || below(8) == 0) return below(2) ? "yok.xhtml#a" : "d0.xhtml#yok";
        return below(4) == 0 ? QByteArray("d0.xhtml") : ids_[below(static_cast<int>(ids_.size()))];
    }
    QByteArray id() {
        if (below(4) != 0) return {};
        const QByteArray made = "i" + QByteArray::number(ids_.size());
        ids_ += file_ + '#' + made;
        return " id=\"" + made + '"';
    }
    QByteArray run(int depth) {
        static constexpr const char* inlines[] = {"i", "b", "span", "em", "code", "small", "q", "cite"};
        QByteArray text = word();
        for (int i = below(3); i > 0 && depth < 4; --i) {
            const QByteArray tag = inlines[below(std::size(inlines))];
            const QByteArray open = "<" + tag + id() + ">";
            text += open + run(depth + 1) + "</" + tag + ">" + word();
            if (below(5) == 0) text += "<br/>" + word();
        }
        return text;
    }
    QByteArray block(int depth) {
        static constexpr const char* blocks[] = {"div", "section", "blockquote", "p",     "p", "h2",
                                                 "pre", "ul",      "ol",         "table", "dl"};
        const QByteArray tag = blocks[depth > 3 ? 3 : below(std::size(blocks))];
        const QByteArray open = "<" + tag + id() + ">";
        QByteArray inside;
        const auto several = [&](const QByteArray& item) {
            for (int i = 1 + below(3); i > 0; --i) {
                const QByteArray start = "<" + item + id() + ">";
                inside += start + (below(3) == 0 ? block(depth + 1) : run(0)) + "</" + item + ">";
            }
        };
        if (tag == "ul" || tag == "ol")
            several("li");
        else if (tag == "dl")
            several("dd");
        else if (tag == "table")
            inside = "<tr>", several("td"), inside += "</tr>";
        else if (tag == "p" || tag == "h2" || tag == "pre")
            inside = run(0);
        else
            for (int i = 1 + below(3); i > 0; --i) inside += below(4) == 0 ? run(0) : block(depth + 1);
        return open + inside + "</" + tag + ">";
    }
    QByteArray list(int depth) {
        QByteArray items;
        for (int i = 1 + below(5); i > 0; --i) {
            const QByteArray title = "Ad" + QByteArray::number(below(6));
            items += below(6) == 0 ? "<li><span>" + title + "</span>"
                                   : "<li><a href=\"" + target() + "\">" + title + "</a>";
            if (depth < 3 && below(2)) items += "<ol>" + list(depth + 1) + "</ol>";
            items += "</li>";
        }
        return items;
    }
    QByteArray points(int depth) {
        QByteArray items;
        for (int i = 1 + below(5); i > 0; --i) {
            items += "<navPoint><navLabel><text>Ad" + QByteArray::number(below(6)) +
                     "</text></navLabel><content src=\"" + target() + "\"/>";
            if (depth < 3 && below(2)) items += points(depth + 1);
            items += "</navPoint>";
        }
        return items;
    }
    QByteArray encoded(const QByteArray& body) {
        const QString page =
            u"<html xmlns=\"http://www.w3.org/1999/xhtml\"><head><title>x</title></head><body>"_s +
            QString::fromUtf8(body) + u"</body></html>"_s;
        if (below(4) != 0) return page.toUtf8();
        QByteArray wide = "\xFE\xFF";
        for (const QChar unit : page) wide += char(unit.unicode() >> 8), wide += char(unit.unicode() & 0xFF);
        return wide;
    }

    std::mt19937 random_;
    QByteArray file_;
    QList<QByteArray> ids_;
    QStringList words_;
    Epub book_;
};

TEST(ChanceBooks, LoseNoWordAndRepeatNone) {
    const QTemporaryDir folder;
    static const QRegularExpression word(u"söz\\d+ğ"_s);
    for (unsigned seed = 1; seed <= 80; ++seed) {
        const ChanceBook made(seed);
        const ReaderRun run = readBook(writeZip(folder.filePath(u"k.epub"_s), entries(made.book())));
        ASSERT_EQ(run.status, 0) << "seed " << seed << ": " << run.failure();
        QStringList found;
        for (const QJsonObject& topic : run.of("konu"))
            for (auto match = word.globalMatch(topic[u"metin"].toString()); match.hasNext();)
                found += match.next().captured();
        QStringList expected = made.words();
        found.sort();
        expected.sort();
        ASSERT_EQ(found.join(u' ').toStdString(), expected.join(u' ').toStdString()) << "seed " << seed;
    }
}

}  // namespace
}  // namespace lirovan::test
