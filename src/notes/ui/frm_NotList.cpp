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
#include <algorithm>

namespace lirovan::notes {

using namespace Qt::StringLiterals;
using platform::Answer;
using platform::Buttons;
using platform::Icon;
using platform::Result;

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
      editor_(editor),
      dialogs_(dialogs),
      search_(new QLineEdit),
      wholeWord_(new QCheckBox(u"Ya&lnız tüm kelime"_s)),
      allWords_(new QCheckBox(u"&Tüm kelimeler"_s)),
      order_(new QComboBox),
      lst_Notlar(new QListWidget(this)),
      PopUp(new QMenu(this)) {
    setObjectName(u"frm_NotList"_s);
    setWindowTitle(u"Notlar Litesi"_s);
    lst_Notlar->setObjectName(u"lst_Notlar"_s);
    lst_Notlar->setAccessibleName(u"Notlar"_s);
    // Date, title and text stand in columns made of spaces.
    lst_Notlar->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    lst_Notlar->setUniformItemSizes(true);
    lst_Notlar->viewport()->installEventFilter(this);
    lst_Notlar->installEventFilter(this);
    connect(lst_Notlar, &QListWidget::itemDoubleClicked, this, [this] { openSelected(); });
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(searchRow());
    layout->addWidget(lst_Notlar);
    lst_Notlar->setFocus();
    resize(lst_Notlar->fontMetrics().horizontalAdvance(QString(100, u'x')), 360);

    PopUp->setObjectName(u"PopUp"_s);
    QAction* open = PopUp->addAction(u"Aç"_s);
    open->setObjectName(u"mnu_Ac"_s);
    connect(open, &QAction::triggered, this, [this] { mnu_Ac(); });
    QAction* remove = PopUp->addAction(u"Sil"_s);
    remove->setObjectName(u"mnu_Sil"_s);
    connect(remove, &QAction::triggered, this, [this] { mnu_Sil(); });
}

QLayout* frm_NotList::searchRow() {
    search_->setObjectName(u"noteSearch"_s);
    search_->setAccessibleName(u"Notlarda ara"_s);
    search_->setPlaceholderText(u"Notlarda ara"_s);
    search_->setClearButtonEnabled(true);
    search_->setMinimumWidth(search_->fontMetrics().averageCharWidth() * 20);
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

void frm_NotList::load() {
    const Result<void> filled = notlistele();
    if (filled && !shown_.empty()) return;
    dialogs_.show(platform::errorMessage(filled ? u"Gösterilecek not bulunamadı!"_s : filled.error().message,
                                         u"Not Açma Hatası"_s));
}

Result<void> frm_NotList::notlistele() {
    all_.clear();
    searchable_.reset();
    Result<void> filled = editor_.connect();
    if (filled) {
        Result<std::vector<ListedNote>> notes = listedNotes(editor_.NotBaglanti(), shortDate);
        if (notes)
            all_ = std::move(*notes);
        else
            filled = notes.error();
    }
    choose();
    return filled;
}

void frm_NotList::choose() {
    wish_ = {search_->text(),
             {.wholeWord = wholeWord_->isChecked(), .allWords = allWords_->isChecked()},
             static_cast<NoteOrder>(order_->currentData().toInt())};
    hits_.reset();
    if (!wish_.query.trimmed().isEmpty()) {
        if (!searchable_) {
            auto read = searchableNotes(editor_.NotBaglanti());
            if (!read) {
                dialogs_.show(platform::errorMessage(read.error().message, u"Notlarda Arama"_s));
                return showChosen();
            }
            searchable_ = std::move(*read);
        }
        hits_ = hitsByNote(*searchable_, wish_.query, wish_.options);
    }
    showChosen();
}

void frm_NotList::showChosen() {
    shown_ = chosenNotes(all_, hits_, wish_.order);
    QStringList lines{listHeader()};
    for (const ListedNote& note : shown_) lines += note.line;
    lst_Notlar->clear();
    lst_Notlar->addItems(lines);
    QFont bold = lst_Notlar->font();
    bold.setBold(true);
    lst_Notlar->item(0)->setFont(bold);
}

NoteId frm_NotList::selected() const {
    const int line = lst_Notlar->selectedItems().isEmpty() ? 0 : lst_Notlar->currentRow();
    return line < 1 ? NoteId{} : shown_[static_cast<size_t>(line) - 1].id;
}

void frm_NotList::mnu_Ac() {
    if (selected().value != 0) return openSelected();
    dialogs_.show(platform::errorMessage(u"Not seçmelisiniz!"_s, u"Not Açma Hatası"_s));
}

void frm_NotList::openSelected() {
    const NoteId id = selected();
    if (id.value == 0) return;
    const Result<std::optional<Note>> note = editor_.NotBaglanti().find(id);
    if (!note) {
        dialogs_.show(platform::errorMessage(note.error().message, u"Not Açma Hatası"_s));
        return;
    }
    if (*note) {
        editor_.show(**note);
        if (hits_ && editor_.currentNote() == id) openedBy_ = wish_;
    }
    accept();
}

void frm_NotList::mnu_Sil() {
    const NoteId id = selected();
    if (id.value == 0) {
        dialogs_.show(platform::errorMessage(u"Not seçmelisiniz!"_s, u"Not Silme Hatası"_s));
        return;
    }
    const Answer answer = dialogs_.show(
        {u"Seçili notu silmek istediğinize eminmisiniz?"_s, u"Not Silme"_s, Icon::None, Buttons::YesNo});
    if (answer != Answer::Yes) return;
    const int line = lst_Notlar->currentRow();
    if (!deleteNote(id)) dialogs_.show(platform::errorMessage(u"Hata oluştu!"_s, u"Hata"_s));
    lst_Notlar->setCurrentRow(std::min(line, lst_Notlar->count() - 1));
}

Result<void> frm_NotList::deleteNote(NoteId id) {
    const Result<void> removed = editor_.NotBaglanti().remove(id);
    if (!removed) return removed;
    // Its text stays in the notebook, as a new note.
    if (editor_.currentNote() == id) editor_.rowDeleted();
    return notlistele();
}

// The first Esc brings the whole list back.
void frm_NotList::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && !search_->text().isEmpty())
        search_->clear();
    else
        QDialog::keyPressEvent(event);
}

void frm_NotList::run() {
    load();
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
            if (opens && lst_Notlar->count() > 1) openSelected();
            return true;
        }
    }
    if (watched == lst_Notlar && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) return openSelected(), true;
        if (key == Qt::Key_Delete) return mnu_Sil(), true;
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace lirovan::notes
