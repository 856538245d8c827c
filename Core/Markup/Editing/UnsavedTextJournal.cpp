#include "UnsavedTextJournal.h"

#include "NoteTextMerge.h"

#include <Files/AtomicFile.h>
#include <Files/Profile.h>
#include <Foundation/Clock.h>
#include <Foundation/DispatchQueue.h>
#include <Foundation/Identifiers.h>
#include <Logging/QBLogger.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNote.h>

#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QIODevice>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <vector>

#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr QByteArrayView kMagic = "QuibUnsaved1";
constexpr QLatin1StringView kSuffix{".unsaved"};
constexpr QLatin1StringView kNewSuffix{".unsaved.new"};
constexpr auto kStreamVersion = QDataStream::Qt_6_4;
/// A file whose changes are longer than its texts is written anew. Units: bytes.
constexpr qint64 kSmallestRewritten = 64 * 1024;
constexpr qsizetype kDigestLength = 20;

/// One piece of a file: its length, its digest, and itself. A piece that was cut off in the middle is found out.
QByteArray record(const QByteArray &payload)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << static_cast<quint32>(payload.size());
    return bytes + QCryptographicHash::hash(payload, QCryptographicHash::Sha1) + payload;
}

/// The next whole piece; nothing at the end, or where the rest is damaged.
std::optional<QByteArray> takeRecord(QByteArrayView &bytes)
{
    constexpr qsizetype kHead = qsizetype{sizeof(quint32)} + kDigestLength;
    if (bytes.size() < kHead) {
        return std::nullopt;
    }
    quint32 length = 0;
    QDataStream(bytes.first(qsizetype{sizeof(quint32)}).toByteArray()) >> length;
    if (bytes.size() - kHead < static_cast<qsizetype>(length)) {
        return std::nullopt;
    }
    const QByteArray payload = bytes.sliced(kHead, static_cast<qsizetype>(length)).toByteArray();
    const QByteArrayView digest = bytes.sliced(qsizetype{sizeof(quint32)}, kDigestLength);
    if (QByteArrayView(QCryptographicHash::hash(payload, QCryptographicHash::Sha1)) != digest) {
        return std::nullopt;
    }
    bytes = bytes.sliced(kHead + static_cast<qsizetype>(length));
    return payload;
}

/// What a file begins with: which text it is about. Strings are in their own units, so that each of them survives.
struct Head
{
    double date = 0; ///< seconds since 1970
    quint32 number = 0;
    QString noteIdentifier;
    qint32 syntax = 0;
    QString baseText;
};

QByteArray bytesOf(const Head &head)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << head.date << head.number << head.noteIdentifier << head.syntax << head.baseText;
    return bytes;
}

QByteArray bytesOf(const TextDifference &difference, const QString &text)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << difference.location << difference.oldLength << text.mid(difference.location, difference.newLength);
    return bytes;
}

struct LeftBehind
{
    QString path;
    std::unique_ptr<QFile> file; ///< which holds the lock
    Head head;
    QString text;
};

/// Takes the lock, unless a living editor has it.
std::unique_ptr<QFile> lockedFile(const QString &path)
{
    auto file = std::make_unique<QFile>(path);
    if (!file->open(QIODevice::ReadWrite | QIODevice::ExistingOnly) ||
        ::flock(file->handle(), LOCK_EX | LOCK_NB) != 0) {
        return nullptr;
    }
    return file;
}

