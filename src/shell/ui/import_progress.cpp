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

platform::Result<platform::EnsuredLayout> ensureLibraryLayout(const QString& path, QWidget* parent) {
    QProgressDialog window(u"Kitaplar içe aktarılıyor. Bu işlem yalnız bir kez yapılır..."_s, u"İptal"_s, 0,
                           Steps, parent);
    window.setObjectName(u"importProgress"_s);
    window.setWindowTitle(u"Lirovan"_s);
    window.setMinimumDuration(MomentMs);
    window.setMinimumWidth(Width);
    window.setWindowModality(Qt::ApplicationModal);
    window.setAutoClose(false);
    window.setAutoReset(false);
    const auto progress = [&window](qint64 done, qint64 total) {
        window.setValue(total > 0 ? static_cast<int>(done * (Steps - 1) / total) : 0);
        QApplication::processEvents();
        return !window.wasCanceled();
    };
    return platform::Importer().ensureLayout(path, platform::LayoutKind::Library, progress);
}

}  // namespace lirovan::shell
