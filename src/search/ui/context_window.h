// The window "Bağlam Listesi": the hits of a run one below the other in their context.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTableView>
#include <QWidget>
#include <memory>

#include "browse/ui/background_work.h"
#include "platform/core/dialogs.h"
#include "search/study/hit_list.h"
#include "search/ui/context_model.h"

namespace lirovan::search {

class ContextWindow : public QWidget {
    Q_OBJECT

  public:
    /// `library` and `dialogs` outlive the window.
    ContextWindow(const data::Library& library, platform::Dialogs& dialogs,
                  std::shared_ptr<const RunHits> run, QWidget* parent = nullptr);

  Q_SIGNALS:
    void hitWanted(const lirovan::search::HitPlace& place);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void build();
    void fillBooks();
    void connectParts();
    void sort();
    void showSorted(HitOrder order, std::vector<quint32> hits);
    void showHits();
    void open(const QModelIndex& index);
    void copy();
    void save();
    void saveTo(const QString& path);
    void showState(const QString& text = {});
    /// Runs `work` in its thread; `done` takes what came of it, unless it was stopped.
    template <class T>
    void inBackground(const QString& state, std::function<platform::Result<T>(const data::Library&)> work,
                      std::function<void(T&)> done);
    void popUpMenu(const QPoint& place);

    const data::Library& library_;
    platform::Dialogs& dialogs_;
    std::shared_ptr<const RunHits> run_;
    ContextModel model_;
    HitOrder order_ = HitOrder::Found;
    std::vector<quint32> sorted_;  // all hits, in that order

    QComboBox* books_;
    QComboBox* orders_;
    QLabel* state_;
    QProgressBar* progress_;
    QPushButton* stop_;
    QPushButton* copy_;
    QPushButton* save_;
    QTableView* lines_;
    // Last: it ends before what it works on goes.
    browse::BackgroundWork work_;
};

}  // namespace lirovan::search
