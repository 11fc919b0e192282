#include "tools/book_reader/cleaner.h"

#include <algorithm>
#include <array>

#include "tools/book_reader/text_form.h"

namespace lirovan::book_reader {

using namespace Qt::StringLiterals;
namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QByteArray bytes(std::string_view utf8) {
    return {utf8.data(), static_cast<qsizetype>(utf8.size())};
}

bool isRightToLeftLanguage(const QString& language) {
    constexpr std::array<QStringView, 10> codes{u"ar", u"he", u"fa", u"ur", u"ps",
                                                u"yi", u"sd", u"ug", u"dv", u"ckb"};
    return std::find(codes.begin(), codes.end(), QStringView(language).split(u'-').first()) != codes.end();
}

// A small number, as lists and cells have them.
QByteArray number(std::string_view value) {
    if (value.empty() || value.size() > 5 ||
        !std::all_of(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; }))
        return {};
    return bytes(value);
}

bool isCell(Tag tag) {
    return tag == Tag::Td || tag == Tag::Th;
}

TopicText::BlockKind kindOf(Tag tag, std::string_view output) {
    TopicText::BlockKind kind;
    kind.name = bytes(output);
    kind.textOnly =
        output == "P" || headingLevel(tag) > 0 || tag == Tag::Pre || tag == Tag::Caption || tag == Tag::Dt;
    kind.holdsText = kind.textOnly || tag == Tag::Li || tag == Tag::Dd || isCell(tag);
    kind.keepEmpty = isCell(tag);
    kind.keepLines = tag == Tag::Pre;
    return kind;
}

QByteArray attributesOf(const Markup& markup, quint32 i, Tag tag) {
    QByteArray out;
    const auto add = [&](const char* name) {
        if (const QByteArray value = number(markup.attribute(i, name)); !value.isEmpty())
            out += ' ' + QByteArray(name) + "=\"" + value + '"';
    };
    if (isCell(tag)) add("colspan"), add("rowspan");
    if (tag == Tag::Ol) {
        add("start");
        const std::string_view type = markup.attribute(i, "type");
        if (type == "a" || type == "A" || type == "i" || type == "I") out += " type=\"" + bytes(type) + '"';
    }
    if (tag == Tag::Li) add("value");
    if (tag == Tag::Table) out += " border=\"1\"";
    return out;
}

}  // namespace

void Cleaner::clean(const Markup& markup, int document, const QString& name, const QString& language) {
    markup_ = &markup;
    document_ = document;
    name_ = name;
    open_.clear();
    rightToLeft_ = false;
    // The root's direction, or that of its language, stands around everything.
    const bool wantsRightToLeft = isRightToLeftLanguage(language);
    beginEntries(0);
    if (wantsRightToLeft) {
        text_->openBlock({"div", " dir=\"rtl\"", false, false, false, false});
        rightToLeft_ = true;
    }
    for (quint32 i = 0; i < markup.size(); ++i) {
        beginEntries(i);
        const Markup::Token& token = markup[i];
        if (token.kind == Markup::Kind::Text)
            text_->text(text(markup.text(i)));
        else if (token.kind == Markup::Kind::End)
            end(i);
        else
            i = start(i);
    }
    text_->boundary();
    if (wantsRightToLeft) text_->closeBlock();
}

void Cleaner::finish() {
    sink_(entry_, main_.take());
}

void Cleaner::beginEntries(quint32 token) {
    const auto& cuts = plan_.outline.cuts;
    while (nextCut_ < cuts.size() && cuts[nextCut_].first <= Position{document_, token}) {
        if (entry_ >= 0) sink_(entry_, main_.take());
        entry_ = cuts[nextCut_++].second;
    }
}

void Cleaner::placesAt(quint32 i) {
    for (const char* attribute : {"id", "name"}) {
        if (attribute[0] == 'n' && (*markup_)[i].tag != Tag::A) continue;
        const std::string_view value = markup_->attribute(i, attribute);
        if (value.empty()) continue;
        if (const QByteArray place = plan_.placeOf(document_, text(value)); !place.isEmpty())
            text_->place(place);
    }
    if ((*markup_)[i].tag == Tag::A)
        if (const QByteArray place = plan_.referencePlace(document_, i); !place.isEmpty())
            text_->place(place);
}

bool Cleaner::changesDirection(quint32 i, bool& rightToLeft) const {
    const std::string_view value = markup_->attribute(i, "dir");
    rightToLeft = value == "rtl";
    return (rightToLeft || value == "ltr") && rightToLeft != rightToLeft_;
}

