#include "NoteDescription.h"
#include "NoteList.h"
#include "Output.h"

#include <Foundation/Clock.h>
#include <Foundation/DayWatch.h>
#include <Search/Lists/MRTFetchedResultsController.h>
#include <Store/NSPersistentStore.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteTag.h>
#include <Store/StoreWatch.h>

#include <QElapsedTimer>
#include <QEventLoop>
#include <QJsonDocument>
#include <QSocketNotifier>

#include <array>
#include <csignal>

#include <sys/signalfd.h>

using namespace Qt::StringLiterals;

namespace quib::cli {

namespace {

/// What the rows of an entity were when they were looked at last, and what became of them since.
class RowComparison
{
public:
    RowComparison(NSPersistentStore &store, QString entityName)
        : m_store(store)
        , m_entityName(std::move(entityName))
        , m_known(versions())
    {
    }

    /// Appends to the lists what is new, changed and gone since the last look. Linear in the number of rows.
    void compare(QList<NSManagedObjectID> &inserted, QList<NSManagedObjectID> &updated,
                 QList<NSManagedObjectID> &deleted)
    {
        const QList<RowVersion> now = versions();
        auto former = m_known.cbegin();
        for (const RowVersion &row : now) {
            for (; former != m_known.cend() && former->objectID.key() < row.objectID.key(); ++former) {
                deleted.append(former->objectID);
            }
            if (former == m_known.cend() || former->objectID.key() != row.objectID.key()) {
                inserted.append(row.objectID);
                continue;
            }
            if (former->version != row.version) {
                updated.append(row.objectID);
            }
            ++former;
        }
        for (; former != m_known.cend(); ++former) {
            deleted.append(former->objectID);
        }
        m_known = now;
    }

private:
    /// What was known before where the store cannot be read now; the next change asks again.
    [[nodiscard]] QList<RowVersion> versions() const
    {
        NSError error;
        const auto found = m_store.rowVersions(m_entityName, &error);
        if (!found) {
            complain(error.localizedDescription());
        }
        return found.value_or(m_known);
    }

    NSPersistentStore &m_store;
    QString m_entityName;
    QList<RowVersion> m_known;
};

/// Follows what others write, which no table tells a companion: when the store changes, the versions of all rows say
/// which, and these are merged into the context, whose list finds out what moved.
class ListWatch final : public MRTFetchedResultsControllerDelegate
{
public:
    ListWatch(NSManagedObjectContext &context, const QString &storePath,
              std::function<std::optional<NSFetchRequest>()> makeRequest)
        : m_context(context)
        , m_makeRequest(std::move(makeRequest))
        , m_store(*context.persistentStoreCoordinator()->persistentStore())
        // The watch, then the rows, then the list: what is written in between is told twice rather than never.
        , m_watch(m_store, storePath, [this] { storeChanged(); })
        , m_comparisons{RowComparison(m_store, QBNoteTag::entityName()),
                        RowComparison(m_store, QBNoteFile::entityName()), RowComparison(m_store, QBNote::entityName())}
        , m_dayWatch([this] { dayDidChange(); })
    {
    }
    ~ListWatch() override { takeOutController(); }

    ExitStatus run()
    {
        const std::optional<NSFetchRequest> request = m_makeRequest();
        if (!request || !printInitially(*request)) {
            return ExitStatus::Failed;
        }
        // An interruption is the usual end, and no failure.
        sigset_t signals;
        sigemptyset(&signals);
        sigaddset(&signals, SIGINT);
        sigaddset(&signals, SIGTERM);
        sigprocmask(SIG_BLOCK, &signals, nullptr);
        const Descriptor interruption(::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK));
        QSocketNotifier notifier(interruption.number(), QSocketNotifier::Read);
        QObject::connect(&notifier, &QSocketNotifier::activated, &m_loop, [this] { m_loop.quit(); });
        if (m_isReaderThere) {
            m_loop.exec();
        }
        return ExitStatus::Done;
    }

