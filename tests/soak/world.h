// The program that is soaked: the real main window on a library in a temporary folder, with a user who
// answers whatever box, dialog or pop-up menu comes up.
#pragma once

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSet>
#include <QTemporaryDir>
#include <QTimer>
#include <memory>

#include "shell/reg_api.h"
#include "shell/ui/KitaplarMDI.h"
#include "shell/ui/child_windows.h"

namespace lirovan::soak {

class World : public QObject, platform::Dialogs, platform::Printing {
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
    template <class T = QWidget>
    T* usable(const QString& name) const {
        for (T* each : window_->findChildren<T*>(name))
            if (each->isVisible() && each->isEnabled()) return each;
        return nullptr;
    }
    QList<QMdiSubWindow*> children() const {
        return find<QMdiArea>(QStringLiteral("workArea"))->subWindowList();
    }

    /// What the user does at chance moments of the action `number` is drawn from `seed` and it.
    void beginAction(quint32 seed, int number, const QString& name);
    int below(int n) { return chance_.bounded(n); }
    bool oneIn(int n) { return below(n) == 0; }
    template <class List>
    auto any(const List& list) {
        return list[below(int(list.size()))];
    }
    QString anyOf(const QString& words) { return any(words.split(u' ')); }
    QPoint somewhere(const QWidget& in) { return {below(qMax(1, in.width())), below(qMax(1, in.height()))}; }
    /// Does something while the action goes on, `ms` after now.
    void later(int ms, std::function<void()> act);

    /// Lets the program work until it takes input again and nothing runs or is open. Says why it does not
    /// come to rest; empty: it did.
    QString settle();
    /// What must hold at rest and does not, a moment later either: bars are laid out when there is time.
    QString lastingFault();

    /// The longest time in ms for which no event ran, and the action then; what other programs had of the
    /// processor meanwhile is taken off.
    int longest = 0;
    QString longestIn;
    /// The captions that the child windows had: of pages, notes, summaries.
    QSet<QString> captions;
    int boxes = 0;
    QString details;  ///< of the action under way, for the log

  private:
    platform::Answer show(const platform::Message& message) override;
    std::optional<QString> ask(const platform::Question& question) override;
    QString askSavePath(const QString&, const QString&, const QString&) override { return {}; }
    std::optional<platform::PrintTarget> defaultPrinter() override;
    std::optional<platform::PrintTarget> ask(bool selection) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

    void startPause();
    void beat();
    void attend();
    void attendDialog(QWidget& dialog);
    bool isQuiet() const;
    QString state() const;
    QString fault() const;

    QTemporaryDir folder_;
    bool filled_ = false;
    shell::reg_api registry_{folder_.filePath(QStringLiteral("kayit.ini"))};
    std::shared_ptr<platform::WebEngine> engine_;
    std::unique_ptr<shell::KitaplarMDI> window_;

    QRandomGenerator chance_;
    std::unique_ptr<QObject> action_;  // owns the timers of the action under way
    QString actionName_;
    QTimer attention_, heart_;
    QElapsedTimer sinceBeat_;
    qint64 queuedAtBeat_ = 0;
    int attended_ = 0, answers_ = 0, moves_ = 0;
};

/// What the user does: puts the input for the action `number` into the queue; `order` draws which. What it
/// is, for the log.
QString act(World& world, QRandomGenerator& order, quint32 seed, int number);

}  // namespace lirovan::soak
