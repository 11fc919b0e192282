#include "shell/ui/import_progress.h"

#include <QApplication>
#include <QFileInfo>
#include <QProgressDialog>

namespace lirovan::shell {

using namespace Qt::StringLiterals;

namespace {

constexpr int Steps = 1000;
constexpr int MomentMs = 300;
constexpr int Width = 420;

}  // namespace

platform::Result<platform::EnsuredLayout> ensureLayout(const QString& path, platform::LayoutKind kind,
                                                       QWidget* parent) {
    const QString label = kind == platform::LayoutKind::Notes
                              ? u"Notlar içe aktarılıyor. Bu işlem yalnız bir kez yapılır..."_s
                              : u"Kitaplar içe aktarılıyor. Bu işlem yalnız bir kez yapılır..."_s;
    QProgressDialog window(label, u"İptal"_s, 0, Steps, parent);
    window.setObjectName(u"importProgress"_s);
    window.setWindowTitle(u"Lirovan"_s);
    window.setMinimumDuration(MomentMs);
    window.setMinimumWidth(Width);
    window.setWindowModality(Qt::ApplicationModal);
    window.setAutoClose(false);
    window.setAutoReset(false);
    const auto progress = [&window](qint64 done, qint64 total) {
        window.setValue(total > 0 ? static_cast<int>(done * (Steps - 1) / total) : 0);
        // Until the window is there to keep input from the others, none is taken.
        QApplication::processEvents(window.isVisible() ? QEventLoop::AllEvents
                                                       : QEventLoop::ExcludeUserInputEvents);
        return !window.wasCanceled();
    };
    return platform::Importer().ensureLayout(path, kind, progress);
}

}  // namespace lirovan::shell
