// The list of bookmarks: search, order, open, rename, delete with a way back, writing out.
#pragma once

#include <QAbstractTableModel>
#include <QDialog>

#include "desk/bookmark_list.h"
#include "platform/core/dialogs.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QTimer;
class QTreeView;

namespace lirovan::desk {

/// What BookmarkList lists, as rows.
class BookmarkModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Column { Made, Line, Where, Passage, Columns };

    explicit BookmarkModel(const BookmarkList& list, QObject* parent = nullptr)
        : QAbstractTableModel(parent), list_(list) {}
    /// The list is another.
    void show();

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    const BookmarkList& list_;
    int rows_ = 0;
};

class BookmarksWindow : public QDialog {
    Q_OBJECT

  public:
    /// `list` is read already.
    BookmarksWindow(BookmarkList list, platform::Dialogs& dialogs, QWidget* parent = nullptr);

    /// The bookmark that the reader opened, which closes the window.
    const std::optional<Bookmark>& chosen() const { return chosen_; }

  private:
    QAction* action(const QString& name, const QString& text, const QKeySequence& key,
                    void (BookmarksWindow::*act)());
    QWidget* searchRow();
    QWidget* buttons();
    std::vector<std::size_t> selected() const;
    void show();
    /// Searches for what was typed last, if that is still to be done.
    void settle();
    void openSelected();
    void rename();
    void remove();
    void undo();
    void writeOut();
    void tell(const platform::Result<void>& result);

    BookmarkList list_;
    platform::Dialogs& dialogs_;
    BookmarkModel model_;
    QLineEdit* search_;
    QTimer* typed_;
    QComboBox* order_;
    QTreeView* view_;
    QLabel* count_;
    QList<QAction*> actions_;
    std::optional<Bookmark> chosen_;
};

}  // namespace lirovan::desk
