// Word variants of single books: what a rebuild of the whole table would come to, without the rebuild.
#pragma once

#include <QHash>
#include <QSet>
#include <QString>
#include <functional>

#include "platform/core/database.h"
#include "platform/core/result.h"
#include "text/variant_builder.h"

namespace lirovan::data {

/// Adds the variants of texts that come to the library, each form once.
class VariantAdder {
  public:
    explicit VariantAdder(platform::Database database) : database_(std::move(database)) {}
    platform::Result<void> add(QStringView text);

  private:
    platform::Database database_;
    QSet<QString> known_;  // folded, as the database compares
};

/// Takes out the variants of texts that leave the library.
class VariantRemover {
  public:
    /// A text that is about to go.
    void remember(QStringView text);
    /// Behind the removal: looks through the texts that stayed. A form that none of them has goes; one that
    /// they spell otherwise is spelled as the first of them does. `goOn` is asked now and then; false: an
    /// empty answer.
    platform::Result<bool> settle(const platform::Database& database, const std::function<bool()>& goOn);

  private:
    platform::Result<void> setSpelling(const platform::Database& database, const text::WordVariant& variant);
    QHash<QString, text::WordVariant> forms_;  // folded form
};

}  // namespace lirovan::data
