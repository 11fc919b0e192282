#include "data/book_variants.h"

#include "data/book_tables.h"
#include "data/catalogue.h"
#include "text/comparison.h"

namespace lirovan::data {

using platform::Database;
using platform::Result;
using platform::Statement;
using platform::Step;
using text::WordVariant;

Result<void> VariantAdder::add(QStringView text) {
    for (const WordVariant& variant : text::extractVariants(text)) {
        const QString form = text::folded(variant.textForm);
        if (known_.contains(form)) continue;
        known_.insert(form);
        const Result<void> added =
            execute(database_,
                    u"INSERT INTO tbl_KelimeKont (KelimeKontYazili, KelimeKontAra) SELECT ?1, ?2 WHERE NOT "
                    u"EXISTS (SELECT 1 FROM tbl_KelimeKont WHERE KelimeKontAra=?2)",
                    variant.written, variant.textForm);
        if (!added) return added;
    }
    return {};
}

void VariantRemover::remember(QStringView text) {
    for (const WordVariant& variant : text::extractVariants(text))
        forms_.insert(text::folded(variant.textForm), variant);
}

Result<void> VariantRemover::setSpelling(const Database& database, const WordVariant& variant) {
    return execute(
        database,
        u"UPDATE tbl_KelimeKont SET KelimeKontYazili=?1, KelimeKontAra=?2 WHERE KelimeKontAra=?2 AND "
        u"(KelimeKontAra<>?2 COLLATE BINARY OR KelimeKontYazili<>?1 COLLATE BINARY)",
        variant.written, variant.textForm);
}

Result<bool> VariantRemover::settle(const Database& database, const std::function<bool()>& goOn) {
    if (forms_.isEmpty()) return true;
    Result<Statement> texts =
        prepared(database, catalogue::topicTextsFromRow(), std::numeric_limits<qint64>::min());
    if (!texts) return texts.error();
    while (!forms_.isEmpty()) {
        const Result<Step> step = texts->step();
        if (!step) return step.error();
        if (*step == Step::Done) break;
        if (!goOn()) return false;
        for (const WordVariant& variant : text::extractVariants(texts->text(0)))
            if (forms_.remove(text::folded(variant.textForm)))
                if (const Result<void> set = setSpelling(database, variant); !set) return set.error();
    }
    for (const WordVariant& gone : std::as_const(forms_)) {
        const Result<void> removed =
            execute(database, u"DELETE FROM tbl_KelimeKont WHERE KelimeKontAra=?", gone.textForm);
        if (!removed) return removed.error();
    }
    return true;
}

}  // namespace lirovan::data
