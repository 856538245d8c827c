#include "DemoProfile.h"

#include <Foundation/NSDate.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNote.h>
#include <Store/QBNoteFile.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPainter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr QLatin1StringView kErrorDomain{"DemoProfile"};
constexpr double kSecondsAnHour = 3600;
constexpr int kNativeSyntax = 0;

std::optional<QByteArray> contents(const QString &path, NSError *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        NSError::fill(error, kErrorDomain, 1, u"the file \"%1\" cannot be read"_s.arg(path));
        return std::nullopt;
    }
    return file.readAll();
}

/// Draws a picture of the folder as a PNG in another folder; gives its path, empty where it could not be drawn.
QString drawnPicture(const QString &drawing, const QString &intoFolder)
{
    QSvgRenderer renderer(drawing);
    if (!renderer.isValid()) {
        return {};
    }
    QImage picture(renderer.defaultSize(), QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    renderer.render(&painter);
    painter.end();
    const QString path = QDir(intoFolder).filePath(QFileInfo(drawing).completeBaseName() + u".png"_s);
    return picture.save(path) ? path : QString();
}

/// The text with the marker of an attachment in the place of each picture's name.
std::optional<QString> textWithPictures(QString text, const QString &folder, const QString &drawingFolder,
                                        NSManagedObjectContext &context, NSError *error)
{
    static const QRegularExpression pattern(u"\\[picture:([a-z]+\\.svg)\\]"_s);
    for (auto match = pattern.match(text); match.hasMatch(); match = pattern.match(text)) {
        const QString path = drawnPicture(folder % u"/Pictures/"_s % match.captured(1), drawingFolder);
        const Ref<QBNoteFile> file =
            path.isEmpty() ? nullptr : QBNoteFile::factoryNoteFileForFileURL(QUrl::fromLocalFile(path), context, error);
        if (!file) {
            NSError::fill(error, kErrorDomain, 2, u"the picture \"%1\" cannot be drawn"_s.arg(match.captured(1)));
            return std::nullopt;
        }
        text.replace(match.capturedStart(), match.capturedLength(), file->textRepresentation());
    }
    return text;
}

} // namespace

bool fillWithDemoNotes(NSManagedObjectContext &context, const QString &folder, NSError *error)
{
    if (!QBNote::allNotesInManagedObjectContext(context).isEmpty()) {
        return true;
    }
    const auto list = contents(folder + u"/notes.json"_s, error);
    if (!list) {
        return false;
    }
    const QJsonDocument document = QJsonDocument::fromJson(*list);
    if (!document.isArray()) {
        return NSError::fill(error, kErrorDomain, 3, u"\"%1/notes.json\" is no list of notes"_s.arg(folder));
    }
    const QTemporaryDir drawings;
    const NSDate now = NSDate::now();
    for (const QJsonValue &value : document.array()) {
        const QJsonObject entry = value.toObject();
        const auto bytes = contents(folder % u'/' % entry.value(u"file"_s).toString(), error);
        if (!bytes) {
            return false;
        }
        const auto text =
            textWithPictures(QString::fromUtf8(*bytes).trimmed(), folder, drawings.path(), context, error);
        if (!text) {
            return false;
        }
        const Ref<QBNote> note = QBNote::noteWithText(*text, kNativeSyntax, context);
        const NSDate date = now.dateByAddingTimeInterval(-kSecondsAnHour * entry.value(u"hours"_s).toDouble());
        note->setCreationDate(date.dateByAddingTimeInterval(-2 * kSecondsAnHour));
        note->setModificationDate(date);
        if (entry.value(u"pinned"_s).toBool()) {
            note->pin();
        }
        if (entry.value(u"archived"_s).toBool()) {
            note->archive();
        }
        if (entry.value(u"trashed"_s).toBool()) {
            note->trash();
        }
    }
    return context.save(error);
}

} // namespace quib
