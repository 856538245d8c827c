#include "FindBar.h"

#include "EditorSymbol.h"
#include "QBNoteTextView.h"
#include "UnfoldedText.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QTimerEvent>
#include <QToolButton>

#include <algorithm>
#include <initializer_list>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// While somebody types in the note, the marks follow when the typing rests. Units: milliseconds.
constexpr int kUpdateDelay = 150;
constexpr int kMargin = 6;
constexpr int kFieldMargin = 9;
constexpr int kLeastFieldWidth = 90;
/// A longer selection is no text to look for. Units: UTF-16 code units.
constexpr qint64 kLongestTaken = 200;

} // namespace

FindBar::FindBar(QBNoteTextView &view, QWidget *parent)
    : QWidget(parent)
    , m_view(view)
{
    setObjectName(u"findBar"_s);
    setAccessibleName(tr("Find in Note"));
    // Where the keyboard is must be seen beside where the mouse is.
    setStyleSheet(u"QToolButton:focus { border: 1px solid palette(highlight); padding: 3px; }"_s);
    m_find = makeField(u"findField"_s, tr("Find in note"), tr("Find"));
    connect(m_find, &QLineEdit::textChanged, this, [this] { update(m_startLocation, /*showsCurrent=*/true); });
    m_status = new QLabel(m_find);
    m_status->setObjectName(u"findStatus"_s);
    m_status->setForegroundRole(QPalette::PlaceholderText);
    m_status->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_replace = makeField(u"replaceField"_s, tr("Replace with"), tr("Replace with"));
    m_matchCase = makeOption(u"match-case"_s, tr("Match Case"), Qt::ALT | Qt::Key_C);
    m_wholeWords = makeOption(u"whole-words"_s, tr("Whole Words"), Qt::ALT | Qt::Key_W);
    m_pattern = makeOption(u"pattern"_s, tr("Regular Expression"), Qt::ALT | Qt::Key_R);
    auto *previous = makeButton(u"find-previous"_s, tr("Find Previous"), Qt::SHIFT | Qt::Key_F3);
    connect(previous, &QToolButton::clicked, this, &FindBar::findPrevious);
    auto *next = makeButton(u"find-next"_s, tr("Find Next"), Qt::Key_F3);
    connect(next, &QToolButton::clicked, this, &FindBar::findNext);
    m_done = makeButton(u"close"_s, tr("Close"), Qt::Key_Escape);
    connect(m_done, &QToolButton::clicked, this, &FindBar::close);
    m_replaceButtons = new QWidget(this);
    auto *replaceOne = makeButton(u"replace"_s, tr("Replace"), Qt::Key_Return);
    connect(replaceOne, &QToolButton::clicked, this, &FindBar::replaceCurrent);
    auto *replaceEach = makeButton(u"replace-all"_s, tr("Replace All"), Qt::ALT | Qt::Key_Return);
    connect(replaceEach, &QToolButton::clicked, this, &FindBar::replaceAll);

    const auto addRow = [](QWidget *row, std::initializer_list<QWidget *> widgets) {
        auto *layout = new QHBoxLayout(row);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(2);
        for (QWidget *widget : widgets) {
            layout->addWidget(widget);
        }
        layout->addStretch(1);
    };
    auto *findButtons = new QWidget(this);
    addRow(findButtons, {m_matchCase, m_wholeWords, m_pattern, previous, next, m_done});
    addRow(m_replaceButtons, {replaceOne, replaceEach});
    auto *layout = new QGridLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setHorizontalSpacing(kMargin);
    layout->setVerticalSpacing(kMargin / 2);
    layout->setColumnStretch(0, 1);
    layout->addWidget(m_find, 0, 0);
    layout->addWidget(findButtons, 0, 1);
    layout->addWidget(m_replace, 1, 0);
    layout->addWidget(m_replaceButtons, 1, 1);
    // From what is looked for to what takes its place, and then to the buttons.
    QWidget *before = m_find;
    for (QWidget *widget : std::initializer_list<QWidget *>{m_replace, m_matchCase, m_wholeWords, m_pattern, previous,
                                                            next, replaceOne, replaceEach, m_done}) {
        setTabOrder(before, widget);
        before = widget;
    }
    connect(&m_view, &QBNoteTextView::textChanged, this, &FindBar::textDidChange);
    m_find->installEventFilter(this);
    hide();
}

QLineEdit *FindBar::makeField(const QString &name, const QString &placeholder, const QString &accessibleName)
{
    auto *field = new QLineEdit(this);
    field->setObjectName(name);
    field->setPlaceholderText(placeholder);
    field->setAccessibleName(accessibleName);
    field->setMinimumWidth(kLeastFieldWidth);
    return field;
}

QToolButton *FindBar::makeButton(const QString &name, const QString &text, const QKeySequence &keys)
{
    auto *button = new QToolButton(this);
    const QString shown = keys.toString(QKeySequence::NativeText);
    button->setObjectName(name);
    button->setText(text);
    button->setIcon(editorSymbol(name));
    button->setToolTip(text % u" ("_s % shown % u')');
    button->setAccessibleName(text);
    button->setAccessibleDescription(shown);
    button->setAutoRaise(true);
    return button;
}

