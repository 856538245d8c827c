#include "QBNoteFile+TextStorage.h"

#include "QBNotesTextStorage.h"

#include <Markup/Attachments/QBFoldTextAttachment.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Stylers/QBNoteTextAttachmentConfiguring.h>
#include <Store/QBNote.h>
#include <Store/QBNoteFile.h>

#include <QSet>

#include <memory>
#include <utility>
#include <vector>

namespace quib {

namespace {

/// A new attachment for a file, which shows what another one showed. Whose picture is still on its way is loaded on its
/// own: the one that arrives is the original's.
std::shared_ptr<QBGenericFileTextAttachment> attachmentForCopy(const QBGenericFileTextAttachment &original,
                                                               const QBNoteFile &file,
                                                               const QBNoteStylersManager &stylers)
{
    auto attachment = std::static_pointer_cast<QBGenericFileTextAttachment>(original.copy());
    attachment->setRepresentedText(file.textRepresentation());
    attachment->setFileURL(file.fileURL().value_or(QUrl()));
    attachment->setFilename(original.filename());
    attachment->setModificationDate(original.modificationDate());
    const auto *picture = dynamic_cast<const QBImageTextAttachment *>(&original);
    if (auto *configurator = stylers.textAttachmentConfigurator(); configurator != nullptr) {
        using Kind = QBNoteStylersManager::Kind;
        const auto styler = stylers.styler(picture != nullptr ? Kind::Image : Kind::GenericFile);
        configurator->configureTextAttachment(*attachment, *styler);
    }
    if (picture != nullptr && !picture->attachmentImage().isEmpty()) {
        auto &copy = static_cast<QBImageTextAttachment &>(*attachment);
        copy.setOriginalImageSize(picture->originalImageSize());
        copy.setAttachmentImage(picture->attachmentImage());
        copy.setAttachmentImageSize(picture->attachmentImageSize());
    }
    return attachment;
}

/// Finds in one text after the other, in order, the markers that need a file of their own, and gives each a copy.
class FileCopies
{
public:
    FileCopies(QBNote &note, const QBNoteStylersManager &stylers)
        : m_note(note)
        , m_stylers(stylers)
    {
    }

    struct Replacement
    {
        qint64 location;
        std::shared_ptr<QBNotesTextAttachment> attachment;
    };
    /// What stands for the copies, and where: files, and folds that hold such.
    [[nodiscard]] std::vector<Replacement> replacementsInText(const NSAttributedString &text)
    {
        std::vector<Replacement> replacements;
        text.enumerateAttribute(NSAttachmentAttributeName, text.fullRange(),
                                NSAttributedStringEnumerationOptions::Forward,
                                [&](const AttributeValue &value, NSRange range, bool * /*stop*/) {
                                    const auto *file = value.as<QBGenericFileTextAttachment>();
                                    const auto *fold = value.as<QBFoldTextAttachment>();
                                    if (file == nullptr && fold == nullptr) {
                                        return;
                                    }
                                    // One attachment that was pasted twice side by side makes one run.
                                    for (qint64 place = range.location; place < range.limit(); ++place) {
                                        auto copy = file != nullptr ? copyOfFile(*file) : copyOfFold(*fold);
                                        if (copy) {
                                            replacements.push_back({place, std::move(copy)});
                                        }
                                    }
                                });
        return replacements;
    }

private:
    /// Null where the marker's file is the note's own.
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copyOfFile(const QBGenericFileTextAttachment &attachment)
    {
        const auto file =
            QBNoteFile::noteFileWithTextRepresentation(attachment.representedText(), *m_note.managedObjectContext());
        if (!file) {
            return nullptr;
        }
        const auto owner = file->note();
        const bool isOthers = owner && owner->uniqueIdentifier() != m_note.uniqueIdentifier();
        if (!isOthers && !m_seen.contains(file->uniqueIdentifier())) {
            m_seen.insert(file->uniqueIdentifier());
            return nullptr;
        }
        const auto copy = file->duplicate();
        m_seen.insert(copy->uniqueIdentifier());
        return attachmentForCopy(attachment, *copy, m_stylers);
    }
    /// A fold of the same text with other markers in it; null where they stay. The fold itself is left as it is: it may
    /// stand in a second place, and in what can be undone.
    [[nodiscard]] std::shared_ptr<QBNotesTextAttachment> copyOfFold(const QBFoldTextAttachment &attachment)
    {
        const auto replacements = replacementsInText(attachment.representedAttributedString());
        if (replacements.empty()) {
            return nullptr;
        }
        NSMutableAttributedString folded(attachment.representedAttributedString());
        for (const auto &[location, replacement] : replacements) {
            folded.addAttribute(NSAttachmentAttributeName, replacement, {location, 1});
        }
        auto copy = std::make_shared<QBFoldTextAttachment>(
            QBNotesTextStorage::stringWithExpandedTextAttachmentsFromAttributedString(folded),
            attachment.themeManager());
        copy->setFoldIdentifier(attachment.foldIdentifier());
        copy->setRepresentedAttributedString(folded);
        return copy;
    }

    QBNote &m_note;
    const QBNoteStylersManager &m_stylers;
    QSet<QString> m_seen;
};

} // namespace

void fixTextAttachmentsForNote(QBNote &note, QBNotesTextStorage &inTextStorage)
{
    FileCopies copies(note, *inTextStorage.noteStylersManager());
    for (const auto &[location, attachment] : copies.replacementsInText(inTextStorage.attributedString())) {
        inTextStorage.addAttribute(NSAttachmentAttributeName, attachment, {location, 1});
    }
}

} // namespace quib
