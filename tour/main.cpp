// lirovan-tour FOLDER DIR: the tour over the application folder FOLDER; exit status 1 where a step failed.
#include <QApplication>
#include <QTimer>
#include <cstdio>

#include "platform/ui/memory_bounds.h"
#include "platform/ui/message_boxes.h"
#include "platform/ui/start_notices.h"
#include "platform/ui/system_printing.h"
#include "shell/ui/appearance.h"
#include "tour.h"

using namespace lirovan;
using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    QCoreApplication::setApplicationName(u"lirovan"_s);
    platform::hideStartNotices();
    platform::WebEngine::prepare();
    QApplication application(argc, argv);
    platform::boundMemory();
    shell::dress(application);
    const QStringList words = QApplication::arguments();
    if (words.size() != 3) return std::fputs("lirovan-tour FOLDER DIR\n", stderr), 2;

    platform::MessageBoxes dialogs;
    platform::SystemPrinting printing;
    shell::reg_api registry;
    tour::Tour tour({platform::AppFolder(words[1]), dialogs, printing, registry, {}, {}}, words[2]);
    QTimer::singleShot(0, &tour, [&] { QApplication::exit(tour.run() ? 0 : 1); });
    return QApplication::exec();
}
