#include "FindBar.h"

#include "EditorSymbol.h"
#include "QBNoteTextView.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTimerEvent>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// While somebody types in the note, the marks follow when the typing rests. Units: milliseconds.
constexpr int kUpdateDelay = 150;
constexpr int kMargin = 6;
/// A longer selection is no text to look for. Units: UTF-16 code units.
constexpr qint64 kLongestTaken = 200;

} // namespace

FindBar::FindBar(QBNoteTextView &view, QWidget *parent)
    : QWidget(parent)
    , m_view(view)
{
    setObjectName(u"findBar"_s);
    setAccessibleName(tr("Find in Note"));
    const auto makeButton = [this](const QString &name, const QString &text, bool isCheckable) {
        auto *button = new QToolButton(this);
        button->setObjectName(name);
        button->setIcon(editorSymbol(name));
        button->setToolTip(text);
        button->setAccessibleName(text);
        button->setCheckable(isCheckable);
        button->setAutoRaise(true);
        if (isCheckable) {
            connect(button, &QToolButton::toggled, this, [this] { update(m_startLocation, /*showsCurrent=*/true); });
        }
        return button;
    };
    m_find = new QLineEdit(this);
    m_find->setObjectName(u"findField"_s);
    m_find->setPlaceholderText(tr("Find in note"));
    m_find->setAccessibleName(tr("Find"));
    m_find->setClearButtonEnabled(true);
    connect(m_find, &QLineEdit::textChanged, this, [this] { update(m_startLocation, /*showsCurrent=*/true); });
    m_status = new QLabel(this);
    m_status->setObjectName(u"findStatus"_s);
    m_status->setMinimumWidth(m_status->fontMetrics().horizontalAdvance(u"00000 / 00000"_s));
    m_status->setAlignment(Qt::AlignCenter);
    m_matchCase = makeButton(u"match-case"_s, tr("Match Case"), true);
    m_wholeWords = makeButton(u"whole-words"_s, tr("Whole Words"), true);
    m_pattern = makeButton(u"pattern"_s, tr("Regular Expression"), true);
    auto *previous = makeButton(u"find-previous"_s, tr("Find Previous"), false);
    connect(previous, &QToolButton::clicked, this, &FindBar::findPrevious);
    auto *next = makeButton(u"find-next"_s, tr("Find Next"), false);
    connect(next, &QToolButton::clicked, this, &FindBar::findNext);
    auto *done = makeButton(u"close"_s, tr("Close"), false);
    connect(done, &QToolButton::clicked, this, &FindBar::close);

    m_replaceRow = new QWidget(this);
    m_replace = new QLineEdit(m_replaceRow);
    m_replace->setObjectName(u"replaceField"_s);
    m_replace->setPlaceholderText(tr("Replace with"));
    m_replace->setAccessibleName(tr("Replace with"));
    auto *replaceOne = new QToolButton(m_replaceRow);
    replaceOne->setText(tr("Replace"));
    replaceOne->setAutoRaise(true);
    connect(replaceOne, &QToolButton::clicked, this, &FindBar::replaceCurrent);
    auto *replaceEach = new QToolButton(m_replaceRow);
    replaceEach->setText(tr("Replace All"));
    replaceEach->setAutoRaise(true);
    connect(replaceEach, &QToolButton::clicked, this, &FindBar::replaceAll);

    auto *findRow = new QHBoxLayout;
    findRow->setSpacing(2);
    findRow->addWidget(m_find, 1);
    for (QWidget *widget :
         {static_cast<QWidget *>(m_status), static_cast<QWidget *>(m_matchCase), static_cast<QWidget *>(m_wholeWords),
          static_cast<QWidget *>(m_pattern), static_cast<QWidget *>(previous), static_cast<QWidget *>(next),
          static_cast<QWidget *>(done)}) {
        findRow->addWidget(widget);
    }
    auto *replaceLayout = new QHBoxLayout(m_replaceRow);
    replaceLayout->setContentsMargins(0, 0, 0, 0);
    replaceLayout->setSpacing(2);
    replaceLayout->addWidget(m_replace, 1);
    replaceLayout->addWidget(replaceOne);
    replaceLayout->addWidget(replaceEach);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kMargin / 2);
    layout->addLayout(findRow);
    layout->addWidget(m_replaceRow);
    connect(&m_view, &QBNoteTextView::textChanged, this, &FindBar::textDidChange);
    hide();
}

void FindBar::open(bool withReplacing)
{
    const NSRange selection = m_view.selectedRange();
    const QString selected =
        m_view.textStorage().string().sliced(selection.location, std::min(selection.length, kLongestTaken)).toString();
    m_startLocation = selection.location;
    m_replaceRow->setVisible(withReplacing && !m_view.isReadOnly());
    show();
    if (!selected.isEmpty() && selection.length < kLongestTaken && !selected.contains(u'\n') &&
        !selected.contains(QChar::ObjectReplacementCharacter)) {
        m_find->setText(selected);
    }
    m_find->setFocus(Qt::ShortcutFocusReason);
    m_find->selectAll();
    update(m_startLocation, /*showsCurrent=*/!m_find->text().isEmpty());
}

