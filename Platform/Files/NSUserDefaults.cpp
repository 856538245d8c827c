#include "NSUserDefaults.h"

#include "AtomicFile.h"
#include "Descriptor.h"
#include "FileError.h"
#include "Profile.h"

#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QSet>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using quib::PropertyValue;

namespace {

/// Tells one version of a file from the next: each write makes a new file.
QByteArray stampOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return {};
    }
    return QByteArray::number(static_cast<quint64>(status.st_ino)) + ' ' + QByteArray::number(qint64(status.st_size)) +
           ' ' + QByteArray::number(qint64(status.st_mtim.tv_sec)) + ' ' +
           QByteArray::number(qint64(status.st_mtim.tv_nsec));
}

/// The exclusive lock of a settings file, held until destroyed; the lock file itself stays, empty.
quib::Descriptor lockBeside(const QString &path)
{
    const QByteArray name = QFile::encodeName(path) + ".lock";
    quib::Descriptor file(::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    if (file.isOpen()) {
        while (::flock(file.number(), LOCK_EX) != 0) {
            if (errno != EINTR) {
                return quib::Descriptor();
            }
        }
    }
    return file;
}

} // namespace

NSUserDefaults::NSUserDefaults(QString path)
    : m_path(std::move(path))
{
    // A file that cannot be read counts as empty here; the next synchronize() reports it.
    m_stamp = stampOf(m_path);
    m_stored = readFile(nullptr).value_or(Dictionary());
}

NSUserDefaults::~NSUserDefaults()
{
    if (!m_pending.isEmpty()) {
        static_cast<void>(synchronizeFile(nullptr));
    }
}

std::shared_ptr<NSUserDefaults> NSUserDefaults::standardUserDefaults()
{
    return suite(quib::kBundleIdentifier);
}

std::shared_ptr<NSUserDefaults> NSUserDefaults::suite(const QString &name)
{
    struct Open
    {
        std::mutex mutex;
        QHash<QString, std::weak_ptr<NSUserDefaults>> byPath;
    };
    static Open open;
    const QString path = quib::Profile::preferencesFolder() % u'/' % name % u".plist";
    const std::lock_guard lock(open.mutex);
    auto &known = open.byPath[path];
    auto defaults = known.lock();
    if (!defaults) {
        defaults = std::make_shared<NSUserDefaults>(path);
        known = defaults;
    }
    return defaults;
}

PropertyValue NSUserDefaults::objectForKey(const QString &key) const
{
    const std::lock_guard lock(m_mutex);
    const auto pending = m_pending.constFind(key);
    if (pending != m_pending.cend()) {
        return pending->isNull() ? m_registered.value(key) : *pending;
    }
    const auto stored = m_stored.constFind(key);
    return stored != m_stored.cend() ? *stored : m_registered.value(key);
}

PropertyValue NSUserDefaults::ownObjectForKey(const QString &key) const
{
    const std::lock_guard lock(m_mutex);
    const auto pending = m_pending.constFind(key);
    return pending != m_pending.cend() ? *pending : m_stored.value(key);
}

QStringList NSUserDefaults::keys() const
{
    const std::lock_guard lock(m_mutex);
    return current().keys();
}

void NSUserDefaults::setObject(const PropertyValue &value, const QString &forKey)
{
    QStringList changed;
    {
        const std::lock_guard lock(m_mutex);
        const Dictionary before = current();
        m_pending.insert(forKey, value);
        changed = changedKeys(before, current());
    }
    tell(changed);
}

void NSUserDefaults::registerDefaults(const Dictionary &defaults)
{
    const std::lock_guard lock(m_mutex);
    for (auto item = defaults.cbegin(); item != defaults.cend(); ++item) {
        m_registered.insert(item.key(), *item);
    }
}

bool NSUserDefaults::synchronize(NSError *error)
{
    QStringList changed;
    bool isDone = false;
    {
        const std::lock_guard lock(m_mutex);
        if (m_pending.isEmpty() && stampOf(m_path) == m_stamp) {
            return true;
        }
        const Dictionary before = current();
        isDone = synchronizeFile(error);
        changed = changedKeys(before, current());
    }
    tell(changed);
    return isDone;
}

