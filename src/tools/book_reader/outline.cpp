#include "tools/book_reader/outline.h"

#include <QSet>
#include <algorithm>

#include "text/comparison.h"
#include "tools/book_reader/text_form.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

constexpr int DeepestEntry = 30;

class Maker {
  public:
    Maker(const Package& package, const std::vector<DocumentScan>& scans, const QStringList& covers)
        : package_(package), scans_(scans), covers_(covers) {
        for (int i = 0; i < package.documents.size(); ++i) numbers_.insert(package.documents[i], i);
    }

    Outline run() {
        fromContents();
        // A list that names hardly anything says nothing about the book.
        if (named_.isEmpty() || named_.size() * 10 < package_.documents.size()) {
            outline_.entries.clear();
            outline_.fromHeadings = package_.needsContents;
            fromHeadings();
            if (outline_.entries.empty()) fromDocuments();
        }
        addStart();
        order();
        cuts();
        return std::move(outline_);
    }

  private:
    std::vector<Entry>& entries() { return outline_.entries; }

    void add(QString title, int depth, Position position, bool cover = false) {
        depth = std::clamp(depth, 0, DeepestEntry);
        while (!open_.empty() && entries()[static_cast<size_t>(open_.back())].depth >= depth)
            open_.pop_back();
        const int parent = open_.empty() ? -1 : open_.back();
        const int own = parent < 0 ? 0 : entries()[static_cast<size_t>(parent)].depth + 1;
        open_.push_back(static_cast<int>(entries().size()));
        entries().push_back({std::move(title), own, parent, position, false, cover});
    }

    void fromContents() {
        open_.clear();
        for (const ContentsEntry& entry : package_.contents) {
            const int document = numbers_.value(entry.document, -1);
            Position position;
            if (document >= 0) position = placeOf(document, entry.fragment);
            if (document >= 0) named_.insert(document);
            QString title = entry.title;
            if (title.isEmpty() && document >= 0) title = titleOf(document);
            add(title.isEmpty() ? u"(adsız)"_s : title, entry.depth, position,
                covers_.contains(entry.document));
        }
    }

    // A place that is missing leads nowhere, unless nothing else names its document: then to its beginning.
    Position placeOf(int document, const QString& fragment) {
        if (fragment.isEmpty()) return {document, 0};
        const auto& places = scans_[static_cast<size_t>(document)].places;
        for (const QString& id : {fragment, decodedFragment(fragment)})
            if (const auto found = places.constFind(id); found != places.cend())
                return {document, found->token};
        return named_.contains(document) ? Position{} : Position{document, 0};
    }

    QString titleOf(int document) const {
        const DocumentScan& scan = scans_[static_cast<size_t>(document)];
        if (!scan.headings.empty()) return scan.headings.front().text;
        if (!scan.title.isEmpty()) return scan.title;
        return scan.firstWords;
    }

    bool isBookTitle(int document, size_t index) const {
        const auto& headings = scans_[static_cast<size_t>(document)].headings;
        const Heading& heading = headings[index];
        if (document != 0 || index != 0 || headings.size() < 2) return false;
        return heading.isTitle ||
               text::equal(heading.text, package_.title.simplified(), text::Comparison::CaseInsensitive);
    }

    void fromHeadings() {
        open_.clear();
        std::vector<int> levels;  // of the open entries
        bool skippedTitle = false;
        for (int document = 0; document < static_cast<int>(scans_.size()); ++document) {
            const auto& headings = scans_[static_cast<size_t>(document)].headings;
            for (size_t i = 0; i < headings.size(); ++i) {
                // The title of the whole stands over the first entry.
                if (isBookTitle(document, i)) {
                    skippedTitle = true;
                    continue;
                }
                while (!levels.empty() && levels.back() >= headings[i].level) levels.pop_back();
                const bool first = i == 0 || (i == 1 && skippedTitle && document == 0);
                const bool fromTop = first && (document > 0 || skippedTitle || package_.needsContents);
                add(headings[i].text, static_cast<int>(levels.size()),
                    {document, fromTop ? 0 : headings[i].token});
                levels.push_back(headings[i].level);
            }
        }
    }

