// The window "Kitap Kaldır": the books that were added from files, and taking them out.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <vector>

#include "browse/ui/background_work.h"
#include "data/added_books.h"
#include "platform/core/dialogs.h"

namespace lirovan::browse {

class RemoveBooksWindow : public QDialog {
    Q_OBJECT

  public:
    /// `library`: the library's file; `dialogs` asks before a book goes.
    RemoveBooksWindow(QString library, platform::Dialogs& dialogs, QWidget* parent = nullptr);

  Q_SIGNALS:
    void libraryChanged();

  public Q_SLOTS:
    /// While something runs: stops it. Otherwise closes the window.
    void reject() override;

  private:
    void fill();
    void removeSelected();
    void refreshButtons();

    QString library_;
    platform::Dialogs& dialogs_;
    std::vector<data::AddedBook> added_;

    QListWidget* books_;
    QLabel* state_;
    QProgressBar* progress_;
    QPushButton* remove_;
    QPushButton* close_;
    // Last: it ends before what it works on goes.
    BackgroundWork work_;
};

}  // namespace lirovan::browse
