// What is wrong with the added books of a library.
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <QStringList>

#include "platform/core/database.h"
#include "platform/core/result.h"

namespace lirovan::data {

/// Part of checkLibrary(): gets every topic text in turn, and tells at the end, in Turkish, of
/// - links to topics and pictures that the library has not, each once;
/// - pictures without a book, shown by no topic, or whose bytes are no such picture;
/// - sources without a book; a table of added books that is missing beside the others.
class BookCheck {
  public:
    explicit BookCheck(platform::Database database) : database_(std::move(database)) {}
    void look(const QString& topic, const QString& text);
    platform::Result<QStringList> faults();

  private:
    platform::Result<void> checkPictures(QStringList& faults);

    platform::Database database_;
    QHash<qint64, QString> topicLinks_, shown_;  ///< number linked to: the first topic that does
};

}  // namespace lirovan::data
