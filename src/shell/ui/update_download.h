// The update check's network: the manifest, and the installer that the user wants to have.
#pragma once

#include <QNetworkAccessManager>
#include <QUrl>

#include "platform/core/dialogs.h"
#include "shell/update_check.h"

class QWidget;

namespace lirovan::shell {

/// Fetches the manifest of an update server. An answer of another kind than 200, one that is too long, too
/// slow or empty, and a redirect to another host all count as none.
class ManifestDownload : public QObject, public ManifestSource {
    Q_OBJECT

  public:
    ManifestDownload(QUrl manifest, std::chrono::milliseconds timeLimit = std::chrono::seconds(20));
    void fetch(Answer answer) override;

  private:
    QNetworkAccessManager network_;
    QUrl manifest_;
    std::chrono::milliseconds timeLimit_;
};

/// Asks where to save the installer and fetches it, with a progress window that can cancel it. What was not
/// fetched completely is not left behind. Nothing happens when the user names no file. `dialogs` and `parent`
/// outlive the download.
void downloadInstaller(const QUrl& installer, platform::Dialogs& dialogs, QWidget* parent);

/// "http://server.example" or "http://server.example/" with a path; an invalid address where `server` is
/// empty.
QUrl onServer(const QString& server, QStringView path);

}  // namespace lirovan::shell
