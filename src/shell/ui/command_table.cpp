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

using enum Command;
using enum RowState;
using W = ChildWindows;

constexpr CommandRow Toolbar[] = {
    {button::Kitap, ShowBooks, u"Kitaplar", {}, Plain, [](W& w) { w.showBrowseTab(browse::Tab::Books); }},
    {button::Arama, ShowSearch, u"Arama", {}, Plain, [](W& w) { w.showBrowseTab(browse::Tab::Search); }},
    {button::Icerik, ShowContent, u"İçerik", {}, Lockable, [](W& w) { w.bringContentForward(); }},
    {{}},
    {button::Cut, Cut, u"Kes", {}, Plain, cutAndDisable},
    {button::Copy, Copy, u"Kopyala", {}, Plain, copyAndDisableCut},
    {button::Paste, Paste, u"Yapıştır", {}, Plain, [](W& w) { w.paste(); }},
    {button::Sep1, None, {}, {}, Hidden},
    {button::Not, ShowNotebook, u"Not Defteri", {}, Plain, [](W& w) { w.showNotebook(); }},
    {button::Sep2, None, {}, {}, Hidden},
    {button::Print, PrintDirectly, u"Yazdır", {}, Plain, [](W& w) { w.printPageDirectly(); }},
    {button::Bosluk, None, {}, {}, Hidden},
    {button::Buyult,
     LargerType,
     u"Yazı Boyutunu Büyült",
     {},
     Hidden | Lockable,
     [](W& w) { w.changeContentFontSize(+1); }},
    {button::Kucult,
     SmallerType,
     u"Yazı Boyutunu Küçült",
     {},
     Hidden | Lockable,
     [](W& w) { w.changeContentFontSize(-1); }},
    {button::Sep3, None, {}, {}, Hidden},
    {button::New,
     OpenInNewWindow,
     u"Yeni Pencerede Aç",
     {},
     Hidden | Disabled | Lockable,
     [](W& w) { w.openInNewWindow(); }},
    {button::Sep4, None, {}, {}, Hidden},
    {button::Up,
     PreviousHit,
     u"Yukarıdaki Kelime",
     {},
     Hidden | Disabled | Lockable,
     [](W& w) { w.previousHit(); }},
    {button::Down, NextHit, u"Aşağıdaki Kelime", {}, Hidden | Disabled | Lockable, [](W& w) { w.nextHit(); }},
};

constexpr CommandRow AnaMenu[] = {
    {menu::Arama, ToggleBrowse, u"&Arama Penceresi", u"Ctrl+A", Checked, [](W& w) { w.toggleBrowse(); }},
    {menu::Icerik, ToggleContent, u"&İçerik Penceresi", u"Ctrl+I", Checked | Lockable,
     [](W& w) { w.toggleContent(); }},
    {u"sep1"},
    {u"mnu_NewWindow", OpenInNewWindow, u"Yeni P&encerede Aç", u"Ctrl+E", Lockable,
     [](W& w) { w.openInNewWindow(); }},
    {u"mnu_not", ShowNotebook, u"&Not Defteri", u"Ctrl+N", Plain, [](W& w) { w.showNotebook(); }},
    {menu::Sep2, None, {}, {}, Hidden},
    {menu::Yazdir, PrintWithDialog, u"&Yazdır...", u"Ctrl+Y", Hidden, [](W& w) { w.printPageWithDialog(); }},
    {u"sep3"},
    {u"mnu_cik", Quit, u"&Çıkış", {}, Plain, [](W& w) { w.quit(); }},
};

constexpr CommandRow Duzen[] = {
    {menu::Kes, Cut, u"Ke&s", u"Ctrl+X", Hidden, [](W& w) { w.cut(); }},
    {menu::Kopyala, Copy, u"&Kopyala", u"Ctrl+C", Plain, [](W& w) { w.copy(); }},
    {menu::Yapistir, Paste, u"&Yapıştır", u"Ctrl+V", Plain, [](W& w) { w.paste(); }},
};