    void controllerDidChangeObject(MRTFetchedResultsController & /*controller*/, NSManagedObject &object,
                                   qint64 atIndex, MRTChangeType forChangeType, qint64 newIndex) override
    {
        static constexpr std::array<QLatin1StringView, 5> kNames{""_L1, "insert"_L1, "delete"_L1, "move"_L1,
                                                                 "update"_L1};
        QJsonObject line{{u"change"_s, kNames[static_cast<size_t>(forChangeType)]}};
        if (forChangeType != MRTChangeType::Insert) {
            line.insert(u"index"_s, atIndex);
        }
        if (forChangeType == MRTChangeType::Delete) {
            // The row may be gone, and the object with it.
            line.insert(u"note"_s, QJsonObject{{u"id"_s, m_identifiers.take(&object)}});
        } else {
            const auto &note = static_cast<const QBNote &>(object);
            m_identifiers.insert(&object, note.uniqueIdentifier());
            line.insert(u"newIndex"_s, newIndex);
            line.insert(u"note"_s, jsonForNote(note, /*withText=*/false));
        }
        end(compact(line));
    }

private:
    /// However often others save, comparing takes a quarter of the time at most.
    static constexpr double kRest = 3;

    /// Errors: false after the reason was told.
    [[nodiscard]] bool printInitially(const NSFetchRequest &request)
    {
        takeOutController();
        m_controller = std::make_unique<MRTFetchedResultsController>(m_context.shared_from_this(), request);
        NSError error;
        if (!m_controller->performFetch(&error) || error.isSet()) {
            complain(error.localizedDescription());
            return false;
        }
        m_controller->setDelegate(this);
        m_tags = m_context.fetch<QBNoteTag>({.entityName = QBNoteTag::entityName()}).value_or(QList<Ref<QBNoteTag>>());
        m_identifiers.clear();
        // Note by note: of a large library, no second copy is made.
        print(u"{\"change\":\"initial\",\"notes\":["_s);
        for (qint64 i = 0; i < m_controller->count(); ++i) {
            const auto note = m_controller->objectAtIndex<QBNote>(i);
            m_identifiers.insert(note.get(), note->uniqueIdentifier());
            print((i == 0 ? QString() : u","_s) + compact(jsonForNote(*note, /*withText=*/false)));
        }
        end(u"]}"_s);
        return true;
    }

    void takeOutController()
    {
        if (m_controller != nullptr) {
            m_controller->setDelegate(nullptr);
        }
    }

    void dayDidChange()
    {
        const std::optional<NSFetchRequest> request = m_makeRequest();
        const NSPredicate::Ref former = m_controller->fetchRequest()->predicate;
        const bool isSame = request && request->predicate && former &&
                            request->predicate->predicateFormat() == former->predicateFormat();
        if (request && !isSame && !printInitially(*request)) {
            m_loop.quit();
        }
    }

    void storeChanged()
    {
        if (m_rest) {
            m_isDue = true;
            return;
        }
        QElapsedTimer timer;
        timer.start();
        QList<NSManagedObjectID> inserted;
        QList<NSManagedObjectID> updated;
        QList<NSManagedObjectID> deleted;
        for (RowComparison &comparison : m_comparisons) {
            comparison.compare(inserted, updated, deleted);
        }
        NSManagedObjectContext::mergeChangesFromRemoteContextSave(inserted, updated, deleted,
                                                                  {m_context.shared_from_this()});
        m_rest = Clock::shared().schedule(kRest * static_cast<double>(timer.nsecsElapsed()) / 1e9, [this] {
            const auto ended = std::move(m_rest);
            if (std::exchange(m_isDue, false)) {
                storeChanged();
            }
        });
    }

    static QString compact(const QJsonObject &object)
    {
        return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
    }

    /// Prints the end of a line, or a whole one, for its reader to have at once.
    void end(const QString &line)
    {
        printLine(line);
        if (!flushOutput()) {
            m_isReaderThere = false;
            m_loop.quit();
        }
    }

    NSManagedObjectContext &m_context;
    std::function<std::optional<NSFetchRequest>()> m_makeRequest;
    NSPersistentStore &m_store;
    StoreWatch m_watch;
    std::array<RowComparison, 3> m_comparisons;
    std::unique_ptr<MRTFetchedResultsController> m_controller;
    DayWatch m_dayWatch;
    QList<Ref<QBNoteTag>> m_tags;                          ///< held, so that each is read once for all its notes
    QHash<const NSManagedObject *, QString> m_identifiers; ///< of the listed notes
    std::unique_ptr<TimerToken> m_rest;                    ///< set while the next comparison has to wait
    bool m_isDue = false;
    bool m_isReaderThere = true;
    QEventLoop m_loop;
};

} // namespace

ExitStatus watchList(NSManagedObjectContext &context, const QString &storePath,
                     const std::function<std::optional<NSFetchRequest>()> &makeRequest)
{
    return ListWatch(context, storePath, makeRequest).run();
}

} // namespace quib::cli
