// The commands about the library itself: books come, books go, another library is opened.
#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QProcess>

#include "browse/ui/add_books_window.h"
#include "browse/ui/remove_books_window.h"
#include "platform/core/library_layout.h"
#include "shell/ui/child_windows.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;

namespace {

const QString BookFilter =
    u"Kitaplar (*.epub *.html *.htm *.xhtml *.md *.txt *.docx *.odt *.fb2 *.rtf);;Bütün dosyalar (*)"_s;

platform::Result<void> makeEmptyLibrary(const QString& path) {
    const auto database = platform::Database::open(path, platform::OpenMode::Create);
    if (!database) return database.error();
    return platform::createLayout(*database, platform::LayoutKind::Library);
}

}  // namespace

void ChildWindows::chooseBooks() {
    const QStringList files =
        QFileDialog::getOpenFileNames(area_.window(), u"Kitap Ekle"_s, QString(), BookFilter);
    if (!files.isEmpty()) addBooks(files);
}

void ChildWindows::addBooks(const QStringList& paths) {
    browse::AddBooksWindow window(paths, library_.path(), area_.window());
    connect(&window, &browse::AddBooksWindow::libraryChanged, this, &ChildWindows::followLibrary);
    window.exec();
}

void ChildWindows::removeBooks() {
    browse::RemoveBooksWindow window(library_.path(), services_.dialogs, area_.window());
    connect(&window, &browse::RemoveBooksWindow::libraryChanged, this, &ChildWindows::followLibrary);
    window.exec();
}

void ChildWindows::openLibrary() {
    const QString folder = QFileDialog::getExistingDirectory(area_.window(), u"Kitaplık Aç"_s);
    if (folder.isEmpty()) return;
    const QString file = platform::AppFolder(folder).path(data::LibraryFile);
    if (!QFileInfo::exists(file)) {
        const platform::Message question{u"Bu klasörde kitaplık yok. Boş bir kitaplık oluşturulsun mu?"_s,
                                         u"Kitaplık Aç"_s, platform::Icon::Question,
                                         platform::Buttons::YesNo};
        if (services_.dialogs.show(question) != platform::Answer::Yes) return;
        if (const auto made = makeEmptyLibrary(file); !made) {
            services_.dialogs.show(platform::errorMessage(made.error().message, u"Kitaplık Aç"_s));
            return;
        }
    }
    if (QProcess::startDetached(QApplication::applicationFilePath(), {u"--klasor"_s, folder}))
        quit();
    else
        services_.dialogs.show(platform::errorMessage(u"Kitaplık açılamadı."_s, u"Kitaplık Aç"_s));
}

void ChildWindows::openTopic(data::TopicId topic, const QString& place) {
    if (isBusy() || !browseWindow().openTopic(topic)) return;
    const platform::MdiChild::Hold hold(*content_);
    content_->wb_Icerik->waitUntilComplete();
    if (!place.isEmpty()) content_->wb_Icerik->scrollTo(place);
    content_->wb_Icerik->setFocus();
}

}  // namespace lirovan::shell
