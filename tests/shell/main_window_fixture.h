// The real main window on a small library; its boxes, printer and registry are the test's.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QMdiSubWindow>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include "shell/ui/KitaplarMDI.h"
#include "shell/ui/child_windows.h"
#include "support/files.h"
#include "support/library_file.h"
#include "support/scripted_dialogs.h"

namespace lirovan::test {

using namespace Qt::StringLiterals;

class NoPrinter : public platform::Printing {
  public:
    int asked = 0;
    std::optional<platform::PrintTarget> defaultPrinter() override { return std::nullopt; }
    std::optional<platform::PrintTarget> ask(bool) override { return ++asked, std::nullopt; }
};

class MainWindowTest : public testing::Test {
  protected:
    using Check = std::function<void(QWidget*)>;

    LibraryFile file = smallLibrary();
    ScriptedDialogs dialogs;
    NoPrinter printing;
    shell::reg_api registry{file.filePath(u"registry.ini"_s)};
    std::unique_ptr<shell::KitaplarMDI> window;

    MainWindowTest() {
        QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
        writeFile(file.filePath(u"OKU/VQ.htm"_s),
                  "<html><title>giris</title><body>Ho\xFE geldiniz</body></html>");
    }

    bool start() {
        window = std::make_unique<shell::KitaplarMDI>(
            shell::Services{file.appFolder(), dialogs, printing, registry, {}, {}, nullptr});
        return window->load();
    }

    template <class T = QWidget>
    T* find(const QString& name) const {
        return window->findChild<T*>(name);
    }
    QMdiSubWindow* child(const QString& name) const { return find<QMdiSubWindow>(name); }
    QMdiArea& area() const { return *find<QMdiArea>(u"workArea"_s); }
    QToolButton* button(const QString& key) const {
        return find<QToolBar>(u"Toolbar1"_s)->findChild<QToolButton*>(key);
    }
    void press(const QString& key) const { button(key)->click(); }
    /// As the menu does. A key is sent to QApplication::focusWidget(), once the window is active.
    void choose(const QString& item) const { find<QAction>(item)->trigger(); }
    QString status() const { return find<QLabel>(u"StatusBar1_1"_s)->text(); }

    // A toolbar shows and hides its widgets with its next layout.
    static bool appears(QWidget* widget, bool on = true) {
        return QTest::qWaitFor([=] { return widget->isVisible() == on; });
    }

    QTreeView& books() const { return *find<QTreeView>(u"tvw_Kitaplar"_s); }
    /// The node of the book tree with this key.
    QModelIndex node(const QString& key) const {
        return match(books(), browse::BookTreeModel::KeyRole, key, Qt::MatchCaseSensitive);
    }
    QString image(const QString& key) const {
        return node(key).data(browse::BookTreeModel::ImageRole).toString();
    }
    static QModelIndex match(const QTreeView& tree, int role, const QString& value, Qt::MatchFlags flags) {
        return tree.model()
            ->match(tree.model()->index(0, 0), role, value, 1, Qt::MatchRecursive | flags)
            .value(0);
    }
    static void click(QTreeView& tree, const QModelIndex& node) {
        ASSERT_TRUE(node.isValid());
        tree.scrollTo(node);  // opens what is above it
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(node).center());
    }
    void clickNode(const QString& key) const { click(books(), node(key)); }

    /// `check` gets the dialog that `command` runs until it is closed.
    void inDialog(const std::function<void()>& command, const Check& check) {
        bool seen = false;
        QTimer::singleShot(0, window.get(), [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            seen = true;
            QTest::qWait(0);
            check(dialog);
            dialog->reject();
        });
        command();
        EXPECT_TRUE(seen);
    }
    void inHelp(const Check& check) {
        inDialog([this] { choose(u"mnu_Yardimm"_s); }, check);
    }
    browse::frm_Icerik& content() const { return window->windows().contentWindow(); }
    platform::WebView& page() const { return *content().wb_Icerik; }
    shell::frm_IcerikN* extra(int number) const { return window->windows().extraWindows().at(number); }
    /// The page, once it holds `text`.
    static testing::AssertionResult shows(platform::WebView& view, const QString& text) {
        QString html;
        const bool found =
            QTest::qWaitFor([&] { return (html = view.innerHtml().valueOr({})).contains(text); }, 10000);
        if (found) return testing::AssertionSuccess();
        return testing::AssertionFailure() << text.toStdString() << " is not in " << html.toStdString();
    }
};

}  // namespace lirovan::test
