// The search as it is described, step by step and without any thought of speed: what the fast one is compared
// with. All positions are 1-based, 0 is "not found".
#pragma once

#include <QString>
#include <QStringList>
#include <utility>
#include <vector>

#include "search/search_run.h"

namespace lirovan::reference {

using text::Comparison;

qsizetype find(const QString& text, const QString& what, qsizetype from, Comparison comparison);
bool isWholeWord(const QString& text, qsizetype position, qsizetype length);

bool matches(const search::SearchRun& run, const search::SearchOptions& options, const QString& text);

/// Counts and appends to `record`. Book and topic decide about the shortcut of the large books.
qint64 count(const search::SearchRun& run, const search::SearchOptions& options, const QString& text,
             qint64 topic, qint64 book, QString& record);

struct Page {
    QString text;
    int hits = 0;
    std::vector<std::pair<QString, QString>> colours;
};
Page highlight(QString text, const QStringList& words, Comparison comparison, bool wholeWord);

/// Passages of one topic. `phraseLength` -1: mark words. Stops after `limit` passages.
void passages(QString& output, QString text, const QString& book, const QString& heading,
              std::vector<qint64> positions, qsizetype phraseLength, int limit);

}  // namespace lirovan::reference
