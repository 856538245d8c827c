#include "FileMarker.h"
#include "QBXurlCoreController.h"

#include <Files/AtomicFile.h>
#include <Foundation/Identifiers.h>
#include <Logging/QBLogger.h>
#include <Markup/Attachments/QBGenericFileTextAttachment.h>
#include <Markup/Attachments/QBHeaderTextAttachment.h>
#include <Markup/QBNotesTextStorage.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBLocalFileManager.h>
#include <Store/QBNoteFile.h>
#include <Store/QBSafeFileWriter.h>
#include <Text/NSStringHelpers.h>

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

/// A name without what would end its marker or the line of a listing: control characters, line and paragraph
/// separators, and halves of surrogate pairs, which no file system keeps.
QString printableName(const QString &name)
{
    QString printable;
    printable.reserve(name.size());
    for (qsizetype i = 0; i < name.size(); ++i) {
        const QChar unit = name.at(i);
        if (unit.isHighSurrogate() && i + 1 < name.size() && name.at(i + 1).isLowSurrogate()) {
            printable += unit;
            printable += name.at(++i);
        } else if (!unit.isSurrogate() && unit.category() != QChar::Other_Control &&
                   unit.category() != QChar::Separator_Line && unit.category() != QChar::Separator_Paragraph) {
            printable += unit;
        }
    }
    return printable;
}

/// What stands in a file's marker behind the kind: "IDENTIFIER/NAME".
QStringView referenceInMarker(QStringView marker)
{
    const qsizetype colon = marker.indexOf(u':');
    return colon < 0 || !marker.endsWith(u']') ? QStringView() : marker.sliced(colon + 1).chopped(1);
}

/// The title of a header's line, as URLs name it; levels below those of sections have one too.
QString titleOfHeaderLine(const QString &line)
{
    qsizetype start = 0;
    while (start < line.size() && line.at(start) == u'#') {
        ++start;
    }
    return quib::trimmedWhitespaceAndNewlines(line.sliced(start)).toLower();
}

} // namespace

std::optional<QByteArray> QBXurlCoreController::dataFromBase64(const QString &text)
{
    QByteArray known;
    known.reserve(text.size());
    for (const QChar unit : text) {
        const char16_t code = unit.unicode();
        if ((code >= u'A' && code <= u'Z') || (code >= u'a' && code <= u'z') || (code >= u'0' && code <= u'9') ||
            code == u'+' || code == u'/' || code == u'=') {
            known.append(static_cast<char>(code));
        }
    }
    if (known.isEmpty() || known.size() % 4 != 0) {
        return std::nullopt;
    }
    auto decoded = QByteArray::fromBase64Encoding(std::move(known), QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? std::optional(std::move(decoded.decoded)) : std::nullopt;
}

std::optional<QString> QBXurlCoreController::saveFileWithData(const QByteArray &data, const QString &andName,
                                                              NSManagedObjectContext &withMoc)
{
    NSError error;
    const QString temporary = QBLocalFileManager::temporaryUniqueDirectoryPath(&error);
    const QString folder = temporary % u'/' % quib::uuidString();
    quib::Ref<QBNoteFile> file;
    if (!temporary.isEmpty() && quib::ensureFolder(folder, &error)) {
        const auto write = [&](const QUrl &url, NSError *writeError) {
            if (!quib::writeFileAtomically(url.toLocalFile(), data, writeError)) {
                return false;
            }
            file = QBNoteFile::factoryNoteFileForFileURL(url, withMoc, writeError);
            return static_cast<bool>(file);
        };
        QBSafeFileWriter writer = QBSafeFileWriter::safeFileWriterForFolderPath(folder);
        if (!writer.safelyWriteFilename(printableName(andName), write, &error)) {
            file = nullptr;
        }
    }
    if (!temporary.isEmpty()) {
        QDir(temporary).removeRecursively(); // the attachment has its own copy
    }
    if (!file) {
        QBLogError(u"The file of a URL could not be stored: "_s + error.localizedDescription());
        return std::nullopt;
    }
    return quib::markerForFile(*file);
}

NSRange QBXurlCoreController::rangeToScrollForHeader(const QString &header, const QString &orAttachment,
                                                     const QBNotesTextStorage &inStorage)
{
    NSRange found = kNotFoundRange;
    const auto isFirst = [&found] { return found == kNotFoundRange; };
    if (!header.isEmpty()) {
        const QString title = quib::trimmedWhitespaceAndNewlines(header).toLower();
        inStorage.enumerateHeadersUsingBlock([&](QBHeaderTextAttachment & /*attachment*/, NSRange range) {
            if (isFirst() && titleOfHeaderLine(inStorage.stringWithExpandedTextAttachmentsWithRange(range)) == title) {
                found = range;
            }
        });
    } else if (!orAttachment.isEmpty()) {
        inStorage.enumerateFilesAttachmentsUsingBlock([&](QBGenericFileTextAttachment &attachment, NSRange range) {
            const QString represented = attachment.representedText();
            const QStringView reference = referenceInMarker(represented);
            if (isFirst() &&
                (reference == orAttachment || reference.sliced(reference.indexOf(u'/') + 1) == orAttachment)) {
                found = range;
            }
        });
    }
    return found;
}
