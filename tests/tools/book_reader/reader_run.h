// Runs the book reader and gives what it says in a form that tests can compare.
#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <string>
#include <vector>
#include "support/places.h"

namespace lirovan::test {

struct ReaderRun {
    int status = -1;
    std::vector<QJsonObject> lines;

    std::vector<QJsonObject> of(const char* kind) const {
        std::vector<QJsonObject> found;
        for (const QJsonObject& line : lines)
            if (line[u"tur"].toString() == QString::fromLatin1(kind)) found.push_back(line);
        return found;
    }
    std::string failure() const {
        return lines.empty() ? "(no line)" : lines.back()[u"metin"].toString().toStdString();
    }
    std::string book(const char* key) const {
        const auto found = of("kitap");
        return found.empty() ? failure()
                             : found.front()[QLatin1StringView(key)].toVariant().toString().toStdString();
    }
    /// One line a topic: two blanks a level, title, ": ", text.
    std::string topics() const {
        std::string all;
        for (const QJsonObject& line : of("konu"))
            all += std::string(static_cast<size_t>(2 * line[u"derinlik"].toInt()), ' ') +
                   line[u"baslik"].toString().toStdString() + ": " + line[u"metin"].toString().toStdString() +
                   "\n";
        return status == 0 ? all : failure();
    }
    /// The text of the only topic, or what else there is.
    std::string text() const {
        const auto found = of("konu");
        return found.size() == 1 ? found.front()[u"metin"].toString().toStdString() : topics();
    }
};

inline ReaderRun readBook(const QString& path, const QStringList& arguments = {}) {
    QProcess reader;
    reader.start(test::builtProgram(QStringLiteral("lirovan-kitap-oku")), QStringList{path} + arguments);
    ReaderRun run;
    constexpr int limit = 60'000;
    if (!reader.waitForFinished(limit) || reader.exitStatus() != QProcess::NormalExit) return run;
    run.status = reader.exitCode();
    for (const QByteArray& line : reader.readAllStandardOutput().split('\n'))
        if (!line.isEmpty()) run.lines.push_back(QJsonDocument::fromJson(line).object());
    return run;
}

}  // namespace lirovan::test
