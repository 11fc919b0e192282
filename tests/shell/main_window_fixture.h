// The real main window on a small library, without a screen; its boxes, printer and registry answered by the
// test.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

#include "shell/settings_registry.h"
#include "shell/ui/KitaplarMDI.h"
#include "shell/ui/child_windows.h"
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
    LibraryFile file = smallLibrary();
    ScriptedDialogs dialogs;
    NoPrinter printing;
    shell::SettingsRegistry registryFile{file.filePath(u"registry.ini"_s)};
    shell::reg_api registry{registryFile};
    std::unique_ptr<shell::KitaplarMDI> window;

    void SetUp() override {
        QDir(file.folder()).mkpath(u"OKU"_s);
        write(u"OKU/VQ.htm", "<html><title>giris</title><body>Ho\xFE geldiniz</body></html>");
        write(u"OKU/print.gif",
              QByteArray::fromBase64("R0lGODlhAQABAIAAAAAAAP///yH5BAEAAAAALAAAAAABAAEAAAIBRAA7"));
    }

    void write(QStringView name, const QByteArray& content) {
        QFile target(file.filePath(name.toString()));
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        target.write(content);
    }

    bool start(const QString& server = {}) {
        window = std::make_unique<shell::KitaplarMDI>(shell::Services{
            file.appFolder(), dialogs, printing, registry, server, u"http://site.example"_s, nullptr});
        return window->load();
    }

    template <class T = QWidget>
    T* find(const QString& name) const {
        return window->findChild<T*>(name);
    }
    QMdiSubWindow* child(const QString& name) const { return find<QMdiSubWindow>(name); }
    QToolButton* button(const QString& key) const {
        return find<QToolBar>(u"Toolbar1"_s)->findChild<QToolButton*>(key);
    }
    void press(const QString& key) const { button(key)->click(); }
    void choose(const QString& item) const { find<QAction>(item)->trigger(); }
    QString status() const { return find<QLabel>(u"StatusBar1_1"_s)->text(); }

    // A toolbar shows and hides its widgets with its next layout.
    static bool appears(QWidget* widget) {
        return QTest::qWaitFor([widget] { return widget->isVisible(); });
    }
    static bool disappears(QWidget* widget) {
        return QTest::qWaitFor([widget] { return !widget->isVisible(); });
    }

    /// Clicks the node of the book tree with this key, opening what is above it.
    void clickNode(const QString& key) const {
        auto* tree = find<QTreeView>(u"tvw_Kitaplar"_s);
        const QModelIndex index = node(key);
        ASSERT_TRUE(index.isValid()) << key.toStdString();
        for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) tree->expand(above);
        tree->scrollTo(index);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualRect(index).center());
    }
    QModelIndex node(const QString& key) const {
        const QAbstractItemModel* model = find<QTreeView>(u"tvw_Kitaplar"_s)->model();
        const QModelIndexList found =
            model->match(model->index(0, 0), browse::BookTreeModel::KeyRole, key, 1,
                         Qt::MatchExactly | Qt::MatchRecursive | Qt::MatchCaseSensitive);
        return found.value(0);
    }
    QString image(const QString& key) const {
        return node(key).data(browse::BookTreeModel::ImageRole).toString();
    }

    browse::frm_Icerik& content() const { return window->windows().contentWindow(); }
    /// The shared window's page, once it holds `text`.
    static testing::AssertionResult shows(platform::WebView& view, const QString& text) {
        QString html;
        const bool found =
            QTest::qWaitFor([&] { return (html = view.innerHtml().valueOr({})).contains(text); }, 10000);
        if (found) return testing::AssertionSuccess();
        return testing::AssertionFailure() << text.toStdString() << " is not in " << html.toStdString();
    }
};

}  // namespace lirovan::test