/// The last text that a file tells of whole; nothing where there is none.
std::optional<LeftBehind> leftBehind(const QByteArray &bytes)
{
    if (!bytes.startsWith(kMagic)) {
        return std::nullopt;
    }
    QByteArrayView rest = QByteArrayView(bytes).sliced(kMagic.size());
    const auto headBytes = takeRecord(rest);
    if (!headBytes) {
        return std::nullopt;
    }
    LeftBehind found;
    QDataStream stream(*headBytes);
    stream.setVersion(kStreamVersion);
    stream >> found.head.date >> found.head.number >> found.head.noteIdentifier >> found.head.syntax >>
        found.head.baseText;
    std::optional<QByteArray> last;
    while (auto next = takeRecord(rest)) {
        last = std::move(next);
    }
    if (stream.status() != QDataStream::Ok || !last) {
        return std::nullopt;
    }
    qint64 location = 0;
    qint64 oldLength = 0;
    QString newText;
    QDataStream change(*last);
    change.setVersion(kStreamVersion);
    change >> location >> oldLength >> newText;
    const qint64 length = found.head.baseText.size();
    if (change.status() != QDataStream::Ok || location < 0 || location > length || oldLength < 0 ||
        oldLength > length - location) {
        return std::nullopt;
    }
    found.text = found.head.baseText;
    found.text.replace(location, oldLength, newText);
    return found;
}

/// Everything in a folder that no living editor writes, oldest first. What tells of no text is removed.
std::vector<LeftBehind> takeLeftBehind(const QString &folder)
{
    std::vector<LeftBehind> all;
    const QStringList names = QDir(folder).entryList({u'*' % kSuffix, u'*' % kNewSuffix}, QDir::Files);
    for (const QString &name : names) {
        const QString path = folder % u'/' % name;
        auto file = lockedFile(path);
        if (file == nullptr) {
            continue;
        }
        // What was being written anew stands whole under its own name.
        if (name.endsWith(kNewSuffix)) {
            (void)QFile::remove(path);
            continue;
        }
        if (file->size() > kLargestWholeFile) {
            QBLogWarn(QString(u"a journal is too long to be read: "_s % name));
            continue;
        }
        const QByteArray bytes = file->readAll();
        if (file->error() != QFileDevice::NoError) {
            QBLogWarn(QString(u"a journal could not be read: "_s % name));
            continue;
        }
        auto found = leftBehind(bytes);
        if (!found) {
            (void)QFile::remove(path);
            continue;
        }
        found->path = path;
        found->file = std::move(file);
        all.push_back(std::move(*found));
    }
    std::ranges::sort(all, {}, [](const LeftBehind &left) { return std::pair(left.head.date, left.head.number); });
    return all;
}

/// Puts a text that was left behind where it belongs. False where nothing had to be done.
bool bringBack(const LeftBehind &left, NSManagedObjectContext &context)
{
    if (left.text == left.head.baseText) {
        return false;
    }
    const auto note = QBNote::noteWithUniqueIdentifier(left.head.noteIdentifier, context);
    if (!note) {
        (void)QBNote::noteWithText(left.text, left.head.syntax, context);
        return true;
    }
    const QString theirs = note->text();
    if (theirs == left.text) {
        return false;
    }
    if (const auto merged = mergedText(left.head.baseText, left.text, theirs)) {
        if (*merged == theirs) {
            return false;
        }
        note->updateNoteWithText(*merged, left.head.syntax);
    } else {
        (void)note->keepLostText(left.text, left.head.syntax);
    }
    return true;
}

} // namespace

/// The side of the queue.
struct UnsavedTextJournal::Writer
{
    QString folder;
    QString name = uuidString();
    std::shared_ptr<DispatchQueue> queue = DispatchQueue::serial(u"unsaved text"_s);
    // Below: of the queue.
    QString path;                ///< empty before something is written
    std::unique_ptr<QFile> file; ///< null before something is written, and after a failure
    Head head;
    qint64 headLength = 0;
    quint32 number = 0;
    QStringList setAsidePaths;
    std::vector<std::unique_ptr<QFile>> setAsideFiles; ///< which hold the locks
    bool hasFailed = false;

    void write(const Entry &entry, double date)
    {
        const QByteArray change = record(bytesOf(TextDifference::between(entry.baseText, entry.text), entry.text));
        const bool isSameText = file != nullptr && head.noteIdentifier == entry.noteIdentifier &&
                                head.syntax == entry.syntax && head.baseText == entry.baseText;
        const bool isShort =
            file != nullptr && file->size() + change.size() <= std::max(kSmallestRewritten, 3 * headLength);
        const bool isWritten = isSameText && isShort ? append(change) : writeAnew(entry, date, change);
        if (!isWritten) {
            file.reset(); // the next one starts anew
            if (!hasFailed) {
                QBLogError(u"what was typed could not be put on disk beside the notes"_s);
            }
        }
        hasFailed = !isWritten;
    }

