#include "QBNoteEditorViewController.h"

#include "UnfoldedText.h"

#include <Graphics/NSImage.h>
#include <Logging/QBLogger.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Editing/QBNoteCopyAsCoreController.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Markup/Stylers/QBNoteTitledUrlStyler.h>
#include <Markup/TextlessAttachments.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteImage.h>
#include <Text/NSStringHelpers.h>
#include <URL/QBXurlCoreController.h>

#include <QBuffer>
#include <QClipboard>
#include <QDateTime>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// A piece of a note as the note has it, for other notes.
QString markupFormat()
{
    return u"application/x-quib-markup"_s;
}

/// Says that a piece of a note is whole words: where it is pasted it keeps apart from the words beside it.
QString wordsFormat()
{
    return u"application/x-quib-words"_s;
}

bool isOfWord(QChar unit)
{
    return unit.isLetterOrNumber() || unit.isMark() || unit.isSurrogate();
}

/// Whether a range of a line begins and ends where words do.
bool isWholeWords(QStringView text, NSRange range)
{
    const QStringView words = text.sliced(range.location, range.length);
    return range.length > 0 && isOfWord(words.front()) && isOfWord(words.back()) && !words.contains(u'\n') &&
           (range.location == 0 || !isOfWord(text[range.location - 1])) &&
           (range.limit() == text.size() || !isOfWord(text[range.limit()]));
}

/// Whether there is no text in a range, folded text neither, but what attachments stand for.
bool hasAttachmentsOnly(const NSAttributedString &text, NSRange range)
{
    const NSAttributedString part = text.attributedSubstringFromRange(range);
    QString rest = UnfoldedText(part).string().toString();
    return rest.remove(QChar::ObjectReplacementCharacter).trimmed().isEmpty();
}

/// A picture that is copied as pixels has no more. Units: bytes of its file.
constexpr qint64 kLargestCopiedPicture = 32 * 1024 * 1024;

struct Picture
{
    QByteArray bytes;
    QString extension;
};

/// The bytes of a picture as they came, where they are of a kind that everybody reads, or as PNG.
std::optional<Picture> pictureOfMimeData(const QMimeData &mimeData)
{
    struct Format
    {
        QLatin1StringView type;
        QLatin1StringView extension;
    };
    for (const Format &format :
         {Format{"image/png"_L1, "png"_L1}, Format{"image/jpeg"_L1, "jpg"_L1}, Format{"image/gif"_L1, "gif"_L1}}) {
        const QByteArray bytes = mimeData.data(format.type);
        if (!bytes.isEmpty()) {
            return Picture{bytes, format.extension};
        }
    }
    const auto image = qvariant_cast<QImage>(mimeData.imageData());
    if (image.isNull()) {
        return std::nullopt;
    }
    Picture picture{{}, u"png"_s};
    QBuffer buffer(&picture.bytes);
    return buffer.open(QIODevice::WriteOnly) && image.save(&buffer, "PNG") ? std::optional(picture) : std::nullopt;
}

/// The files of this machine that a drop or paste brings; none where anything else comes along.
QList<QUrl> filesOfMimeData(const QMimeData &mimeData)
{
    const QList<QUrl> urls = mimeData.urls();
    const bool areFiles = std::all_of(urls.cbegin(), urls.cend(), [](const QUrl &url) {
        return url.isLocalFile() && QFileInfo(url.toLocalFile()).isFile();
    });
    return areFiles ? urls : QList<QUrl>();
}

bool isPicture(const QString &marker)
{
    return marker.startsWith(u"[image:");
}

/// Markers as they stand in a place of a text: each picture on a line of its own, files side by side.
QString placedMarkers(const QStringList &markers, QStringView before, QStringView after)
{
    QString placed;
    const auto atLineStart = [&] {
        return placed.isEmpty() ? before.isEmpty() || before.back() == u'\n' : placed.back() == u'\n';
    };
    for (const QString &marker : markers) {
        if (isPicture(marker)) {
            placed += (atLineStart() ? u""_s : u"\n"_s) % marker % u'\n';
        } else {
            const bool needsBlank = !placed.isEmpty() && placed.back() != u'\n';
            placed += (needsBlank ? u" "_s : u""_s) % marker;
        }
    }
    if (placed.endsWith(u'\n') && after.startsWith(u'\n')) {
        placed.chop(1);
    }
    return placed;
}

} // namespace

