// Where the reader stopped: windows, tree, page and searches of one library, as values and as text.
#pragma once

#include <QByteArray>
#include <QRect>
#include <QString>
#include <optional>
#include <vector>

#include "browse/page_identity.h"
#include "platform/core/page_place.h"
#include "platform/core/result.h"
#include "search/runs/asked_searches.h"

namespace lirovan::desk {

/// The page that was read last: a topic, also where it was shown with its hits.
struct LastPage {
    data::TopicId topic;
    data::BookId book;
    QString heading, bookTitle;
    std::optional<platform::PagePlace> place;
};

struct Session {
    bool continues = false;  ///< "Açılışta Kaldığım Yerden Sürdür"
    QRect window;            ///< of the main window while it is neither maximised nor minimised; pixels
    bool maximized = true;
    double browseWidth = 0;  ///< twips; 0: not known
    int tab = 0;             ///< of tb_Arama
    std::vector<data::AuthorId> unfoldedAuthors;
    std::vector<data::BookId> unfoldedBooks;
    std::optional<LastPage> page;
    search::AskedSearches searches;
};

QByteArray sessionJson(const Session& session);
/// Whatever cannot be read is as at the first start.
Session sessionFromJson(const QByteArray& json);

/// Reads and writes the row of the session. `path`: of the reader's file.
platform::Result<Session> readSession(const QString& path);
platform::Result<void> writeSession(const QString& path, const Session& session);

}  // namespace lirovan::desk