quint32 Cleaner::start(quint32 i) {
    const TagRule& rule = markup_->rule(i);
    const quint32 last = (*markup_)[i].partner;
    if (rule.tag == Tag::Head) return last;
    const int note = note_ < 0 ? plan_.noteAt(document_, i) : -1;
    if (note >= 0) beginNote(i, note);
    if (rule.tag == Tag::Svg || rule.tag == Tag::Img || rule.tag == Tag::Image || rule.tag == Tag::Object) {
        placesAt(i);
        return picture(i);
    }
    if (rule.role == Role::Skipped) {
        placesAt(i);
        if (rule.tag == Tag::Audio) pictures_.skip(name_, u"içindeki ses"_s);
        if (rule.tag == Tag::Video) pictures_.skip(name_, u"içindeki film"_s);
        return last;
    }
    Open open;
    open.token = i;
    if (rule.tag == Tag::Br)
        text_->lineBreak();
    else if (rule.tag == Tag::Hr)
        text_->rule();
    else if (rule.role == Role::Block || rule.role == Role::Boundary)
        block(i, rule, open);
    else
        inlineElement(i, rule, open);
    placesAt(i);
    open_.push_back(std::move(open));
    return i;
}

void Cleaner::block(quint32 i, const TagRule& rule, Open& open) {
    bool rightToLeft = false;
    const bool turns = changesDirection(i, rightToLeft);
    const QByteArray direction =
        turns ? QByteArray(rightToLeft ? " dir=\"rtl\"" : " dir=\"ltr\"") : QByteArray();
    if (turns) {
        open.leavesRightToLeft = true;
        open.rightToLeftBefore = rightToLeft_;
        rightToLeft_ = rightToLeft;
    }
    // A note's list item stands in the list of its own that beginNote() opened, or is a paragraph.
    const bool loose =
        note_ >= 0 && plan_.notes[static_cast<size_t>(note_)].first == i && rule.tag != Tag::Li;
    const bool paragraph = rule.output == "P";
    if (rule.role == Role::Boundary || paragraph || (loose && rule.tag == Tag::Dd)) {
        text_->boundary();
        if (turns) {
            text_->openBlock({"div", direction, false, false, false, false});
            ++open.blocks;
        }
        open.boundary = true;
        if (!paragraph) return;
    }
    text_->openBlock([&] {
        TopicText::BlockKind kind = kindOf(rule.tag, rule.output);
        kind.attributes = attributesOf(*markup_, i, rule.tag) + (paragraph ? QByteArray() : direction);
        return kind;
    }());
    ++open.blocks;
}

void Cleaner::inlineElement(quint32 i, const TagRule& rule, Open& open) {
    if (rule.tag == Tag::A) return link(i, open);
    if (rule.tag == Tag::Q) {
        text_->text(u"\""_s);
        open.quote = true;
    }
    QByteArray name = bytes(rule.output), attributes;
    const std::string_view style = markup_->attribute(i, "style");
    if (name.isEmpty() && !style.empty()) {
        if (style.find("italic") != std::string_view::npos) name = "i";
        if (style.find("font-weight") != std::string_view::npos &&
            style.find("bold") != std::string_view::npos)
            name = "B";
    }
    bool rightToLeft = false;
    if (changesDirection(i, rightToLeft)) {
        if (name.isEmpty()) name = rule.tag == Tag::Bdo ? "bdo" : "span";
        attributes = rightToLeft ? " dir=\"rtl\"" : " dir=\"ltr\"";
        open.leavesRightToLeft = true;
        open.rightToLeftBefore = rightToLeft_;
        rightToLeft_ = rightToLeft;
    }
    if (name.isEmpty()) return;
    text_->openInline(name, attributes);
    ++open.inlines;
}

void Cleaner::link(quint32 i, Open& open) {
    if (const Link* link = plan_.linkAt(document_, i)) {
        const LinkTarget target = plan_.target(*link);
        if (target.entry < 0) return;
        const int own = note_ >= 0 ? plan_.notes[static_cast<size_t>(note_)].entry : entry_;
        QByteArray href = target.entry == own && !target.place.isEmpty()
                              ? QByteArray()
                              : "konu:" + QByteArray::number(target.entry);
        if (!target.place.isEmpty()) href += '#' + target.place;
        text_->openInline("a", " href=\"" + href + '"');
        ++open.inlines;
        return;
    }
    const QString href = text(markup_->attribute(i, "href")).trimmed();
    for (const QStringView scheme : {u"http:", u"https:", u"mailto:", u"ftp:"}) {
        if (!href.startsWith(scheme, Qt::CaseInsensitive) || href.size() > 2000) continue;
        QString address = scheme == u"mailto:" ? href.mid(7) : href;
        QString bare = address.section(u"//"_s, 1);
        if (bare.endsWith(u'/')) bare.chop(1);
        if (bare.isEmpty()) bare = address;
        if (!markup_->simplifiedText(i).contains(bare)) open.address = address;
    }
}

