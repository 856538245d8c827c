#pragma once

class QBNoteTextStyler;
class QBNotesTextAttachment;

/// Gives a new attachment what its text alone does not tell: the file it stands for, its picture. The editor's is
/// QBNoteTextAttachmentConfigurator; writers of other formats have their own. Called on the queue of the text.
class QBNoteTextAttachmentConfiguring
{
public:
    virtual ~QBNoteTextAttachmentConfiguring() = default;
    virtual void configureTextAttachment(QBNotesTextAttachment &attachment, QBNoteTextStyler &forTextStyler) = 0;
};
