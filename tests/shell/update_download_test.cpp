// The update check against a server on this machine that answers well, badly, slowly or not at all.
#include "shell/ui/update_download.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProgressDialog>
#include <QPushButton>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

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
    explicit Server(QByteArray content, bool close = true) {
        EXPECT_TRUE(listen(QHostAddress::LocalHost));
        connect(this, &QTcpServer::newConnection, this, [this, content = std::move(content), close] {
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

std::optional<QByteArray> fetched(const QString& server, std::chrono::milliseconds limit = 5s) {
    ManifestDownload download(onServer(server, ManifestPath), limit);
    bool answered = false;
    std::optional<QByteArray> result;
    download.fetch([&](std::optional<QByteArray> body) {
        answered = true;
        result = std::move(body);
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return answered; }, 10000));
    return result;
}

}  // namespace

TEST(ManifestDownloadTest, TakesAGoodAnswerFromTheManifestsPath) {
    Server server(answer(Manifest));
    EXPECT_EQ(fetched(server.address() + u'/'), Manifest);
    EXPECT_TRUE(server.requested.startsWith("GET /download/prog/lirovanversion.xml HTTP/1.1\r\n"));
}

TEST(ManifestDownloadTest, WhateverElseIsNoManifest) {
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
        EXPECT_EQ(fetched(server.address(), 400ms), std::nullopt) << c.what;
    }
    EXPECT_TRUE(elsewhere.requested.isEmpty());
    EXPECT_EQ(fetched(u"http://127.0.0.1:1"_s), std::nullopt) << "no server";
    EXPECT_FALSE(onServer({}, ManifestPath).isValid());
}

class InstallerDownloadTest : public testing::Test {
  protected:
    QTemporaryDir folder;
    test::ScriptedDialogs dialogs;
    QWidget main;
    QString path = folder.filePath(u"lirovan.exe"_s);

    void start(const Server& server) {
        dialogs.answerSavePath(path);
        downloadInstaller(onServer(server.address(), InstallerPath), dialogs, &main);
    }
    bool ended() const {
        return QTest::qWaitFor([this] { return !main.findChild<QProgressDialog*>(); }, 10000);
    }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }
};

TEST_F(InstallerDownloadTest, SavesTheInstallerWhereTheUserSays) {
    const QByteArray installer(3 << 20, 'i');
    Server server(answer(installer));
    start(server);
    ASSERT_TRUE(ended());
    ASSERT_EQ(dialogs.savePathQuestions.size(), 1U);
    EXPECT_TRUE(dialogs.savePathQuestions[0].suggestion.endsWith(u"/lirovan.exe"_s));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), installer);
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(dialogs.messages[0].icon, platform::Icon::Information);
}

TEST_F(InstallerDownloadTest, LeavesNoHalfFileWhenItIsCancelledOrBreaksOff) {
    const QByteArray half = "HTTP/1.1 200 OK\r\nContent-Length: 9000000\r\n\r\n" + QByteArray(100000, 'i');
    {
        Server server(half, false);
        start(server);
        auto* window = main.findChild<QProgressDialog*>();
        ASSERT_TRUE(window);
        ASSERT_TRUE(QTest::qWaitFor([&] { return !server.requested.isEmpty(); }));
        window->findChild<QPushButton*>()->click();
        ASSERT_TRUE(ended());
        EXPECT_TRUE(dialogs.messages.empty());
        EXPECT_EQ(files(), QStringList());
    }
    Server server(half);
    start(server);
    ASSERT_TRUE(ended());
    ASSERT_EQ(dialogs.messages.size(), 1U);
    EXPECT_EQ(dialogs.messages[0].icon, platform::Icon::Critical);
    EXPECT_EQ(files(), QStringList());
}

TEST_F(InstallerDownloadTest, DoesNothingWithoutAFileName) {
    Server server(answer("x"));
    path.clear();
    start(server);
    EXPECT_TRUE(ended());
    EXPECT_TRUE(server.requested.isEmpty());
}
