#include "QBMainWindowController.h"

#include "MessageBar.h"
#include "SymbolPicker.h"

#include <Store/CurrentSyntax.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNoteTag.h>

#include <utility>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

void saveStore()
{
    if (QBCoreDataStack *stack = QBCoreDataStack::sharedStack(); stack != nullptr) {
        stack->saveUsingCoalescence(/*coalescence=*/false);
    }
}

bool isThere(const Ref<QBNote> &note)
{
    return note->managedObjectContext() != nullptr && !note->isDeleted();
}

/// A tag and all below it.
QList<Ref<QBNoteTag>> family(const Ref<QBNoteTag> &tag)
{
    QList<Ref<QBNoteTag>> tags{tag};
    tags.append(tag->childsAndSubChildsTagsWithSortDescriptors({}));
    return tags;
}

} // namespace

QList<Ref<QBNote>> QBMainWindowController::rewriteNotes(const Ref<QBNoteTag> &ofTag, const QString &actionName,
                                                        const std::function<void()> &rewrite)
{
    saveNote(/*forceSave=*/false);
    const QString title = ofTag->title(); // rewriting may take it away
    QList<RewrittenNote> changes;
    QList<Ref<QBNote>> notes;
    for (const auto &note : QBNote::notesForTags(family(ofTag), *m_context)) {
        changes.append({note, note->text(), {}});
    }
    rewrite();
    for (auto change = changes.begin(); change != changes.end();) {
        change->after = change->note->text();
        if (change->after == change->before) {
            change = changes.erase(change);
        } else {
            notes.append(change->note);
            ++change;
        }
    }
    registerRewritingBack(changes, actionName, title);
    saveStore();
    updateActions();
    return notes;
}

void QBMainWindowController::registerRewritingBack(const QList<RewrittenNote> &changes, const QString &actionName,
                                                   const QString &selectedTag)
{
    if (changes.isEmpty()) {
        return;
    }
    m_undoManager.registerUndo([this, changes, actionName, selectedTag] {
        const QString selectedBefore = m_sidebar->selectedIdentifier();
        saveNote(/*forceSave=*/false);
        QList<RewrittenNote> inverse;
        for (const RewrittenNote &change : changes) {
            // What was written since is worth more than the tag.
            if (isThere(change.note) && change.note->text() == change.after) {
                change.note->updateNoteWithText(change.before, currentSyntax(), /*updateModificationDate=*/false);
                inverse.append({change.note, change.after, change.before});
            }
        }
        registerRewritingBack(inverse, actionName, selectedBefore);
        saveStore();
        m_sidebar->selectIdentifier(selectedTag);
    });
    m_undoManager.setActionName(actionName);
}

void QBMainWindowController::sayWithUndo(const QString &text)
{
    const int offer = m_messages->say(text, tr("Undo"), [this](int button, bool /*isChecked*/) {
        if (button == 0) {
            m_undoManager.undo();
            updateActions();
        }
    });
    // What was done since is undone by its own command.
    m_undoOffer = m_undoManager.observe([this, offer](NSUndoManager::Event event) {
        switch (event) {
        case NSUndoManager::Event::DidCloseUndoGroup:
        case NSUndoManager::Event::DidUndoChange:
        case NSUndoManager::Event::DidRedoChange:
            m_messages->dismiss(offer);
            break;
        default:
            break;
        }
    });
}

