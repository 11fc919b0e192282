#include "shell/command_table.h"

#include "platform/core/main_frame.h"

namespace lirovan::shell {

namespace {

namespace button = platform::button;
using enum ButtonStyle;

constexpr ToolButton Buttons[] = {
    {button::Kitap, u"Kitaplar", u"Kitaplar"},
    {button::Arama, u"Arama", u"Arama"},
    {button::Icerik, u"İçerik", u"İçerik"},
    {{}, {}, {}, Separator},
    {button::Cut, u"Kes", u"Kes"},
    {button::Copy, u"Kopyala", u"Kopyala"},
    {button::Paste, u"Yapıştır", u"Yapıştır"},
    {button::Sep1, {}, {}, Separator, false},
    {button::Not, u"Not Defteri", u"Not Defteri"},
    {button::Sep2, {}, {}, Separator, false},
    {button::Print, u"Yazdır", u"Yazdır"},
    {button::Bosluk, {}, {}, Spacer, false},
    {button::Buyult, u"Yazı Boyutunu Büyült", u"Yazı Boyutunu Büyült", Button, false},
    {button::Kucult, u"Yazı Boyutunu Küçült", u"Yazı Boyutunu Küçült", Button, false},
    {button::Sep3, {}, {}, Separator, false},
    {button::New, u"Yeni Pencerede Aç", u"Yeni Pencerede Aç", Button, false, false},
    {button::Sep4, {}, {}, Separator, false},
    {button::Up, u"Yukarıdaki Kelime", u"Yukarıdaki Kelime", Button, false, false},
    {button::Down, u"Aşağıdaki Kelime", u"Aşağıdaki Kelime", Button, false, false},
};

constexpr MenuItem AnaMenu[] = {
    {u"mnu_Arama", u"&Arama Penceresi", u"Ctrl+A", true, true},
    {u"mnu_Icerik", u"&İçerik Penceresi", u"Ctrl+I", true, true},
    {u"sep1", {}},
    {u"mnu_NewWindow", u"Yeni P&encerede Aç", u"Ctrl+E"},
    {u"mnu_not", u"&Not Defteri", u"Ctrl+N"},
    {u"sep2", {}, {}, false},
    {u"mnu_yazdir", u"&Yazdır...", u"Ctrl+Y", false},
    {u"sep3", {}},
    {u"mnu_cik", u"&Çıkış"},
};

constexpr MenuItem Duzen[] = {
    {u"mnu_kes", u"Ke&s", u"Ctrl+X", false},
    {u"mnu_Kopyala", u"&Kopyala", u"Ctrl+C"},
    {u"mnu_Yapistir", u"&Yapıştır", u"Ctrl+V"},
};

constexpr MenuItem Listele[] = {
    {u"mnu_Konu", u"Konu Başlığına Göre Sırala"},
    {u"mnu_Kitap", u"Kitap Adına Göre Sırala"},
    {u"mnu_Oran", u"Orana Göre Sırala", {}, false},
};

constexpr MenuItem Yazi[] = {
    {u"mnu_yBuyult", u"Yazı Boyutunu Büyült"},
    {u"mnu_yNormal", u"Normal Yazı Boyutu"},
    {u"mnu_YKucult", u"Yazı Boyutunu Küçült"},
};

constexpr MenuItem Yardim[] = {
    {u"mnu_Yardimm", u"&Yardım"},
    {u"sep4", {}},
    {u"mnu_Hakkında", u"&Hakkında"},
};

constexpr Menu Menus[] = {
    {u"mnu_AnaMenu", u"&Ana Menü", AnaMenu}, {u"mnu_Duzen", u"&Düzen", Duzen},
    {u"mnu_listele", {}, Listele},           {u"mnu_yazi", {}, Yazi},
    {u"mnu_Yardim", u"&Yardım", Yardim},
};

}  // namespace

std::span<const ToolButton> toolbarTable() {
    return Buttons;
}

std::span<const Menu> menuTable() {
    return Menus;
}

}  // namespace lirovan::shell
