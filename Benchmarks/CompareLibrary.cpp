// Writes one library of notes in two forms, so that Quib and other programs can be measured on the same texts:
// FOLDER/profile, a profile of Quib, and FOLDER/texts.json, the texts as a list of strings in the same order, the large
// note last.
//
// Usage: CompareLibrary FOLDER COUNT LARGE-BYTES

#include <Support/CorpusGenerator.h>

#include <Files/Profile.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

/// The context forgets the notes after each save, so that memory stays bounded.
constexpr qsizetype kNotesInSave = 5'000;

/// The title with a number behind it: some programs want titles to be unique.
void numberTitle(QString &text, qsizetype number)
{
    const qsizetype end = text.indexOf(u'\n');
    text.insert(end < 0 ? text.size() : end, u" %1"_s.arg(number));
}

/// One long note of Latin letters, so that it has about as many units as bytes. The first index behind the others whose
/// note is Latin decides; in its middle a line of its own holds the word that typing begins at.
QString largeText(const benchmarks::CorpusGenerator &generator, qsizetype firstIndex, qsizetype bytes)
{
    qsizetype index = firstIndex;
    const auto isLatin = [](QChar unit) { return unit.unicode() < 0x250; };
    while (!std::ranges::all_of(generator.text(index).left(400), isLatin)) {
        ++index;
    }
    QString text = generator.textWithBytes(index, bytes);
    text.replace(0, text.indexOf(u'\n'), u"# Large note"_s);
    text.insert(text.indexOf(u'\n', text.size() / 2), u"\n\nHere begins the middlemark of it all"_s);
    return text;
}

bool writeTexts(const QList<QString> &texts, const QString &path)
{
    QJsonArray array;
    for (const QString &text : texts) {
        array.append(text);
    }
    QFile file(path);
    const QByteArray json = QJsonDocument(array).toJson(QJsonDocument::Compact);
    return file.open(QIODevice::WriteOnly) && file.write(json) == json.size() && file.flush();
}

bool fillProfile(const QList<QString> &texts, const QString &folder)
{
    Profile::setRoot(folder);
    QBNotesPreferenceManager preferences;
    QBNotesPreferenceManager::setSharedPreferenceManager(&preferences);
    QBCoreDataStack stack;
    QBCoreDataStack::setSharedStack(&stack);
    stack.setupStackWithDelegate({});
    const auto &context = stack.managedObjectContext();
    if (context != nullptr) {
        // From the last to the first: the large note becomes the oldest, so that no start shows it.
        for (qsizetype left = texts.size(); left > 0; --left) {
            static_cast<void>(QBNote::noteWithText(texts.at(left - 1), 0, *context));
            if (left % kNotesInSave == 1) {
                stack.saveUsingCoalescence(false);
                context->reset();
            }
        }
    }
    QBCoreDataStack::setSharedStack(nullptr);
    QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
    return context != nullptr;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 4) {
        std::fprintf(stderr, "usage: CompareLibrary FOLDER COUNT LARGE-BYTES\n");
        return 2;
    }
    const QString &folder = words.at(1);
    const benchmarks::CorpusGenerator generator;
    const qsizetype count = words.at(2).toLongLong();
    QList<QString> texts = generator.texts(count);
    for (qsizetype i = 0; i < count; ++i) {
        numberTitle(texts[i], i + 1);
    }
    texts.append(largeText(generator, count, words.at(3).toLongLong()));
    if (!writeTexts(texts, folder + u"/texts.json"_s) || !fillProfile(texts, folder + u"/profile"_s)) {
        std::fprintf(stderr, "CompareLibrary: %s cannot be written\n", qUtf8Printable(folder));
        return 1;
    }
    return 0;
}
