#include "QBNoteFile+TextStorage.h"

#include "QBNotesTextStorage.h"

#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Stylers/QBNoteTextAttachmentConfiguring.h>
#include <Store/QBNote.h>
#include <Store/QBNoteFile.h>

#include <QSet>

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

} // namespace

void fixTextAttachmentsForNote(QBNote &note, QBNotesTextStorage &inTextStorage)
{
    struct Found
    {
        std::shared_ptr<QBGenericFileTextAttachment> attachment;
        qint64 location;
    };
    std::vector<Found> found;
    inTextStorage.enumerateFilesAttachmentsUsingBlock([&](QBGenericFileTextAttachment & /*attachment*/, NSRange range) {
        // One attachment that was pasted twice side by side makes one run.
        for (qint64 location = range.location; location < range.limit(); ++location) {
            const auto value = inTextStorage.attributedString().attribute(NSAttachmentAttributeName, location);
            found.push_back({value.sharedAs<QBGenericFileTextAttachment>(), location});
        }
    });
    QSet<QString> seen;
    for (const auto &[attachment, location] : found) {
        const auto file =
            QBNoteFile::noteFileWithTextRepresentation(attachment->representedText(), *note.managedObjectContext());
        if (!file) {
            continue;
        }
        const auto owner = file->note();
        const bool isOthers = owner && owner->uniqueIdentifier() != note.uniqueIdentifier();
        if (!isOthers && !seen.contains(file->uniqueIdentifier())) {
            seen.insert(file->uniqueIdentifier());
            continue;
        }
        const auto copy = file->duplicate();
        seen.insert(copy->uniqueIdentifier());
        inTextStorage.addAttribute(NSAttachmentAttributeName,
                                   attachmentForCopy(*attachment, *copy, *inTextStorage.noteStylersManager()),
                                   {location, 1});
    }
}

} // namespace quib
