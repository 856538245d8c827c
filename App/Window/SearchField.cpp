#include "SearchField.h"

#include "Symbols.h"
#include "ThemeColors.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCompleter>
#include <QKeyEvent>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr int kMeaningRole = Qt::UserRole + 1;

/// A word of the language and, paler behind it, what it finds.
class OperatorDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        if (isSelected) {
            painter->fillRect(option.rect, themeColor(u"Style Editor Selected Background Color"_s));
        }
        const QRect place = option.rect.adjusted(10, 0, -10, 0);
        const QRect word =
            QStyle::visualRect(option.direction, place, {place.left(), place.top(), 110, place.height()});
        const QRect meaning = QStyle::visualRect(
            option.direction, place, {place.left() + 110, place.top(), place.width() - 110, place.height()});
        constexpr int side = int(Qt::AlignLeft); // the painter turns it round where it has to
        painter->setFont(interfaceFont(12, /*isBold=*/true));
        painter->setPen(themeColor(isSelected ? u"Style Editor Selected Icon Color"_s : u"Panel Text Color"_s));
        painter->drawText(word, int(Qt::AlignVCenter) | side, index.data().toString());
        painter->setFont(interfaceFont(12));
        painter->setPen(themeColor(isSelected ? u"Style Editor Selected Icon Color"_s : u"Panel Label Color"_s));
        painter->drawText(meaning, int(Qt::AlignVCenter) | side,
                          QFontMetrics(painter->font())
                              .elidedText(index.data(kMeaningRole).toString(), Qt::ElideRight, meaning.width()));
        painter->restore();
    }
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem & /*option*/, const QModelIndex & /*index*/) const override
    {
        return {340, 28};
    }
};

} // namespace

QList<SearchField::Operator> SearchField::operators()
{
    return {{u"@todo"_s, tr("notes with something left to do")},
            {u"@done"_s, tr("notes where everything is done")},
            {u"@task"_s, tr("notes with to-dos")},
            {u"@today"_s, tr("changed today")},
            {u"@yesterday"_s, tr("changed yesterday")},
            {u"@last7days"_s, tr("changed in the last seven days")},
            {u"@date("_s, tr("changed on a day: @date(2024-12-31)")},
            {u"@cdate("_s, tr("created on a day: @cdate(2024-12-31)")},
            {u"@images"_s, tr("notes with pictures")},
            {u"@files"_s, tr("notes with files")},
            {u"@attachments"_s, tr("notes with pictures or files")},
            {u"@code"_s, tr("notes with code")},
            {u"@tagged"_s, tr("notes with tags")},
            {u"@untagged"_s, tr("notes without tags")}};
}

QList<SearchField::Operator> SearchField::help()
{
    return QList<Operator>{{tr("word"), tr("notes with the word, or with a word that has it in it")},
                           {tr("\"two words\""), tr("notes with just these words, one behind the other")},
                           {tr("-word"), tr("notes without the word")},
                           {tr("#tag"), tr("notes with the tag in their text")}} +
           operators();
}

void SearchField::addWord(const QString &word)
{
    QString line = text();
    if (!line.isEmpty() && !line.endsWith(u' ')) {
        line += u' ';
    }
    // The cursor goes where something is missing: before the end of a phrase or of a bracket.
    line += word;
    setText(line);
    setCursorPosition(int(line.size()));
}

SearchField::SearchField(QWidget *parent)
    : QLineEdit(parent)
    , m_completer(new QCompleter(this))
{
    setObjectName(u"searchField"_s);
    setAccessibleName(tr("Search notes"));
    setPlaceholderText(tr("Search"));
    setToolTip(tr("Words, \"phrases\" and #tags; a minus excludes; @ offers more"));
    setFixedHeight(32);
    QAction *searching = addAction(
        symbolIcon(u"search"_s, u"Note Table Search Search Icon Color"_s, u"Note Table Search Search Icon Color"_s),
        LeadingPosition);
    searching->setText(tr("Search notes"));
    QAction *clearing = addAction(
        symbolIcon(u"clear"_s, u"Note Table Search Cancel Icon Background Color"_s, u"Panel Icon Active Color"_s),
        TrailingPosition);
    clearing->setText(tr("End the search"));
    clearing->setVisible(false);
    connect(clearing, &QAction::triggered, this, &QLineEdit::clear);
    connect(this, &QLineEdit::textChanged, this, [this, clearing](const QString &text) {
        clearing->setVisible(!text.isEmpty());
        Q_EMIT searchDidChange(text);
    });
    auto *words = new QStandardItemModel(this);
    for (const Operator &each : operators()) {
        auto *item = new QStandardItem(each.word);
        item->setData(each.meaning, kMeaningRole);
        words->appendRow(item);
    }
    m_completer->setModel(words);
    m_completer->setWidget(this);
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_completer->setMaxVisibleItems(int(operators().size()));
    m_completer->popup()->setItemDelegate(new OperatorDelegate(this));
    connect(this, &QLineEdit::textEdited, this, &SearchField::complete);
    connect(m_completer, qOverload<const QString &>(&QCompleter::activated), this, &SearchField::takeCompletion);
}

void SearchField::showString(const QString &string)
{
    if (string == text()) {
        return;
    }
    const QSignalBlocker blocker(this);
    setText(string);
}

void SearchField::continueTyping(const QString &text)
{
    setFocus();
    end(false);
    insert(text);
    complete();
}

qsizetype SearchField::wordStart() const
{
    const QString before = text().first(cursorPosition());
    return before.lastIndexOf(u' ') + 1;
}

void SearchField::complete()
{
    QString word = text().first(cursorPosition()).sliced(wordStart());
    if (word.startsWith(u'-')) {
        word.remove(0, 1);
    }
    if (!word.startsWith(u'@') || word.contains(u'(')) {
        m_completer->popup()->hide();
        return;
    }
    m_completer->setCompletionPrefix(word);
    const bool isWhole = m_completer->completionCount() == 1 && m_completer->currentCompletion() == word;
    if (m_completer->completionCount() == 0 || isWhole) {
        m_completer->popup()->hide();
        return;
    }
    QRect place = rect();
    place.setWidth(std::max(width(), 360));
    m_completer->complete(place);
}

void SearchField::takeCompletion(const QString &word)
{
    qsizetype start = wordStart();
    if (text().sliced(start).startsWith(u'-')) {
        ++start;
    }
    setSelection(int(start), int(cursorPosition() - start));
    insert(word.endsWith(u'(') ? word : QString(word % u' '));
}

void SearchField::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() == Qt::ShortcutFocusReason) {
        selectAll();
    }
}

void SearchField::keyPressEvent(QKeyEvent *event)
{
    const bool isChoosing = m_completer->popup()->isVisible();
    switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (isChoosing) {
            event->ignore(); // the list of words has it
        } else {
            Q_EMIT leaveToList();
        }
        return;
    case Qt::Key_Escape:
        if (isChoosing) {
            m_completer->popup()->hide();
        } else if (!text().isEmpty()) {
            clear();
        } else {
            Q_EMIT leaveToList();
        }
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

} // namespace quib
