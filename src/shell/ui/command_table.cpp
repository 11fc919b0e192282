#include "shell/ui/command_table.h"

#include <algorithm>

#include "platform/core/main_frame.h"
#include "shell/ui/child_windows.h"
#include "shell/ui/page_looks.h"

namespace lirovan::shell {

namespace button = platform::button;
namespace menu = platform::menu;

namespace {

void cutAndDisable(ChildWindows& windows) {
    windows.cut();
    windows.frame().setButtonEnabled(button::Cut, false);
}

// Whoever copied has left the place where the selection could be cut.
void copyAndDisableCut(ChildWindows& windows) {
    windows.copy();
    windows.frame().setButtonEnabled(button::Cut, false);
}

using enum RowState;
using W = ChildWindows;

constexpr CommandRow Toolbar[] = {
    {button::Kitap, u"Kitaplar", {}, Plain, [](W& w) { w.showBrowseTab(browse::Tab::Books); }},
    {button::Arama, u"Arama", {}, Plain, [](W& w) { w.showBrowseTab(browse::Tab::Search); }},
    {button::Icerik, u"İçerik", {}, Lockable, [](W& w) { w.bringContentForward(); }},
    {{}},
    {button::Cut, u"Kes", {}, Plain, cutAndDisable},
    {button::Copy, u"Kopyala", {}, Plain, copyAndDisableCut},
    {button::Paste, u"Yapıştır", {}, Plain, [](W& w) { w.paste(); }},
    {button::Sep1, {}, {}, Hidden},
    {button::Not, u"Not Defteri", {}, Plain, [](W& w) { w.showNotebook(); }},
    {button::Sep2, {}, {}, Hidden},
    {button::Print, u"Yazdır", {}, Plain, [](W& w) { w.printPageDirectly(); }},
    {button::Bosluk, {}, {}, Hidden},
    {button::Buyult,
     u"Yazı Boyutunu Büyült",
     {},
     Hidden | Lockable,
     [](W& w) { w.changeContentFontSize(+1); }},
    {button::Kucult,
     u"Yazı Boyutunu Küçült",
     {},
     Hidden | Lockable,
     [](W& w) { w.changeContentFontSize(-1); }},
    {button::Sep3, {}, {}, Hidden},
    {button::New, u"Yeni Pencerede Aç", {}, Hidden | Disabled | Lockable, [](W& w) { w.openInNewWindow(); }},
    {button::Sep4, {}, {}, Hidden},
    {button::Up, u"Yukarıdaki Kelime", {}, Hidden | Disabled | Lockable, [](W& w) { w.previousHit(); }},
    {button::Down, u"Aşağıdaki Kelime", {}, Hidden | Disabled | Lockable, [](W& w) { w.nextHit(); }},
};

constexpr CommandRow AnaMenu[] = {
    {menu::Arama, u"&Arama Penceresi", u"Ctrl+A", Checked, [](W& w) { w.toggleBrowse(); }},
    {menu::Icerik, u"&İçerik Penceresi", u"Ctrl+I", Checked | Lockable, [](W& w) { w.toggleContent(); }},
    {u"sep1"},
    {u"mnu_NewWindow", u"Yeni P&encerede Aç", u"Ctrl+E", OfPage | Lockable,
     [](W& w) { w.openInNewWindow(); }},
    {u"mnu_not", u"&Not Defteri", u"Ctrl+N", Plain, [](W& w) { w.showNotebook(); }},
    {menu::Sep2, {}, {}, Hidden},
    {menu::Yazdir, u"&Yazdır...", u"Ctrl+Y", Hidden, [](W& w) { w.printPageWithDialog(); }},
    {u"sep3"},
    {u"mnu_cik", u"&Çıkış", {}, Plain, [](W& w) { w.quit(); }},
};

constexpr CommandRow Duzen[] = {
    {menu::Kes, u"Ke&s", u"Ctrl+X", Hidden, [](W& w) { w.cut(); }},
    {menu::Kopyala, u"&Kopyala", u"Ctrl+C", Plain, [](W& w) { w.copy(); }},
    {menu::Yapistir, u"&Yapıştır", u"Ctrl+V", Plain, [](W& w) { w.paste(); }},
};

constexpr CommandRow Listele[] = {
    {u"mnu_Konu",
     u"Konu Başlığına Göre Sırala",
     {},
     Lockable,
     [](W& w) { w.sortResults(search::ListOrder::Konu); }},
    {u"mnu_Kitap",
     u"Kitap Adına Göre Sırala",
     {},
     Lockable,
     [](W& w) { w.sortResults(search::ListOrder::Kitap); }},
    {u"mnu_Oran", u"Orana Göre Sırala", {}, Lockable, [](W& w) { w.sortResults(search::ListOrder::Oran); }},
};

constexpr CommandRow Yazi[] = {
    {u"mnu_yBuyult", u"Yazı Boyutunu Büyült", {}, Lockable, [](W& w) { w.stepZoom(+1); }},
    {u"mnu_yNormal", u"Normal Yazı Boyutu", {}, Lockable, [](W& w) { w.stepZoom(0); }},
    {u"mnu_YKucult", u"Yazı Boyutunu Küçült", {}, Lockable, [](W& w) { w.stepZoom(-1); }},
};

/// A text as an argument of a template.
template <std::size_t Size>
struct Name {
    char16_t text[Size];
    constexpr Name(const char16_t (&name)[Size]) { std::copy_n(name, Size, text); }
};

/// A row that chooses what it is named after.
template <Name name>
constexpr CommandRow look(QStringView caption) {
    return {name.text, caption, {}, Checked, [](W& w) { w.looks().choose(name.text); }};
}

constexpr CommandRow Gorunum[] = {
    look<u"mnu_Beyaz">(u"&Beyaz"),
    look<u"mnu_Sepya">(u"&Sepya"),
    look<u"mnu_Gece">(u"&Gece"),
    look<u"mnu_Masaustu">(u"&Masaüstü Gibi"),
    {u"sep20"},
    look<u"mnu_Tirnakli">(u"&Tırnaklı Yazı"),
    {u"sep21"},
    look<u"mnu_SatirTam">(u"Satırlar Pencere Boyunca"),
    look<u"mnu_SatirGenis">(u"Geniş Satırlar"),
    look<u"mnu_SatirOrta">(u"Orta Satırlar"),
    look<u"mnu_SatirDar">(u"Dar Satırlar"),
    {u"sep22"},
    look<u"mnu_AralikNormal">(u"Olağan Satır Aralığı"),
    look<u"mnu_AralikGenis">(u"Geniş Satır Aralığı"),
    look<u"mnu_AralikCok">(u"Çok Geniş Satır Aralığı"),
    {u"sep23"},
    {u"mnu_Yaklastir", u"&Yakınlaştır", u"Ctrl++; Ctrl+=", Lockable, [](W& w) { w.stepZoom(+1); }},
    {u"mnu_Uzaklastir", u"&Uzaklaştır", u"Ctrl+-", Lockable, [](W& w) { w.stepZoom(-1); }},
    {u"mnu_GercekBoyut", u"Gerçek B&oyut", u"Ctrl+0", Lockable, [](W& w) { w.stepZoom(0); }},
};

constexpr CommandRow Okuma[] = {
    {u"mnu_Geri", u"&Geri", u"Alt+Left", Lockable, [](W& w) { w.goInHistory(-1); }},
    {u"mnu_Ileri", u"&İleri", u"Alt+Right", Lockable, [](W& w) { w.goInHistory(+1); }},
    {u"mnu_OncekiKonu", u"&Önceki Konu", u"Ctrl+PgUp", Lockable, [](W& w) { w.stepTopic(-1); }},
    {u"mnu_SonrakiKonu", u"&Sonraki Konu", u"Ctrl+PgDown", Lockable, [](W& w) { w.stepTopic(+1); }},
    {u"mnu_AgactaGoster", u"Kitap Ağac&ında Göster", u"Ctrl+Shift+K", Lockable,
     [](W& w) { w.showInBookTree(); }},
    {u"sep6"},
    {u"mnu_SonrakiIsabet", u"Sonraki İsabe&t", u"F3", Lockable, [](W& w) { w.stepHit(+1); }},
    {u"mnu_OncekiIsabet", u"Ö&nceki İsabet", u"Shift+F3", Lockable, [](W& w) { w.stepHit(-1); }},
    {u"sep7"},
    {u"mnu_YerImiEkle", u"&Yer İmi Ekle...", u"Ctrl+D", Lockable, [](W& w) { w.addBookmark(); }},
    {u"mnu_YerImleri", u"Yer İm&leri...", u"Ctrl+Shift+D", Lockable, [](W& w) { w.showBookmarks(); }},
    {u"sep8"},
    {u"mnu_SayfadaBul", u"Say&fada Bul...", u"Ctrl+F", Plain, [](W& w) { w.findOnPage(); }},
    {u"mnu_KelimeSeridi", u"Kelime &Şeridi", u"Ctrl+K", Checked, [](W& w) { w.toggleWords(); }},
    {u"mnu_KaynaklaKopyala", u"Kaynağıyla K&opyala", u"Ctrl+Shift+C", Plain,
     [](W& w) { w.copyWithSource(); }},
    {u"mnu_YanYana", u"Yan Yana &Diz", {}, Plain, [](W& w) { w.placeSideBySide(); }},
    {u"mnu_GorunumAc", u"Görünü&m", {}, Plain, nullptr, u"mnu_Gorunum"},
    {u"sep11"},
    {u"mnu_Dagilim", u"Da&ğılım", u"Ctrl+Shift+G", Lockable, [](W& w) { w.showDistribution(); }},
    {u"mnu_Baglam", u"&Bağlam Listesi", u"Ctrl+Shift+B", Lockable, [](W& w) { w.showContexts(); }},
    {u"mnu_OzetKaydet", u"Ö&zeti Kaydet...", {}, Lockable, [](W& w) { w.saveSummary(); }},
    {u"sep10"},
    {u"mnu_KitapEkle", u"Kitap &Ekle...", u"Ctrl+Shift+O", Lockable, [](W& w) { w.chooseBooks(); }},
    {u"mnu_KitapKaldir", u"Kitap &Kaldır...", {}, Lockable, [](W& w) { w.removeBooks(); }},
    {u"sep5"},
    {u"mnu_KitaplikAc", u"Kitaplık &Aç...", {}, Lockable, [](W& w) { w.openLibrary(); }},
    {u"sep9"},
    {u"mnu_Surdur", u"Açılışta Kaldığım Yerden Sü&rdür", {}, Checked, [](W& w) { w.toggleContinues(); }},
};

constexpr CommandRow Yardim[] = {
    {u"mnu_Yardimm", u"&Yardım", {}, Plain, [](W& w) { w.showHelp(); }},
    {u"sep4"},
    {u"mnu_Hakkında", u"&Hakkında", {}, Plain, [](W& w) { w.showAbout(); }},
};

constexpr CommandBar Menus[] = {
    {u"mnu_AnaMenu", u"&Ana Menü", AnaMenu}, {u"mnu_Duzen", u"&Düzen", Duzen},
    {u"mnu_listele", {}, Listele},           {u"mnu_yazi", {}, Yazi},
    {u"mnu_Gorunum", {}, Gorunum},           {u"mnu_Okuma", u"&Okuma", Okuma},
    {u"mnu_Yardim", u"&Yardım", Yardim},
};

}  // namespace

std::span<const CommandRow> toolbarRows() {
    return Toolbar;
}

std::span<const CommandBar> menuBars() {
    return Menus;
}

const CommandRow& toolbarRow(QStringView button) {
    return *std::ranges::find(Toolbar, button, &CommandRow::name);
}

}  // namespace lirovan::shell
