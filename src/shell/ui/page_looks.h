// The look of all pages and the zoom of the content window: chosen in "Görünüm", kept over a restart.
#pragma once

#include <QObject>
#include <memory>

#include "platform/core/main_frame.h"
#include "platform/core/page_look.h"
#include "platform/ui/web_engine.h"
#include "shell/reg_api.h"

namespace lirovan::shell {

class PageLooks : public QObject {
  public:
    PageLooks(platform::MainFrame& frame, reg_api& registry);

    /// A click on an item of "Görünüm".
    void choose(QStringView item);
    /// The engine's pages have the look from now on.
    void apply(std::shared_ptr<platform::WebEngine> engine);

    /// The strip of the run's words, and with it the cues under the marks.
    void showWords(bool shown);
    bool wordsShown() const { return wordsShown_; }

    /// Points of mnu_yazi, 10 being 100 %; nothing kept gives `otherwise`.
    int keptPoints(int otherwise) const;
    void keepPoints(int points);

  protected:
    /// The desktop may get other colours.
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    int number(QStringView value, int otherwise) const;
    void keep(QStringView value, const RegValue& what);
    void showChoice();
    void giveStyle();

    platform::MainFrame& frame_;
    reg_api& registry_;
    std::shared_ptr<platform::WebEngine> engine_;
    platform::PageLook look_;
    bool wordsShown_ = true;
};

}  // namespace lirovan::shell