bool NSUserDefaults::synchronizeFile(NSError *error)
{
    if (m_pending.isEmpty()) {
        // Nothing to write: a reader needs no lock, since files are replaced in one step.
        const QByteArray stamp = stampOf(m_path);
        auto read = readFile(error);
        if (read) {
            m_stored = std::move(*read);
            m_stamp = stamp;
        }
        return read.has_value();
    }
    const quib::Descriptor lock = lockBeside(m_path);
    if (!lock.isOpen()) {
        return quib::fillFileError(error, quib::FileAccess::Write, errno, u"lock", m_path);
    }
    NSError readError;
    auto values = readFile(&readError);
    if (!values) {
        if (readError.code() != static_cast<qint64>(NSCocoaErrorCode::PropertyListReadCorrupt)) {
            if (error != nullptr) {
                *error = readError;
            }
            return false;
        }
        const QString damaged = m_path % u".damaged";
        QFile::remove(damaged);
        QFile::rename(m_path, damaged);
        values = m_stored;
    }
    bool isAllWritten = true;
    for (auto item = m_pending.cbegin(); item != m_pending.cend(); ++item) {
        if (item->isNull()) {
            values->remove(item.key());
        } else if (quib::writePropertyList(*item, quib::PropertyListFormat::Binary, error)) {
            values->insert(item.key(), *item);
        } else {
            isAllWritten = false; // it must not keep the others from being written, now or later
        }
    }
    const auto bytes = quib::writePropertyList(PropertyValue(*values), quib::PropertyListFormat::Binary, error);
    if (!bytes || !quib::writeFileAtomically(m_path, *bytes, error)) {
        return false;
    }
    m_stored = std::move(*values);
    m_stamp = stampOf(m_path);
    m_pending.clear();
    return isAllWritten;
}

std::optional<NSUserDefaults::Dictionary> NSUserDefaults::readFile(NSError *error) const
{
    NSError readError;
    const auto bytes = quib::readWholeFile(m_path, &readError, quib::kPropertyListMaximumSize);
    if (!bytes) {
        if (readError.causeCode() == ENOENT) {
            return Dictionary();
        }
        if (error != nullptr) {
            *error = readError;
        }
        return std::nullopt;
    }
    const auto value = quib::readPropertyList(*bytes, &readError);
    if (!value || value->asDictionary() == nullptr) {
        const QString reason = value ? u"it holds no dictionary"_s : readError.localizedDescription();
        NSError::fill(error, kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::PropertyListReadCorrupt),
                      u"cannot read the settings in %1: %2"_s.arg(m_path, reason));
        return std::nullopt;
    }
    return *value->asDictionary();
}

NSUserDefaults::Dictionary NSUserDefaults::current() const
{
    Dictionary values = m_stored;
    for (auto item = m_pending.cbegin(); item != m_pending.cend(); ++item) {
        if (item->isNull()) {
            values.remove(item.key());
        } else {
            values.insert(item.key(), *item);
        }
    }
    return values;
}

QStringList NSUserDefaults::changedKeys(const Dictionary &before, const Dictionary &after) const
{
    QSet<QString> keys;
    for (const Dictionary *values : {&before, &after}) {
        for (auto item = values->cbegin(); item != values->cend(); ++item) {
            keys.insert(item.key());
        }
    }
    QStringList changed;
    for (const QString &key : keys) {
        const PropertyValue registered = m_registered.value(key);
        if (!(before.value(key, registered) == after.value(key, registered))) {
            changed.append(key);
        }
    }
    changed.sort();
    return changed;
}

void NSUserDefaults::tell(const QStringList &keys) const
{
    const quib::KeyedObservers observers = m_observers; // an observer may drop this object
    for (const QString &key : keys) {
        observers.tell(key);
    }
}

void NSUserDefaults::startWatching()
{
    if (m_watcher) {
        return;
    }
    // The folder is watched, not the file: each write puts a new file in its place.
    m_watcher = std::make_unique<QFileSystemWatcher>(QStringList{QFileInfo(m_path).path()});
    QObject::connect(m_watcher.get(), &QFileSystemWatcher::directoryChanged, m_watcher.get(),
                     [this] { static_cast<void>(synchronize(nullptr)); });
}
