// A guided tour: drives the program's own controls from the start page to the notebook and leaves a picture
// of every step. A program of its own: the reader does not carry it.
#pragma once

#include <QDir>
#include <QObject>
#include <functional>
#include <memory>

#include "shell/ui/services.h"

class QTreeView;
class QModelIndex;

namespace lirovan::shell {
class KitaplarMDI;
}  // namespace lirovan::shell

namespace lirovan::tour {

class Tour : public QObject {
    Q_OBJECT

  public:
    /// Pictures go into `folder` as "01-giris.png", "02-konu.png" and so on. The tour writes a note
    /// and bookmarks, and starts the program twice.
    Tour(const shell::Services& services, const QDir& folder);
    ~Tour() override;

    /// Walks through all steps, with events running; false when a picture could not be saved or a control
    /// that a step needs is missing.
    bool run();

  private:
    bool readTopic();
    bool stopSearch();
    bool search();
    bool openHit();
    bool openFoundTopic();
    bool readAtNight();
    bool findOnPage();
    bool bookmarks();
    bool comeBack();
    bool start();
    bool summary();
    bool extraWindow();
    bool notebook();
    bool study();
    bool openFirstTopic(QTreeView* tree, const QModelIndex& run);
    bool addBook();
    bool modalWindow(const QString& menuItem, const QString& picture);

    bool picture(const QString& name);
    bool press(const QString& button);
    bool choose(const QString& item);
    bool click(QTreeView* tree, const QModelIndex& index);
    void settle(int milliseconds = 400);
    /// Lets `answer` deal with the modal window that the next step opens.
    void whenModal(std::function<void(QWidget&)> answer);
    void selectPassage();

    shell::Services services_;
    std::unique_ptr<shell::KitaplarMDI> window_;
    QDir folder_;
    int pictures_ = 0;
};

}  // namespace lirovan::tour