void Cleaner::end(quint32 i) {
    if (open_.empty() || open_.back().token != (*markup_)[i].partner) return;
    Open open = std::move(open_.back());
    open_.pop_back();
    if (open.quote) text_->text(u"\""_s);
    for (; open.inlines > 0; --open.inlines) text_->closeInline();
    if (!open.address.isEmpty()) text_->text(u" (%1)"_s.arg(open.address), false);
    if (open.boundary && open.blocks == 0) text_->boundary();
    for (; open.blocks > 0; --open.blocks) text_->closeBlock();
    if (open.leavesRightToLeft) rightToLeft_ = open.rightToLeftBefore;
    if (note_ >= 0 && plan_.notes[static_cast<size_t>(note_)].last == i) endNote();
}

quint32 Cleaner::picture(quint32 i) {
    const quint32 last = (*markup_)[i].partner;
    const TagRule& rule = markup_->rule(i);
    if (rule.tag == Tag::Svg) {
        drawing(i);
        return last;
    }
    std::string_view href = markup_->attribute(i, rule.tag == Tag::Object  ? "data"
                                                  : rule.tag == Tag::Image ? "xlink:href"
                                                                           : "src");
    if (rule.tag == Tag::Image && href.empty()) href = markup_->attribute(i, "href");
    const QString address = text(href).section(u'#', 0, 0);
    const bool foreign = address.contains(u"://") || address.startsWith(u"data:");
    if (rule.tag == Tag::Object && markup_->attribute(i, "type").substr(0, 6) != "image/") {
        pictures_.skip(address.isEmpty() ? name_ : address.section(u'/', -1), u"gömülü nesne"_s);
        return last;
    }
    if (foreign)
        pictures_.skip(address.left(80), u"kitabın dışındaki resim"_s);
    else if (!address.isEmpty())
        showPicture(pictures_.ofFile(resolvedName(name_, address)), markup_->attribute(i, "alt"));
    return last;
}

// A drawing that only frames one picture gives that picture.
void Cleaner::drawing(quint32 i) {
    quint32 image = 0;
    int shapes = 0;
    for (quint32 j = i + 1; j < (*markup_)[i].partner; ++j) {
        if (!markup_->isStart(j)) continue;
        const std::string_view name = markup_->name(j);
        if (name == "image")
            image = image == 0 ? j : image, ++shapes;
        else if (name != "g" && name != "title" && name != "desc" && name != "defs" && name != "metadata")
            shapes += 2;
    }
    if (image != 0 && shapes == 1)
        picture(image);
    else
        showPicture(pictures_.ofDrawing(*markup_, i, name_), {});
}

void Cleaner::showPicture(int number_, std::string_view alt) {
    if (number_ < 0) return;
    QByteArray attributes = " src=\"resim:" + QByteArray::number(number_) + '"';
    if (const QString said = inTextForm(text(alt)).simplified().left(200); !said.isEmpty())
        attributes += " alt=\"" + escaped(said) + '"';
    text_->picture(attributes);
}

void Cleaner::beginNote(quint32 i, int note) {
    note_ = note;
    const Note& moved = plan_.notes[static_cast<size_t>(note)];
    noteText_ = TopicText();
    text_ = &noteText_;
    if (rightToLeft_) text_->openBlock({"div", " dir=\"rtl\"", false, false, false, false});
    if ((*markup_)[i].tag == Tag::Li)
        text_->openBlock({moved.marker.isEmpty() ? "ul" : "ol",
                          moved.marker.isEmpty() ? QByteArray() : " start=\"" + moved.marker.toLatin1() + '"',
                          false, false, false, false});
    if (!moved.backPlace.isEmpty()) text_->before("<a href=\"#" + moved.backPlace + "\">↑</a> ");
}

void Cleaner::endNote() {
    noteSink_(note_, noteText_.take());
    text_ = &main_;
    note_ = -1;
}

}  // namespace lirovan::book_reader
