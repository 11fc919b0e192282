// A sub-command of lirovan-kitaplik: how it is called, and what it does.
#pragma once

#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "platform/core/result.h"

namespace lirovan::tools {

enum class ExitStatus { Success = 0, Failure = 1, Usage = 2 };

/// The words behind a sub-command's name, sorted.
struct Arguments {
    QStringList positional;
    QMap<QString, QString> values;  ///< "--klasor DIR" gives values["klasor"]
    QSet<QString> flags;            ///< "--json" gives "json"

    bool has(QStringView flag) const { return flags.contains(flag.toString()); }
    std::optional<QString> value(QStringView option) const;
    /// A value or positional word as an id; an error for anything but a whole number above 0.
    static platform::Result<qint64> id(const QString& word, QStringView what);
};

struct Command {
    QStringView name;     ///< "konu"
    QStringView usage;    ///< "DOSYA KONUID --klasor DIR"
    QStringView summary;  ///< one line
    int minimum = 0;      ///< of positional words
    int maximum = 0;
    std::vector<QStringView> valueOptions;     ///< options that take the next word
    std::vector<QStringView> flagOptions;      ///< options that stand alone
    std::vector<QStringView> requiredOptions;  ///< of valueOptions
    std::function<ExitStatus(const Arguments&)> run;
};

/// Sorts the words of a call. The error is in words for the user. A word "--" ends the options.
platform::Result<Arguments> parseArguments(const Command& command, const QStringList& words);

/// Runs the sub-command that `words` begins with, or shows how the program or one sub-command is used: what
/// the table says of it.
ExitStatus runCommandLine(std::span<const Command> commands, const QStringList& words);

// What the sub-commands print. Texts leave as UTF-8; bytes leave as they are.

void printBytes(QByteArrayView bytes);
void printLine(const QString& line);
/// Prints the message to standard error and answers Failure.
ExitStatus fail(const platform::Error& error);
/// A note on standard error.
void printNote(const QString& line);
/// Waits for what was printed to leave; false where it could not (full disk, closed pipe).
bool flushOutput();

}  // namespace lirovan::tools
