// The program: chooses the application folder, shows the main window.
#include <QApplication>
#include <QCommandLineParser>
#include <QPalette>
#include <QStandardPaths>
#include <QTimer>

#include "platform/ui/icons.h"
#include "platform/ui/message_boxes.h"
#include "platform/ui/system_printing.h"
#include "shell/application_folder.h"
#include "shell/ui/KitaplarMDI.h"
#include "shell/ui/tour.h"
#include "shell/update_check.h"

using namespace Qt::StringLiterals;
using namespace lirovan;

namespace {

shell::FolderCandidates folderCandidates(const QCommandLineParser& parser, const QCommandLineOption& option) {
    const QString program = QCoreApplication::applicationDirPath();
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    return {parser.isSet(option) ? std::optional(parser.value(option)) : std::nullopt, program,
            program + u"/../share/lirovan"_s, data + u"/lirovan"_s};
}

/// Where the desktop brings no colours of its own, the accent is that of the program's drawings.
void setAccent() {
    const QColor stockAccent(48, 140, 198);
    QPalette palette = QApplication::palette();
    if (palette.color(QPalette::Highlight) != stockAccent) return;
    palette.setColor(QPalette::Highlight, QColor(0x2b, 0x6f, 0x78));
    palette.setColor(QPalette::Link, QColor(0x1d, 0x6b, 0x76));
    QApplication::setPalette(palette);
}

}  // namespace

int main(int argc, char** argv) {
    platform::WebEngine::prepare();
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"lirovan"_s);
    QApplication::setApplicationVersion(shell::BuiltInVersion.toString());
    QApplication::setDesktopFileName(u"lirovan"_s);
    QApplication::setWindowIcon(platform::applicationIcon());
    platform::installTranslations(application);
    setAccent();

    QCommandLineParser parser;
    parser.setApplicationDescription(u"Veskaran`nin Lirovan: kitap okuyucu"_s);
    const QCommandLineOption folderOption(u"klasor"_s, u"Kitapların bulunduğu klasör."_s, u"DIR"_s);
    parser.addOption(folderOption);
    QCommandLineOption tourOption(u"tur"_s, u"Programı gezdirir, her adımın resmini klasöre bırakır."_s,
                                  u"DIR"_s);
    tourOption.setFlags(QCommandLineOption::HiddenFromHelp);
    parser.addOption(tourOption);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.process(application);

    platform::MessageBoxes dialogs;
    platform::SystemPrinting printing;
    const auto folder = shell::applicationFolder(folderCandidates(parser, folderOption));
    if (!folder) {
        dialogs.show(platform::errorMessage(folder.error().message, u"Okuma Hatası"_s));
        return 1;
    }
    const auto calls = shell::systemRegistry();
    shell::reg_api registry(*calls);
    shell::KitaplarMDI window({*folder, dialogs, printing, registry, QStringLiteral(LIROVAN_UPDATE_SERVER),
                               QStringLiteral(LIROVAN_WEB_SITE)});
    if (!window.load()) return 1;
    if (parser.isSet(tourOption)) {
        QTimer::singleShot(0, &window, [&] {
            const bool complete = shell::Tour(window, parser.value(tourOption)).run();
            window.close();
            QApplication::exit(complete ? 0 : 1);
        });
    }
    return QApplication::exec();
}