constexpr CommandRow Listele[] = {
    {u"mnu_Konu",
     SortByHeading,
     u"Konu Başlığına Göre Sırala",
     {},
     Lockable,
     [](W& w) { w.sortResults(search::ListOrder::Konu); }},
    {u"mnu_Kitap",
     SortByBook,
     u"Kitap Adına Göre Sırala",
     {},
     Lockable,
     [](W& w) { w.sortResults(search::ListOrder::Kitap); }},
    {u"mnu_Oran",
     SortByRatio,
     u"Orana Göre Sırala",
     {},
     Lockable,
     [](W& w) { w.sortResults(search::ListOrder::Oran); }},
};

constexpr CommandRow Yazi[] = {
    {u"mnu_yBuyult", LargerZoom, u"Yazı Boyutunu Büyült", {}, Lockable, [](W& w) { w.stepZoom(+1); }},
    {u"mnu_yNormal", NormalZoom, u"Normal Yazı Boyutu", {}, Lockable, [](W& w) { w.stepZoom(0); }},
    {u"mnu_YKucult", SmallerZoom, u"Yazı Boyutunu Küçült", {}, Lockable, [](W& w) { w.stepZoom(-1); }},
};

constexpr CommandRow Gorunum[] = {
    {u"mnu_Beyaz", ChangeLook, u"&Beyaz", {}, Checked, [](W& w) { w.looks().choose(u"mnu_Beyaz"); }},
    {u"mnu_Sepya", ChangeLook, u"&Sepya", {}, Checked, [](W& w) { w.looks().choose(u"mnu_Sepya"); }},
    {u"mnu_Gece", ChangeLook, u"&Gece", {}, Checked, [](W& w) { w.looks().choose(u"mnu_Gece"); }},
    {u"mnu_Masaustu",
     ChangeLook,
     u"&Masaüstü Gibi",
     {},
     Checked,
     [](W& w) { w.looks().choose(u"mnu_Masaustu"); }},
    {u"sep20"},
    {u"mnu_Tirnakli",
     ChangeLook,
     u"&Tırnaklı Yazı",
     {},
     Checked,
     [](W& w) { w.looks().choose(u"mnu_Tirnakli"); }},
    {u"sep21"},
    {u"mnu_SatirTam",
     ChangeLook,
     u"Satırlar Pencere Boyunca",
     {},
     Checked,
     [](W& w) { w.looks().choose(u"mnu_SatirTam"); }},
    {u"mnu_SatirGenis",
     ChangeLook,
     u"Geniş Satırlar",
     {},
     Checked,
     [](W& w) { w.looks().choose(u"mnu_SatirGenis"); }},
    {u"mnu_SatirOrta",
     ChangeLook,
     u"Orta Satırlar",
     {},
     Checked,
     [](W& w) { w.looks().choose(u"mnu_SatirOrta"); }},
    {u"mnu_SatirDar",
     ChangeLook,
     u"Dar Satırlar",
     {},
     Checked,
     [](W& w) { w.looks().choose(u"mnu_SatirDar"); }},
    {u"sep22"},
    {u"mnu_AralikNormal",
     ChangeLook,
     u"Olağan Satır Aralığı",
     {},
     Checked,
     [](W& w) { w.looks().choose(u"mnu_AralikNormal"); }},
    {u"mnu_AralikGenis",
     ChangeLook,
     u"Geniş Satır Aralığı",
     {},
     Checked,
     [](W& w) { w.looks().choose(u"mnu_AralikGenis"); }},
    {u"mnu_AralikCok",
     ChangeLook,
     u"Çok Geniş Satır Aralığı",
     {},
     Checked,
     [](W& w) { w.looks().choose(u"mnu_AralikCok"); }},
    {u"sep23"},
    {u"mnu_Yaklastir", LargerZoom, u"&Yakınlaştır", u"Ctrl++; Ctrl+=", Lockable,
     [](W& w) { w.stepZoom(+1); }},
    {u"mnu_Uzaklastir", SmallerZoom, u"&Uzaklaştır", u"Ctrl+-", Lockable, [](W& w) { w.stepZoom(-1); }},
    {u"mnu_GercekBoyut", NormalZoom, u"Gerçek B&oyut", u"Ctrl+0", Lockable, [](W& w) { w.stepZoom(0); }},
};

