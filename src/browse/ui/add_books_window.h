// The window "Kitap Ekle": reads the chosen files one after the other, shows what is in them, and adds what
// is wanted to the library. Reading and writing go on in a thread of their own.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <deque>
#include <memory>

#include "browse/book_adding.h"
#include "browse/ui/background_work.h"
#include "platform/core/books/read_book.h"

namespace lirovan::browse {

class AddBooksWindow : public QDialog {
    Q_OBJECT

  public:
    /// `paths`: files and folders; `library`: the library's file.
    AddBooksWindow(const QStringList& paths, QString library, QWidget* parent = nullptr,
                   platform::BookReaderOptions reader = {});

    /// How many books were added.
    int added() const { return added_; }
    /// Reads further files and folders.
    void take(const QStringList& paths);

  Q_SIGNALS:
    void libraryChanged();

  public Q_SLOTS:
    /// While something runs: stops it. Otherwise closes the window.
    void reject() override;
    /// Asks for files and reads them.
    void chooseFiles();

  protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

  private:
    QLayout* sources();
    QLayout* preview();
    QLayout* bottom();

    void chooseFolder();
    void readNext();
    void read(const std::shared_ptr<BookCandidate>& candidate);
    void addWanted();
    void addNext();
    void wasAdded(std::size_t index, const platform::Result<data::BookAdded>& added);

    void showCandidate(int row);
    void fillOutline(const BookCandidate& candidate);
    void outlineChanged();
    void edited();
    void refreshLine(std::size_t index);
    void refreshButtons();
    BookCandidate* current();

    QString library_;
    const platform::BookReaderOptions reader_;
    std::deque<QString> waiting_;
    std::vector<BookCandidate> candidates_;
    std::deque<std::size_t> toAdd_;
    int added_ = 0;
    bool showing_ = false;  // changes of the controls are not the user's

    QListWidget* files_;
    QPushButton* chooseFiles_;
    QPushButton* chooseFolder_;
    QLineEdit* author_;
    QLineEdit* title_;
    QLabel* about_;
    QLabel* present_;
    QComboBox* same_;
    QTreeWidget* outline_;
    QLabel* count_;
    QLabel* remarks_;
    QLabel* state_;
    QProgressBar* progress_;
    QPushButton* add_;
    QPushButton* close_;
    // Last: it ends before what it works on goes.
    BackgroundWork work_;
};

}  // namespace lirovan::browse
