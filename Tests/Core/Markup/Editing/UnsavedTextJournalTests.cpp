#include <Core/Store/StoreFixture.h>
#include <Support/TestSeed.h>

#include <Markup/Editing/UnsavedTextJournal.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <random>
#include <vector>

using namespace Qt::StringLiterals;

namespace quib::tests {

class UnsavedText : public StoreFixture
{
protected:
    /// What an editor wrote before its process was killed: its files, without its lock.
    void crash(const std::vector<UnsavedTextJournal::Entry> &entries) const
    {
        const QString living = folder.path(u"living"_s);
        UnsavedTextJournal journal(living);
        for (const auto &entry : entries) {
            journal.write(entry);
        }
        journal.waitUntilWritten();
        for (const QString &name : QDir(living).entryList(QDir::Files)) {
            ASSERT_TRUE(QFile::copy(living % u'/' % name, unsavedFolder() % u'/' % name));
        }
        journal.remove();
        journal.waitUntilWritten();
    }
    [[nodiscard]] static QString unsavedFolder()
    {
        QDir().mkpath(UnsavedTextJournal::defaultFolder());
        return UnsavedTextJournal::defaultFolder();
    }
    [[nodiscard]] static QStringList unsavedFiles() { return QDir(unsavedFolder()).entryList(QDir::Files); }
    [[nodiscard]] qsizetype recover() const { return UnsavedTextJournal::recoverUnsavedTexts(moc()); }
    [[nodiscard]] QStringList texts() const
    {
        QStringList found;
        for (const auto &note : QBNote::allNotesInManagedObjectContext(moc())) {
            found.append(note->text());
        }
        found.sort();
        return found;
    }
};

TEST_F(UnsavedText, ComesBackIntoItsNote)
{
    struct Case
    {
        const char *name;
        QString base, typed, stored;
        QStringList expected;
    };
    const QString strange = u"\0a"_s + QChar(0xD800) + u"\uFEFF\uFFFC"_s;
    const std::vector<Case> cases = {
        {"the store is as it was", u"one\n"_s, u"one\ntwo"_s, u"one\n"_s, {u"one\ntwo"_s}},
        {"the store has it already", u"one"_s, u"one two"_s, u"one two"_s, {u"one two"_s}},
        {"others wrote elsewhere", u"one\n\ntwo"_s, u"one\n\ntwo!"_s, u"One\n\ntwo"_s, {u"One\n\ntwo!"_s}},
        {"others wrote the same place", u"one"_s, u"one mine"_s, u"one theirs"_s, {u"one mine"_s, u"one theirs"_s}},
        {"nothing was typed in the end", u"one"_s, u"one"_s, u"other"_s, {u"other"_s}},
        {"everything was deleted", u"one"_s, u""_s, u"one"_s, {u""_s}},
        {"any text at all", u"x"_s, strange, u"x"_s, {strange}},
    };
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        const auto note = makeNote(testCase.stored);
        save();
        crash({{note->uniqueIdentifier(), 0, testCase.base, testCase.typed}});
        ASSERT_EQ(unsavedFiles().size(), 1);
        (void)recover();
        EXPECT_EQ(texts(), testCase.expected);
        EXPECT_FALSE(moc().hasChanges());
        EXPECT_TRUE(unsavedFiles().isEmpty());
        EXPECT_EQ(recover(), 0) << "once is enough";
        for (const auto &each : QBNote::allNotesInManagedObjectContext(moc())) {
            each->permanentlyDelete();
        }
        save();
    }
}

TEST_F(UnsavedText, ANoteThatIsGoneComesBack)
{
    crash({{u"never seen"_s, 0, u""_s, u"typed into a new note"_s}});
    EXPECT_EQ(recover(), 1);
    EXPECT_EQ(texts(), QStringList{u"typed into a new note"_s});
}

TEST_F(UnsavedText, TheLastEntryCounts)
{
    const auto note = makeNote(u"a"_s);
    save();
    std::vector<UnsavedTextJournal::Entry> entries;
    QString text = u"a"_s;
    for (int i = 0; i < 200; ++i) {
        text += QString::number(i);
        entries.push_back({note->uniqueIdentifier(), 0, u"a"_s, text});
    }
    crash(entries);
    EXPECT_EQ(recover(), 1);
    EXPECT_EQ(note->text(), text);
}

