// Rich text there and back through a word processor: it shows what we write as we mean it, and we read what
// it writes. Skipped where LibreOffice is not installed.
#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "platform/core/rtf/reader.h"
#include "platform/core/rtf/writer.h"

using namespace lirovan::platform::rtf;

namespace {

Document sample() {
    Builder builder;
    const auto with = [](auto change) {
        CharFormat format;
        change(format);
        return format;
    };
    builder.append(u"Başlık: ", with([](CharFormat& f) { f.bold = true, f.halfPoints = 28; }));
    builder.append(u"Kur'ân — ağaç ∞", with([](CharFormat& f) { f.font = QStringLiteral("Courier New"); }));
    builder.endParagraph({Alignment::Center, 0, 0});
    builder.append(u"kırmızı", with([](CharFormat& f) { f.color = Rgb{255, 0, 0}; }));
    builder.append(u" mavi", with([](CharFormat& f) { f.color = Rgb{0, 0, 255}, f.italic = true; }));
    builder.append(u" yeşil", with([](CharFormat& f) { f.color = Rgb{0, 255, 0}, f.underline = true; }));
    builder.append(u" işaretli", with([](CharFormat& f) { f.background = Rgb{255, 255, 0}; }));
    builder.append(u" x", {});
    builder.append(u"2", with([](CharFormat& f) { f.script = Script::Super; }));
    builder.append(u"{\\}\tsekme\u00A0\u2028satır", {});
    builder.endParagraph({Alignment::Justify, 720, -360});
    builder.endParagraph({});
    builder.append(u"Son İĞÜŞÖÇ ığüşöç", with([](CharFormat& f) { f.strike = true; }));
    builder.endParagraph({Alignment::Right, 0, 0});
    // Of other scripts the word processor keeps size and face apart; here they are its own.
    builder.append(u"日本 😀", with([](CharFormat& f) { f.halfPoints = 24; }));
    builder.endParagraph({});
    return builder.take();
}

}  // namespace

TEST(RtfExchange, LibreOfficeShowsAndWritesTheSame) {
    const QString office = QStandardPaths::findExecutable(QStringLiteral("soffice"));
    if (office.isEmpty())
        GTEST_SKIP() << "LibreOffice (soffice) is not installed: nothing was exchanged with it";
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("not.rtf"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(write(sample()));
    file.close();
    QProcess process;
    process.start(office,
                  {QStringLiteral("-env:UserInstallation=file://%1/profile").arg(folder.path()),
                   QStringLiteral("--headless"), QStringLiteral("--convert-to"), QStringLiteral("rtf"),
                   QStringLiteral("--outdir"), folder.filePath(QStringLiteral("out")), path});
    ASSERT_TRUE(process.waitForFinished(100'000));
    QFile converted(folder.filePath(QStringLiteral("out/not.rtf")));
    ASSERT_TRUE(converted.open(QIODevice::ReadOnly)) << process.readAll().toStdString();
    // Compared as text of our own writer: a difference shows where it is.
    EXPECT_EQ(write(read(QByteArrayView(converted.readAll()))).toStdString(), write(sample()).toStdString());
}
