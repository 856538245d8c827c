#include "QBNoteTag.h"

#include "QBNote.h"
#include "StoreFetch.h"
#include "TagLookup.h"

#include <Logging/QBLogger.h>
#include <Store/NSManagedObjectContext.h>
#include <Tags/QBTagDataDetector.h>
#include <Text/Folding.h>
#include <Text/NSStringHelpers.h>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

NSSortDescriptor byTitle()
{
    return {QBNoteTagAttributes::title, true, NSSortDescriptor::Comparison::LocalizedStandard};
}

QList<Ref<QBNoteTag>> tagsOfRequest(NSManagedObjectContext &moc, const NSPredicate::Ref &predicate,
                                    const QList<NSSortDescriptor> &sortDescriptors)
{
    NSFetchRequest request;
    request.entityName = QBNoteTag::entityName();
    request.predicate = predicate;
    request.sortDescriptors = sortDescriptors;
    return quib::fetchLogged<QBNoteTag>(moc, request);
}

} // namespace

QList<Ref<QBNoteTag>> QBNoteTag::notesTagsInManagedObjectContext(NSManagedObjectContext &moc,
                                                                 const NSPredicate::Ref &withPredicate)
{
    return tagsOfRequest(moc, withPredicate, {byTitle()});
}

NSPredicate::Ref QBNoteTag::populatedTagsPredicate()
{
    return NSPredicate::predicateWithFormat(
        u"SUBQUERY(notes, $note, $note.trashed == NO AND $note.archived == NO).@count > 0"_s);
}

NSPredicate::Ref QBNoteTag::rootTagsPredicate()
{
    return NSPredicate::predicateWithFormat(u"NOT title CONTAINS %@ AND SUBQUERY(notes, $note, $note.trashed == NO "
                                            "AND $note.archived == NO).@count > 0"_s,
                                            {predicateArgument(u"/"_s)});
}

QList<Ref<QBNoteTag>> QBNoteTag::populatedNotesTagsInManagedObjectContext(NSManagedObjectContext &moc)
{
    return notesTagsInManagedObjectContext(moc, populatedTagsPredicate());
}

QList<Ref<QBNoteTag>> QBNoteTag::rootTagsInManagedObjectContext(NSManagedObjectContext &moc)
{
    return notesTagsInManagedObjectContext(moc, rootTagsPredicate());
}

Ref<QBNoteTag> QBNoteTag::tagWithName(const QString &name, NSManagedObjectContext &inManagedObjectContext)
{
    return quib::TagLookup::forContext(inManagedObjectContext)->tagWithName(name, inManagedObjectContext);
}

Ref<QBNoteTag> QBNoteTag::addNewTagWithName(const QString &name, NSManagedObjectContext &inManagedObjectContext)
{
    auto tag = insertInManagedObjectContext(inManagedObjectContext);
    tag->setTitle(sanitizeTagName(name));
    return tag;
}

Ref<QBNoteTag> QBNoteTag::getOrCreateTagWithName(const QString &name, NSManagedObjectContext &inManagedObjectContext)
{
    const auto tags = getOrCreateTagsWithNames({name}, inManagedObjectContext);
    return tags.isEmpty() ? Ref<QBNoteTag>() : tags.constFirst();
}

QList<Ref<QBNoteTag>> QBNoteTag::getOrCreateTagsWithNames(const QStringList &names,
                                                          NSManagedObjectContext &inManagedObjectContext)
{
    QStringList wanted;
    QSet<QString> seen;
    for (const QString &name : names) {
        QString sanitized = sanitizeTagName(name);
        QString key = quib::foldedString(sanitized, quib::FoldOption::CaseAndDiacritic);
        if (!sanitized.isEmpty() && !seen.contains(key)) {
            seen.insert(std::move(key));
            wanted.append(std::move(sanitized));
        }
    }
    if (wanted.isEmpty()) {
        return {};
    }
    const auto lookup = quib::TagLookup::forContext(inManagedObjectContext);
    auto tags = lookup->tagsWithNames(wanted, inManagedObjectContext);
    for (qsizetype i = 0; i < tags.size(); ++i) {
        if (!tags.at(i)) {
            tags[i] = addNewTagWithName(wanted.at(i), inManagedObjectContext);
            lookup->remember(*tags.at(i));
        }
    }
    return tags;
}

QString QBNoteTag::sanitizeTagName(const QString &name)
{
    QString kept;
    kept.reserve(name.size());
    for (const QChar unit : name) {
        if (unit != u'\r' && unit != u'\n' && unit != u'\t' && unit != u'#') {
            kept.append(unit);
        }
    }
    // Trimming blanks and dropping one slash in turn strips both ends of any mixture of the two.
    qsizetype start = 0;
    qsizetype limit = kept.size();
    while (start < limit && (kept.at(start) == u'/' || quib::isWhitespace(kept.at(start).unicode()))) {
        ++start;
    }
    while (limit > start && (kept.at(limit - 1) == u'/' || quib::isWhitespace(kept.at(limit - 1).unicode()))) {
        --limit;
    }
    return kept.mid(start, limit - start);
}

void QBNoteTag::deleteAllUnusedTagsInManagedObjectContext(NSManagedObjectContext &moc)
{
    for (const auto &tag : quib::fetchLogged<QBNoteTag>(moc, quib::requestFor<QBNoteTag>(u"notes.@count == 0"_s))) {
        moc.deleteObject(tag.get());
    }
}

