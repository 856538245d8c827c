// What does a note made by URL cost, next to the saving of a note?
//
// Workloads (in a store of 10,000 notes; unit: seconds each):
//   a "create" URL handed to the dispatcher, until its success is reported with the note durable in the store,
//   against one bare note made on the main context and saved;
//   the same with a title, tags and 64 KB of text, against the same note made and saved.

#include <Support/CorpusGenerator.h>
#include <Support/Measure.h>

#include <Files/Profile.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNotesPreferenceManager.h>
#include <URL/IACManager.h>
#include <URL/QBXurlActions.h>
#include <URL/QBXurlCoreController.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace quib::benchmarks;

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QTemporaryDir folder;
    quib::Profile::setRoot(folder.path());
    QBNotesPreferenceManager preferences;
    QBNotesPreferenceManager::setSharedPreferenceManager(&preferences);
    QBCoreDataStack stack;
    QBCoreDataStack::setSharedStack(&stack);
    stack.setupStackWithDelegate({});
    NSManagedObjectContext &context = *stack.managedObjectContext();
    const CorpusGenerator generator;
    for (qsizetype i = 0; i < sizeForRun(10'000, 100); ++i) {
        static_cast<void>(QBNote::noteWithText(generator.text(i), 0, context));
    }
    stack.saveUsingCoalescence(/*coalescence=*/false);
    context.reset();
    ::sync(); // what filled the store must not be waited for below

    const auto manager = std::make_shared<IACManager>();
    int answers = 0;
    manager->setOpener([&answers](const QUrl &url) {
        if (url.scheme() != u"done") {
            std::fprintf(stderr, "%s\n", qPrintable(url.toString()));
            std::exit(1);
        }
        answers += 1;
        return true;
    });
    QBXurlActions actions(stack, /*interface=*/nullptr);
    actions.setupXCallbackURLs(*manager);
    const auto create = [&](const QUrl &url) {
        const int before = answers;
        if (!manager->handleOpenURL(url)) {
            std::exit(1);
        }
        while (answers == before) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    };
    const auto save = [&](const QString &text) {
        static_cast<void>(QBNote::noteWithText(text, 0, context));
        stack.saveUsingCoalescence(/*coalescence=*/false);
    };

    Report report(u"notes by URL"_s);
    const QString callbacks = u"&x-success=done://x&x-error=failed://x"_s;
    const Timing bare = measure([&] { save(u"Call the plumber"_s); });
    const Timing made =
        measure([&] { create(QUrl(u"quib://x-callback-url/create?text=Call%20the%20plumber"_s + callbacks)); });
    report.addTime(u"create by URL / bare one-note save"_s, made, bare, 3);

    const QString body = QString(u"A line of plain words and nothing else.\n"_s).repeated(1'638);
    const QString encoded = QString::fromLatin1(QUrl::toPercentEncoding(body));
    const Timing large = measure([&] { save(QString(u"# Plan\n" % body % u"\n#home #work")); });
    const Timing largeMade = measure(
        [&] { create(QUrl(u"quib://x-callback-url/create?title=Plan&tags=home,work&text="_s + encoded + callbacks)); });
    report.addTime(u"64 KB by URL / the same note saved"_s, largeMade, large, 3);
    QBCoreDataStack::setSharedStack(nullptr);
    QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
    return 0;
}