    void fromDocuments() {
        open_.clear();
        for (int document = 0; document < static_cast<int>(scans_.size()); ++document) {
            QString title = titleOf(document);
            if (scans_.size() == 1 && !package_.title.isEmpty()) title = package_.title;
            add(title.isEmpty() ? package_.documents[document].section(u'/', -1) : title, 0, {document, 0});
        }
    }

    void addStart() {
        Position first{static_cast<int>(scans_.size()), 0};
        for (const Entry& entry : entries())
            if (entry.position.document >= 0) first = std::min(first, entry.position);
        if (first <= Position{0, 0}) return;
        const DocumentScan& scan = scans_.front();
        QString title = !scan.headings.empty() && Position{0, scan.headings.front().token} < first
                            ? scan.headings.front().text
                            : scan.title;
        if (title.isEmpty() || scans_.size() == 1) title = package_.title;
        if (title.isEmpty()) title = u"Başlangıç"_s;
        for (Entry& entry : entries())
            if (entry.parent >= 0) ++entry.parent;
        entries().insert(entries().begin(), {title, 0, -1, {0, 0}, true, false});
    }

    // A contents list that jumps back and forth is brought into reading order, families kept together.
    void order() {
        const size_t count = entries().size();
        std::vector<Position> begins(count);
        const Position end{static_cast<int>(scans_.size()), 0};
        bool ordered = true;
        Position last{};
        for (size_t i = 0; i < count; ++i) {
            begins[i] = entries()[i].position;
            if (begins[i].document < 0) continue;
            ordered = ordered && last <= begins[i];
            last = begins[i];
        }
        if (ordered) return;
        for (size_t i = count; i-- > 0;) {
            if (begins[i].document < 0) begins[i] = end;
            if (const int parent = entries()[i].parent;
                parent >= 0 && (begins[static_cast<size_t>(parent)].document < 0 ||
                                begins[i] < begins[static_cast<size_t>(parent)]))
                begins[static_cast<size_t>(parent)] = begins[i];
        }
        std::vector<std::vector<int>> children(count + 1);
        for (size_t i = 0; i < count; ++i)
            children[static_cast<size_t>(qint64{entries()[i].parent} + 1)].push_back(static_cast<int>(i));
        std::vector<int> numbers(count, -1), stack;
        std::vector<Entry> sorted;
        const auto push = [&](std::vector<int>& siblings) {
            std::stable_sort(siblings.begin(), siblings.end(), [&](int a, int b) {
                return begins[static_cast<size_t>(a)] < begins[static_cast<size_t>(b)];
            });
            stack.insert(stack.end(), siblings.rbegin(), siblings.rend());
        };
        push(children[0]);
        while (!stack.empty()) {
            const int index = stack.back();
            stack.pop_back();
            numbers[static_cast<size_t>(index)] = static_cast<int>(sorted.size());
            Entry entry = entries()[static_cast<size_t>(index)];
            if (entry.parent >= 0) entry.parent = numbers[static_cast<size_t>(entry.parent)];
            sorted.push_back(std::move(entry));
            push(children[static_cast<size_t>(index) + 1]);
        }
        entries() = std::move(sorted);
    }

    void cuts() {
        for (size_t i = 0; i < entries().size(); ++i)
            if (entries()[i].position.document >= 0)
                outline_.cuts.emplace_back(entries()[i].position, static_cast<int>(i));
        std::stable_sort(outline_.cuts.begin(), outline_.cuts.end(),
                         [](const auto& a, const auto& b) { return a.first < b.first; });
    }

    const Package& package_;
    const std::vector<DocumentScan>& scans_;
    const QStringList& covers_;
    QHash<QString, int> numbers_;
    QSet<int> named_;
    Outline outline_;
    std::vector<int> open_;
};

}  // namespace

int Outline::owner(Position position) const {
    const auto behind = std::upper_bound(cuts.begin(), cuts.end(), position,
                                         [](const Position& p, const auto& cut) { return p < cut.first; });
    return behind == cuts.begin() ? -1 : std::prev(behind)->second;
}

Outline makeOutline(const Package& package, const std::vector<DocumentScan>& scans,
                    const QStringList& covers) {
    return Maker(package, scans, covers).run();
}

}  // namespace lirovan::book_reader
