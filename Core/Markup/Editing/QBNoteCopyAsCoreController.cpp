#include "QBNoteCopyAsCoreController.h"

#include <Markup/QBNoteTextKitStack.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Store/CurrentSyntax.h>
#include <Tags/QBTagDataDetector.h>
#include <Text/NSRegularExpression.h>

#include <QStringList>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// What a text stands for, without the tags in it.
QString textWithoutTags(const QBNotesTextStorage &storage)
{
    QString text;
    QList<NSTextCheckingResult> tags;
    storage.attributedString().enumerateAttribute(
        QBNoteTagStylerAttributeName, storage.fullRange(), NSAttributedStringEnumerationOptions::Forward,
        [&](const quib::AttributeValue &value, NSRange run, bool * /*stop*/) {
            const qint64 start = text.size();
            text += storage.stringWithExpandedTextAttachmentsWithRange(run);
            if (value) {
                tags.append(NSTextCheckingResult({NSRange{start, text.size() - start}}));
            }
        });
    const NSRange whole = {0, text.size()};
    QBTagDataDetector::sharedDetector().removeTagsInString(text, tags, whole);
    return text;
}

} // namespace

QString QBNoteCopyAsCoreController::copyAsTXT(const QBNotesTextStorage &textStorage, NSRange withRange, bool andTags)
{
    if (withRange.length == 0) {
        return u""_s;
    }
    if (andTags) {
        return textStorage.stringWithExpandedTextAttachmentsWithRange(withRange);
    }
    return textWithoutTags(*textStorage.subTextStorageWithRange(withRange));
}

QString QBNoteCopyAsCoreController::copyNotesAsTXT(const QList<quib::Ref<QBNote>> &notes, bool withTags)
{
    QStringList texts;
    for (const auto &note : notes) {
        if (withTags) {
            texts.append(note->text());
            continue;
        }
        QBNoteTextKitStack stack;
        stack.stylerManager()->setSyntax(quib::currentSyntax());
        stack.noteTextStorage().loadString(note->text());
        texts.append(textWithoutTags(stack.noteTextStorage()));
    }
    return texts.join(u"\n\n"_s);
}

std::unique_ptr<QBNotesTextStorage>
QBNoteCopyAsCoreController::subTextStorageIncludingFullLinesWithRange(NSRange range,
                                                                      const QBNotesTextStorage &andTextStorage)
{
    return andTextStorage.subTextStorageWithRange(andTextStorage.attributedString().paragraphRangeForRange(range));
}