constexpr CommandRow Okuma[] = {
    {u"mnu_Geri", GoBack, u"&Geri", u"Alt+Left", Lockable, [](W& w) { w.goInHistory(-1); }},
    {u"mnu_Ileri", GoForward, u"&İleri", u"Alt+Right", Lockable, [](W& w) { w.goInHistory(+1); }},
    {u"mnu_OncekiKonu", PreviousTopic, u"&Önceki Konu", u"Ctrl+PgUp", Lockable,
     [](W& w) { w.stepTopic(-1); }},
    {u"mnu_SonrakiKonu", NextTopic, u"&Sonraki Konu", u"Ctrl+PgDown", Lockable,
     [](W& w) { w.stepTopic(+1); }},
    {u"mnu_AgactaGoster", ShowInBookTree, u"Kitap Ağac&ında Göster", u"Ctrl+Shift+K", Lockable,
     [](W& w) { w.showInBookTree(); }},
    {u"sep6"},
    {u"mnu_SonrakiIsabet", NextHitOfRun, u"Sonraki İsabe&t", u"F3", Lockable, [](W& w) { w.stepHit(+1); }},
    {u"mnu_OncekiIsabet", PreviousHitOfRun, u"Ö&nceki İsabet", u"Shift+F3", Lockable,
     [](W& w) { w.stepHit(-1); }},
    {u"sep7"},
    {u"mnu_YerImiEkle", AddBookmark, u"&Yer İmi Ekle...", u"Ctrl+D", Lockable, [](W& w) { w.addBookmark(); }},
    {u"mnu_YerImleri", ShowBookmarks, u"Yer İm&leri...", u"Ctrl+Shift+D", Lockable,
     [](W& w) { w.showBookmarks(); }},
    {u"sep8"},
    {u"mnu_SayfadaBul", FindOnPage, u"Say&fada Bul...", u"Ctrl+F", Plain, [](W& w) { w.findOnPage(); }},
    {u"mnu_KelimeSeridi", ToggleWords, u"Kelime &Şeridi", u"Ctrl+K", Checked, [](W& w) { w.toggleWords(); }},
    {u"mnu_KaynaklaKopyala", CopyWithSource, u"Kaynağıyla K&opyala", u"Ctrl+Shift+C", Plain,
     [](W& w) { w.copyWithSource(); }},
    {u"mnu_YanYana", PlaceSideBySide, u"Yan Yana &Diz", {}, Plain, [](W& w) { w.placeSideBySide(); }},
    {u"mnu_GorunumAc", OpenMenu, u"Görünü&m", {}, Plain, nullptr, u"mnu_Gorunum"},
    {u"sep11"},
    {u"mnu_Dagilim", ShowDistribution, u"Da&ğılım", u"Ctrl+Shift+G", Lockable,
     [](W& w) { w.showDistribution(); }},
    {u"mnu_Baglam", ShowContexts, u"&Bağlam Listesi", u"Ctrl+Shift+B", Lockable,
     [](W& w) { w.showContexts(); }},
    {u"mnu_OzetKaydet", SaveSummary, u"Ö&zeti Kaydet...", {}, Lockable, [](W& w) { w.saveSummary(); }},
    {u"sep10"},
    {u"mnu_KitapEkle", AddBooks, u"Kitap &Ekle...", u"Ctrl+Shift+O", Lockable, [](W& w) { w.chooseBooks(); }},
    {u"mnu_KitapKaldir", RemoveBooks, u"Kitap &Kaldır...", {}, Lockable, [](W& w) { w.removeBooks(); }},
    {u"sep5"},
    {u"mnu_KitaplikAc", OpenLibrary, u"Kitaplık &Aç...", {}, Lockable, [](W& w) { w.openLibrary(); }},
    {u"sep9"},
    {u"mnu_Surdur",
     ToggleContinues,
     u"Açılışta Kaldığım Yerden Sü&rdür",
     {},
     Checked,
     [](W& w) { w.toggleContinues(); }},
};

constexpr CommandRow Yardim[] = {
    {u"mnu_Yardimm", ShowHelp, u"&Yardım", {}, Plain, [](W& w) { w.showHelp(); }},
    {u"sep4"},
    {u"mnu_Hakkında", ShowAbout, u"&Hakkında", {}, Plain, [](W& w) { w.showAbout(); }},
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

const CommandRow& toolbarRow(Command command) {
    return *std::ranges::find(Toolbar, command, &CommandRow::command);
}

}  // namespace lirovan::shell
