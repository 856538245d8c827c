#include "QBNote.h"
#include "QBNoteTag.h"

#include <Store/NSManagedObjectContext.h>
#include <Tags/QBTagDataDetector.h>
#include <Text/Folding.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

struct Replacement
{
    QStringList key; // by which tags in a text are the same
    QString hashtag;
    QString withHashtag;
};

/// The title with its first levels, those of oldTitle, written as newName; nullopt when it does not begin with them.
/// Folding keeps slashes, so the levels are told by counting them.
std::optional<QString> titleWithNewName(const QString &title, const QString &oldTitle, const QString &newName)
{
    qsizetype slashes = oldTitle.count(u'/');
    qsizetype limit = 0;
    for (; limit < title.size(); ++limit) {
        if (title.at(limit) == u'/' && slashes-- == 0) {
            break;
        }
    }
    const auto fold = [](QStringView text) { return quib::foldedString(text, quib::FoldOption::CaseAndDiacritic); };
    if (fold(QStringView(title).first(limit)) != fold(oldTitle)) {
        return std::nullopt;
    }
    return newName + QStringView(title).sliced(limit);
}

/// The keys of all tags that a text holds.
QSet<QStringList> tagKeysInText(const QString &text)
{
    QSet<QStringList> keys;
    if (!text.contains(u'#')) {
        return keys;
    }
    const QStringView view(text);
    QBTagDataDetector::sharedDetector().enumerateMatchesInString(
        view, 0, NSRange{0, text.size()}, [&keys, view](const NSTextCheckingResult &result, bool *) {
            const NSRange range = result.range();
            keys.insert(QBTagDataDetector::diacriticTagComponentsFromString(view.sliced(range.location, range.length)));
        });
    return keys;
}

/// The text with every pair applied in turn. A pair whose tag the text lacks is passed over: it would change nothing.
QString textWithReplacements(const QString &text, const QList<Replacement> &replacements)
{
    const QSet<QStringList> keys = tagKeysInText(text);
    QString replaced = text;
    for (const Replacement &each : replacements) {
        if (keys.contains(each.key)) {
            replaced = QBTagDataDetector::stringByReplacingHashtag(each.hashtag, each.withHashtag, replaced);
        }
    }
    return replaced;
}

} // namespace

void QBNoteTag::addTagToNotes(const QList<Ref<QBNote>> &notes, int syntax)
{
    const Ref<QBNoteTag> self(this);
    const QStringList hashtags{hashTagString()};
    for (const auto &note : notes) {
        if (!note->tags().contains(self)) {
            note->updateNoteWithText(QBTagDataDetector::stringByAddingHashtags(hashtags, note->text()), syntax,
                                     /*updateModificationDate=*/false);
        }
    }
}

Ref<QBNoteTag> QBNoteTag::renameTagWithTagNamed(const QString &newName, int syntax)
{
    return renameTagWithTagNamed(newName, std::nullopt, syntax);
}

Ref<QBNoteTag> QBNoteTag::renameTagWithTagNamed(const QString &newName,
                                                const std::optional<QList<Ref<QBNote>>> &inNotes, int syntax)
{
    const QString oldTitle = title();
    const QString name = sanitizeTagName(newName);
    if (newName == oldTitle || name.isEmpty()) {
        return {};
    }
    NSManagedObjectContext &moc = *managedObjectContext();
    const Ref<QBNoteTag> self(this);
    const Ref<QBNoteTag> found = tagWithName(name, moc);
    const Ref<QBNoteTag> survivor = found ? found : self;

    QList<Ref<QBNoteTag>> tags{self};
    tags.append(childsAndSubChildsTagsWithSortDescriptors({}));
    QList<Replacement> replacements;
    for (const auto &tag : tags) {
        const QString hashtag = tag->hashTagString();
        if (const auto newTitle = titleWithNewName(tag->title(), oldTitle, name)) {
            replacements.append({QBTagDataDetector::diacriticTagComponentsFromString(hashtag), hashtag,
                                 hashTagStringForTagName(*newTitle)});
        }
    }
    // A rename to a place below itself, or above, makes names that other pairs rename in their turn: a pair comes after
    // all pairs that would take up what it writes.
    const bool goesDeeper = tagComponentsFromTagString(name).size() > tagComponentsFromTagString(oldTitle).size();
    std::stable_sort(replacements.begin(), replacements.end(), [goesDeeper](const auto &a, const auto &b) {
        return goesDeeper ? a.key.size() > b.key.size() : a.key.size() < b.key.size();
    });

    const auto notes = inNotes ? *inNotes : QBNote::notesForTags(tags, moc);
    if (survivor == self) {
        setTitle(name);
    }
    for (const auto &note : notes) {
        note->updateNoteWithText(textWithReplacements(note->text(), replacements), syntax,
                                 /*updateModificationDate=*/false);
    }
    return survivor;
}

void QBNoteTag::deleteTagWithSyntax(int syntax)
{
    const auto tagged = notes();
    deleteTagWithSyntax(syntax, QList<Ref<QBNote>>(tagged.cbegin(), tagged.cend()));
}

void QBNoteTag::deleteTagWithSyntax(int syntax, const QList<Ref<QBNote>> &inNotes)
{
    for (const auto &child : childTagsWithSortDescriptors({{QBNoteTagAttributes::title, false}})) {
        child->deleteTagWithSyntax(syntax, inNotes);
    }
    if (const auto father = fatherTag()) {
        renameTagWithTagNamed(father->title(), inNotes, syntax);
        return;
    }
    const QString hashtag = hashTagString();
    for (const auto &note : inNotes) {
        note->updateNoteWithText(QBTagDataDetector::stringByReplacingHashtag(hashtag, QString(u""_s), note->text()),
                                 syntax, /*updateModificationDate=*/false);
    }
}
