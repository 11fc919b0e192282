// The program that is soaked: the real main window on a library in a temporary folder, with a user who
// answers whatever box, dialog or pop-up menu comes up.
#pragma once

#include <QElapsedTimer>
#include <QHash>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>
#include <optional>

#include "platform/core/dialogs.h"
#include "platform/core/printing.h"
#include "shell/settings_registry.h"
#include "shell/ui/KitaplarMDI.h"
#include "shell/ui/child_windows.h"

namespace lirovan::soak {

class World : public QObject {
    Q_OBJECT

  public:
    /// `library`: a library file to be copied; empty: the sample library is built.
    explicit World(const QString& library);
    ~World() override;

    /// Opens the main window, again where it was closed. False: it could not.
    bool start();
    shell::KitaplarMDI& window() { return *window_; }
    bool isClosed() const { return !window_ || !window_->isVisible(); }

    template <class T = QWidget>
    T* find(const QString& name) const {
        return window_ ? window_->findChild<T*>(name) : nullptr;
    }
    /// Visible and enabled, or null.
    QWidget* usable(const QString& name) const;
    QList<QMdiSubWindow*> children() const;

    /// What the user does at chance moments of the action `number` is drawn from `seed` and it.
    void beginAction(quint32 seed, int number, const QString& name);
    QRandomGenerator& chance() { return chance_; }
    /// Does something while the action goes on, `ms` after now.
    void later(int ms, std::function<void()> act);

    /// Lets the program work until it takes input again and nothing runs or is open. A message when it does
    /// not come to rest.
    std::optional<QString> settle();
    /// What must hold at rest and does not, a moment later either: bars are laid out when there is time.
    std::optional<QString> lastingFault();

    /// The longest time in ms during which an action of this name let no event run; what other programs had
    /// of the processor meanwhile is taken off.
    QHash<QString, int> longest() const { return longest_; }
    /// How many captions the child windows had: of pages, notes, summaries.
    int captions() const { return int(captions_.size()); }
    int boxes() const { return boxes_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    class User;
    class Printer;

    void startPause();
    void attend();
    void attendPopup(QWidget& popup);
    void attendDialog(QWidget& dialog);
    void beat();
    bool isQuiet() const;
    std::optional<QString> fault();
    QString state() const;

    QTemporaryDir folder_;
    std::unique_ptr<User> user_;
    std::unique_ptr<Printer> printer_;
    std::unique_ptr<shell::SettingsRegistry> settings_;
    std::unique_ptr<shell::reg_api> registry_;
    std::shared_ptr<platform::WebEngine> engine_;
    std::unique_ptr<shell::KitaplarMDI> window_;

    QRandomGenerator chance_;
    std::unique_ptr<QObject> action_;  // owns the timers of the action under way
    QTimer attention_, heart_;
    QElapsedTimer sinceBeat_;
    qint64 queuedAtBeat_ = 0;
    QString actionName_;
    QHash<QString, int> longest_;
    QSet<QString> captions_;
    int attended_ = 0, boxes_ = 0, answers_ = 0, moves_ = 0;
};

}  // namespace lirovan::soak
