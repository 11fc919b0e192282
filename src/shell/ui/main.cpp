// The program: chooses the application folder, shows the main window.
#include <QApplication>
#include <QCommandLineParser>
#include <QStandardPaths>
#include <algorithm>
#include <cstdio>

#include "platform/core/version.h"
#include "platform/ui/memory_bounds.h"
#include "platform/ui/message_boxes.h"
#include "platform/ui/start_notices.h"
#include "platform/ui/system_printing.h"
#include "shell/application_folder.h"
#include "shell/ui/KitaplarMDI.h"
#include "shell/ui/appearance.h"
#include "shell/ui/document_mode.h"

using namespace Qt::StringLiterals;
using namespace lirovan;

namespace {

/// The command line. Made once an application is there: it speaks the application's language.
struct Arguments {
    QCommandLineParser parser;
    const QCommandLineOption folder{u"klasor"_s, u"Kitapların bulunduğu klasör."_s, u"KLASÖR"_s};
    const QCommandLineOption help{{u"h"_s, u"help"_s}, u"Bu yardımı yazar."_s};
    const QCommandLineOption version{{u"v"_s, u"version"_s}, u"Sürümü yazar."_s};

    Arguments() {
        parser.setApplicationDescription(u"Veskaran`nin Lirovan: kitap okuyucu"_s);
        parser.addOptions({folder, help, version});
    }
};

/// Help and version are printed where there is no display, too: without the windows' application.
void answerInText(int argc, char** argv) {
    constexpr QLatin1StringView Questions[] = {"-h"_L1, "--help"_L1, "-v"_L1, "--version"_L1};
    const bool asked = std::any_of(argv, argv + argc, [&Questions](const char* word) {
        return std::count(std::begin(Questions), std::end(Questions), QLatin1StringView(word)) > 0;
    });
    if (!asked) return;
    QCoreApplication application(argc, argv);
    platform::installTranslations(application);
    Arguments arguments;
    arguments.parser.parse(QCoreApplication::arguments());
    // Each ends the program.
    if (arguments.parser.isSet(arguments.version)) arguments.parser.showVersion();
    if (arguments.parser.isSet(arguments.help)) arguments.parser.showHelp();
}

/// Is there a screen to show windows on? Where the platform is named, the toolkit tells what is wrong with
/// it.
bool hasScreen(int argc, char** argv) {
    const bool named = std::any_of(
        argv, argv + argc, [](const char* word) { return "-platform"_L1 == QLatin1StringView(word); });
    return named || qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

shell::FolderCandidates folderCandidates(const Arguments& arguments) {
    const QString program = QCoreApplication::applicationDirPath();
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const bool given = arguments.parser.isSet(arguments.folder);
    return {given ? std::optional(arguments.parser.value(arguments.folder)) : std::nullopt, program,
            program + u"/../share/lirovan"_s, data + u"/lirovan"_s};
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication::setApplicationName(u"lirovan"_s);
    QCoreApplication::setApplicationVersion(platform::version());
    platform::hideStartNotices();
    answerInText(argc, argv);
    if (shell::isDocumentMode(argc, argv)) return shell::writeDocument(argc, argv);
#ifdef Q_OS_LINUX
    if (!hasScreen(argc, argv)) {
        std::fputs("lirovan: Ekran yok; program bir masaüstü oturumunda başlatılır.\n", stderr);
        return 1;
    }
#endif
    platform::WebEngine::prepare();
    QApplication application(argc, argv);
    platform::boundMemory();
    shell::dress(application);

    Arguments arguments;
    arguments.parser.process(application);

    platform::MessageBoxes dialogs;
    platform::SystemPrinting printing;
    const auto folder = shell::applicationFolder(folderCandidates(arguments));
    if (!folder) {
        dialogs.show(platform::errorMessage(folder.error().message, u"Okuma Hatası"_s));
        return 1;
    }
    shell::reg_api registry;
    shell::KitaplarMDI window({*folder, dialogs, printing, registry, QStringLiteral(LIROVAN_UPDATE_SERVER),
                               QStringLiteral(LIROVAN_WEB_SITE)});
    if (!window.load()) return 1;
    return QApplication::exec();
}
