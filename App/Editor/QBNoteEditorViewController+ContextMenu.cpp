#include "QBNoteEditorViewController.h"

#include "FileManager.h"
#include "NoteTextViewSpelling.h"

#include <Logging/QBLogger.h>
#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Markup/Attachments/QBGenericFileTextAttachment.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Store/CurrentSyntax.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNoteFile.h>

#include <QAction>
#include <QClipboard>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMenu>
#include <QUrlQuery>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// A longer address is no name of an entry.
constexpr qsizetype kLongestShownName = 40;

/// What an attribute has at a place, or right before it, where a caret stands behind what it belongs to.
struct FoundAttribute
{
    AttributeValue value;
    NSRange range = kNotFoundRange;
};

FoundAttribute attributeAround(const NSAttributedString &text, const NSAttributeName &name, qint64 location)
{
    for (const qint64 place : {location, location - 1}) {
        NSRange run;
        if (place < 0 || place >= text.length()) {
            continue;
        }
        if (const AttributeValue value = text.attribute(name, place, &run, text.fullRange())) {
            return {value, run};
        }
    }
    return {};
}

/// The part of a link that is its address: of "[title](address)" what is in parentheses, of "[[title]]" what is in
/// brackets, of an address all of it.
NSRange addressInLink(QStringView link, qint64 location)
{
    constexpr std::array kPairs{std::pair{u"[[", u"]]"}, std::pair{u"](", u")"}};
    for (const auto &[before, after] : kPairs) {
        const QStringView opening(before);
        const QStringView closing(after);
        const qsizetype start = link.indexOf(opening);
        const qsizetype end = link.lastIndexOf(closing);
        if (start >= 0 && end >= start + opening.size()) {
            return {location + start + opening.size(), end - start - opening.size()};
        }
    }
    return {location, link.size()};
}

} // namespace

std::optional<QBNoteEditorViewController::Link> QBNoteEditorViewController::linkAt(qint64 location) const
{
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    const FoundAttribute link = attributeAround(text, NSLinkAttributeName, location);
    if (!link.value) {
        return std::nullopt;
    }
    const QUrl url = link.value.urlValue().isValid() ? link.value.urlValue() : QUrl(link.value.stringValue());
    for (const auto &[name, kind] : {std::pair{QBNoteTagStylerAttributeName, Link::Kind::Tag},
                                     std::pair{QBNoteWikiTextStylerAttributeName, Link::Kind::Note},
                                     std::pair{QBTitledUrlStylerAttributeName, Link::Kind::Address}}) {
        if (const FoundAttribute whole = attributeAround(text, name, location); whole.value) {
            return Link{kind, url, whole.range};
        }
    }
    return Link{Link::Kind::Address, url, link.range};
}

void QBNoteEditorViewController::openLinkAtCaret()
{
    if (const auto link = linkAt(m_view->caret())) {
        Q_EMIT urlWasOpened(link->url);
    }
}

void QBNoteEditorViewController::fillContextMenu(QBNoteTextView & /*view*/, QMenu &menu, qint64 location)
{
    if (!m_note || m_note->managedObjectContext() == nullptr) {
        return;
    }
    updateCommands();
    m_spelling->fillContextMenu(menu, location);
    addLinkEntries(menu, location);
    addAttachmentEntries(menu, location);
    const NSRange lines = m_stack.noteTextStorage().attributedString().paragraphRangeForRange(m_view->selectedRange());
    if (m_core.containsCheckboxesInRange(lines) && !m_view->isReadOnly()) {
        menu.addSeparator();
        menu.addAction(action(u"toggle-todo"_s));
    }
    menu.addSeparator();
    if (m_view->selectedRange().length > 0) {
        menu.addAction(action(u"note-from-selection"_s));
    }
    QMenu *copying = menu.addMenu(tr("Copy As"));
    copying->addActions({action(u"copy-as-text"_s), action(u"copy-as-text-without-tags"_s)});
    QMenu *pasting = menu.addMenu(tr("Paste As"));
    pasting->setEnabled(!m_view->isReadOnly());
    pasting->addActions({action(u"paste-plain"_s), action(u"paste-code"_s)});
}