void QBNoteTag::mergeDuplicateTagsInInManagedObjectContext(NSManagedObjectContext &moc)
{
    Ref<QBNoteTag> kept;
    QString keptTitle;
    for (const auto &tag : notesTagsInManagedObjectContext(moc)) {
        const QString title = tag->normalizedTitle();
        if (kept && title == keptTitle) {
            for (const auto &note : tag->notes()) {
                kept->addNotesObject(note.get());
            }
            moc.deleteObject(tag.get());
            continue;
        }
        kept = tag;
        keptTitle = title;
    }
}

QString QBNoteTag::hashTagString() const
{
    return hashTagStringForTagName(title());
}

QString QBNoteTag::hashTagStringForTagName(const QString &tagName)
{
    return QBTagDataDetector::hashTagStringForTagName(tagName);
}

void QBNoteTag::updateModificationDate()
{
    setModificationDate(NSDate::now());
}

NSPredicate::Ref QBNoteTag::untrashedNotesPredicate() const
{
    return NSPredicate::predicateWithFormat(u"%@ IN tags AND trashed == NO AND archived == NO"_s, {objectID()});
}

std::optional<qint64> QBNoteTag::untrashedNotesCount() const
{
    const auto request =
        quib::requestFor<QBNote>(u"trashed == NO AND archived == NO AND ANY tags == %@"_s, {objectID()});
    NSError error;
    const auto count = managedObjectContext()->countForFetchRequest(request, &error);
    if (!count) {
        quib::logFetchError(error, __func__, __LINE__);
    }
    return count;
}

bool QBNoteTag::isDerivedKey(const QString &key) const
{
    return key == "untrashedNotesCount"_L1;
}

quib::Value QBNoteTag::derivedValueForKey(const QString & /*key*/) const
{
    const auto count = untrashedNotesCount();
    return count ? quib::Value(*count) : quib::Value();
}

QList<Ref<QBNote>> QBNoteTag::activeNotesWithSortDescriptors(const QList<NSSortDescriptor> &sortDescriptors) const
{
    NSFetchRequest request;
    request.entityName = QBNote::entityName();
    request.predicate = untrashedNotesPredicate();
    request.sortDescriptors = sortDescriptors;
    return quib::fetchLogged<QBNote>(*managedObjectContext(), request);
}

QStringList QBNoteTag::tagComponents() const
{
    return tagComponentsFromTagString(title());
}

QStringList QBNoteTag::tagComponentsFromTagString(const QString &tagString)
{
    return quib::lowercaseString(tagString).split(u'/', Qt::SkipEmptyParts);
}

QString QBNoteTag::tagStringFromComponents(const QStringList &components)
{
    return components.join(u'/');
}

QStringList QBNoteTag::tagComponentsLowerCaseDiacritic() const
{
    const QString current = title();
    if (m_componentsTitle.isNull() || m_componentsTitle != current) {
        m_components.clear();
        for (const QString &component : tagComponentsFromTagString(current)) {
            m_components.append(quib::foldedString(component, quib::FoldOption::Diacritic));
        }
        m_componentsTitle = current;
    }
    return m_components;
}

QList<Ref<QBNoteTag>>
QBNoteTag::childsAndSubChildsTagsWithSortDescriptors(const QList<NSSortDescriptor> &sortDescriptors) const
{
    const auto predicate = NSPredicate::predicateWithFormat(
        u"title BEGINSWITH[cd] %@ AND self != %@ AND SUBQUERY(notes, $note, $note.trashed == NO AND $note.archived == "
        "NO).@count > 0"_s,
        {predicateArgument(title() + u'/'), objectID()});
    return tagsOfRequest(*managedObjectContext(), predicate, sortDescriptors);
}

QList<Ref<QBNoteTag>> QBNoteTag::childTagsWithSortDescriptors(const QList<NSSortDescriptor> &sortDescriptors) const
{
    const qsizetype level = tagComponents().size() + 1;
    auto tags = childsAndSubChildsTagsWithSortDescriptors(sortDescriptors);
    tags.removeIf([level](const Ref<QBNoteTag> &tag) { return tag->tagComponents().size() > level; });
    return tags;
}

QString QBNoteTag::fatherTagName() const
{
    QStringList components = tagComponents();
    if (components.size() < 2) {
        return {};
    }
    components.removeLast();
    return tagStringFromComponents(components);
}

Ref<QBNoteTag> QBNoteTag::fatherTag() const
{
    const QString name = fatherTagName();
    return name.isNull() ? Ref<QBNoteTag>() : tagWithName(name, *managedObjectContext());
}

Ref<QBNoteTag> QBNoteTag::rootFatherTag() const
{
    const QStringList components = tagComponents();
    return components.size() < 2 ? Ref<QBNoteTag>() : tagWithName(components.constFirst(), *managedObjectContext());
}

bool QBNoteTag::isChildOfTag(const QBNoteTag &tag) const
{
    QStringList components = tagComponentsLowerCaseDiacritic();
    if (components.isEmpty()) {
        return false;
    }
    components.removeLast();
    return components == tag.tagComponentsLowerCaseDiacritic();
}

QString QBNoteTag::leafTagName() const
{
    const QStringList components = tagComponents();
    return components.isEmpty() ? QString() : components.constLast();
}

QString QBNoteTag::normalizedTitle() const
{
    return quib::foldedString(title(), quib::FoldOption::CaseAndDiacritic);
}

QString QBNoteTag::normalizedFatherTagName() const
{
    const QString name = fatherTagName();
    return name.isNull() ? QString() : quib::foldedString(name, quib::FoldOption::CaseAndDiacritic);
}
