#include "shell/page_printing.h"

using namespace Qt::StringLiterals;

namespace lirovan::shell {

void printWithDialog(platform::PageView& page, platform::Printing& printing, platform::Dialogs& dialogs) {
    const std::optional<platform::PrintTarget> target = printing.ask(page.hasSelection());
    if (!target) return;
    page.print(*target, [&dialogs](bool printed) {
        if (!printed) dialogs.show(platform::errorMessage(u"Yazıcı algılanamadı!"_s, u"Yazıcı Hatası"_s));
    });
}

void printDirectly(platform::PageView& page, platform::Printing& printing, platform::Dialogs& dialogs) {
    std::optional<platform::PrintTarget> target = printing.defaultPrinter();
    if (!target) return printWithDialog(page, printing, dialogs);
    if (page.hasSelection()) target->range = platform::PrintRange::Selection;
    page.print(*target, [](bool) {});
}

}  // namespace lirovan::shell