bool QBNoteEditorViewController::acceptsMimeData(const QMimeData &mimeData) const
{
    return mimeData.hasText() || mimeData.hasImage() || mimeData.hasFormat(markupFormat()) ||
           !filesOfMimeData(mimeData).isEmpty();
}

std::optional<QString> QBNoteEditorViewController::textForMimeData(QBNoteTextView & /*view*/, const QMimeData &mimeData,
                                                                   NSRange replacedRange)
{
    if (!m_note || m_note->managedObjectContext() == nullptr) {
        return std::nullopt;
    }
    const QStringView text = m_stack.noteTextStorage().string();
    const NSRange apart = rangeWithTextlessAttachments(m_stack.noteTextStorage().attributedString(), replacedRange);
    if (mimeData.hasFormat(markupFormat())) {
        QString pasted = QString::fromUtf8(mimeData.data(markupFormat()));
        return mimeData.hasFormat(wordsFormat()) && !isCode(replacedRange.location)
                   ? stringForSmartCopyInRange(text, apart, pasted)
                   : pasted;
    }
    QStringList markers;
    if (const QList<QUrl> files = filesOfMimeData(mimeData); !files.isEmpty()) {
        markers = markersForFiles(files);
    } else if (mimeData.hasImage() && mimeData.text().isEmpty()) {
        if (const auto picture = pictureOfMimeData(mimeData)) {
            const QString name = tr("Picture") % u' ' %
                                 QDateTime::currentDateTime().toString(u"yyyy-MM-dd HH.mm.ss"_s) % u'.' %
                                 picture->extension;
            const auto marker =
                QBXurlCoreController::saveFileWithData(picture->bytes, name, *m_note->managedObjectContext());
            if (marker) {
                markers.append(*marker);
                m_hasNewFiles = true;
            }
        }
    }
    if (markers.isEmpty()) {
        return titledLink(mimeData.text(), replacedRange);
    }
    return placedMarkers(markers, text.first(apart.location), text.sliced(apart.limit()));
}

std::optional<QString> QBNoteEditorViewController::titledLink(const QString &pasted, NSRange replacedRange) const
{
    if (!m_linkTitle || replacedRange.length > 0 || isCode(replacedRange.location)) {
        return std::nullopt;
    }
    const QString url = trimmedWhitespaceAndNewlines(pasted);
    const QString title = m_linkTitle(url).simplified();
    // Behind a bracket or a sign the link is part of markup that is being written.
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    const QStringView before = text.stringInRange({0, rangeWithTextlessAttachments(text, replacedRange).location});
    if (title.isEmpty() || !(before.isEmpty() || before.back().isSpace())) {
        return std::nullopt;
    }
    // A bracket in the link would end it too soon.
    QString escaped = url;
    escaped.replace(u'(', u"%28"_s).replace(u')', u"%29"_s);
    return QBNoteTitledUrlStyler::titledURLForUrlString(escaped, title, {}, replacedRange);
}

QStringList QBNoteEditorViewController::markersForFiles(const QList<QUrl> &urls)
{
    QStringList markers;
    for (const QUrl &url : urls) {
        NSError error;
        const auto file = QBNoteFile::factoryNoteFileForFileURL(url, *m_note->managedObjectContext(), &error);
        if (file && !file->textRepresentation().isEmpty()) {
            markers.append(file->textRepresentation());
            m_hasNewFiles = true;
        } else {
            QBLogError(u"A file could not be attached: "_s + error.localizedDescription());
            Q_EMIT attachingFailed(url.fileName());
        }
    }
    return markers;
}

