// The commands about the library itself: books come, books go, another library is opened.
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QProcess>
#include <QTimer>

#include "browse/ui/add_books_window.h"
#include "browse/ui/remove_books_window.h"
#include "data/library_writer.h"
#include "shell/recent_libraries.h"
#include "shell/ui/child_windows.h"

namespace lirovan::shell {

using namespace Qt::StringLiterals;

void ChildWindows::chooseBooks() {
    addBooks({});
}

void ChildWindows::addBooks(const QStringList& paths) {
    browse::AddBooksWindow window(paths, library_.path(), area_.window());
    connect(&window, &browse::AddBooksWindow::libraryChanged, this, &ChildWindows::followLibrary);
    // Most readers have a file; who wants a folder cancels, and finds a button for it.
    if (paths.isEmpty()) QTimer::singleShot(0, &window, &browse::AddBooksWindow::chooseFiles);
    window.exec();
}

void ChildWindows::removeBooks() {
    browse::RemoveBooksWindow window(library_.path(), services_.dialogs, area_.window());
    connect(&window, &browse::RemoveBooksWindow::libraryChanged, this, &ChildWindows::followLibrary);
    window.exec();
}

void ChildWindows::openLibrary() {
    const QString folder = QFileDialog::getExistingDirectory(area_.window(), u"Kitaplık Aç"_s);
    if (!folder.isEmpty()) openLibrary(folder);
}

void ChildWindows::openLibrary(const QString& folder) {
    const platform::Result<bool> ready = isLibraryThere(folder);
    if (!ready)
        services_.dialogs.show(platform::errorMessage(ready.error().message, u"Kitaplık Aç"_s));
    else if (*ready && QProcess::startDetached(QApplication::applicationFilePath(), {u"--klasor"_s, folder}))
        quit();
    else if (*ready)
        services_.dialogs.show(platform::errorMessage(u"Kitaplık açılamadı."_s, u"Kitaplık Aç"_s));
}

// A folder without a library gets an empty one, if the reader wants it.
platform::Result<bool> ChildWindows::isLibraryThere(const QString& folder) {
    if (!QFileInfo(folder).isDir()) {
        forgetLibrary(services_.registry, folder);
        return platform::Error{u"Klasör bulunamadı:\n%1"_s.arg(QDir::toNativeSeparators(folder))};
    }
    const QString file = platform::AppFolder(folder).path(data::LibraryFile);
    if (QFileInfo::exists(file)) return true;
    const platform::Message question{u"Bu klasörde kitaplık yok. Boş bir kitaplık oluşturulsun mu?"_s,
                                     u"Kitaplık Aç"_s, platform::Icon::Question, platform::Buttons::YesNo};
    if (services_.dialogs.show(question) != platform::Answer::Yes) return false;
    const platform::Result<void> made = data::makeEmptyLibrary(file);
    if (!made) return made.error();
    return true;
}

// A first page of the program's own says how books get into an empty library, until one is in it.
void ChildWindows::chooseFirstPage() {
    auto authors = library_.authors();
    data::Author author;
    const auto any = authors ? authors->next(author) : platform::Result<bool>(true);
    const bool empty = any && !*any;
    services_.engine->setFirstPage(empty ? platform::FirstPage::OfEmptyLibrary
                                         : platform::FirstPage::Ordinary);
    if (content_ && empty != startsEmpty_) contentDecisions_.loadStartPage();
    startsEmpty_ = empty;
}

void ChildWindows::openTopic(data::TopicId topic, const QString& place) {
    if (isBusy() || !browseWindow().openTopic(topic)) return;
    const platform::MdiChild::Hold hold(*content_);
    content_->wb_Icerik->waitUntilComplete();
    if (!place.isEmpty()) content_->wb_Icerik->scrollTo(place);
    content_->wb_Icerik->setFocus();
}

}  // namespace lirovan::shell
