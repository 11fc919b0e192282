#include "search/matching/variant_table.h"

#include <QSet>
#include <vector>

#include "platform/core/each_row.h"
#include "text/comparison.h"
#include "text/variant_builder.h"

namespace lirovan::search {

using platform::Error;
using platform::Result;
using platform::Statement;
using platform::Transaction;
using text::WordVariant;
using namespace Qt::StringLiterals;

namespace {

Error interrupted() {
    return {u"İşlem durduruldu; özel kelimeler eskisi gibi kaldı."_s};
}

// The rows of the new table, in the order in which the texts show them.
Result<std::vector<WordVariant>> collectVariants(const data::Library& library,
                                                 const std::function<bool()>& goOn) {
    std::vector<WordVariant> variants;
    QSet<QString> known;  // text forms, folded as the database compares them
    const auto collect = [&](const Statement& topic) -> Result<void> {
        for (WordVariant& variant : text::extractVariants(topic.text(data::catalogue::TopicTextColumn))) {
            QString form = text::folded(variant.textForm);
            if (known.contains(form)) continue;
            known.insert(std::move(form));
            variants.push_back(std::move(variant));
        }
        if (!goOn()) return interrupted();
        return {};
    };
    const Result<void> read = platform::eachRow(library.query(data::catalogue::topics()), collect);
    if (!read) return read.error();
    return variants;
}

}  // namespace

Result<qint64> rebuildVariantTable(const data::Library& library, const std::function<bool()>& goOn) {
    // Reading first keeps the file locked only while it is written.
    const Result<std::vector<WordVariant>> variants = collectVariants(library, goOn);
    if (!variants) return variants.error();

    Result<Transaction> transaction = Transaction::begin(library.database());
    if (!transaction) return transaction.error();
    if (const Result<void> emptied = library.execute(data::catalogue::deleteVariants()); !emptied)
        return emptied.error();
    for (const WordVariant& variant : *variants) {
        const QString insert = data::catalogue::insertVariant(variant.written, variant.textForm);
        if (const Result<void> inserted = library.execute(insert); !inserted) return inserted.error();
        if (!goOn()) return interrupted();
    }
    if (const Result<void> committed = transaction->commit(); !committed) return committed.error();
    return static_cast<qint64>(variants->size());
}

}  // namespace lirovan::search
