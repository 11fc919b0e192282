// The reader's choice of how pages look, as the items of "Görünüm" show it.
#pragma once

#include <QStringView>
#include <utility>
#include <vector>

#include "platform/core/page_look.h"

namespace lirovan::shell {

/// Names of menu items; those of a choice in the order of its values.
inline constexpr QStringView ColourItems[] = {u"mnu_Beyaz", u"mnu_Sepya", u"mnu_Gece", u"mnu_Masaustu"};
inline constexpr QStringView WidthItems[] = {u"mnu_SatirTam", u"mnu_SatirGenis", u"mnu_SatirOrta",
                                             u"mnu_SatirDar"};
inline constexpr QStringView SpacingItems[] = {u"mnu_AralikNormal", u"mnu_AralikGenis", u"mnu_AralikCok"};
inline constexpr QStringView SerifItem = u"mnu_Tirnakli", WordsItem = u"mnu_KelimeSeridi";

/// The look after a click on an item; another item leaves it as it is.
platform::PageLook lookAfter(platform::PageLook look, QStringView item);
/// Whether an item of "Görünüm" has its check mark.
std::vector<std::pair<QStringView, bool>> checkedItems(const platform::PageLook& look);

}  // namespace lirovan::shell
