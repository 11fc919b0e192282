// The update check against a server on this machine that answers well, badly, slowly or not at all.
#include "shell/ui/update_download.h"

#include <gtest/gtest.h>

#include <QProgressDialog>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

#include "support/files.h"
#include "support/full_disk.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::shell;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray Manifest = "<r><v><a>6</a><a>0</a><a>0</a><a>0</a></v></r>";

QByteArray answer(const QByteArray& body, const QByteArray& status = "200 OK",
                  const QByteArray& header = {}) {
    return "HTTP/1.1 " + status + "\r\nContent-Length: " + QByteArray::number(body.size()) +
           "\r\nConnection: close\r\n" + header + "\r\n" + body;
}

/// Gives every request the same answer and closes, or keeps the line open.
class Server : public QTcpServer {
  public:
    explicit Server(const QByteArray& content, bool close = true) {
        EXPECT_TRUE(listen(QHostAddress::LocalHost));
        connect(this, &QTcpServer::newConnection, this, [this, content, close] {
            QTcpSocket* socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, content, close] {
                requested.append(socket->readAll());
                socket->write(content);
                if (close) socket->disconnectFromHost();
            });
        });
    }
    QString address() const { return u"http://127.0.0.1:%1"_s.arg(serverPort()); }
    QByteArray requested;
};

std::optional<QByteArray> fetched(const QString& server, std::chrono::milliseconds limit = 400ms) {
    ManifestDownload download(onServer(server, ManifestPath), limit);
    std::optional<std::optional<QByteArray>> result;
    download.fetch([&](std::optional<QByteArray> body) { result = std::move(body); });
    EXPECT_TRUE(QTest::qWaitFor([&] { return result.has_value(); }, 10000));
    return result.value_or(std::nullopt);
}

}  // namespace

TEST(ManifestDownloadTest, TakesAGoodAnswerFromTheManifestsPathAndNothingElse) {
    Server good(answer(Manifest));
    EXPECT_EQ(fetched(good.address() + u'/', 5s), Manifest);
    EXPECT_TRUE(good.requested.startsWith("GET /download/prog/lirovanversion.xml HTTP/1.1\r\n"));

    Server elsewhere(answer(Manifest));
    const struct {
        const char* what;
        QByteArray content;
        bool close = true;
    } cases[] = {
        {"nothing", ""},
        {"an empty body", answer("")},
        {"a missing page", answer(Manifest, "404 Not Found")},
        {"ten megabytes", answer(QByteArray(10 << 20, 'x'))},
        {"ten megabytes without an end", "HTTP/1.1 200 OK\r\n\r\n" + QByteArray(10 << 20, 'x'), false},
        {"an answer that never ends", "HTTP/1.1 200 OK\r\nContent-Length: 500\r\n\r\n<r>", false},
        {"no answer at all", "HTTP/1.1 ", false},
        {"a redirect to another server",
         answer("", "302 Found", "Location: " + elsewhere.address().toLatin1() + "/x.xml\r\n")},
    };
    for (const auto& c : cases) {
        Server server(c.content, c.close);
        EXPECT_EQ(fetched(server.address()), std::nullopt) << c.what;
    }
    EXPECT_TRUE(elsewhere.requested.isEmpty());
    EXPECT_EQ(fetched(u"http://127.0.0.1:1"_s), std::nullopt) << "no server";
    EXPECT_FALSE(onServer({}, ManifestPath).isValid());
}

TEST(InstallerDownloadTest, SavesAllOrNothingWhereTheUserSays) {
    const QByteArray installer(3 << 20, 'i');
    const QByteArray half = "HTTP/1.1 200 OK\r\nContent-Length: 9000000\r\n\r\n" + installer;
    enum class User { Waits, Cancels, NamesNoFile, HasAFullDisk };
    using platform::Icon;
    const struct {
        const char* what;
        QByteArray content;
        User user;
        std::optional<Icon> told;
        bool saved = false;
    } cases[] = {
        {"the whole", answer(installer), User::Waits, Icon::Information, true},
        {"broken off", half, User::Waits, Icon::Critical},
        {"cancelled", half, User::Cancels, std::nullopt},
        {"a full disk", answer("kısa"), User::HasAFullDisk, Icon::Critical},
        {"no file name", answer(installer), User::NamesNoFile, std::nullopt},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        QTemporaryDir folder;
        test::ScriptedDialogs dialogs;
        if (c.user != User::NamesNoFile) dialogs.answerSavePath(folder.filePath(u"lirovan.exe"_s));
        QWidget main;
        Server server(c.content, c.user != User::Cancels);
        std::optional<test::FullDisk> full;
        if (c.user == User::HasAFullDisk) full.emplace();
        downloadInstaller(onServer(server.address(), InstallerPath), dialogs, &main);
        if (c.user == User::Cancels) {
            ASSERT_TRUE(QTest::qWaitFor([&] { return !server.requested.isEmpty(); }));
            main.findChild<QPushButton*>()->click();
        }
        ASSERT_TRUE(QTest::qWaitFor([&] { return !main.findChild<QProgressDialog*>(); }, 10000));
        EXPECT_EQ(server.requested.isEmpty(), c.user == User::NamesNoFile);
        ASSERT_EQ(dialogs.savePathQuestions.size(), 1U);
        EXPECT_TRUE(dialogs.savePathQuestions[0].suggestion.endsWith(u"/lirovan.exe"_s));
        ASSERT_EQ(dialogs.messages.size(), c.told ? 1U : 0U);
        for (const platform::Message& each : dialogs.messages) EXPECT_EQ(each.icon, c.told);
        EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files | QDir::Hidden).size(), c.saved ? 1 : 0);
        EXPECT_EQ(test::readFile(folder.filePath(u"lirovan.exe"_s)), c.saved ? installer : "(missing)");
    }
}
