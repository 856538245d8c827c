#include "QBNoteImageStyler.h"

#include <Files/TemporaryDirectory.h>
#include <Graphics/NSImage.h>
#include <Logging/QBLogger.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QFileInfo>

using namespace Qt::StringLiterals;
using quib::syntax::Construct;

namespace {

/// A copy of a picture that other programs read. Errors: the picture itself, and a line in the log.
QUrl pngCopy(const QUrl &url)
{
    NSError error;
    const auto image = NSImage::imageWithContentsOfFile(url.toLocalFile(), &error);
    const QString folder = image ? quib::makeTemporaryFolder(&error) : QString();
    const QString path = QString(folder % u'/' % QFileInfo(url.toLocalFile()).completeBaseName() % u".png");
    if (folder.isNull() || !image->writePNGToFile(path, &error)) {
        QBLogError(error.localizedDescription());
        return url;
    }
    return QUrl::fromLocalFile(path);
}

} // namespace

const NSRegularExpression &QBNoteImageStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::Image, /*syntax=*/0);
}

QStringList QBNoteImageStyler::stylerMarkerComponents()
{
    return quib::syntax::stylerMarkerComponents(Construct::Image);
}

const NSRegularExpression *QBNoteImageStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

std::shared_ptr<QBNotesTextAttachment> QBNoteImageStyler::makeTextAttachment(const QString &representedText) const
{
    return std::make_shared<QBImageTextAttachment>(representedText, themeManager());
}

bool QBNoteImageStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBImageTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteImageStyler::ownTextAttachmentClasses() const
{
    return quib::AttributeNameMask::ofClass(typeid(QBImageTextAttachment));
}

quib::AttributeSet QBNoteImageStyler::attachmentAttributes() const
{
    return themeManager() ? themeManager()->defaultAttachmentAttributes() : quib::AttributeSet();
}

QList<QUrl> QBNoteImageStyler::imagesURLInAttributedString(const NSAttributedString &attributedString, NSRange range)
{
    QList<QUrl> urls;
    attributedString.enumerateAttribute(NSAttachmentAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
                                        [&](const quib::AttributeValue &value, NSRange /*run*/, bool * /*stop*/) {
                                            const auto *image = value.as<QBImageTextAttachment>();
                                            if (image == nullptr || image->fileURL().isEmpty()) {
                                                return;
                                            }
                                            const QUrl url = image->fileURL();
                                            const bool isTiff = QFileInfo(url.path()).suffix() == u"tiff"_s;
                                            urls.append(isTiff ? pngCopy(url) : url);
                                        });
    return urls;
}
