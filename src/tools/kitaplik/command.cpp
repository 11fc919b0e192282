#include "tools/kitaplik/command.h"

#include <QByteArray>
#include <algorithm>
#include <cstdio>

#include "platform/core/version.h"

namespace lirovan::tools {

using namespace Qt::StringLiterals;
using platform::Error;
using platform::Result;

namespace {

bool contains(const std::vector<QStringView>& names, QStringView name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

constexpr QStringView ExitText =
    u"Çıkış: 0 başarılı, 1 hata, 2 yanlış kullanım. İletiler standart hataya yazılır.";

QString callText(const Command& command) {
    return u"Kullanım: lirovan-kitaplik %1 %2"_s.arg(command.name, command.usage);
}

QString usageText(const Command& command) {
    return callText(command) + u"\n\n%1\n\n%2"_s.arg(command.summary, ExitText);
}

QString usageText(std::span<const Command> commands) {
    QString text =
        u"Kullanım: lirovan-kitaplik KOMUT …\n"
        "          lirovan-kitaplik KOMUT --help\n"
        "          lirovan-kitaplik --help | --version\n\n"_s;
    for (const Command& command : commands)
        text += u"  %1 %2\n      %3\n"_s.arg(command.name, command.usage, command.summary);
    return text + u"\n%1"_s.arg(ExitText);
}

QString versionText() {
    return u"lirovan-kitaplik "_s + platform::version();
}

ExitStatus usageError(const QString& message, const QString& usage) {
    printNote(message);
    printNote(usage);
    return ExitStatus::Usage;
}

Result<void> parseOption(const Command& command, const QString& option, const QStringList& words,
                         qsizetype& at, Arguments& arguments) {
    if (contains(command.flagOptions, option)) {
        arguments.flags += option;
        return {};
    }
    if (!contains(command.valueOptions, option)) return Error{u"“--%1” diye bir seçenek yok."_s.arg(option)};
    if (at + 1 >= words.size()) return Error{u"“--%1” seçeneğinin değeri eksik."_s.arg(option)};
    if (arguments.values.contains(option)) return Error{u"“--%1” seçeneği iki kez verilmiş."_s.arg(option)};
    arguments.values[option] = words[++at];
    return {};
}

// The words for help and version are the usual ones of the command line; they answer wherever an option may
// stand.
bool isHelp(const QString& word) {
    return word == u"--help" || word == u"-h" || word == u"--yardim";
}

bool isVersion(const QString& word) {
    return word == u"--version";
}

ExitStatus answer(const QString& text) {
    printLine(text);
    return flushOutput() ? ExitStatus::Success : fail({u"Çıktı yazılamadı."_s});
}

// Answers a question for help or version among the words of a command, unless the word is an option's value.
std::optional<ExitStatus> answerQuestion(const Command& command, const QStringList& words) {
    for (qsizetype at = 0; at < words.size() && words[at] != u"--"; ++at) {
        if (isHelp(words[at])) return answer(usageText(command));
        if (isVersion(words[at])) return answer(versionText());
        if (words[at].startsWith(u"--") && contains(command.valueOptions, QStringView(words[at]).mid(2)))
            ++at;
    }
    return std::nullopt;
}

}  // namespace

std::optional<QString> Arguments::value(QStringView option) const {
    const auto found = values.find(option.toString());
    return found == values.end() ? std::nullopt : std::optional(*found);
}

Result<qint64> Arguments::id(const QString& word, QStringView what) {
    bool isNumber = false;
    const qint64 id = word.toLongLong(&isNumber);
    if (!isNumber || id <= 0) return Error{u"%1 sıfırdan büyük bir tam sayı olmalı: “%2”."_s.arg(what, word)};
    return id;
}

Result<Arguments> parseArguments(const Command& command, const QStringList& words) {
    Arguments arguments;
    bool optionsEnded = false;
    for (qsizetype at = 0; at < words.size(); ++at) {
        const QString& word = words[at];
        if (!optionsEnded && word == u"--") {
            optionsEnded = true;
        } else if (!optionsEnded && word.startsWith(u"--")) {
            const Result<void> parsed = parseOption(command, word.mid(2), words, at, arguments);
            if (!parsed) return parsed.error();
        } else {
            arguments.positional += word;
        }
    }
    if (arguments.positional.size() < command.minimum) return Error{u"Eksik değer."_s};
    if (arguments.positional.size() > command.maximum)
        return Error{u"Fazla değer: “%1”."_s.arg(arguments.positional[command.maximum])};
    for (const QStringView option : command.requiredOptions)
        if (!arguments.values.contains(option.toString()))
            return Error{u"“--%1” seçeneği eksik."_s.arg(option)};
    return arguments;
}

ExitStatus runCommandLine(std::span<const Command> commands, const QStringList& words) {
    if (words.isEmpty()) return usageError(u"Komut eksik."_s, usageText(commands));
    if (isHelp(words[0])) return answer(usageText(commands));
    if (isVersion(words[0])) return answer(versionText());
    const auto command = std::find_if(commands.begin(), commands.end(),
                                      [&](const Command& candidate) { return candidate.name == words[0]; });
    if (command == commands.end())
        return usageError(u"“%1” diye bir komut yok."_s.arg(words[0]), usageText(commands));
    if (const auto answered = answerQuestion(*command, words.mid(1))) return *answered;
    const Result<Arguments> arguments = parseArguments(*command, words.mid(1));
    if (!arguments) return usageError(arguments.error().message, callText(*command));
    const ExitStatus status = command->run(*arguments);
    if (!flushOutput() && status == ExitStatus::Success) return fail({u"Çıktı yazılamadı."_s});
    return status;
}

void printBytes(QByteArrayView bytes) {
    std::fwrite(bytes.data(), 1, static_cast<size_t>(bytes.size()), stdout);
}

void printLine(const QString& line) {
    printBytes(line.toUtf8());
    printBytes("\n");
}

void printNote(const QString& line) {
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
}

ExitStatus fail(const Error& error) {
    printNote(u"lirovan-kitaplik: "_s + error.message);
    return ExitStatus::Failure;
}

bool flushOutput() {
    return std::fflush(stdout) == 0 && !std::ferror(stdout);
}

}  // namespace lirovan::tools
