// Conditions as text: what parses, how it prints, and that memory and SQL agree on which rows it means.

#include "StoreFixture.h"

#include <Store/NSManagedObjectContext.h>
#include <Store/NSPersistentStore.h>
#include <Support/TestSeed.h>

#include <set>

using namespace Qt::StringLiterals;
using quib::Ref;
using quib::Value;

namespace {

QString printed(const QString &format, const QList<NSPredicateArgument> &arguments = {})
{
    NSError error;
    const auto predicate = NSPredicate::predicateWithFormat(format, arguments, &error);
    return predicate ? predicate->predicateFormat() : u"error: "_s + error.localizedDescription();
}

} // namespace

TEST(Predicate, PrintsAFormThatParsesBackToItself)
{
    const NSPredicateArgument word = predicateArgument(u"w"_s);
    const NSPredicateArgument date = Value(NSDate::dateWithTimeIntervalSince1970(978307200.5));
    const NSPredicateArgument list = predicateArgument(QStringList{u"a"_s, u"b\""_s});
    struct Case
    {
        QString format;
        QList<NSPredicateArgument> arguments;
        QString printed;
    };
    const QList<Case> cases{
        {u"trashed == NO"_s, {}, u"trashed == NO"_s},
        {u"todoCompleted > 0 AND todoIncompleted == 0"_s, {}, u"todoCompleted > 0 AND todoIncompleted == 0"_s},
        {u"change.order > %@"_s, {Value(qint64{7})}, u"change.order > 7"_s},
        {u"note != NULL AND note.trashed == NO"_s, {}, u"note != nil AND note.trashed == NO"_s},
        {u"token = %@"_s, {word}, u"token == \"w\""_s},
        {u"title ==[cd] %@ AND trashed == NO"_s, {word}, u"title ==[cd] \"w\" AND trashed == NO"_s},
        {u"text contains %@"_s, {word}, u"text CONTAINS \"w\""_s},
        {u"title CONTAINS[cd] %@ AND trashed == NO and archived == NO"_s,
         {word},
         u"title CONTAINS[cd] \"w\" AND trashed == NO AND archived == NO"_s},
        {u"url contains[cd] %@ OR url contains[cd] %@"_s,
         {word, word},
         u"url CONTAINS[cd] \"w\" OR url CONTAINS[cd] \"w\""_s},
        {u"self ENDSWITH '.json'"_s, {}, u"SELF ENDSWITH \".json\""_s},
        {u"uniqueIdentifier in %@"_s, {list}, u"uniqueIdentifier IN {\"a\", \"b\\\"\"}"_s},
        {u"tags.@count != 0"_s, {}, u"tags.@count != 0"_s},
        {u"SUBQUERY(notes, $note, $note.trashed == NO AND $note.archived == NO).@count > 0"_s,
         {},
         u"SUBQUERY(notes, $note, $note.trashed == NO AND $note.archived == NO).@count > 0"_s},
        {u"(creationDate >= %@) AND (creationDate <= %@)"_s,
         {date, date},
         u"creationDate >= CAST(0.5, \"NSDate\") AND creationDate <= CAST(0.5, \"NSDate\")"_s},
        {u"( hasImages == YES || hasFiles == YES )"_s, {}, u"hasImages == YES OR hasFiles == YES"_s},
        {u"a == 1 AND (b == 2 OR c == 3)"_s, {}, u"a == 1 AND (b == 2 OR c == 3)"_s},
        {u"a == 1 AND b == 2 OR c == 3"_s, {}, u"a == 1 AND b == 2 OR c == 3"_s},
        {u"NOT (a == 1 AND b == 2)"_s, {}, u"NOT (a == 1 AND b == 2)"_s},
        {u"NOT a == 1 AND b == 2"_s, {}, u"NOT a == 1 AND b == 2"_s},
        {u"NOT title CONTAINS %@"_s, {predicateArgument(u"/"_s)}, u"NOT title CONTAINS \"/\""_s},
        {u"TRUEPREDICATE"_s, {}, u"TRUEPREDICATE"_s},
        {u"%K == 1.5"_s, {predicateArgument(u"a.b"_s)}, u"a.b == 1.5"_s},
        {u"title == %@"_s,
         {predicateArgument(u"\"\\\n\t\u0001é😀"_s + QChar(0xD800))},
         u"title == \"\\\"\\\\\\n\\t\\u0001é\\ud83d\\ude00\\ud800\""_s},
    };
    for (const Case &entry : cases) {
        const QString once = printed(entry.format, entry.arguments);
        EXPECT_EQ(once.toStdString(), entry.printed.toStdString());
        EXPECT_EQ(printed(once), once);
    }
}

