#pragma once

#include <Foundation/NSRange.h>
#include <Markup/QBNoteTextAttachmentConfigurator.h>
#include <Store/QBNote.h>

#include <QList>
#include <QString>

#include <memory>

class QBNotesTextStorage;

/// Gives out notes and parts of them as text in their own markup. Configures the attachments of the texts that it
/// makes. Owned by the editor or the note list; lives on the queue of its context.
class QBNoteCopyAsCoreController : public QBNoteTextAttachmentConfigurator
{
public:
    /// The part of a text that is copied, as it is saved. An empty range gives an empty text.
    [[nodiscard]] static QString copyAsTXT(const QBNotesTextStorage &textStorage, NSRange withRange, bool andTags);
    /// The texts of notes in their order, with an empty line between each two.
    [[nodiscard]] static QString copyNotesAsTXT(const QList<quib::Ref<QBNote>> &notes, bool withTags);

    /// A text of its own with the lines that the range touches.
    [[nodiscard]] static std::unique_ptr<QBNotesTextStorage>
    subTextStorageIncludingFullLinesWithRange(NSRange range, const QBNotesTextStorage &andTextStorage);
};