void QBNoteEditorViewController::attachFiles(const QList<QUrl> &urls)
{
    if (!m_note || m_note->managedObjectContext() == nullptr || m_view->isReadOnly()) {
        return;
    }
    const QStringList markers = markersForFiles(urls);
    if (markers.isEmpty()) {
        return;
    }
    const NSRange selection = m_core.rangeTakenWithRange(m_view->selectedRange());
    const QStringView text = m_stack.noteTextStorage().string();
    const NSRange apart = rangeWithTextlessAttachments(m_stack.noteTextStorage().attributedString(), selection);
    m_view->replaceText(selection, placedMarkers(markers, text.first(apart.location), text.sliced(apart.limit())));
}

void QBNoteEditorViewController::fillMimeData(QBNoteTextView &view, QMimeData &mimeData, NSRange range)
{
    mimeData.setData(markupFormat(), mimeData.text().toUtf8());
    if (isWholeWords(view.textStorage().string(), range) && !isCode(range.location)) {
        mimeData.setData(wordsFormat(), "1");
    }
    if (m_stack.stylerManager()->syntax() == 1) {
        mimeData.setData(u"text/markdown"_s, mimeData.text().toUtf8());
    }
    QList<QUrl> urls;
    bool hasPicture = false;
    view.textStorage().enumerateFilesAttachmentsInRange(
        range, [&](const QBGenericFileTextAttachment &attachment, NSRange /*place*/) {
            if (!attachment.fileURL().isEmpty()) {
                urls.append(attachment.fileURL());
                hasPicture = dynamic_cast<const QBImageTextAttachment *>(&attachment) != nullptr;
            }
        });
    if (urls.isEmpty()) {
        return;
    }
    mimeData.setUrls(urls);
    // A picture that is copied alone goes into programs that know of pictures only.
    if (urls.size() != 1 || !hasPicture || !hasAttachmentsOnly(view.textStorage().attributedString(), range)) {
        return;
    }
    const QString path = urls.first().toLocalFile();
    if (QFileInfo(path).size() <= kLargestCopiedPicture) {
        if (const auto image = NSImage::imageWithContentsOfFile(path, nullptr)) {
            mimeData.setImageData(image->image());
        }
    }
}

bool QBNoteEditorViewController::isCode(qint64 location) const
{
    // A caret at the end of a piece of code is in front of its closing marker.
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    return location < text.length() && (text.attribute(QBNoteCodeTextStylerAttributeName, location) ||
                                        text.attribute(QBNoteCodeInlineTextStylerAttributeName, location));
}

void QBNoteEditorViewController::pasteAsCode()
{
    const QMimeData *mimeData = QGuiApplication::clipboard()->mimeData();
    if (mimeData == nullptr || m_view->isReadOnly()) {
        return;
    }
    QString code = mimeData->text();
    code.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
    const QString block = m_paste.pasteStringFromCode(code);
    if (block.isEmpty()) {
        return;
    }
    // Fences have lines of their own.
    const QStringView text = m_stack.noteTextStorage().string();
    const NSRange selection = m_core.rangeTakenWithRange(m_view->selectedRange());
    const NSRange apart = rangeWithTextlessAttachments(m_stack.noteTextStorage().attributedString(), selection);
    const bool startsLine = apart.location == 0 || text[apart.location - 1] == u'\n';
    const bool endsLine = apart.limit() == text.size() || text[apart.limit()] == u'\n';
    m_view->replaceText(selection, (startsLine ? u""_s : u"\n"_s) % block % (endsLine ? u""_s : u"\n"_s));
    m_view->setFocus();
}

void QBNoteEditorViewController::copyAsText(bool andTags)
{
    const QBNotesTextStorage &storage = m_stack.noteTextStorage();
    const NSRange selection = m_view->selectedRange();
    const NSRange range = selection.length > 0 ? selection : storage.fullRange();
    const QString text = QBNoteCopyAsCoreController::copyAsTXT(storage, range, andTags);
    if (!text.isEmpty()) {
        QGuiApplication::clipboard()->setText(text);
    }
}
