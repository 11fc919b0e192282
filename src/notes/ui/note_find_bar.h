// The strip at the notebook's foot that finds words in the note. It changes nothing in the text: hits are
// marked over it.
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QTimer>
#include <QToolBar>
#include <vector>

#include "notes/note_choice.h"

class QTextEdit;

namespace lirovan::notes {

class NoteFindBar : public QToolBar {
    Q_OBJECT

  public:
    /// `box` outlives the strip.
    explicit NoteFindBar(QTextEdit& box, QWidget* parent = nullptr);

    /// Shows the strip with the keys in its box; a selection within a line is what is looked for.
    void open();
    /// Shows it with a query and goes to the first hit; the keys stay in the note.
    void find(const QString& query, const search::SearchOptions& options);
    void step(int by);
    void closeBar();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void search();
    void showHits();
    void goTo(qsizetype hit);

    QTextEdit& box_;
    search::SearchOptions options_;
    QLineEdit* query_;
    QLabel* count_;
    QTimer again_;
    std::vector<NoteHit> hits_;
    qsizetype current_ = -1;
};

}  // namespace lirovan::notes
