// Pages as the views were given them. Every view has the page file under an address of its own, which answers
// with what that view was told to show, whatever the file holds by then: views, and programs on one folder,
// write the same file.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>
#include <map>

namespace lirovan::platform {

struct GivenPage {
    QString file;  ///< real path of the file in whose place the page stands
    QByteArray bytes;
    QByteArray contentType;
};

class GivenPages {
  public:
    /// The number of a new view; it has no page yet.
    int open() { return ++last_; }
    void give(int view, GivenPage page) { pages_[view] = std::move(page); }
    void close(int view) { pages_.erase(view); }

    const GivenPage* of(int view) const;
    /// The page at an address that addressOf() made from the address of its file.
    const GivenPage* at(const QUrl& address) const;
    static QUrl addressOf(int view, QUrl fileAddress);

  private:
    std::map<int, GivenPage> pages_;
    int last_ = 0;
};

}  // namespace lirovan::platform
