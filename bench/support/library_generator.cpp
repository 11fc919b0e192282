#include "support/library_generator.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include "data/library_writer.h"

namespace lirovan::bench {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {

// The distributions of the standard library differ from one implementation to another; the engine does not.
class Dice {
  public:
    explicit Dice(quint32 seed) : engine_(seed) {}
    double unit() { return engine_() / 4294967296.0; }
    int below(int limit) { return static_cast<int>(unit() * limit); }
    bool oneIn(int chances) { return below(chances) == 0; }

  private:
    std::mt19937 engine_;
};

struct Letter {
    char16_t letter;
    double frequency;  // per cent of running Turkish text
};

constexpr Letter Consonants[] = {{u'n', 7.5}, {u'r', 6.7}, {u'l', 5.9}, {u'k', 4.7}, {u'd', 4.7}, {u'm', 3.8},
                                 {u'y', 3.3}, {u't', 3.3}, {u's', 3.0}, {u'b', 2.8}, {u'ş', 1.8}, {u'z', 1.5},
                                 {u'g', 1.3}, {u'h', 1.2}, {u'ç', 1.2}, {u'ğ', 1.1}, {u'v', 1.0}, {u'c', 1.0},
                                 {u'p', 0.9}, {u'f', 0.5}, {u'j', 0.03}};
constexpr Letter BackVowels[] = {{u'a', 11.7}, {u'ı', 5.1}, {u'u', 3.4}, {u'o', 2.5}};
constexpr Letter FrontVowels[] = {{u'e', 9.0}, {u'i', 8.3}, {u'ü', 1.9}, {u'ö', 0.9}};

template <size_t N>
char16_t draw(Dice& dice, const Letter (&letters)[N]) {
    double sum = 0;
    for (const Letter& letter : letters) sum += letter.frequency;
    double at = dice.unit() * sum;
    for (const Letter& letter : letters)
        if ((at -= letter.frequency) < 0) return letter.letter;
    return letters[0].letter;
}

QString makeWord(Dice& dice) {
    const bool back = dice.oneIn(2);
    QString word;
    const int syllables = 1 + dice.below(4);
    for (int i = 0; i < syllables; ++i) {
        if (i > 0 || !dice.oneIn(4)) word += QChar(draw(dice, Consonants));
        word += QChar(back ? draw(dice, BackVowels) : draw(dice, FrontVowels));
        if (dice.oneIn(2)) word += QChar(draw(dice, Consonants));
    }
    if (dice.oneIn(40)) word.replace(u'a', u'â').replace(u'i', u'î');
    return word;
}

class Writer {
  public:
    explicit Writer(quint32 seed) : dice_(seed) {
        constexpr int vocabulary = 30000;
        double sum = 0;
        for (int rank = 1; rank <= vocabulary; ++rank) {
            words_.push_back(makeWord(dice_));
            sums_.push_back(sum += 1.0 / rank);
        }
    }

    const QString& word() {
        const double at = dice_.unit() * sums_.back();
        return words_[static_cast<size_t>(std::lower_bound(sums_.begin(), sums_.end(), at) - sums_.begin())];
    }

    QString title() {
        QString title;
        for (int i = 0, count = 2 + dice_.below(5); i < count; ++i)
            title += (i ? u" "_s : QString()) + upper(word());
        return title;
    }

    // About `bytes` bytes of UTF-8.
    QString text(qint64 bytes) {
        QString text = u"<P>"_s;
        // One unit in ten of such text takes two bytes.
        while (text.size() * 11 / 10 < bytes) {
            sentence(text);
            text += dice_.oneIn(6) ? u"</P>\r\n<P>"_s : u" "_s;
            if (dice_.oneIn(30)) text += u"<br>"_s;
        }
        return text + u"</P>"_s;
    }

    Dice& dice() { return dice_; }

  private:
    static QString upper(QString word) { return word.replace(u'i', u'İ').replace(u'ı', u'I').toUpper(); }

    void sentence(QString& text) {
        const bool quoted = dice_.oneIn(12);
        if (quoted) text += u"&quot;"_s;
        for (int i = 0, count = 4 + dice_.below(16); i < count; ++i) {
            const QString& next = word();
            if (i > 0) text += dice_.oneIn(9) ? u", "_s : u" "_s;
            if (i == 0)
                text += upper(next.left(1)) + next.mid(1);
            else if (dice_.oneIn(60))
                text += u"<B>"_s + next + u"</B>"_s;
            else
                text += next;
        }
        text += quoted ? u".&quot;"_s : u"."_s;
    }

    Dice dice_;
    std::vector<QString> words_;
    std::vector<double> sums_;
};

Result<void> write(data::LibraryWriter& file, const GeneratorOptions& options) {
    Writer writer(options.seed);
    for (int author = 1; author <= options.authors; ++author)
        if (const auto added = file.add(data::Author{data::AuthorId{author}, writer.title()}); !added)
            return added;
    for (int book = 1; book <= options.books; ++book) {
        const data::AuthorId author{1 + book % options.authors};
        const auto added = file.add(data::Book{data::BookId{book}, writer.title(), author, double(book)});
        if (!added) return added;
    }
    const double average = double(options.textBytes) / options.topics;
    for (int topic = 1; topic <= options.topics; ++topic) {
        const data::TopicId id{topic};
        const data::BookId book{1 + (topic - 1) * options.books / options.topics};
        const auto added = file.add(data::Heading{id, book, writer.title(), double(topic)});
        if (!added) return added;
        const auto bytes = static_cast<qint64>(average * (0.1 + 1.8 * writer.dice().unit()));
        const auto text = file.add(data::TopicText{id, writer.text(bytes), 1});
        if (!text) return text;
    }
    return file.finish();
}

}  // namespace

Result<void> generateLibrary(const QString& path, const GeneratorOptions& options) {
    Result<data::LibraryWriter> file = data::LibraryWriter::create(path);
    if (!file) return file.error();
    return write(*file, options);
}

QString standardLibrary() {
    const QString path = QStringLiteral(LIROVAN_BENCH_DIR "/kitaplar-15000.vq");
    if (QFileInfo::exists(path)) return path;
    const QString unfinished = path + u".yeni"_s;
    QFile::remove(unfinished);
    const Result<void> made = generateLibrary(unfinished);
    if (!made || !QFile::rename(unfinished, path)) {
        std::fprintf(stderr, "%s\n", made ? "rename" : qPrintable(made.error().message));
        std::exit(1);
    }
    return path;
}

}  // namespace lirovan::bench