QToolButton *FindBar::makeOption(const QString &name, const QString &text, const QKeySequence &keys)
{
    QToolButton *option = makeButton(name, text, keys);
    option->setCheckable(true);
    connect(option, &QToolButton::toggled, this, [this] { update(m_startLocation, /*showsCurrent=*/true); });
    auto *shortcut = new QShortcut(keys, this);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    connect(shortcut, &QShortcut::activated, option, &QToolButton::toggle);
    return option;
}

bool FindBar::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_find && event->type() == QEvent::Resize) {
        placeStatus();
    }
    return QWidget::eventFilter(watched, event);
}

void FindBar::placeStatus()
{
    // It stands within the field, at its end, and the text keeps off it.
    const int width = m_status->text().isEmpty() ? 0 : m_status->sizeHint().width();
    const bool isRightToLeft = m_find->isRightToLeft();
    const int left = isRightToLeft ? kFieldMargin : m_find->width() - width - kFieldMargin;
    m_status->setGeometry(left, 0, width, m_find->height());
    const int kept = width == 0 ? 0 : width + kFieldMargin;
    m_find->setTextMargins(isRightToLeft ? kept : 0, 0, isRightToLeft ? 0 : kept, 0);
}

void FindBar::open(bool withReplacing)
{
    const NSRange selection = m_view.selectedRange();
    const QString selected =
        m_view.textStorage().string().sliced(selection.location, std::min(selection.length, kLongestTaken)).toString();
    m_startLocation = selection.location;
    // What was typed into the bar stays in it while the keyboard does.
    const bool takesSelection = !isVisible() || m_view.hasFocus();
    const bool replaces = withReplacing && !m_view.isReadOnly();
    m_replace->setVisible(replaces);
    m_replaceButtons->setVisible(replaces);
    show();
    if (takesSelection && !selected.isEmpty() && selection.length < kLongestTaken && !selected.contains(u'\n') &&
        !selected.contains(QChar::ObjectReplacementCharacter)) {
        m_find->setText(options().isRegularExpression ? NSRegularExpression::escapedPatternForString(selected)
                                                      : selected);
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
    findMatches();
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

void FindBar::findMatches()
{
    const UnfoldedText text(m_view.textStorage().attributedString());
    m_matches = m_finder.matches(text.string());
    for (NSRange &match : m_matches) {
        match = text.shownRange(match);
    }
}

bool FindBar::openFolds(NSRange match)
{
    const std::vector<qint64> folds = foldsInRange(m_view.textStorage().attributedString(), match);
    bool isOpened = false;
    m_isEditing = true;
    for (auto fold = folds.crbegin(); fold != folds.crend(); ++fold) {
        const qint64 before = m_view.textStorage().length();
        isOpened = m_view.openFolds({*fold, 1}) || isOpened;
        m_startLocation += *fold < m_startLocation ? m_view.textStorage().length() - before : 0;
    }
    m_isEditing = false;
    return isOpened;
}

void FindBar::goTo(qsizetype index)
{
    m_current = index;
    // What is folded is opened where something is found in it. It may have other folds within it.
    while (!m_view.isReadOnly() && openFolds(m_matches[index])) {
        findMatches();
        if (index >= m_matches.size()) {
            m_current = -1;
            showStatus();
            return;
        }
    }
    const NSRange match = m_matches[index];
    m_view.setSelectedRange(match);
    m_view.scrollRangeToVisible(match);
    m_view.setSearchHighlights(m_matches, m_current);
    showStatus();
}

void FindBar::showStatus()
{
    m_find->setToolTip(m_finder.problem());
    if (!m_finder.problem().isEmpty()) {
        say(tr("Not a valid pattern"));
    } else if (m_find->text().isEmpty()) {
        say({});
    } else if (m_matches.isEmpty()) {
        say(tr("Not found"));
    } else {
        const bool isAll = m_matches.size() < NoteTextFinder::kMostMatches;
        say((isAll ? tr("%1 of %2") : tr("%1 of more than %2")).arg(m_current + 1).arg(m_matches.size()));
    }
}

void FindBar::say(const QString &status)
{
    m_status->setText(status);
    m_find->setAccessibleDescription(status);
    placeStatus();
}

void FindBar::findNext()
{
    show(); // what is marked can be put away
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
    show();
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
    const UnfoldedText searched(m_view.textStorage().attributedString());
    const QString text = m_finder.replacement(searched.string(), searched.rangeOfShownRange(match), m_replace->text());
    if (text.isNull()) {
        update(match.location, /*showsCurrent=*/true);
        return;
    }
    m_isEditing = true;
    m_view.replaceText(match, text);
    m_isEditing = false;
    update(m_view.selectedRange().limit(), /*showsCurrent=*/true);
}

void FindBar::replaceAll()
{
    if (m_view.isReadOnly()) {
        return;
    }
    const UnfoldedText searched(m_view.textStorage().attributedString());
    const auto replaced = m_finder.replacingAll(searched, m_replace->text());
    if (!replaced) {
        return;
    }
    if (replaced->count == 0) {
        say(tr("Too much to replace"));
        return;
    }
    m_isEditing = true;
    m_view.replaceText(replaced->range, replaced->text);
    m_isEditing = false;
    update(replaced->range.location, /*showsCurrent=*/false);
    say(tr("%n replaced", nullptr, static_cast<int>(replaced->count)));
}

void FindBar::textDidChange()
{
    if (isVisible() && !m_isEditing) {
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
    } else if (isReturn && (event->modifiers() & Qt::AltModifier) != 0 && m_replace->isVisible()) {
        replaceAll();
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
