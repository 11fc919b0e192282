// The strip over a marked page: each word of the run with its colour, the line that stands under its marks,
// and its counts. A click goes to its next hit.
#pragma once

#include <QToolBar>
#include <functional>
#include <vector>

#include "search/runs/run_words.h"

namespace lirovan::search {

class WordsStrip : public QToolBar {
    Q_OBJECT

  public:
    explicit WordsStrip(QWidget* parent = nullptr);

    std::function<void(const RunWord& word)> chosen;

    /// No words: the page is not a marked one.
    void setWords(std::vector<RunWord> words);
    const std::vector<RunWord>& words() const { return words_; }
    /// The reader does not want to see it.
    void setWanted(bool wanted);

  private:
    void showOrHide();

    std::vector<RunWord> words_;
    bool wanted_ = true;
};

}  // namespace lirovan::search