void QBMainWindowController::renameTag(const QBSidebarItem::Pointer &item, const QString &name)
{
    const auto *tagItem = dynamic_cast<const QBTagSidebarItem *>(item.get());
    if (tagItem == nullptr) {
        return;
    }
    const Ref<QBNoteTag> tag = tagItem->tag();
    if (tag->managedObjectContext() == nullptr || tag->isDeleted()) {
        return; // since the name was edited
    }
    const QString old = tag->title();
    QStringList oldTitles;
    for (const auto &each : family(tag)) {
        oldTitles.append(each->title());
    }
    QString now;
    const QString actionName = tr("Rename Tag");
    const auto notes = rewriteNotes(tag, actionName, [&tag, &name, &now] {
        if (const auto renamed = tag->renameTagWithTagNamed(name, currentSyntax())) {
            now = renamed->title();
        }
    });
    if (now.isNull()) {
        return;
    }
    // Symbols that were chosen go with the names.
    SidebarModel &model = m_sidebar->sidebarModel();
    for (const QString &title : std::as_const(oldTitles)) {
        const QString newTitle = now % title.mid(old.size());
        if (const QString chosen = model.chosenSymbol(title);
            !chosen.isEmpty() && model.chosenSymbol(newTitle).isEmpty()) {
            model.setChosenSymbol(newTitle, chosen);
        }
    }
    m_sidebar->selectIdentifier(now);
    if (!notes.isEmpty()) {
        sayWithUndo(tr("The tag #%1 is #%2 now.").arg(old, now));
    }
}

void QBMainWindowController::deleteTag(const QBSidebarItem::Pointer &item)
{
    const auto *tagItem = dynamic_cast<const QBTagSidebarItem *>(item.get());
    if (tagItem == nullptr) {
        return;
    }
    const Ref<QBNoteTag> tag = tagItem->tag();
    const QString title = tag->title();
    const QString actionName = tr("Delete Tag");
    const auto notes = rewriteNotes(tag, actionName, [&tag] { tag->deleteTagWithSyntax(currentSyntax()); });
    if (!notes.isEmpty()) {
        sayWithUndo(tr("The tag #%1 was taken out of %n note(s).", nullptr, int(notes.size())).arg(title));
    }
    m_sidebar->setFocus();
}

void QBMainWindowController::chooseSymbol(const QBSidebarItem::Pointer &item)
{
    const auto *tagItem = dynamic_cast<const QBTagSidebarItem *>(item.get());
    if (tagItem == nullptr) {
        return;
    }
    const QString title = tagItem->tag()->title();
    auto *picker = new SymbolPicker(m_sidebar->sidebarModel().chosenSymbol(title), item->icon(), this);
    connect(picker, &SymbolPicker::symbolWasChosen, this, [this, title](const QString &name) {
        const QString before = m_sidebar->sidebarModel().chosenSymbol(title);
        setSymbol(title, name, before);
    });
    const QRect place = m_sidebar->visualRect(m_sidebar->currentIndex());
    picker->open(m_sidebar->viewport()->mapToGlobal(place.bottomLeft()));
}

void QBMainWindowController::setSymbol(const QString &tagTitle, const QString &name, const QString &before)
{
    m_sidebar->sidebarModel().setChosenSymbol(tagTitle, name);
    m_undoManager.registerUndo([this, tagTitle, name, before] { setSymbol(tagTitle, before, name); });
    m_undoManager.setActionName(tr("Choose Symbol"));
    updateActions();
}

void QBMainWindowController::dropNotes(const QBSidebarItem::Pointer &item, const QStringList &identifiers)
{
    const auto notes = notesWithIdentifiers(identifiers);
    if (notes.isEmpty() || !m_notes) {
        return;
    }
    saveNote(/*forceSave=*/false);
    if (const auto *tagItem = dynamic_cast<const QBTagSidebarItem *>(item.get()); tagItem != nullptr) {
        m_notes->unremoveTag(tagItem->tag()->title(), notes);
    } else if (dynamic_cast<const QBArchiveSidebarItem *>(item.get()) != nullptr) {
        m_notes->archiveNotes(notes);
    } else if (dynamic_cast<const QBNotesTrashSidebarItem *>(item.get()) != nullptr) {
        if (m_notes->representedObject() != item) {
            m_notes->deleteNotes(notes);
        }
    } else {
        item->addNotes(notes);
    }
    updateActions();
}
