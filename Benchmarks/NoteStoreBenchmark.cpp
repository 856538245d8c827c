// What do notes cost in the store, next to SQLite's own interface and to the disk?
//
// Workloads (100,000 notes with their tags; unit: seconds each):
//   the list: all notes fetched and made objects, against a raw loop that reads the same columns;
//   opening the store with the list ready, against a raw read of the index that covers the list;
//   one note changed and saved through the whole path, against one 4 KB pwrite and fdatasync;
//   10,000 notes in one save, against raw prepared inserts of the same rows.
// And in bytes: an object of the list beyond its strings.

#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>
#include <Support/RawBaselines.h>

#include <Files/Profile.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/NSPersistentStore.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Store/SQLNames.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdio>

#include <sqlite3.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;
using quib::Ref;

namespace {

std::unique_ptr<QBCoreDataStack> openStack(const QString &folder)
{
    auto stack = std::make_unique<QBCoreDataStack>(folder);
    QBCoreDataStack::setSharedStack(stack.get());
    stack->setupStackWithDelegate({});
    if (stack->openError().isSet()) {
        std::fprintf(stderr, "%s\n", qPrintable(stack->openError().localizedDescription()));
        std::exit(1);
    }
    return stack;
}

NSFetchRequest listRequest(const QStringList &properties)
{
    NSFetchRequest request{.entityName = QBNote::entityName()};
    request.predicate = NSPredicate::predicateWithFormat(u"trashed == NO AND archived == NO"_s);
    request.sortDescriptors = {NSSortDescriptor(u"pinned"_s, /*ascending=*/false),
                               NSSortDescriptor(u"modificationDate"_s, /*ascending=*/false)};
    request.propertiesToFetch = properties;
    return request;
}

/// The columns of a whole row but for the text, as a fetch reads them.
QByteArray allColumns(const NSEntityDescription *entity)
{
    QByteArray columns = "_pk, _version";
    for (const NSAttributeDescription &attribute : entity->attributes()) {
        if (!attribute.isLazy) {
            columns += ", " + quib::SQLNames::column(attribute.name);
        }
    }
    for (const NSRelationshipDescription &relationship : entity->relationships()) {
        if (!relationship.isToMany) {
            columns += ", " + quib::SQLNames::column(relationship.name);
        }
    }
    return columns;
}

/// The bytes that the strings of a note in the list take.
qint64 stringBytes(const QBNote &note)
{
    constexpr qint64 kHeader = 16;
    qint64 bytes = 0;
    for (const QString &text : {note.uniqueIdentifier(), note.title(), note.subtitle(), note.lastEditingDevice(),
                                note.conflictUniqueIdentifier()}) {
        bytes += text.isNull() ? 0 : kHeader + 2 * (text.size() + 1);
    }
    return bytes + (note.vectorClock().isNull() ? 0 : kHeader + note.vectorClock().size());
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    quib::Profile::setRoot(folder.path());
    QBNotesPreferenceManager preferences;
    QBNotesPreferenceManager::setSharedPreferenceManager(&preferences);
    const CorpusGenerator generator;
    const qsizetype count = sizeForRun(100'000, 300);
    const qsizetype batch = sizeForRun(10'000, 100);

    Report report(u"notes in the store"_s);
    auto stack = openStack(folder.path());
    Timing bulk;
    for (qsizetype start = 0; start < count; start += batch) {
        NSManagedObjectContext &context = *stack->managedObjectContext();
        for (qsizetype i = start; i < start + batch; ++i) {
            static_cast<void>(QBNote::noteWithText(generator.text(i), 0, context));
        }
        const Timing one =
            measure([&] { stack->saveUsingCoalescence(false); }, {.fewestRuns = 1, .mostRuns = 1, .warmUps = 0});
        bulk = start == 0 || one.minimum < bulk.minimum ? one : bulk;
        context.reset();
    }
    const QString path = stack->persistentStoreURL();
    const auto model = stack->managedObjectModel(); // outlives the stack
    const auto *entity = model->entityNamed(QBNote::entityName());
    RawDatabase raw(path);

    // 1. The list as objects.
    const QByteArray order =
        " FROM \"QBNote\" WHERE trashed = 0 AND archived = 0 ORDER BY pinned DESC, \"modificationDate\" "
        "DESC, _pk";
    const QByteArray wholeRows = "SELECT " + allColumns(entity) + order;
    const Timing rawRows = measure([&] { keep(raw.readAll(wholeRows.constData())); });
    std::optional<QList<Ref<QBNote>>> held;
    const Timing fetched = measure([&] { held = stack->managedObjectContext()->fetch<QBNote>(listRequest({})); }, {},
                                   [&] {
                                       held.reset();
                                       stack->managedObjectContext()->reset();
                                   });
    held.reset();
    report.addTime(u"list as objects / raw loop"_s, fetched, rawRows, 1.3);

    // 2. Bytes an object.
    stack->managedObjectContext()->reset();
    const qint64 before = heapBytes();
    {
        const auto notes = stack->managedObjectContext()->fetch<QBNote>(listRequest({}));
        const qint64 all = heapBytes() - before;
        qint64 strings = 0;
        for (const auto &note : *notes) {
            strings += stringBytes(*note);
        }
        report.addValue(u"bytes an object beyond strings"_s,
                        static_cast<double>(all - strings) / static_cast<double>(notes->size()), 700, 1, u"B"_s);
    }
    stack->managedObjectContext()->reset();

    // 3. Opening with the list ready.
    const QStringList listed{u"trashed"_s,          u"archived"_s,
                             u"pinned"_s,           u"modificationDate"_s,
                             u"uniqueIdentifier"_s, u"title"_s,
                             u"subtitle"_s,         u"creationDate"_s,
                             u"hasImages"_s,        u"hasFiles"_s,
                             u"hasSourceCode"_s,    u"todoCompleted"_s,
                             u"todoIncompleted"_s,  u"conflictUniqueIdentifier"_s};
    QByteArray covered = "SELECT _pk, _version";
    for (const QString &name : listed) {
        covered += ", " + quib::SQLNames::column(name);
    }
    covered += order;
    const Timing rawCovered = measure([&] { keep(raw.readAll(covered.constData())); });
    stack.reset();
    std::unique_ptr<QBCoreDataStack> opened;
    const Timing opening = measure(
        [&] {
            opened = openStack(folder.path());
            held = opened->managedObjectContext()->fetch<QBNote>(listRequest(listed));
        },
        {},
        [&] {
            held.reset();
            opened.reset();
        });
    held.reset();
    report.addTime(u"open with list / raw index read"_s, opening, rawCovered, 2);
    stack = std::move(opened);
    QBCoreDataStack::setSharedStack(stack.get());

    // 4. One note changed and saved.
    ::sync(); // what filled the store must not be waited for here
    SyncedPageFile page(folder.path());
    const Timing pages = measure([&] { page.write(); });
    const auto notes = stack->managedObjectContext()->fetch<QBNote>([&] {
        NSFetchRequest request = listRequest({});
        request.fetchLimit = 50;
        return request;
    }());
    int turn = 0;
    const Timing saved = measure([&] {
        const auto &note = notes->at(turn++ % notes->size());
        note->updateNoteWithText(QString(note->text() % u"."), 0);
        stack->saveUsingCoalescence(false);
    });
    report.addTime(u"one note saved / 4 KB synced"_s, saved, pages, 8);

    // 5. Many notes in one save, their objects made beforehand.
    // The tables and indexes of a store, so that the same pages are written.
    {
        NSError error;
        const QString emptyPath = folder.filePath(u"empty.sqlite"_s);
        auto coordinator = std::make_unique<NSPersistentStoreCoordinator>(model, NSManagedObjectFactories());
        if (coordinator->addPersistentStoreWithType(NSSQLiteStoreType, emptyPath, {}, &error) == nullptr) {
            return 1;
        }
        coordinator.reset();
        RawDatabase rows(emptyPath);
        rows.execute("PRAGMA synchronous = EXTRA");
        const QByteArray columns = allColumns(entity);
        QByteArray marks = QByteArray("?, ").repeated(columns.count(',') + 1);
        marks.chop(2);
        const QList<QString> texts = generator.texts(batch);
        const QByteArray noteSql = "INSERT INTO \"QBNote\" (" + columns + ", title_cd) VALUES (" + marks + ", ?)";
        const int parameters = static_cast<int>(columns.count(',')) + 2;
        const QByteArray identifier(50, 'A');
        qint64 offset = 0;
        const Timing inserts = measure(
            [&] {
                rows.insert(noteSql.constData(), batch, [&](void *statement, qint64 row) {
                    auto *one = static_cast<sqlite3_stmt *>(statement);
                    const QByteArray title = texts[row].left(60).toUtf8();
                    for (int i = 1; i <= parameters; ++i) {
                        sqlite3_bind_int64(one, i, 0);
                    }
                    sqlite3_bind_int64(one, 1, offset + row + 1);
                    sqlite3_bind_text(one, 3, identifier.constData(), static_cast<int>(identifier.size()),
                                      SQLITE_TRANSIENT);
                    sqlite3_bind_text(one, 4, title.constData(), static_cast<int>(title.size()), SQLITE_TRANSIENT);
                    sqlite3_bind_text(one, 5, title.constData(), static_cast<int>(title.size()), SQLITE_TRANSIENT);
                    sqlite3_bind_blob(one, parameters, title.constData(), static_cast<int>(title.size()),
                                      SQLITE_TRANSIENT);
                });
                rows.insert("INSERT INTO \"QBNote_text\" VALUES (?, ?)", batch, [&](void *statement, qint64 row) {
                    auto *one = static_cast<sqlite3_stmt *>(statement);
                    const QByteArray text = texts[row].toUtf8();
                    sqlite3_bind_int64(one, 1, offset + row + 1);
                    sqlite3_bind_text(one, 2, text.constData(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
                });
                offset += batch;
            },
            {.fewestRuns = 3, .mostRuns = 5, .warmUps = 0});
        report.addTime(u"10,000 notes in one save / raw inserts"_s, bulk, inserts, 3);
        report.addRemark(
            u"the save also writes the links of %1 tags; the raw inserts don't"_s.arg(generator.tags().size()));
    }
    QBCoreDataStack::setSharedStack(nullptr);
    stack.reset();
    QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
    return 0;
}
