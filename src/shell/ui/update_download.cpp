#include "shell/ui/update_download.h"

#include <QDir>
#include <QNetworkReply>
#include <QProgressDialog>
#include <QStandardPaths>
#include <QTimer>

#include "platform/core/file_writer.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int HttpOk = 200;
constexpr int ProgressSteps = 1000;
constexpr int ProgressWidth = 380;
// Without a byte for so long a download is given up.
constexpr auto Silence = 60s;

QNetworkRequest request(const QUrl& url) {
    QNetworkRequest result(url);
    // Never followed to another server.
    result.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::SameOriginRedirectPolicy);
    return result;
}

bool isComplete(const QNetworkReply& reply) {
    return reply.error() == QNetworkReply::NoError &&
           reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt() == HttpOk;
}

}  // namespace

QUrl onServer(const QString& server, QStringView path) {
    if (server.isEmpty()) return {};
    const QString base = server.endsWith(u'/') ? server.chopped(1) : server;
    return QUrl(base + path.toString());
}

ManifestDownload::ManifestDownload(QUrl manifest, std::chrono::milliseconds timeLimit)
    : manifest_(std::move(manifest)), timeLimit_(timeLimit) {}

void ManifestDownload::fetch(Answer answer) {
    QNetworkReply* reply = network_.get(request(manifest_));
    reply->setReadBufferSize(ManifestLimit + 1);
    // A limit for the whole, however often a byte trickles in.
    QTimer::singleShot(timeLimit_, reply, &QNetworkReply::abort);
    auto body = std::make_shared<QByteArray>();
    connect(reply, &QNetworkReply::readyRead, reply, [reply, body] {
        body->append(reply->readAll());
        if (body->size() > ManifestLimit) reply->abort();
    });
    connect(reply, &QNetworkReply::finished, this, [reply, body, answer = std::move(answer)] {
        if (reply->isOpen()) body->append(reply->readAll());  // it is not after an abort
        const bool usable = isComplete(*reply) && !body->isEmpty() && body->size() <= ManifestLimit;
        reply->deleteLater();
        answer(usable ? std::optional(*body) : std::nullopt);
    });
}

namespace {

/// One download, a child of its progress window, which deletes itself when the download is over.
class Transfer : public QObject {
  public:
    Transfer(const QString& path, platform::Dialogs& dialogs, QProgressDialog& window)
        : QObject(&window), dialogs_(dialogs), file_(path), window_(window) {
        window_.setObjectName(u"installerProgress"_s);
        window_.setWindowTitle(u"Yeni Versiyon"_s);
        window_.setLabelText(u"Kurulum dosyası indiriliyor..."_s);
        window_.setCancelButtonText(u"İptal"_s);
        window_.setMinimumWidth(ProgressWidth);
        window_.setAutoClose(false);
        window_.setAutoReset(false);
        window_.setRange(0, 0);
    }

    void start(const QUrl& installer) {
        if (const platform::Result<void> opened = file_.open(); !opened) return end(opened.error().message);
        window_.show();
        reply_ = network_.get(request(installer));
        reply_->setParent(this);
        silence_.setSingleShot(true);
        silence_.start(Silence);
        connect(&silence_, &QTimer::timeout, reply_, &QNetworkReply::abort);
        connect(&window_, &QProgressDialog::canceled, this, [this] {
            cancelled_ = true;
            reply_->abort();
        });
        connect(reply_, &QNetworkReply::readyRead, this, &Transfer::save);
        connect(reply_, &QNetworkReply::downloadProgress, this, &Transfer::showProgress);
        connect(reply_, &QNetworkReply::finished, this, &Transfer::finish);
    }

  private:
    void save() {
        silence_.start(Silence);
        const QByteArray bytes = reply_->readAll();
        if (unsaved_) return;
        if (const platform::Result<void> written = file_.write(bytes); !written) {
            unsaved_ = written.error().message;
            reply_->abort();
        }
    }

    void showProgress(qint64 done, qint64 total) {
        if (total <= 0) return;
        window_.setRange(0, ProgressSteps);
        window_.setValue(static_cast<int>(done * ProgressSteps / total));
    }

    void finish() {
        if (cancelled_) return end({});
        if (reply_->isOpen()) save();  // it is not after an abort
        if (unsaved_) return end(*unsaved_);
        if (!isComplete(*reply_)) return end(u"Kurulum dosyası indirilemedi."_s);
        if (const platform::Result<void> done = file_.commit(); !done) return end(done.error().message);
        window_.hide();
        window_.deleteLater();
        dialogs_.show(
            platform::noticeMessage(u"Kurulum dosyası kaydedildi: "_s + file_.path(), u"Yeni Versiyon"_s));
    }

    /// `failure`: told to the user; empty: nothing to tell.
    void end(const QString& failure) {
        window_.hide();
        window_.deleteLater();
        if (!failure.isEmpty()) dialogs_.show(platform::errorMessage(failure, u"Yeni Versiyon"_s));
    }

    platform::Dialogs& dialogs_;
    QNetworkAccessManager network_;
    platform::FileWriter file_;
    QProgressDialog& window_;
    QTimer silence_;
    QNetworkReply* reply_ = nullptr;
    bool cancelled_ = false;
    std::optional<QString> unsaved_;  // why the file cannot be written
};

}  // namespace

void downloadInstaller(const QUrl& installer, platform::Dialogs& dialogs, QWidget* parent) {
    QDir folder(QStandardPaths::writableLocation(QStandardPaths::DownloadLocation));
    if (!folder.exists()) folder = QDir::home();
    const QString path = dialogs.askSavePath(
        u"Kurulum Dosyasını Kaydet"_s, folder.filePath(installer.fileName()), u"Kurulum dosyası (*.exe)"_s);
    if (path.isEmpty()) return;
    auto* window = new QProgressDialog(parent);
    (new Transfer(path, dialogs, *window))->start(installer);
}

}  // namespace lirovan::shell
