#include "NoteTextViewSpelling.h"

#include "QBNoteTextView.h"

#include <Store/QBNotesPreferenceManager.h>

#include <QAction>
#include <QEvent>
#include <QMenu>
#include <QPointer>
#include <QScrollBar>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

NoteTextViewSpelling::NoteTextViewSpelling(QBNoteTextView &view)
    : QObject(&view)
    , m_view(view)
    , m_controller(view.textStorage(), *this)
{
    connect(&view, &QBNoteTextView::selectionChanged, this, [this] { m_controller.selectionDidChange(); });
    connect(view.verticalScrollBar(), &QScrollBar::valueChanged, this,
            [this] { m_controller.visibleRangeDidChange(); });
    view.viewport()->installEventFilter(this);
    if (auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager(); preferences != nullptr) {
        m_preference = preferences->addObserver(u"spellCheckingEnabled"_s,
                                                [this](const QString & /*keyPath*/) { followPreference(); });
        followPreference();
    }
}

NoteTextViewSpelling::~NoteTextViewSpelling() = default;

void NoteTextViewSpelling::followPreference()
{
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    m_controller.setEnabled(preferences == nullptr || preferences->spellCheckingEnabled());
}

bool NoteTextViewSpelling::eventFilter(QObject * /*watched*/, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Show) {
        m_controller.visibleRangeDidChange();
    }
    return false;
}

NSRange NoteTextViewSpelling::visibleRange()
{
    if (!m_view.isVisible()) {
        return {0, 0};
    }
    const qint64 first = m_view.scrollPosition().location;
    const QSize size = m_view.viewport()->size();
    // Where the text ends above the view's foot, that is the place.
    const qint64 last = m_view.locationAtViewportPoint(QPointF(size.width(), size.height()));
    return {first, std::max<qint64>(last + 1 - first, 0)};
}

NSRange NoteTextViewSpelling::selectedRange() const
{
    return m_view.selectedRange();
}

bool NoteTextViewSpelling::isEditable() const
{
    return !m_view.isReadOnly();
}

void NoteTextViewSpelling::setSpellingMarks(std::vector<NSRange> marks, NSRange inRange)
{
    m_view.setSpellingMarks(std::move(marks), inRange);
}

void NoteTextViewSpelling::fillContextMenu(QMenu &menu, qint64 location)
{
    const auto mark = m_view.spellingMarkAtLocation(location);
    if (!mark || m_view.isReadOnly()) {
        return;
    }
    const NSRange range = *mark;
    const QString word = m_controller.wordInRange(range);
    // Looking for words takes a while: they come into the menu when they are found.
    QAction *place = menu.addAction(tr("Looking for Words…"));
    place->setEnabled(false);
    menu.addSeparator();
    menu.addAction(tr("Add “%1” to the Dictionary").arg(word), this, [this, word] { m_controller.learnWord(word); });
    menu.addAction(tr("Ignore “%1”").arg(word), this, [this, word] { m_controller.ignoreWord(word); });
    menu.addSeparator();
    m_controller.findSuggestions(range,
                                 [this, range, word, shown = QPointer(&menu), place](const QStringList &suggestions) {
                                     if (shown == nullptr) {
                                         return;
                                     }
                                     if (suggestions.isEmpty()) {
                                         place->setText(tr("No Other Words Found"));
                                         return;
                                     }
                                     for (const QString &suggestion : suggestions) {
                                         auto *action = new QAction(suggestion, shown);
                                         connect(action, &QAction::triggered, this, [this, range, word, suggestion] {
                                             // The note may have been changed elsewhere while the menu was open.
                                             if (m_controller.wordInRange(range) == word) {
                                                 m_view.replaceText(range, suggestion);
                                             }
                                         });
                                         shown->insertAction(place, action);
                                     }
                                     shown->removeAction(place);
                                 });
}

} // namespace quib
