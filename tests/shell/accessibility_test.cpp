// For everyone: what a screen reader is told, what the keyboard reaches, how captions do with larger type,
// and whether texts stand out from their ground, in every window of the program.
#include <QAbstractButton>
#include <QAccessible>
#include <QLineEdit>
#include <QMenuBar>
#include <QTextEdit>
#include <QWebEngineView>
#include <cmath>

#include "main_window_fixture.h"
#include "notes/ui/frm_IcerikCopy.h"
#include "shell/ui/frmGiris.h"

using namespace lirovan;
using namespace lirovan::test;

namespace {

/// All windows, one after the other, in a state that shows what they have.
class EveryWindow : public MainWindowTest {
  protected:
    ~EveryWindow() override {
        window.reset();
        QApplication::setPalette(palette_);
        QApplication::setFont(font_);
    }

    /// A topic, an extra window with it, the notebook.
    void openEverything() {
        ASSERT_TRUE(start());
        clickNode(u"C1"_s);
        ASSERT_TRUE(shows(page(), u"<TITLE>"_s));
        for (const QString& key : {u"New"_s, u"not"_s}) press(key);
        for (int i = 0; i < 2; ++i) choose(u"mnu_Arama"_s);
        press(u"tlbtn_Arama"_s);
        ASSERT_TRUE(appears(find(u"cmb_Kitaplar"_s)));
    }

    void inListOfNotes(const Check& check) {
        inDialog([this] { find<notes::frm_IcerikCopy>(u"frm_IcerikCopy"_s)->editor().open(); }, check);
    }

    /// `check` gets the main window with its children, then each dialog and the splash window.
    void forEveryWindow(const Check& check) {
        openEverything();
        for (const QString& tab : {u"tlbtn_Kitap"_s, u"tlbtn_Arama"_s}) {
            SCOPED_TRACE(qPrintable(tab));
            press(tab);
            QTest::qWait(0);
            check(window.get());
        }
        shell::frmGiris splash(registry, file.folder());
        splash.show();
        check(&splash);
        splash.close();
        inDialog([this] { choose(u"mnu_Hakkında"_s); }, check);
        inListOfNotes(check);
        inHelp([&check](QWidget* help) {
            check(help);
            for (auto* topic : help->findChildren<QToolButton*>()) {
                SCOPED_TRACE(qPrintable(topic->objectName()));
                topic->click();
                QTest::qWait(0);
                check(help);
            }
        });
    }

  private:
    const QPalette palette_ = QApplication::palette();
    const QFont font_ = QApplication::font();
};

std::string described(const QObject* object) {
    if (!object) return "?";
    return (QString::fromLatin1(object->metaObject()->className()) + u' ' + object->objectName())
        .toStdString();
}

QList<QWidget*> visibleIn(const QWidget* shown) {
    QList<QWidget*> all = shown->findChildren<QWidget*>();
    all.removeIf([](const QWidget* each) { return !each->isVisible(); });
    return all;
}

/// What a label or a button says.
QString captionOf(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) return label->text();
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    return button ? button->text() : QString();
}

// ---- The accessibility tree and the keyboard ----

bool isControl(const QAccessibleInterface& at) {
    static const QSet<QAccessible::Role> Controls = {
        QAccessible::PushButton,   QAccessible::ButtonMenu,  QAccessible::ButtonDropDown,
        QAccessible::CheckBox,     QAccessible::RadioButton, QAccessible::ComboBox,
        QAccessible::EditableText, QAccessible::Tree,        QAccessible::List,
        QAccessible::PageTab,      QAccessible::MenuItem,    QAccessible::ProgressBar,
        QAccessible::Slider,       QAccessible::SpinBox,     QAccessible::Dialog,
        QAccessible::WebDocument};
    return Controls.contains(at.role()) || qobject_cast<platform::WebView*>(at.object());
}

/// Calls `visit` for `at` and everything visible under it; the pages themselves are the engine's matter.
void walk(QAccessibleInterface* at, const std::function<void(QAccessibleInterface&)>& visit) {
    if (!at || !at->isValid() || at->state().invisible) return;
    visit(*at);
    if (qobject_cast<QWebEngineView*>(at->object())) return;
    for (int i = 0; i < at->childCount(); ++i) walk(at->child(i), visit);
}

/// The control itself or what takes the keys for it.
QWidget* keyTaker(QWidget* control) {
    while (control->focusProxy()) control = control->focusProxy();
    return control;
}

/// The widgets under `pane` that someone works with.
QList<QWidget*> controls(QWidget* pane) {
    QList<QWidget*> result;
    walk(QAccessible::queryAccessibleInterface(pane), [&](QAccessibleInterface& at) {
        auto* widget = qobject_cast<QWidget*>(at.object());
        const bool works = isControl(at) || at.role() == QAccessible::PageTabList;
        const bool shows = at.role() == QAccessible::ProgressBar || at.role() == QAccessible::Dialog;
        if (widget && works && !shows && !at.state().disabled) result << widget;
    });
    return result;
}

