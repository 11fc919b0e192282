// The list of content windows opened with "Yeni Pencerede Aç", and the page that such a window gets.
#pragma once

#include <QString>
#include <vector>

#include "platform/core/paths.h"

namespace lirovan::shell {

/// Windows by number. The first gets 1, number 0 stays empty, and no number is given twice in a run: after
/// three windows, of which the second was closed, the next is 4.
template <class Window>
class ExtraWindows {
  public:
    int add(Window* window) {
        windows_.push_back(window);
        return highest();
    }

    /// Nothing for a number that was never given or has been released.
    Window* at(int number) const {
        return number > 0 && number <= highest() ? windows_[static_cast<std::size_t>(number)] : nullptr;
    }

    void release(int number) {
        if (number > 0 && number <= highest()) windows_[static_cast<std::size_t>(number)] = nullptr;
    }

    int highest() const { return static_cast<int>(windows_.size()) - 1; }

    std::vector<Window*> open() const {
        std::vector<Window*> result;
        for (Window* window : windows_) {
            if (window) result.push_back(window);
        }
        return result;
    }

  private:
    std::vector<Window*> windows_{nullptr};
};

/// Inner HTML of the shared window's page as an extra window shows it: image references become absolute and
/// the home-page entry of the right-click menu is gone.
QString copiedPage(QString html, const platform::AppFolder& folder);

/// The caption of an extra window from that of the shared one: "İçerik Penceresi - Sabır" gives "Sabır". A
/// page that gave the shared window no name has its own title, from `html` as innerHtml() gives it.
QString copiedCaption(QString caption, const QString& html);

}  // namespace lirovan::shell