void QBNoteEditorViewController::addLinkEntries(QMenu &menu, qint64 location)
{
    const auto link = linkAt(location);
    if (!link) {
        return;
    }
    menu.addSeparator();
    const auto open = [this, url = link->url] { Q_EMIT urlWasOpened(url); };
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    if (link->kind == Link::Kind::Tag) {
        QString name = QUrlQuery(link->url).queryItemValue(u"name"_s, QUrl::FullyDecoded);
        if (name.size() > kLongestShownName) {
            name = name.left(kLongestShownName) % u'…';
        }
        menu.addAction(tr("Show Notes with #%1").arg(name), this, open);
        return;
    }
    const bool isNote = link->kind == Link::Kind::Note;
    menu.addAction(isNote ? tr("Open Note") : tr("Open Link"), this, open);
    const QString copied = isNote ? m_stack.noteTextStorage().stringWithExpandedTextAttachmentsWithRange(link->range)
                                  : link->url.toString(QUrl::FullyEncoded);
    menu.addAction(tr("Copy Link"), this, [copied] { QGuiApplication::clipboard()->setText(copied); });
    if (!m_view->isReadOnly()) {
        const NSRange address = addressInLink(text.stringInRange(link->range), link->range.location);
        menu.addAction(tr("Edit Link"), this, [this, address] {
            m_view->setSelectedRange(address);
            m_view->scrollRangeToVisible(address);
            m_view->setFocus();
        });
    }
}

void QBNoteEditorViewController::addAttachmentEntries(QMenu &menu, qint64 location)
{
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    const FoundAttribute found = attributeAround(text, NSAttachmentAttributeName, location);
    if (found.value.as<QBFoldTextAttachment>() != nullptr && !m_view->isReadOnly()) {
        menu.addSeparator();
        menu.addAction(tr("Unfold"), this, [this, place = found.range.location] {
            const auto value = m_stack.noteTextStorage().attributedString().attribute(NSAttachmentAttributeName, place);
            if (const auto attachment = value.sharedAs<QBFoldTextAttachment>()) {
                qbNoteTextViewDidOpenAttachment(*m_view, attachment, place);
            }
        });
    }
    const auto *file = found.value.as<QBGenericFileTextAttachment>();
    if (file == nullptr || file->fileURL().isEmpty()) {
        return;
    }
    menu.addSeparator();
    const QUrl url = file->fileURL();
    menu.addAction(tr("Open"), this, [this, url] { Q_EMIT urlWasOpened(url); });
    menu.addAction(tr("Save As…"), this, [this, url] { chooseCopyOfFile(url); });
    menu.addAction(tr("Show in Folder"), this, [this, url] {
        showInFileManager(url, this, [this, url] {
            Q_EMIT urlWasOpened(QUrl::fromLocalFile(QFileInfo(url.toLocalFile()).absolutePath()));
        });
    });
}

void QBNoteEditorViewController::chooseCopyOfFile(const QUrl &url)
{
    auto *dialog = new QFileDialog(this, tr("Save Attachment"));
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->selectFile(url.fileName());
    connect(dialog, &QFileDialog::fileSelected, this, [this, url](const QString &path) { copyFileTo(url, path); });
    dialog->open();
}

bool QBNoteEditorViewController::copyFileTo(const QUrl &url, const QString &path)
{
    // The dialog has asked before it gave the name of a file that is there.
    const QString source = url.toLocalFile();
    if (QFileInfo(source) == QFileInfo(path)) {
        return true;
    }
    (void)QFile::remove(path);
    QFile file(source);
    if (file.copy(path)) {
        return true;
    }
    QBLogError(u"An attachment could not be saved elsewhere: "_s + file.errorString());
    Q_EMIT savingFailed(QFileInfo(path).fileName());
    return false;
}

void QBNoteEditorViewController::makeNoteFromSelection()
{
    const NSRange selection = m_view->selectedRange();
    if (!m_note || m_note->managedObjectContext() == nullptr || selection.length == 0) {
        return;
    }
    saveNote(/*forceSave=*/true); // its attachments have rows now
    NSManagedObjectContext &moc = *m_note->managedObjectContext();
    // An attachment belongs to one note: the new one gets copies.
    QList<std::pair<QString, QString>> markers;
    m_stack.noteTextStorage().enumerateFilesAttachmentsInRange(
        selection, [&](const QBGenericFileTextAttachment &attachment, NSRange /*place*/) {
            const QString marker = attachment.representedText();
            if (const auto file = QBNoteFile::noteFileWithTextRepresentation(marker, moc)) {
                markers.append({marker, file->duplicate()->textRepresentation()});
            }
        });
    const QString text = m_stack.noteTextStorage().stringWithExpandedTextAttachmentsWithRange(selection).remove(
        QChar::ObjectReplacementCharacter);
    const auto note = QBNote::noteWithText(QBNoteFile::stringByReplacingMarkers(text, markers), currentSyntax(), moc);
    if (QBCoreDataStack *stack = QBCoreDataStack::sharedStack(); stack != nullptr) {
        stack->saveUsingCoalescence(/*coalescence=*/false);
    }
    Q_EMIT noteWasChosen(note->uniqueIdentifier());
}
