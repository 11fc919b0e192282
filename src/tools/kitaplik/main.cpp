// lirovan-kitaplik, the command-line companion: makes, imports, checks and reads libraries without a window.
#include <QCoreApplication>

#include "platform/core/ended_from_outside.h"
#include "tools/kitaplik/commands.h"

namespace {

std::vector<lirovan::tools::Command> allCommands() {
    using namespace lirovan::tools;
    std::vector<Command> all;
    for (auto&& group : {makingCommands(), bookCommands(), checkingCommands(), readingCommands(),
                         searchCommands(), noteCommands()})
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

}  // namespace

int main(int count, char* words[]) {
    lirovan::platform::cleanUpAtSignals();
    const QCoreApplication application(count, words);
    return static_cast<int>(lirovan::tools::runCommandLine(allCommands(), application.arguments().mid(1)));
}
