// Rich text there and back through a word processor: it shows what we write as we mean it, and we read what
// it writes. Skipped where LibreOffice is not installed.
#include <gtest/gtest.h>

#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include "platform/core/rtf/reader.h"
#include "platform/core/rtf/writer.h"
#include "support/files.h"

using namespace lirovan;
using namespace platform::rtf;
using namespace Qt::StringLiterals;

TEST(RtfExchange, LibreOfficeShowsAndWritesTheSame) {
    const QString office = QStandardPaths::findExecutable(u"soffice"_s);
    if (office.isEmpty())
        GTEST_SKIP() << "LibreOffice (soffice) is not installed: nothing was exchanged with it";
    Builder builder;
    builder.append(u"Başlık: ", {.halfPoints = 28, .bold = true});
    builder.append(u"Kur'ân — ağaç ∞", {.font = u"Courier New"_s});
    builder.endParagraph({Alignment::Center, 0, 0});
    builder.append(u"kırmızı", {.color = Rgb{255, 0, 0}});
    builder.append(u" mavi", {.italic = true, .color = Rgb{0, 0, 255}});
    builder.append(u" yeşil", {.underline = true, .color = Rgb{0, 255, 0}});
    builder.append(u" işaretli", {.background = Rgb{255, 255, 0}});
    builder.append(u" x", {});
    builder.append(u"2", {.script = Script::Super});
    builder.append(u"{\\}\tsekme\u00A0\u2028satır", {});
    builder.endParagraph({Alignment::Justify, 720, -360});
    builder.endParagraph({});
    builder.append(u"Son İĞÜŞÖÇ ığüşöç", {.strike = true});
    builder.endParagraph({Alignment::Right, 0, 0});
    // Of other scripts the word processor keeps size and face apart; here they are its own.
    builder.append(u"日本 😀", {.halfPoints = 24});
    builder.endParagraph({});
    const QByteArray sample = write(builder.take());

    const QTemporaryDir folder;
    QProcess process;
    process.start(office, {u"-env:UserInstallation=file://%1/profile"_s.arg(folder.path()), u"--headless"_s,
                           u"--convert-to"_s, u"rtf"_s, u"--outdir"_s, folder.filePath(u"out"_s),
                           test::writeFile(folder.filePath(u"not.rtf"_s), sample)});
    ASSERT_TRUE(process.waitForFinished(100'000));
    const QByteArray converted = test::readFile(folder.filePath(u"out/not.rtf"_s));
    // Compared as text of our own writer: a difference shows where it is.
    EXPECT_EQ(write(read(QByteArrayView(converted))), sample) << process.readAll().toStdString();
}