TEST_F(UnsavedText, AFileStaysShortHoweverMuchIsTyped)
{
    UnsavedTextJournal journal;
    QString text;
    qint64 longest = 0;
    for (int i = 0; i < 200; ++i) {
        text += u"0123456789 "_s.repeated(10);
        journal.write({u"note"_s, 0, u""_s, text});
        if (i % 20 == 19) {
            journal.waitUntilWritten();
            ASSERT_EQ(unsavedFiles().size(), 1);
            const QFileInfo file(unsavedFolder() % u'/' % unsavedFiles().first());
            EXPECT_EQ(file.permissions() & ~(QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser),
                      QFile::Permissions());
            longest = std::max(longest, file.size());
        }
    }
    EXPECT_LE(longest, 64 * 1024 + 2 * 2 * text.size());
    journal.remove();
    journal.waitUntilWritten();
    EXPECT_TRUE(unsavedFiles().isEmpty());
}

TEST_F(UnsavedText, AFileOfALivingEditorIsItsOwn)
{
    const auto note = makeNote(u"a"_s);
    save();
    {
        UnsavedTextJournal journal;
        journal.write({note->uniqueIdentifier(), 0, u"a"_s, u"ab"_s});
        journal.waitUntilWritten();
        EXPECT_EQ(recover(), 0);
        EXPECT_EQ(unsavedFiles().size(), 1);
    }
    EXPECT_EQ(recover(), 1) << "its editor is gone";
    EXPECT_EQ(note->text(), u"ab"_s);
}

TEST_F(UnsavedText, WhatIsSetAsideStaysUntilTheStoreHasAll)
{
    const auto note = makeNote(u"a"_s);
    save();
    const QString identifier = note->uniqueIdentifier();
    {
        UnsavedTextJournal journal;
        journal.write({identifier, 0, u"a"_s, u"ab"_s});
        journal.setAside();
        journal.write({identifier, 0, u"ab"_s, u"abc"_s});
        journal.setAside();
        journal.write({identifier, 0, u"abc"_s, u"abcd"_s});
        journal.waitUntilWritten();
        EXPECT_EQ(unsavedFiles().size(), 3);
    }
    EXPECT_EQ(recover(), 3);
    EXPECT_EQ(texts(), QStringList{u"abcd"_s}) << "one after the other, in their order";
    UnsavedTextJournal journal;
    journal.write({identifier, 0, u"x"_s, u"xy"_s});
    journal.setAside();
    journal.remove();
    journal.waitUntilWritten();
    EXPECT_TRUE(unsavedFiles().isEmpty());
}

TEST_F(UnsavedText, DamagedFilesGiveWhatIsWholeInThem)
{
    const TestSeed seed;
    std::mt19937 random = seed.generator();
    const auto note = makeNote(u"base text"_s);
    save();
    QStringList typed;
    std::vector<UnsavedTextJournal::Entry> entries;
    for (int i = 1; i <= 5; ++i) {
        typed.append(QString(u"base text"_s % QString(i, u'!')));
        entries.push_back({note->uniqueIdentifier(), 0, u"base text"_s, typed.last()});
    }
    crash(entries);
    const QString path = unsavedFolder() % u'/' % unsavedFiles().first();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray whole = file.readAll();
    file.close();
    for (int round = 0; round < 200; ++round) {
        QByteArray damaged = whole;
        const auto place = static_cast<qsizetype>(random() % static_cast<quint64>(whole.size()));
        if (round % 2 == 0) {
            damaged.truncate(place);
        } else {
            damaged[place] = static_cast<char>(damaged[place] ^ static_cast<char>(1 + random() % 255));
        }
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(damaged);
        file.close();
        note->updateNoteWithText(u"base text"_s, 0);
        save();
        (void)recover();
        EXPECT_TRUE(note->text() == u"base text" || typed.contains(note->text())) << note->text().toStdString();
        EXPECT_EQ(texts().size(), 1);
        EXPECT_TRUE(unsavedFiles().isEmpty());
    }
}

} // namespace quib::tests