void FindBar::close()
{
    m_updating.stop();
    hide();
    m_matches.clear();
    m_current = -1;
    m_view.setSearchHighlights({});
    m_view.setFocus();
    Q_EMIT didClose();
}

void FindBar::setOptions(const FindOptions &options)
{
    m_matchCase->setChecked(options.isCaseSensitive);
    m_wholeWords->setChecked(options.findsWholeWords);
    m_pattern->setChecked(options.isRegularExpression);
}

FindOptions FindBar::options() const
{
    return {m_matchCase->isChecked(), m_wholeWords->isChecked(), m_pattern->isChecked()};
}

QString FindBar::status() const
{
    return m_status->text();
}

void FindBar::noteDidChange()
{
    m_startLocation = 0;
    if (isVisible()) {
        update(0, /*showsCurrent=*/false);
    }
}

void FindBar::update(qint64 location, bool showsCurrent)
{
    m_updating.stop();
    m_finder = NoteTextFinder(m_find->text(), options());
    m_matches = m_finder.matches(m_view.textStorage().string());
    const auto found = std::find_if(m_matches.cbegin(), m_matches.cend(),
                                    [location](NSRange match) { return match.location >= location; });
    m_current = m_matches.isEmpty() ? -1 : found == m_matches.cend() ? 0 : found - m_matches.cbegin();
    if (showsCurrent && m_current >= 0) {
        goTo(m_current);
        return;
    }
    m_view.setSearchHighlights(m_matches, m_current);
    showStatus();
}

void FindBar::goTo(qsizetype index)
{
    m_current = index;
    const NSRange match = m_matches[index];
    m_view.setSelectedRange(match);
    m_view.scrollRangeToVisible(match);
    m_view.setSearchHighlights(m_matches, m_current);
    showStatus();
}

void FindBar::showStatus()
{
    if (!m_finder.problem().isEmpty()) {
        m_status->setText(tr("No pattern"));
        m_status->setToolTip(m_finder.problem());
        return;
    }
    m_status->setToolTip({});
    if (m_find->text().isEmpty()) {
        m_status->clear();
    } else if (m_matches.isEmpty()) {
        m_status->setText(tr("Not found"));
    } else {
        m_status->setText(tr("%1 of %2").arg(m_current + 1).arg(m_matches.size()));
    }
}

void FindBar::findNext()
{
    if (m_matches.isEmpty()) {
        update(m_view.selectedRange().limit(), /*showsCurrent=*/true);
        return;
    }
    // From the caret on: somebody may have put it elsewhere.
    const NSRange selection = m_view.selectedRange();
    const qint64 from = selection == m_matches[m_current] ? selection.limit() : selection.location;
    const auto next =
        std::find_if(m_matches.cbegin(), m_matches.cend(), [from](NSRange match) { return match.location >= from; });
    goTo(next == m_matches.cend() ? 0 : next - m_matches.cbegin());
}

void FindBar::findPrevious()
{
    if (m_matches.isEmpty()) {
        update(m_view.selectedRange().location, /*showsCurrent=*/true);
        return;
    }
    const qint64 before = m_view.selectedRange().location;
    const auto next = std::find_if(m_matches.cbegin(), m_matches.cend(),
                                   [before](NSRange match) { return match.location >= before; });
    goTo(next == m_matches.cbegin() ? m_matches.size() - 1 : next - m_matches.cbegin() - 1);
}

void FindBar::replaceCurrent()
{
    if (m_current < 0 || m_view.isReadOnly()) {
        return;
    }
    const NSRange match = m_matches[m_current];
    if (m_view.selectedRange() != match) {
        goTo(m_current); // what is replaced is seen before
        return;
    }
    const QString text = m_finder.replacement(m_view.textStorage().string(), match, m_replace->text());
    if (text.isNull()) {
        update(match.location, /*showsCurrent=*/true);
        return;
    }
    m_isReplacing = true;
    m_view.replaceText(match, text);
    m_isReplacing = false;
    update(m_view.selectedRange().limit(), /*showsCurrent=*/true);
}

void FindBar::replaceAll()
{
    if (m_view.isReadOnly()) {
        return;
    }
    const auto replaced = m_finder.replacingAll(m_view.textStorage(), m_replace->text());
    if (!replaced) {
        return;
    }
    m_isReplacing = true;
    m_view.replaceText(replaced->range, replaced->text);
    m_isReplacing = false;
    update(replaced->range.location, /*showsCurrent=*/false);
    m_status->setText(tr("%n replaced", nullptr, static_cast<int>(replaced->count)));
}

void FindBar::textDidChange()
{
    if (isVisible() && !m_isReplacing) {
        m_matches.clear(); // they are of the text before
        m_current = -1;
        m_updating.start(kUpdateDelay, this);
    }
}

void FindBar::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_updating.timerId()) {
        update(m_view.selectedRange().location, /*showsCurrent=*/false);
    } else {
        QWidget::timerEvent(event);
    }
}

void FindBar::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape) {
        close();
    } else if (isReturn && m_replace->hasFocus()) {
        replaceCurrent();
    } else if (isReturn && (event->modifiers() & Qt::ShiftModifier) != 0) {
        findPrevious();
    } else if (isReturn) {
        findNext();
    } else {
        QWidget::keyPressEvent(event);
    }
}

} // namespace quib
