// A page reaches neither the network nor files outside the application folder, whatever it tries.
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>

#include "web_fixture.h"

using namespace lirovan::test;

namespace {

struct WebShutTest : WebTest {
    QTcpServer server;
    QUdpSocket datagrams;
    QTemporaryDir outside;
    int connections = 0;

    void SetUp() override {
        WebTest::SetUp();
        ASSERT_TRUE(server.listen(QHostAddress::LocalHost));
        ASSERT_TRUE(datagrams.bind(QHostAddress::LocalHost, server.serverPort()));
        QObject::connect(&server, &QTcpServer::newConnection, [this] {
            ++connections;
            server.nextPendingConnection()->close();
        });
        writeFile(outside.filePath(u"gizli.html"_s), "<p>gizli");
        writeFile(outside.filePath(u"gizli.js"_s), "var got = 1;");
        writeFile(outside.filePath(u"gizli.gif"_s), picture);
    }

    /// Shows a page whose script reports what it reached in `got`, lets it work, and expects nothing.
    void expectNothing(const QString& content) {
        show(u"<body>sayfa<script>var got = '';</script>"_s + content);
        const QByteArray before = page()->url().toEncoded();
        // Whatever was begun was refused or has arrived when a later request of the page's own is served.
        inPage(
            uR"(window.later = 0; (function next(n) {
            if (n == 6) { later = 1; return; }
            var i = new Image(); i.src = 'print.gif?' + n;
            i.onload = i.onerror = function() { setTimeout(next, 15, n + 1); }; })(0); 1)"_s);
        EXPECT_TRUE(until([&] { return inPage(u"window.later"_s) == u"1"; })) << content.toStdString();
        EXPECT_EQ(inPage(u"'' + got"_s), u"") << content.toStdString();
        EXPECT_TRUE(shown().startsWith(u"sayfa")) << content.toStdString();
        EXPECT_EQ(page()->url().toEncoded(), before);
        EXPECT_EQ(connections, 0) << content.toStdString();
        EXPECT_FALSE(datagrams.hasPendingDatagrams()) << content.toStdString();
    }
};

}  // namespace

TEST_F(WebShutTest, ReachesNoServer) {
    const QString contents[] = {
        uR"-(<img src='http:%1/a' onload='got=1'><link rel=stylesheet href='http:%1/b'><script src='http:%1/c'>
            </script><iframe src='http:%1/d'></iframe><object data='http:%1/e'></object><embed src='http:%1/f'>
            <video src='http:%1/g' autoplay></video><link rel=prefetch href='http:%1/h'><link rel=icon
            href='http:%1/i'><link rel=preconnect href='http:%1'><body background='http:%1/j'><style>
            @import 'http:%1/k'; p{background:url(http:%1/l)} @font-face{font-family:x;src:url(http:%1/m)}
            </style><p style='font-family:x'>p)-"_s,
        uR"-(<script>fetch('http:%1/a',{mode:'no-cors'}).then(function(){got+='f'},function(){});
            var x=new XMLHttpRequest();x.onload=function(){got+='x'};try{x.open('GET','http:%1/b');x.send()}
            catch(e){} try{new EventSource('http:%1/c').onopen=function(){got+='e'}}catch(e){}
            navigator.sendBeacon('http:%1/d','x');try{new WebSocket('ws:%1/e').onopen=function(){got+='w'}}
            catch(e){} try{new WebTransport('https:%1/a').ready.then(function(){got='t'},function(){})}
            catch(e){}</script>)-"_s,
        u"<meta http-equiv=refresh content='0;url=http:%1/a'>"_s,
        u"<script>location='http:%1/a'</script>"_s,
        u"<script>window.open('http:%1/a')</script>"_s,
        u"<form id=f action='http:%1/a' method=post><input name=q value=1></form><script>f.submit()</script>"_s,
        u"<a id=a href='http:%1/a' ping='http:%1/p'>x</a><script>a.click()</script>"_s,
        u"<a id=a href='http:%1/a' download>x</a><script>a.click()</script>"_s,
        uR"-(<script>try{new Worker(URL.createObjectURL(new Blob(["fetch('http:%1/a')"])))}catch(e){}
            try{navigator.serviceWorker.register('print.gif').catch(function(){})}catch(e){}</script>)-"_s,
        uR"-(<iframe srcdoc="<img src='http:%1/a'><script>fetch('http:%1/b');location='http:%1/c'</script>">
            </iframe><iframe src="data:text/html,<img src='http:%1/d'>"></iframe>)-"_s,
        uR"-(<script>var t={iceServers:[{urls:['turn:127.0.0.1:%2?transport=tcp','stun:127.0.0.1:%2'],
            username:'u',credential:'p'}]};function talk(w){var p=new w.RTCPeerConnection(t);
            p.createDataChannel('x');p.createOffer().then(function(o){p.setLocalDescription(o)})}
            var f=document.createElement('iframe');document.body.append(f);talk(window);talk(f.contentWindow)
            </script>)-"_s,
    };
    const QString port = QString::number(server.serverPort());
    for (QString content : contents)
        expectNothing(content.replace(u"%1"_s, u"//127.0.0.1:"_s + port).replace(u"%2"_s, port));
}