    [[nodiscard]] bool append(const QByteArray &bytes) const
    {
        return file->write(bytes) == bytes.size() && file->flush() && ::fdatasync(file->handle()) == 0;
    }

    /// Another file in the place of this one, in one step, and locked all the time.
    [[nodiscard]] bool writeAnew(const Entry &entry, double date, const QByteArray &change)
    {
        NSError error;
        if (!ensureFolder(folder, &error)) {
            return false;
        }
        if (path.isEmpty()) {
            path = folder % u'/' % name % u'-' % QString::number(number) % kSuffix;
        }
        const QString newPath = path % ".new"_L1;
        auto made = std::make_unique<QFile>(newPath);
        head = {date, number++, entry.noteIdentifier, entry.syntax, entry.baseText};
        const QByteArray bytes = kMagic.toByteArray() + record(bytesOf(head)) + change;
        const bool isMade =
            made->open(QIODevice::ReadWrite | QIODevice::Truncate, QFileDevice::ReadOwner | QFileDevice::WriteOwner) &&
            ::flock(made->handle(), LOCK_EX | LOCK_NB) == 0 && made->write(bytes) == bytes.size() && made->flush() &&
            ::fsync(made->handle()) == 0 &&
            std::rename(QFile::encodeName(newPath).constData(), QFile::encodeName(path).constData()) == 0;
        if (!isMade) {
            (void)QFile::remove(newPath);
            return false;
        }
        syncFolder(folder);
        headLength = bytes.size() - change.size();
        file = std::move(made);
        return true;
    }

    void setAside()
    {
        if (!path.isEmpty()) {
            setAsidePaths.append(path);
            setAsideFiles.push_back(std::move(file));
            path.clear();
        }
    }

    void remove()
    {
        setAside();
        for (const QString &each : std::as_const(setAsidePaths)) {
            (void)QFile::remove(each);
        }
        if (!setAsidePaths.isEmpty()) {
            syncFolder(folder);
        }
        setAsidePaths.clear();
        setAsideFiles.clear();
    }
};

UnsavedTextJournal::UnsavedTextJournal(const QString &folder)
    : m_writer(std::make_shared<Writer>())
{
    m_writer->folder = folder.isEmpty() ? defaultFolder() : folder;
}

UnsavedTextJournal::~UnsavedTextJournal()
{
    waitUntilWritten();
}

QString UnsavedTextJournal::defaultFolder()
{
    return Profile::applicationSupportFolder() % "/Unsaved Text"_L1;
}

void UnsavedTextJournal::write(const Entry &entry)
{
    const double date = Clock::shared().now().timeIntervalSince1970();
    m_writer->queue->async([writer = m_writer, entry, date] { writer->write(entry, date); });
}

void UnsavedTextJournal::remove()
{
    m_writer->queue->async([writer = m_writer] { writer->remove(); });
}

void UnsavedTextJournal::setAside()
{
    m_writer->queue->async([writer = m_writer] { writer->setAside(); });
}

void UnsavedTextJournal::waitUntilWritten() const
{
    m_writer->queue->sync([] {});
}

qsizetype UnsavedTextJournal::recoverUnsavedTexts(NSManagedObjectContext &context, const QString &folder)
{
    const auto all = takeLeftBehind(folder.isEmpty() ? defaultFolder() : folder);
    qsizetype count = 0;
    for (const LeftBehind &left : all) {
        count += bringBack(left, context) ? 1 : 0;
    }
    NSError error;
    if (count > 0 && !context.save(&error)) {
        QBLogError(QString(u"texts of an earlier run could not be saved: "_s % error.localizedDescription()));
        return 0;
    }
    for (const LeftBehind &left : all) {
        (void)QFile::remove(left.path);
    }
    if (count > 0) {
        QBLogInfo(QString(u"texts brought back that an earlier run could not save: "_s % QString::number(count)));
    }
    return count;
}

} // namespace quib
