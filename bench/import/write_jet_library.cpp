// write-jet-library FILE TOPICS BYTES — a Jet 4 library of made-up Turkish text. The same call always gives
// the same file.
#include <QFile>
#include <QStringList>
#include <cstdio>
#include <random>

#include "support/jet_writer.h"

namespace {

using namespace lirovan::test;
using namespace Qt::StringLiterals;

// About `units` units of HTML paragraphs.
QString topicText(std::mt19937& random, qsizetype units) {
    static const QStringList words =
        u"ışık âlem söz güneş çınar bağ yol ömür deniz kitap ve bir ile niçin "
        "sabır hikmet dağ rüzgâr gönül şehir"_s.split(u' ');
    QString text;
    while (text.size() < units) {
        text += u"<P>"_s;
        for (unsigned i = 0, count = 20 + random() % 60; i < count; ++i)
            text += words[static_cast<qsizetype>(random() % static_cast<unsigned>(words.size()))] + u' ';
        text += u"</P>\r\n"_s;
    }
    return text;
}

QByteArray library(int topics, qint64 bytes) {
    constexpr int topicsOfBook = 100;
    std::mt19937 random(1254);
    QList<JetRow> books, headings, texts;
    for (int topic = 0; topic < topics; ++topic) {
        const qint32 book = topic / topicsOfBook + 1;
        if (topic % topicsOfBook == 0) books += JetRow{{book, u"Kitap %1"_s.arg(book), qint32(1), book}};
        headings += JetRow{{topic, book, u"KONU BAŞLIĞI %1"_s.arg(topic), topic}};
        // Some texts are moved or deleted, as in a file with a history.
        const JetRowState state = topic % 40 == 7 ? JetRowState::Moved : JetRowState::Normal;
        const auto average =
            static_cast<quint32>(bytes / topics * 8 / 9);  // of nine bytes one is a second byte
        texts += JetRow{{topic, topic, topicText(random, average / 2 + random() % (average + 1)), qint32(1)},
                        state};
    }
    using enum JetType;
    const auto column = [](const char* name, JetType type) {
        return JetColumn{QString::fromLatin1(name), type};
    };
    return jetFile(
        {{u"tbl_Yazar"_s, {column("YazarID", Long), column("Yazar", Text)}, {{{1, u"Yazar"_s}}}},
         {u"tbl_Kitaplar"_s,
          {column("KitapID", Long), column("KitapAdi", Text), column("YazarID", Long),
           column("KitapSiraID", Long)},
          books},
         {u"tbl_KonuBaslik"_s,
          {column("KonuID", Long), column("KitapID", Long), column("KonuBaslik", Text),
           column("Konu_Sira", Long)},
          headings},
         {u"tbl_Konu"_s,
          {column("ID", Long), column("KonuID", Long), column("Konu", Memo), column("Parca", Long)},
          texts}});
}

}  // namespace

int main(int argc, char** argv) {
    const int topics = argc == 4 ? QByteArray(argv[2]).toInt() : 0;
    const qint64 bytes = argc == 4 ? QByteArray(argv[3]).toLongLong() : 0;
    if (topics <= 0 || bytes <= 0) {
        std::fputs("usage: write-jet-library FILE TOPICS BYTES\n", stderr);
        return 2;
    }
    QFile file(QFile::decodeName(argv[1]));
    const QByteArray content = library(topics, bytes);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() ? 0 : 1;
}