TEST_F(WebShutTest, ReachesNoFileOutsideTheFolder) {
    QFile::link(outside.path(), onDisk(u"OKU/disari"));
    const QString up = QDir(onDisk(u"OKU")).relativeFilePath(outside.path());
    const QString direct = PageAccess(folder).address(outside.path()).toString();
    for (const QString& place :
         {outside.path(), u"file://"_s + outside.path(), up, direct, u"disari"_s,
          QString(up).replace(u"/"_s, u"%5C"_s), u"view-source:file://"_s + outside.path()}) {
        const QString contents[] = {
            u"<img src='%1/gizli.gif' onload='got=1'><script src='%1/gizli.js'></script>"_s,
            uR"-(<iframe src='%1/gizli.html' onload='try{got=frames[0].document.body.innerText.
                replace(/[^]*[^g]$/,"")}catch(e){}'></iframe>)-"_s,
            uR"-(<script>fetch('%1/gizli.js').then(function(){got+='f'},function(){});
                var x=new XMLHttpRequest();x.onload=function(){got+=x.responseText};
                try{x.open('GET','%1/gizli.js');x.send()}catch(e){}</script>)-"_s,
            u"<script>location='%1/gizli.html'</script>"_s,
            u"<meta http-equiv=refresh content='0;url=%1/gizli.html'>"_s,
        };
        for (QString content : contents) expectNothing(content.replace(u"%1"_s, place));
    }
    for (const QString& path :
         {QUrl::fromLocalFile(outside.filePath(u"gizli.html"_s)).toString(),
          outside.filePath(u"gizli.html"_s), folder.pageText(u"\\OKU\\disari\\gizli.html"),
          folder.pageText(u"\\..\\..\\etc\\passwd"), folder.pageText(u"\\OKU"), u""_s,
          u"http://127.0.0.1:%1/a"_s.arg(server.serverPort()), u"data:text/html,x"_s,
          u"qrc:/lirovan/platform/page_tools.js"_s, u"chrome://gpu"_s,
          u"javascript:document.body.innerHTML='x'"_s, u"about:blank"_s}) {
        show(u"sayfa"_s);
        view->navigate(path);
        view->waitUntilComplete();
        EXPECT_EQ(shown(u"(document.body || {innerText: ''})"_s), u"sayfa") << path.toStdString();
        EXPECT_EQ(connections, 0);
    }
}

TEST_F(WebShutTest, LeavesNoDataOfThePages) {
    show(
        u"<script>var got=[];try{localStorage.x=1;got.push('l')}catch(e){}document.cookie='a=b';"
        "if(document.cookie)got.push('c')</script>"_s);
    EXPECT_EQ(inPage(u"got.join('')"_s), u"");
}
