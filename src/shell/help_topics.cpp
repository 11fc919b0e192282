#include "shell/help_topics.h"

namespace lirovan::shell {
namespace {

constexpr HelpTopic Topics[] = {
    {u"cmdKitap", u"Label1", u"Kitaplar", u"lblKitaplar", u"kitaplar", u"tlbtn_Kitap", browse::Tab::Books},
    {u"cmdArama", u"Label2", u"Arama", u"lblArama", u"arama", u"tlbtn_Arama", browse::Tab::Search},
    {u"cmdNot", u"Label3", u"Not Defteri", u"lblNotlar", u"notlar", u"not", std::nullopt},
};

}  // namespace

std::span<const HelpTopic> helpTopics() {
    return Topics;
}

}  // namespace lirovan::shell