bool isInPage(const QWidget* widget) {
    while (widget && !qobject_cast<const QWebEngineView*>(widget)) widget = widget->parentWidget();
    return widget;
}

/// What of `pane`'s controls the focus did not come to while the key was pressed again and again.
QList<QWidget*> missed(QWidget* pane, Qt::Key key) {
    constexpr int Most = 60;
    QList<QWidget*> waiting = controls(pane);
    keyTaker(key == Qt::Key_Tab ? waiting.first() : waiting.last())->setFocus(Qt::TabFocusReason);
    for (int i = 0; i < Most && !waiting.isEmpty(); ++i) {
        QWidget* now = QApplication::focusWidget();
        if (!now || (now != pane && !pane->isAncestorOf(now))) break;
        waiting.removeIf([now](QWidget* control) {
            QWidget* taker = keyTaker(control);
            return taker == now || (isInPage(now) && taker->isAncestorOf(now));
        });
        QTest::keyClick(now, key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        // A page passes the key on when its last link had it: by a message from the page's process.
        if (isInPage(now)) (void)QTest::qWaitFor([now] { return QApplication::focusWidget() != now; }, 600);
    }
    return waiting;
}

TEST_F(EveryWindow, LetsTabAndShiftTabReachEveryControlOfAWindow) {
    openEverything();
    const auto check = [](QWidget* pane) {
        SCOPED_TRACE(qPrintable(pane->objectName()));
        ASSERT_FALSE(controls(pane).isEmpty());
        for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab})
            for (QWidget* control : missed(pane, key)) ADD_FAILURE() << described(control);
    };
    for (const QString& name : {u"frm_Arama"_s, u"frm_Icerik"_s, u"frm_IcerikN"_s}) {
        window->windows().showBrowse();
        area().setActiveSubWindow(child(name));
        check(child(name));
    }
    check(find<QToolBar>(u"Toolbar1"_s));
    inHelp(check);
    inListOfNotes(check);
}

TEST_F(EveryWindow, LetsF6GoRoundTheToolbarsAndBackToTheText) {
    openEverything();
    press(u"not"_s);
    auto* box = find<QTextEdit>(u"txt_Icerik"_s);
    ASSERT_EQ(QApplication::focusWidget(), box);
    QTest::keyClick(box, Qt::Key_Tab);
    EXPECT_EQ(box->toPlainText(), u"\t"_s) << "in a note, Tab is a letter";

    // Where F6 leads: to the main window's toolbar, to the notebook's own, or to the text.
    const auto afterF6 = [](Qt::KeyboardModifiers with = {}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_F6, with);
        QWidget* at = QApplication::focusWidget();
        while (at && !qobject_cast<QToolBar*>(at)) at = at->parentWidget();
        return at ? at->window() == at->parentWidget() ? u"main"_s : u"own"_s : u"text"_s;
    };
    for (const QString& next : {u"own"_s, u"main"_s, u"text"_s}) EXPECT_EQ(afterF6(), next);
    EXPECT_EQ(QApplication::focusWidget(), box);
    EXPECT_EQ(afterF6(Qt::ShiftModifier), u"main"_s);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(QApplication::focusWidget(), box) << "Esc goes back at once";

    QTest::keyClick(box, Qt::Key_Minus, Qt::AltModifier);
    QWidget* popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr) << "the system menu of the window";
    EXPECT_GE(popup->actions().size(), 5);
    popup->close();
}

void expectUnique(const QStringList& captions, const QWidget* where) {
    QMap<QString, QString> taken;
    for (const QString& caption : captions) {
        const qsizetype at = caption.indexOf(u'&');
        const QString key = at < 0 ? QString() : QLocale().toUpper(caption.mid(at + 1, 1));
        if (key.isEmpty() || key == u"&"_s) continue;
        EXPECT_FALSE(taken.contains(key))
            << described(where) << ": " << caption.toStdString() << " and " << taken.value(key).toStdString();
        taken.insert(key, caption);
    }
}

QStringList itemsOf(const QWidget* menu) {
    QStringList captions;
    for (const QAction* item : menu->actions())
        if (item->isVisible() && !item->isSeparator()) captions << item->text();
    return captions;
}

