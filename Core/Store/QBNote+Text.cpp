#include "QBNote.h"
#include "QBNoteFile.h"
#include "QBNoteTag.h"

#include <Store/NSManagedObjectContext.h>
#include <Text/NSStringHelpers.h>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

bool beginsWithNewline(QStringView text)
{
    return !text.isEmpty() && quib::isNewline(text.front().unicode());
}

bool endsWithNewline(QStringView text)
{
    return !text.isEmpty() && quib::isNewline(text.back().unicode());
}

QStringView firstLineOf(QStringView text)
{
    const qsizetype end = text.indexOf(u'\n');
    return end < 0 ? text : text.first(end);
}

/// The text that stands where two pieces meet: one line end between them, taken away or put in at the end of the front
/// piece.
QString joinedAsLines(QString front, QStringView back)
{
    if (!back.startsWith(u'\n')) {
        if (!front.endsWith(u'\n')) {
            front.append(u'\n');
        }
    } else if (front.endsWith(u'\n')) {
        front.chop(1);
    }
    return front + back;
}

QString endedByNewline(QString text)
{
    if (!text.endsWith(u'\n')) {
        text.append(u'\n');
    }
    return text;
}

} // namespace

void QBNote::prependNoteWithText(const QString &text, int syntax)
{
    QString whole = this->text();
    const QStringView firstLine = firstLineOf(whole);
    const qsizetype i = firstLine.startsWith(u"# ") ? firstLine.size() : 0;
    QString inserted = text;
    if (i > 0 && !inserted.isEmpty() && !beginsWithNewline(inserted)) {
        inserted.prepend(u'\n');
    }
    if (whole.size() > i && !inserted.isEmpty() && !endsWithNewline(inserted) &&
        !quib::isNewline(whole.at(i).unicode())) {
        inserted.append(u'\n');
    }
    whole.insert(i, inserted);
    updateNoteWithText(whole, syntax);
}

void QBNote::appendNoteWithText(const QString &text, int syntax)
{
    if (text.isEmpty()) {
        return;
    }
    QString whole = this->text();
    QString inserted = text;
    qsizetype i = whole.size();
    bool hasTagLine = false;
    if (!whole.isEmpty()) {
        const NSRange paragraph = quib::paragraphRangeForRange(whole, {whole.size(), 0});
        const QStringView last = QStringView(whole).sliced(paragraph.location, paragraph.length);
        if (last.startsWith(u'#') && tagsStrings().contains(last.sliced(1))) {
            i = paragraph.location;
            hasTagLine = true;
        }
    }
    if (hasTagLine) {
        const qsizetype emptyLine = inserted.indexOf(u"\n\n"_s);
        if (emptyLine < 0 || emptyLine != inserted.size() - 2) {
            inserted.append(endsWithNewline(inserted) ? u"\n"_s : u"\n\n"_s);
        }
    }
    if (i > 0 && !beginsWithNewline(inserted) && !quib::isNewline(whole.at(i - 1).unicode())) {
        inserted.prepend(u'\n');
    }
    whole.insert(i, inserted);
    updateNoteWithText(whole, syntax);
}

void QBNote::replaceNoteWithText(const QString &text, int syntax)
{
    const QString whole = this->text();
    QString kept;
    if (whole.contains(u'\n')) {
        const QStringView firstLine = firstLineOf(whole);
        if (firstLine.startsWith(u"# ") || firstLine.startsWith(u"## ") || firstLine.startsWith(u"### ")) {
            kept = firstLine.toString();
        }
    }
    updateNoteWithText(kept + u'\n' + text, syntax);
}

QList<QBNoteSection> QBNote::noteSections() const
{
    return QBNoteSection::noteSectionsInText(text());
}

void QBNote::replaceRange(NSRange range, const QString &withText, int syntax)
{
    QString whole = text();
    const auto inside = quib::rangeCutToString(whole, range);
    if (!inside) {
        return; // a section of another text
    }
    whole.replace(inside->location, inside->length, withText);
    updateNoteWithText(whole, syntax);
}

void QBNote::replaceSection(const QBNoteSection &section, const QString &withText, int syntax)
{
    replaceRange(section.sectionRange(), endedByNewline(withText), syntax);
}

void QBNote::appendSection(const QBNoteSection &section, const QString &withText, int syntax)
{
    if (withText.isEmpty()) {
        return;
    }
    const NSRange range = section.sectionRange();
    const QString body = text().mid(range.location, range.length);
    const QString joined = body.isEmpty() ? withText : joinedAsLines(body, withText);
    replaceRange(range, endedByNewline(joined), syntax);
}

void QBNote::prependSection(const QBNoteSection &section, const QString &withText, int syntax)
{
    if (withText.isEmpty()) {
        return;
    }
    const NSRange range = section.sectionRange();
    const QString body = text().mid(range.location, range.length);
    replaceRange(range, joinedAsLines(withText, body), syntax);
}

QString QBNote::textWithDuplicatedFiles(const QString &text) const
{
    QList<std::pair<QString, QString>> markers;
    for (const auto &file : orderedFiles()) {
        if (const QString marker = file->textRepresentation(); !marker.isEmpty()) {
            markers.append({marker, file->duplicate()->textRepresentation()});
        }
    }
    return QBNoteFile::stringByReplacingMarkers(text, markers);
}

Ref<QBNote> QBNote::duplicateWithSyntax(int syntax)
{
    auto copy = insertInManagedObjectContext(*managedObjectContext());
    for (const auto &attribute : entity()->attributes()) {
        // The text comes with the update below.
        const quib::Value value = attribute.isLazy ? quib::Value() : valueForKey(attribute.name);
        if (!quib::isNothing(value)) {
            copy->setValueForKey(value, attribute.name);
        }
    }
    copy->updateUniqueIdentifier();
    copy->updateNoteWithText(textWithDuplicatedFiles(text()), syntax);
    copy->setCreationDate(copy->modificationDate());
    return copy;
}

Ref<QBNote> QBNote::mergeNotes(const QList<Ref<QBNote>> &notes, int withSyntax)
{
    const auto isStatic = [](const Ref<QBNote> &note) { return note->isStatic(); };
    if (notes.size() < 2 || std::any_of(notes.cbegin(), notes.cend(), isStatic)) {
        return {};
    }
    QString merged;
    bool areAllPinned = true;
    for (const auto &note : notes) {
        const QString text = note->textWithDuplicatedFiles(note->text());
        if (merged.endsWith(u'\n') && !merged.endsWith(u"\n\n"_s)) {
            merged += u'\n' + text;
        } else if (merged.isEmpty() || text.endsWith(u"\n\n"_s)) {
            merged += text; // looks at the end of the text that comes, not of what is there
        } else {
            merged += u"\n\n"_s + text;
        }
        areAllPinned = areAllPinned && note->isPinned();
        note->trash();
    }
    auto result = insertInManagedObjectContext(*notes.constFirst()->managedObjectContext());
    result->updateNoteWithText(merged, withSyntax);
    result->setPinned(areAllPinned);
    return result;
}
