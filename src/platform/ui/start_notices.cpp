#include "platform/ui/start_notices.h"

#include <QLoggingCategory>
#include <QString>
#include <algorithm>

namespace lirovan::platform {

using namespace Qt::StringLiterals;

namespace {

// No fault of the reader's, and printed without a category that a rule could name: a session without a
// run-time folder gets one, and the sandbox is off because the environment asks for that.
constexpr QStringView Notices[] = {u"QStandardPaths: XDG_RUNTIME_DIR not set",
                                   u"Sandboxing disabled by user."};

QtMessageHandler usual = nullptr;

void withoutNotices(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    const auto begins = [&text](QStringView notice) { return text.startsWith(notice); };
    if (type != QtCriticalMsg && type != QtFatalMsg &&
        std::any_of(std::begin(Notices), std::end(Notices), begins))
        return;
    usual(type, context, text);
}

}  // namespace

void hideStartNotices() {
    QLoggingCategory::setFilterRules(u"qt.webenginecontext=false"_s);
    if (!usual) usual = qInstallMessageHandler(withoutNotices);
}

}  // namespace lirovan::platform