TEST(Predicate, SaysWhatIsWrongAndWhere)
{
    const QString deep = QString(500, u'(') + u"a == 1"_s + QString(500, u')');
    for (const QString &format : {u""_s,
                                  u"a"_s,
                                  u"a =="_s,
                                  u"== 1"_s,
                                  u"a == 'x"_s,
                                  u"a == 1 AND"_s,
                                  u"(a == 1"_s,
                                  u"a == 1)"_s,
                                  u"a ~ 1"_s,
                                  u"a ==[x] 1"_s,
                                  u"a == %@"_s,
                                  u"a == %d"_s,
                                  u"a == $b"_s,
                                  u"a. == 1"_s,
                                  u"a == {1, b}"_s,
                                  u"CAST(1, 2) == a"_s,
                                  u"SUBQUERY(a, $x, $x.b == 1) > 0"_s,
                                  u"SUBQUERY(a, $x, $y.b == 1).@count > 0"_s,
                                  u"@count > 0"_s,
                                  deep,
                                  QString(u"a IN "_s % QString(100'000, u'{')),
                                  u"SUBQUERY("_s.repeated(100'000),
                                  QString(u"NOT "_s.repeated(100'000) % u"a == 1")}) {
        NSError error;
        EXPECT_FALSE(NSPredicate::predicateWithFormat(format, {}, &error)) << format.left(60).toStdString();
        EXPECT_TRUE(error.localizedDescription().contains(u" at ")) << error.localizedDescription().toStdString();
    }
    NSError error;
    EXPECT_FALSE(NSPredicate::predicateWithFormat(u"a == 1"_s, {Value(true)}, &error));
    // A long chain is no nesting.
    QStringList terms;
    for (int i = 0; i < 20'000; ++i) {
        terms.append(u"a == %1"_s.arg(i));
    }
    EXPECT_TRUE(NSPredicate::predicateWithFormat(terms.join(u" OR "_s), {}, &error));
}

TEST(Predicate, EvaluatesOnStrings)
{
    const auto predicate = NSPredicate::predicateWithFormat(u"self ENDSWITH '.json'"_s);
    EXPECT_TRUE(predicate->evaluateWithString(u"a.json"_s));
    EXPECT_FALSE(predicate->evaluateWithString(u"a.JSON"_s));
    EXPECT_TRUE(NSPredicate::predicateWithFormat(u"self ENDSWITH[c] '.json'"_s)->evaluateWithString(u"a.JSON"_s));
}

namespace {

/// Random rows in a store, random conditions on them, and both ways of asking.
class PredicateAgreement : public testing::Test
{
protected:
    void SetUp() override
    {
        m_coordinator = std::make_shared<NSPersistentStoreCoordinator>(currentModel(), NSManagedObjectFactories());
        NSError error;
        ASSERT_TRUE(
            m_coordinator->addPersistentStoreWithType(NSSQLiteStoreType, m_folder.path(u"p.sqlite"_s), {}, &error));
        m_context = NSManagedObjectContext::contextWithCoordinator(NSManagedObjectContextConcurrencyType::MainQueue,
                                                                   m_coordinator);
        QList<Ref<NSManagedObject>> tags;
        for (int i = 0; i < 8; ++i) {
            tags.append(m_context->insertNewObjectForEntityForName(u"QBNoteTag"_s));
            tags.last()->setValueForKey(QString(anyText() % QString::number(i)), u"title"_s);
        }
        for (int i = 0; i < 60; ++i) {
            const auto note = m_context->insertNewObjectForEntityForName(u"QBNote"_s);
            for (const QString &key : {u"title"_s, u"text"_s, u"uniqueIdentifier"_s}) {
                note->setValueForKey(random(5) == 0 ? Value() : Value(anyText()), key);
            }
            for (const QString &key : {u"trashed"_s, u"archived"_s, u"pinned"_s}) {
                note->setValueForKey(random(2) == 0, key);
            }
            note->setValueForKey(qint64{random(4)}, u"todoIncompleted"_s);
            if (random(3) != 0) {
                note->setValueForKey(anyDate(), u"creationDate"_s);
            }
            QList<Ref<NSManagedObject>> own;
            for (int n = random(4); n > 0; --n) {
                const auto tag = tags[random(8)];
                if (!own.contains(tag)) {
                    own.append(tag);
                }
            }
            note->setTargetObjectsForKey(own, u"tags"_s);
            if (random(3) == 0) {
                const auto file = m_context->insertNewObjectForEntityForName(random(2) == 0 ? u"QBNoteImage"_s
                                                                                            : u"QBNoteGenericFile"_s);
                file->setValueForKey(anyText(), u"filename"_s);
                file->setTargetObjectForKey(random(4) == 0 ? nullptr : note, u"note"_s);
            }
        }
        ASSERT_TRUE(m_context->save(&error)) << error.localizedDescription().toStdString();
        for (const auto &tag : tags) {
            m_tagIDs.append(tag->objectID());
        }
    }
    int random(int bound) { return static_cast<int>(m_generator() % static_cast<unsigned>(bound)); }
    QString anyText()
    {
        static const QStringList pieces{u"a"_s,
                                        u"A"_s,
                                        u"à"_s,
                                        u"a\u0300"_s,
                                        u"b"_s,
                                        u"ß"_s,
                                        u"SS"_s,
                                        u"/"_s,
                                        u"😀"_s,
                                        QString(QChar(0xD83D)),
                                        QString(QChar(0xDE00)),
                                        QString(QChar(0)),
                                        u"\uFFFF"_s};
        QString text(u""_s);
        for (int n = random(4); n > 0; --n) {
            text += pieces[random(static_cast<int>(pieces.size()))];
        }
        return text;
    }
    NSDate anyDate() { return NSDate::dateWithTimeIntervalSince1970(1e9 + random(6) * 0.25); }

    QString anyCondition(const QString &subject, int depth, QList<NSPredicateArgument> &arguments)
    {
        const QString prefix = subject.isEmpty() ? QString() : QString(subject % u'.');
        if (depth > 0 && random(3) == 0) {
            const QString left = anyCondition(subject, depth - 1, arguments);
            const QString right = anyCondition(subject, depth - 1, arguments);
            return u"(%1) %2 (%3)"_s.arg(left, random(2) == 0 ? u"AND"_s : u"OR"_s, right);
        }
        if (depth > 0 && random(5) == 0) {
            return u"NOT (%1)"_s.arg(anyCondition(subject, depth - 1, arguments));
        }
        static const QStringList orders{u"=="_s, u"!="_s, u"<"_s, u"<="_s, u">"_s, u">="_s};
        static const QStringList tests{u"=="_s, u"!="_s, u"BEGINSWITH"_s, u"ENDSWITH"_s, u"CONTAINS"_s};
        static const QStringList folds{u""_s, u"[c]"_s, u"[d]"_s, u"[cd]"_s};
        const QString order = orders[random(6)];
        switch (random(subject.isEmpty() ? 10 : 6)) {
        case 0:
            return QString(prefix % u"trashed " % orders[random(2)] % (random(2) == 0 ? u" YES" : u" NO"));
        case 1:
            return QString(prefix % u"todoIncompleted " % order % u' ' % QString::number(random(4)));
        case 2:
            arguments.append(Value(anyDate()));
            return QString(prefix % u"creationDate " % order % u" %@");
        case 3:
            return QString(prefix % (random(2) == 0 ? u"title " : u"creationDate ") % orders[random(2)] % u" nil");
        case 4: {
            QList<Value> values;
            for (int n = random(4); n >= 0; --n) {
                values.append(anyText());
            }
            arguments.append(values);
            return QString(prefix % u"uniqueIdentifier IN %@");
        }
        case 5:
            arguments.append(predicateArgument(anyText()));
            return QString(prefix % (random(2) == 0 ? u"title " : u"text ") % tests[random(5)] % folds[random(4)] %
                           u" %@");
        case 6:
            return QString(u"tags.@count "_s % order % u' ' % QString::number(random(3)));
        case 7:
            arguments.append(m_tagIDs[random(8)]);
            return random(2) == 0 ? u"%@ IN tags"_s : u"ANY tags == %@"_s;
        case 8:
            arguments.append(m_tagIDs.mid(random(4), random(5)));
            return u"ANY tags IN %@"_s;
        default:
            return random(2) == 0 ? QString(u"SUBQUERY(tags, $t, "_s % anyTagCondition(arguments) % u").@count " %
                                            order % u' ' % QString::number(random(3)))
                                  : QString(u"files.@count "_s % order % u" 1");
        }
    }
    QString anyTagCondition(QList<NSPredicateArgument> &arguments)
    {
        arguments.append(predicateArgument(anyText()));
        return random(2) == 0 ? u"$t.title CONTAINS[cd] %@"_s : u"NOT $t.title BEGINSWITH[cd] %@"_s;
    }

    /// The rows by SQL, and by evaluation of every object, must be the same.
    void expectAgreement(const QString &entity, const QString &format, const QList<NSPredicateArgument> &arguments)
    {
        SCOPED_TRACE(format.toStdString());
        NSError error;
        NSFetchRequest request{.entityName = entity};
        request.predicate = NSPredicate::predicateWithFormat(format, arguments, &error);
        ASSERT_TRUE(request.predicate) << error.localizedDescription().toStdString();
        const auto bySQL = m_coordinator->persistentStore()->fetchIDs(request, &error);
        ASSERT_TRUE(bySQL) << error.localizedDescription().toStdString();
        QList<NSManagedObjectID> byEvaluation;
        const auto everything = m_context->executeFetchRequest({.entityName = entity});
        for (const auto &object : *everything) {
            if (request.predicate->evaluateWithObject(*object)) {
                byEvaluation.append(object->objectID());
            }
        }
        EXPECT_EQ(*bySQL, byEvaluation) << request.predicate->predicateFormat().toStdString();
        EXPECT_EQ(m_coordinator->persistentStore()->count(request, &error), bySQL->size());
        m_rows += bySQL->size();
    }

    quib::tests::TestSeed m_seed;
    std::mt19937 m_generator = m_seed.generator();
    quib::tests::TemporaryFolder m_folder;
    std::shared_ptr<NSPersistentStoreCoordinator> m_coordinator;
    std::shared_ptr<NSManagedObjectContext> m_context;
    QList<NSManagedObjectID> m_tagIDs;
    qint64 m_rows = 0;
};

} // namespace

TEST_F(PredicateAgreement, OfMemoryAndSQLOnRandomConditions)
{
    for (int round = 0; round < 600 && !HasFailure(); ++round) {
        QList<NSPredicateArgument> arguments;
        const QString format = anyCondition({}, 3, arguments);
        expectAgreement(u"QBNote"_s, format, arguments);
        arguments.clear();
        const QString behindFile = anyCondition(u"note"_s, 2, arguments);
        expectAgreement(u"QBNoteFile"_s, behindFile, arguments);
        arguments.clear();
        const QString behindTag = u"SUBQUERY(notes, $note, %1).@count %2 %3"_s.arg(
            anyCondition(u"$note"_s, 2, arguments), random(2) == 0 ? u">"_s : u"=="_s, QString::number(random(4)));
        expectAgreement(u"QBNoteTag"_s, behindTag, arguments);
    }
    EXPECT_GT(m_rows, 5'000);
}

TEST_F(PredicateAgreement, BehindAnObjectThatIsNotThere)
{
    // Some files have no note: its counts and lists are then nothing, which is neither 0 nor empty.
    for (const QString &order : {u"=="_s, u"!="_s, u"<"_s, u">="_s}) {
        for (const int count : {0, 1}) {
            const QString end = QString(order % u' ' % QString::number(count));
            expectAgreement(u"QBNoteFile"_s, QString(u"note.tags.@count "_s % end), {});
            expectAgreement(u"QBNoteFile"_s, QString(u"NOT note.files.@count "_s % end), {});
            expectAgreement(u"QBNoteFile"_s, QString(u"SUBQUERY(note.tags, $t, $t.title != nil).@count "_s % end), {});
        }
    }
    for (const auto &tagID : std::as_const(m_tagIDs)) {
        expectAgreement(u"QBNoteFile"_s, u"NOT %@ IN note.tags"_s, {tagID});
        expectAgreement(u"QBNoteFile"_s, u"NOT ANY note.tags == %@"_s, {tagID});
        expectAgreement(u"QBNoteFile"_s, u"NOT ANY note.tags IN %@"_s, {QList{tagID}});
    }
}

TEST_F(PredicateAgreement, OnObjectsOfAnotherTableWithTheSameKey)
{
    const auto notes = m_context->executeFetchRequest({.entityName = u"QBNote"_s});
    QList<NSManagedObjectID> noteIDs;
    for (const auto &note : *notes) {
        noteIDs.append(note->objectID());
    }
    expectAgreement(u"QBNoteTag"_s, u"self IN %@"_s, {noteIDs});
    expectAgreement(u"QBNoteTag"_s, u"self IN %@"_s, {noteIDs + m_tagIDs});
    for (const auto &noteID : std::as_const(noteIDs)) {
        expectAgreement(u"QBNoteTag"_s, u"self == %@"_s, {noteID});
        expectAgreement(u"QBNote"_s, u"%@ IN tags"_s, {noteID});
        expectAgreement(u"QBNote"_s, u"ANY tags == %@"_s, {noteID});
        expectAgreement(u"QBNote"_s, u"NOT ANY tags IN %@"_s, {QList{noteID}});
    }
}

TEST_F(PredicateAgreement, OnManyListsThatAreTooLongTogether)
{
    QStringList terms;
    QList<NSPredicateArgument> arguments;
    const auto notes = m_context->executeFetchRequest({.entityName = u"QBNote"_s});
    for (int list = 0; list < 5; ++list) {
        QList<NSManagedObjectID> identities{notes->at(list)->objectID(), notes->at(list + 1)->objectID()};
        for (qint64 key = 1'000'000; identities.size() < 9'000; ++key) {
            identities.append(NSManagedObjectID(notes->first()->entity(), key));
        }
        arguments.append(identities);
        terms.append(u"self IN %@"_s);
    }
    expectAgreement(u"QBNote"_s, terms.join(u" OR "_s), arguments);
    expectAgreement(u"QBNote"_s, terms.join(u" AND "_s), arguments);
}

TEST_F(PredicateAgreement, OnListsTooLongForVariables)
{
    QList<Value> values;
    for (int i = 0; i < 100'000; ++i) {
        values.append(QString(u"x"_s % QString::number(i)));
    }
    const auto notes = m_context->executeFetchRequest({.entityName = u"QBNote"_s});
    values.append(notes->first()->valueForKey(u"uniqueIdentifier"_s));
    values.append(QString(QChar(0xD83D)));
    expectAgreement(u"QBNote"_s, u"uniqueIdentifier IN %@"_s, {values});
    expectAgreement(u"QBNote"_s, u"NOT uniqueIdentifier IN %@"_s, {values});
    expectAgreement(u"QBNoteTag"_s, u"NOT self IN %@"_s, {m_tagIDs.mid(0, 3)});
}

TEST_F(PredicateAgreement, OnCountsBehindARelationshipThatLeadsNowhere)
{
    for (const QString &format :
         {u"note.tags.@count == 0"_s, u"note.tags.@count != 0"_s, u"note.tags.@count > 0"_s, u"note.tags.@count <= 0"_s,
          u"note.tags.@count < 2"_s, u"note.tags.@count == nil"_s}) {
        expectAgreement(u"QBNoteFile"_s, format, {});
    }
}

TEST_F(PredicateAgreement, KeysThatAreNotThereAreRefusedBySQL)
{
    NSError error;
    NSFetchRequest request{.entityName = u"QBNote"_s};
    for (const QString &format :
         {u"nonsense == 1"_s, u"tags.title == 'x'"_s, u"title.x == 1"_s, u"folder.tags == 1"_s}) {
        error = {};
        request.predicate = NSPredicate::predicateWithFormat(format);
        EXPECT_FALSE(m_coordinator->persistentStore()->fetch(request, &error)) << format.toStdString();
        EXPECT_TRUE(error.isSet());
    }
}
