// The window "Dağılım": where in the books a run's hits lie.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTableView>
#include <QWidget>
#include <memory>

#include "browse/ui/background_work.h"
#include "platform/core/dialogs.h"
#include "search/ui/distribution_view.h"
#include "search/ui/strip_table.h"

namespace lirovan::search {

class DistributionWindow : public QWidget {
    Q_OBJECT

  public:
    /// `library` and `dialogs` outlive the window. Begins to read at once.
    DistributionWindow(const data::Library& library, platform::Dialogs& dialogs,
                       std::shared_ptr<const RunHits> run, QWidget* parent = nullptr);

  Q_SIGNALS:
    void hitWanted(const lirovan::search::HitPlace& place);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void build();
    void connectParts();
    void read();
    void showDistribution(Distribution distribution);
    /// Strips of the chosen book's topics, or of the books.
    void showStrips();
    void chooseStrip(int row);
    void openRow(const QModelIndex& index);
    void save();
    void showState(const QString& text = {});

    const data::Library& library_;
    platform::Dialogs& dialogs_;
    std::shared_ptr<const RunHits> run_;
    Distribution distribution_;
    bool isWhole_ = false;  // it has the books without hits too
    StripTable rows_;

    QComboBox* book_;
    QCheckBox* empty_;
    QLabel* state_;
    QProgressBar* progress_;
    QPushButton* stop_;
    QPushButton* asTable_;
    QPushButton* save_;
    QStackedWidget* views_;
    DistributionView* strips_;
    QTableView* table_;
    // Last: it ends before what it works on goes.
    browse::BackgroundWork work_;
};

}  // namespace lirovan::search
