#include "search/study/hit_export.h"

#include <QFileInfo>
#include <algorithm>
#include <numeric>
#include <span>

#include "platform/core/file_writer.h"
#include "text/comparison.h"

namespace lirovan::search {

using namespace Qt::StringLiterals;
using platform::Result;

namespace {

constexpr qsizetype TextWidth = 60;
constexpr qsizetype Piece = 1 << 16;
constexpr qint64 ProgressStep = 256;
// Lines that are made topic by topic before they are written: some ten megabytes.
constexpr qsizetype LinesAtOnce = 20'000;

QString quoted(QString field) {
    // A spreadsheet would take it for a formula.
    if (!field.isEmpty() && QStringView(u"=+-@").contains(field.front())) field.prepend(u'\'');
    return u'"' + field.replace(u'"', u"\"\""_s) + u'"';
}

QString begin(HitFormat format, const QString& title) {
    switch (format) {
        case HitFormat::Csv:
            return u"\uFEFF\"Sol\";\"İsabet\";\"Sağ\";\"Kaynak\"\r\n"_s;
        case HitFormat::Html:
            return u"<!DOCTYPE html>\n<html lang=\"tr\"><head><meta charset=\"utf-8\"><title>%1</title>\n"
                   "<style>td{vertical-align:top}.sol{text-align:right}.isabet{font-weight:bold}"
                   ".kaynak{color:#555}</style></head>\n<body><h1>%1</h1>\n<table>\n"
                   "<tr><th>Sol</th><th>İsabet</th><th>Sağ</th><th>Kaynak</th></tr>\n"_s.arg(
                       title.toHtmlEscaped());
        default:
            return title + u"\n\n"_s;
    }
}

QString lineOf(HitFormat format, const HitLine& line) {
    switch (format) {
        case HitFormat::Csv:
            return quoted(line.left) + u';' + quoted(line.hit) + u';' + quoted(line.right) + u';' +
                   quoted(line.source) + u"\r\n"_s;
        case HitFormat::Html:
            return u"<tr><td class=\"sol\">"_s + line.left.toHtmlEscaped() + u"</td><td class=\"isabet\">"_s +
                   line.hit.toHtmlEscaped() + u"</td><td>"_s + line.right.toHtmlEscaped() +
                   u"</td><td class=\"kaynak\">"_s + line.source.toHtmlEscaped() + u"</td></tr>\n"_s;
        default:
            return line.left.right(TextWidth).rightJustified(TextWidth) + u"  "_s + line.hit + u"  "_s +
                   line.right.left(TextWidth) + u"  ("_s + line.source + u")\n"_s;
    }
}

QString end(HitFormat format) {
    return format == HitFormat::Html ? u"</table></body></html>\n"_s : QString();
}

// The lines of `hits` in that order. Nothing: `goOn`, asked now and then, ended it.
std::optional<QStringList> linesOf(HitFormat format, HitLines& lines, std::span<const quint32> hits,
                                   const std::function<bool(qint64 done)>& goOn) {
    // In a list by words each line may lie in another topic; hits are numbered topic by topic.
    std::vector<size_t> byTopic(hits.size());
    std::iota(byTopic.begin(), byTopic.end(), size_t(0));
    std::sort(byTopic.begin(), byTopic.end(), [hits](size_t a, size_t b) { return hits[a] < hits[b]; });
    QStringList made(static_cast<qsizetype>(hits.size()));
    qint64 done = 0;
    for (const size_t place : byTopic) {
        if (done++ % ProgressStep == 0 && !goOn(done - 1)) return std::nullopt;
        made[static_cast<qsizetype>(place)] = lineOf(format, lines.line(hits[place]));
    }
    return made;
}

}  // namespace

HitFormat formatOf(const QString& path) {
    const QString suffix = text::folded(QFileInfo(path).suffix());
    if (suffix == u"csv") return HitFormat::Csv;
    return suffix.startsWith(u"htm") ? HitFormat::Html : HitFormat::Text;
}

Result<bool> saveHits(HitLines& lines, const std::vector<quint32>& hits, const QString& title,
                      const QString& path, const HitProgress& progress) {
    const HitFormat format = formatOf(path);
    platform::FileWriter file(path);
    if (const auto opened = file.open(); !opened) return opened.error();
    const auto reading = platform::Transaction::beginReading(lines.library().database());
    QString text = begin(format, title);
    const qsizetype all = std::ssize(hits);
    for (qsizetype first = 0; first < all; first += LinesAtOnce) {
        const std::span<const quint32> part(hits.data() + first,
                                            static_cast<size_t>(std::min(LinesAtOnce, all - first)));
        const auto made =
            linesOf(format, lines, part, [&](qint64 done) { return progress(first + done, all); });
        if (!made) return false;
        for (const QString& line : *made) {
            text += line;
            if (text.size() < Piece) continue;
            if (const auto written = file.write(text.toUtf8()); !written) return written.error();
            text.resize(0);
        }
    }
    if (const auto written = file.write((text + end(format)).toUtf8()); !written) return written.error();
    if (const auto committed = file.commit(); !committed) return committed.error();
    return true;
}

}  // namespace lirovan::search
