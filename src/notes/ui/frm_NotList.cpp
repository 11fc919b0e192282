#include "notes/ui/frm_NotList.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QMenu>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace lirovan::notes {

using namespace Qt::StringLiterals;

namespace {

// The system's short date, with day and month in two digits so that the columns stay straight. Where the
// system names no country, the program's own, which is Turkish.
QString shortDate(QDate date) {
    // Words of the format stand in quotes.
    static const QRegularExpression oneDigit(u"('[^']*')|(?<![dM])([dM])(?![dM])"_s);
    const QLocale system = QLocale::system();
    const QLocale locale = system.language() == QLocale::C ? QLocale() : system;
    return locale.toString(date, locale.dateFormat(QLocale::ShortFormat).replace(oneDigit, u"\\1\\2\\2"_s));
}

}  // namespace

frm_NotList::frm_NotList(NoteEditor& editor, platform::Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      search_(new QLineEdit),
      wholeWord_(new QCheckBox(u"Ya&lnız tüm kelime"_s)),
      allWords_(new QCheckBox(u"&Tüm kelimeler"_s)),
      order_(new QComboBox),
      lst_Notlar(new QListWidget(this)),
      PopUp(new QMenu(this)),
      list_(*this, editor, dialogs, shortDate) {
    setObjectName(u"frm_NotList"_s);
    setWindowTitle(u"Notlar Litesi"_s);
    lst_Notlar->setObjectName(u"lst_Notlar"_s);
    lst_Notlar->setAccessibleName(u"Notlar"_s);
    // Date, title and text stand in columns made of spaces.
    lst_Notlar->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    lst_Notlar->setUniformItemSizes(true);
    lst_Notlar->viewport()->installEventFilter(this);
    lst_Notlar->installEventFilter(this);
    connect(lst_Notlar, &QListWidget::itemDoubleClicked, this, [this] { list_.doubleClickOrEnter(); });
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(searchRow());
    layout->addWidget(lst_Notlar);
    lst_Notlar->setFocus();
    resize(lst_Notlar->fontMetrics().horizontalAdvance(QString(100, u'x')), 360);

    PopUp->setObjectName(u"PopUp"_s);
    QAction* mnu_Ac = PopUp->addAction(u"Aç"_s);
    mnu_Ac->setObjectName(u"mnu_Ac"_s);
    connect(mnu_Ac, &QAction::triggered, this, [this] { list_.mnu_Ac(); });
    QAction* mnu_Sil = PopUp->addAction(u"Sil"_s);
    mnu_Sil->setObjectName(u"mnu_Sil"_s);
    connect(mnu_Sil, &QAction::triggered, this, [this] { list_.mnu_Sil(); });
}

QLayout* frm_NotList::searchRow() {
    search_->setObjectName(u"noteSearch"_s);
    search_->setAccessibleName(u"Notlarda ara"_s);
    search_->setPlaceholderText(u"Notlarda ara"_s);
    search_->setClearButtonEnabled(true);
    search_->installEventFilter(this);
    wholeWord_->setObjectName(u"noteWholeWord"_s);
    allWords_->setObjectName(u"noteAllWords"_s);
    order_->setObjectName(u"noteOrder"_s);
    order_->setAccessibleName(u"Sıralama"_s);
    for (const auto& [name, order] :
         {std::pair(u"Kayıt sırası"_s, NoteOrder::Kept), std::pair(u"Yeniden eskiye"_s, NoteOrder::Date),
          std::pair(u"Başlığa göre"_s, NoteOrder::Title), std::pair(u"İsabete göre"_s, NoteOrder::Hits)})
        order_->addItem(name, static_cast<int>(order));
    connect(search_, &QLineEdit::textChanged, this, &frm_NotList::choose);
    connect(wholeWord_, &QCheckBox::toggled, this, &frm_NotList::choose);
    connect(allWords_, &QCheckBox::toggled, this, &frm_NotList::choose);
    connect(order_, &QComboBox::activated, this, &frm_NotList::choose);
    auto* row = new QHBoxLayout;
    row->addWidget(search_, 1);
    row->addWidget(wholeWord_);
    row->addWidget(allWords_);
    row->addWidget(order_);
    return row;
}

void frm_NotList::choose() {
    list_.choose({search_->text(),
                  {.wholeWord = wholeWord_->isChecked(), .allWords = allWords_->isChecked()},
                  static_cast<NoteOrder>(order_->currentData().toInt())});
}

// The first Esc brings the whole list back.
void frm_NotList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !search_->text().isEmpty())
        search_->clear();
    else
        QDialog::keyPressEvent(event);
}

void frm_NotList::run() {
    list_.load();
    exec();
}

bool frm_NotList::eventFilter(QObject* watched, QEvent* event) {
    if (watched == lst_Notlar->viewport() && event->type() == QEvent::MouseButtonPress &&
        static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
        if (QListWidgetItem* item = lst_Notlar->itemAt(static_cast<QMouseEvent*>(event)->pos()))
            lst_Notlar->setCurrentItem(item);
        PopUp->popup(static_cast<QMouseEvent*>(event)->globalPosition().toPoint());
        return true;
    }
    if (watched == lst_Notlar && event->type() == QEvent::ContextMenu) {
        if (static_cast<QContextMenuEvent*>(event)->reason() != QContextMenuEvent::Keyboard) return true;
        const QRect line = lst_Notlar->visualItemRect(lst_Notlar->currentItem());
        PopUp->popup(lst_Notlar->viewport()->mapToGlobal(line.bottomLeft()));
        return true;
    }
    if (watched == search_ && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        const bool opens = key == Qt::Key_Return || key == Qt::Key_Enter;
        if (opens || key == Qt::Key_Down) {
            if (lst_Notlar->currentRow() < 1 && lst_Notlar->count() > 1) lst_Notlar->setCurrentRow(1);
            lst_Notlar->setFocus();
            if (opens && lst_Notlar->count() > 1) list_.doubleClickOrEnter();
            return true;
        }
    }
    if (watched == lst_Notlar && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) return list_.doubleClickOrEnter(), true;
        if (key == Qt::Key_Delete) return list_.mnu_Sil(), true;
    }
    return QDialog::eventFilter(watched, event);
}

void frm_NotList::setLines(const std::vector<NoteLine>& lines) {
    QStringList texts;
    for (const NoteLine& line : lines) texts += line.text;
    lst_Notlar->clear();
    lst_Notlar->addItems(texts);
    QFont bold = lst_Notlar->font();
    bold.setBold(true);
    lst_Notlar->item(0)->setFont(bold);
}

int frm_NotList::selectedLine() const {
    return lst_Notlar->selectedItems().isEmpty() ? -1 : lst_Notlar->currentRow();
}

}  // namespace lirovan::notes