TEST_F(EveryWindow, NamesEachControlForAScreenReaderAndGivesAnAccessKeyOnce) {
    forEveryWindow([](QWidget* shown) {
        walk(QAccessible::queryAccessibleInterface(shown), [&](QAccessibleInterface& at) {
            EXPECT_TRUE(!isControl(at) || !at.text(QAccessible::Name).trimmed().isEmpty())
                << described(at.object());
        });
        QStringList bar;  // its keys work in every child window
        if (const auto* main = qobject_cast<QMainWindow*>(shown)) bar = itemsOf(main->menuBar());
        for (const QWidget* each : shown->findChildren<QWidget*>())
            if (qobject_cast<const QMenu*>(each) || qobject_cast<const QMenuBar*>(each))
                expectUnique(itemsOf(each), each);
        QHash<QWidget*, QStringList> byPane;
        for (QWidget* each : visibleIn(shown)) {
            QWidget* pane = each;
            while (!pane->isWindow() && !qobject_cast<QMdiSubWindow*>(pane)) pane = pane->parentWidget();
            const auto* label = qobject_cast<QLabel*>(each);
            if (!label || label->buddy()) byPane[pane] << captionOf(each);
        }
        for (auto it = byPane.cbegin(); it != byPane.cend(); ++it) expectUnique(it.value() + bar, it.key());
    });
}

// ---- Larger type and other colours ----

TEST_F(EveryWindow, CutsNoCaptionOffWithTypeHalfAsLargeAgain) {
    QFont larger = QApplication::font();
    larger.setPointSizeF(larger.pointSizeF() * 1.5);
    QApplication::setFont(larger);
    forEveryWindow([&larger](QWidget* shown) {
        for (QWidget* each : visibleIn(shown)) {
            if (captionOf(each).isEmpty() || each->objectName().startsWith(u"qt_")) continue;
            const auto* label = qobject_cast<QLabel*>(each);
            const QSize wanted = label && label->wordWrap() ? QSize(0, label->heightForWidth(label->width()))
                                                            : each->minimumSizeHint();
            EXPECT_GE(each->font().pointSizeF(), larger.pointSizeF()) << described(each);
            EXPECT_GE(each->height(), wanted.height()) << described(each);
            if (each->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored) continue;  // elides
            EXPECT_GE(each->width(), wanted.width()) << described(each);
            const QWidget* above = each;
            while (!above->isWindow() && !qobject_cast<const QMdiSubWindow*>(above)) {
                above = above->parentWidget();
                EXPECT_TRUE(above->rect().contains(QRect(each->mapTo(above, QPoint()), each->size())))
                    << described(above) << " cuts " << described(each) << " off";
            }
        }
    });
}

double luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// Contrast of two colours as the accessibility guidelines for the web count it: 1 to 21.
bool isReadable(const QColor& a, const QColor& b) {
    const double one = luminance(a), other = luminance(b);
    return (std::max(one, other) + 0.05) / (std::min(one, other) + 0.05) >= 4.5;
}

/// The colour that most of what is seen of the widget has.
QColor groundOf(const QWidget& widget) {
    QRect seen = widget.visibleRegion().boundingRect();
    seen.moveTopLeft(widget.mapTo(widget.window(), seen.topLeft()));
    const QImage picture = widget.window()->grab(seen).toImage();
    QHash<QRgb, int> counts;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) ++counts[picture.pixel(x, y)];
    return std::max_element(counts.keyValueBegin(), counts.keyValueEnd(),
                            [](const auto& a, const auto& b) { return a.second < b.second; })
        ->first;
}

TEST_F(EveryWindow, KeepsItsTextsReadableInALightAndInADarkDesktop) {
    for (const QPalette& palette : {QApplication::palette(), QPalette(QColor(0x2d, 0x2d, 0x2d))}) {
        SCOPED_TRACE(qPrintable(palette.color(QPalette::Window).name()));
        QApplication::setPalette(palette);
        forEveryWindow([](QWidget* shown) {
            for (QWidget* each : visibleIn(shown)) {
                const auto* text = qobject_cast<QAbstractScrollArea*>(each);
                if (!each->isEnabled() || each->visibleRegion().isEmpty() || qobject_cast<QMdiArea*>(each) ||
                    (!text && captionOf(each).isEmpty()))
                    continue;
                const QWidget& surface = text ? *text->viewport() : *each;
                EXPECT_TRUE(isReadable(surface.palette().color(surface.foregroundRole()), groundOf(surface)))
                    << described(each);
            }
        });
        auto* box = find<QLineEdit>(u"txt_Bul"_s);
        box->setText(u"dağın"_s);
        QTest::keyClick(box, Qt::Key_Return);
        const QModelIndex root = find<QTreeView>(u"tvw_Kitaplar_Bul"_s)->model()->index(0, 0);
        ASSERT_TRUE(root.isValid());
        EXPECT_TRUE(isReadable(root.data(Qt::ForegroundRole).value<QBrush>().color(),
                               root.data(Qt::BackgroundRole).value<QBrush>().color()));
        window.reset();
    }
}

}  // namespace
