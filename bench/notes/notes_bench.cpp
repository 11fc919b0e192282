// The figures of docs/BENCHMARKS.md, section Notebook: notes_bench [MEGABYTES [CHARACTERS]], the second being
// those of a paragraph. A long note in the notebook's real window: how long the window is held up by opening
// it, by keys, by the draft and by saving.
#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cstdio>

#include "notes/fake_printing.h"
#include "notes/note_text.h"
#include "notes/ui/frm_IcerikCopy.h"
#include "support/scripted_dialogs.h"

using namespace lirovan;
using namespace lirovan::notes;
using namespace Qt::StringLiterals;
namespace rtf = platform::rtf;

namespace {

/// Every paragraph has plain, bold and red pieces.
rtf::Document longNote(qsizetype characters, qsizetype paragraph) {
    const QStringView words[] = {u"bahçe ", u"ışık ",  u"sabah ", u"yağmur ", u"söz ",
                                 u"kitap ", u"çocuk ", u"gölge ", u"deniz ",  u"yol "};
    rtf::Builder builder;
    quint32 random = 5101;
    while (builder.characters() < characters) {
        const qsizetype end = std::min(builder.characters() + paragraph, characters);
        for (int piece = 0; builder.characters() < end; ++piece) {
            QString text;
            for (qsizetype i = 0; i < std::min<qsizetype>(20, paragraph / 20); ++i) {
                random = random * 1664525 + 1013904223;
                text += words[(random >> 8) % std::size(words)];
            }
            rtf::CharFormat format;
            format.bold = piece % 4 == 1;
            if (piece % 4 == 2) format.color = rtf::Rgb{255, 0, 0};
            builder.append(text, format);
        }
        builder.endParagraph({});
    }
    return builder.take();
}

void say(const char* what, const QString& figure) {
    std::printf("%-40s %s\n", what, qPrintable(figure));
    std::fflush(stdout);
}

QString ms(double value) {
    return u"%1 ms"_s.arg(value, 0, 'f', value < 10 ? 1 : 0);
}

double timed(const std::function<void()>& work) {
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// Runs the event loop for a while; the longest time between two of its turns.
double longestPause(int forMs) {
    QEventLoop loop;
    QTimer tick;
    QElapsedTimer since;
    qint64 longest = 0;
    QObject::connect(&tick, &QTimer::timeout,
                     [&] { longest = std::max(longest, since.nsecsElapsed()), since.start(); });
    since.start();
    tick.start(0);
    QTimer::singleShot(forMs, &loop, &QEventLoop::quit);
    loop.exec();
    return static_cast<double>(longest) / 1e6;
}

/// Pastes what `fill` puts on the clipboard; the whole time and the longest between two turns of the event
/// loop.
void paste(const char* what, NoteBox& box, const std::function<void(QMimeData&)>& fill) {
    auto* data = new QMimeData;
    fill(*data);
    QApplication::clipboard()->setMimeData(data);
    double longest = 0;
    QElapsedTimer since;
    QTimer tick;
    QObject::connect(&tick, &QTimer::timeout, [&] {
        longest = std::max(longest, static_cast<double>(since.nsecsElapsed()) / 1e6);
        since.start();
    });
    since.start();
    tick.start(0);
    const double all = timed([&box] { box.paste(); });
    longest = std::max(longest, static_cast<double>(since.nsecsElapsed()) / 1e6);
    say(what, u"%1, longest pause %2"_s.arg(ms(all), ms(longest)));
    box.setDocument({});
}

/// How long a key takes, from its event to the repainted window.
void typeAt(const char* where, NoteBox& box, int position) {
    QTextCursor cursor = box.textCursor();
    cursor.setPosition(position);
    box.setTextCursor(cursor);
    box.ensureCursorVisible();
    QApplication::processEvents();
    std::vector<double> times;
    for (int i = 0; i < 150; ++i) {
        times.push_back(timed([&box, i] {
            const bool enter = i % 50 == 49;
            for (const auto kind : {QEvent::KeyPress, QEvent::KeyRelease}) {
                QKeyEvent event(kind, enter ? Qt::Key_Return : 0, Qt::NoModifier,
                                enter        ? u"\r"_s
                                : i % 6 == 5 ? u" "_s
                                             : u"ş"_s);
                QApplication::sendEvent(&box, &event);
            }
            QApplication::processEvents();
        }));
    }
    std::sort(times.begin(), times.end());
    say(where, u"median %1, longest %2"_s.arg(ms(times[times.size() / 2]), ms(times.back())));
}

}  // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    const double megabytes = argc > 1 ? std::atof(argv[1]) : 5;
    const rtf::Document document =
        longNote(static_cast<qsizetype>(megabytes * 1e6), argc > 2 ? std::atoi(argv[2]) : 450);
    const QTemporaryDir folder;
    const platform::AppFolder app(folder.path());
    test::ScriptedDialogs dialogs;
    test::FakePrinting printing;
    frm_IcerikCopy window({dialogs, printing, [&] { return NotesDatabase::open(app); }, [](NoteEditor&) {}});
    window.resize(900, 650);
    window.show();
    window.editor().load(NoteDraft::in(app));
    NoteBox& box = window.box();
    const NotesDatabase& notes = window.editor().NotBaglanti();
    longestPause(500);

    paste("90,000 elements of HTML in one another", box,
          [](QMimeData& data) { data.setHtml(u"<b>"_s.repeated(90'000) + u"son"_s); });
    paste("400,000 paragraphs of RTF", box, [](QMimeData& data) {
        data.setData(u"text/rtf"_s, "{\\rtf1 " + QByteArray("a\\par ").repeated(400'000) + "}");
    });
    const auto id = notes.add(u"Uzun"_s, storedRtf(document), {});
    std::printf("%zu paragraphs\n", document.paragraphs.size());
    say("opened", ms(timed([&] {
            window.editor().show(**notes.find(*id));
            QApplication::processEvents();
        })));
    say("longest pause while it is laid out", ms(longestPause(6000)));
    typeAt("a key at the top", box, 0);
    typeAt("a key in the middle", box, box.QTextEdit::document()->characterCount() / 2);
    typeAt("a key at the end", box, box.QTextEdit::document()->characterCount() - 1);
    say("longest pause while the draft is kept", ms(longestPause(4000)));
    dialogs.answer(platform::Answer::Yes);
    say("changed note saved", ms(timed([&] { window.editor().save(); })));
    say("closed", ms(timed([&] { window.close(); })));
}
