#include "QBXurlCoreController.h"

#include "XurlReports.h"

#include <Store/CurrentSyntax.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Tags/QBTagDataDetector.h>
#include <Text/NSStringHelpers.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <tuple>

using namespace Qt::StringLiterals;
using quib::Ref;
using quib::reportFailure;

QBXurlCoreController::QBXurlCoreController(QBCoreDataStack &stack, qsizetype largestResult)
    : m_stack(stack)
    , m_largestResult(largestResult)
    , m_self(std::make_shared<QBXurlCoreController *>(this))
{
}

QBXurlCoreController::~QBXurlCoreController() = default;

NSManagedObjectContext &QBXurlCoreController::moc() const
{
    return *m_stack.managedObjectContext();
}

bool QBXurlCoreController::save(const IACFailureBlock &failure)
{
    m_stack.saveUsingCoalescence(/*coalescence=*/false);
    if (!m_stack.saveError().isSet()) {
        return true;
    }
    reportFailure(failure, ErrorCode::Internal, quib::kNotSaved);
    return false;
}

void QBXurlCoreController::saveLater()
{
    m_stack.saveUsingCoalescence(/*coalescence=*/true);
}

bool QBXurlCoreController::isTokenValid(const QString &token) const
{
    return m_tokenController.isTokenValid(token);
}

bool QBXurlCoreController::hasInvalidToken(const Parameters &parameters, const QString &message,
                                           const IACFailureBlock &failure) const
{
    const auto token = parameters.constFind(u"token"_s);
    if (token == parameters.constEnd() || isTokenValid(*token)) {
        return false;
    }
    if (failure) {
        failure(NSError(message, static_cast<qint64>(ErrorCode::Token), {}));
    }
    return true;
}

QList<Ref<QBNote>> QBXurlCoreController::sortNotes(const QList<Ref<QBNote>> &notes)
{
    QList<Ref<QBNote>> sorted = notes;
    std::stable_sort(sorted.begin(), sorted.end(), [](const Ref<QBNote> &a, const Ref<QBNote> &b) {
        return std::make_tuple(a->pinned(), a->modificationDate()) >
               std::make_tuple(b->pinned(), b->modificationDate());
    });
    return sorted;
}

QString QBXurlCoreController::formatDateForXURL(std::optional<NSDate> date)
{
    return date ? date->iso8601String() : u""_s;
}

std::optional<QString> QBXurlCoreController::resultForNotes(const QList<Ref<QBNote>> &notes) const
{
    QByteArray json("[");
    for (const Ref<QBNote> &note : notes) {
        if (note->locked()) {
            continue;
        }
        const QJsonObject object{{u"title"_s, note->title()},
                                 {u"identifier"_s, note->uniqueIdentifier()},
                                 {u"modificationDate"_s, formatDateForXURL(note->modificationDate())},
                                 {u"creationDate"_s, formatDateForXURL(note->creationDate())},
                                 {u"pin"_s, note->isPinned() ? u"yes"_s : u"no"_s}};
        if (json.size() > 1) {
            json.append(',');
        }
        json.append(QJsonDocument(object).toJson(QJsonDocument::Compact));
        if (json.size() >= m_largestResult) {
            return std::nullopt;
        }
    }
    json.append(']');
    return QString::fromUtf8(json);
}

void QBXurlCoreController::reportNotes(const QList<Ref<QBNote>> &notes, const QString &failureMessage,
                                       const IACSuccessBlock &success, const IACFailureBlock &failure) const
{
    if (const auto result = resultForNotes(sortNotes(notes))) {
        quib::reportSuccess(success, {{u"notes"_s, *result}});
    } else if (failure) {
        failure(NSError(failureMessage, static_cast<qint64>(ErrorCode::Internal), {}));
    }
}

std::optional<QBNoteSection> QBXurlCoreController::sectionForNote(const QBNote &note, const QString &withTitle)
{
    const QString title = quib::trimmedWhitespaceAndNewlines(withTitle).toLower();
    if (withTitle.isEmpty()) {
        return std::nullopt;
    }
    for (const QBNoteSection &section : note.noteSections()) {
        if (section.title.toLower() == title) {
            return section;
        }
    }
    return std::nullopt;
}

bool QBXurlCoreController::addText(const QString &text, QBNote &toNote, const std::optional<QBNoteSection> &andSection,
                                   const QString &usingMode, const IACFailureBlock &failure)
{
    const int syntax = quib::currentSyntax();
    if (usingMode.isEmpty() || usingMode == u"append") {
        andSection ? toNote.appendSection(*andSection, text, syntax) : toNote.appendNoteWithText(text, syntax);
    } else if (usingMode == u"prepend") {
        andSection ? toNote.prependSection(*andSection, text, syntax) : toNote.prependNoteWithText(text, syntax);
    } else if (usingMode == u"replace") {
        andSection ? toNote.replaceSection(*andSection, text, syntax) : toNote.replaceNoteWithText(text, syntax);
    } else if (usingMode == u"replace_all") {
        toNote.updateNoteWithText(text, syntax);
    } else {
        reportFailure(failure, ErrorCode::Parameter, "Unrecognized mode provided"_L1);
        return false;
    }
    return true;
}

QString quib::textWithTags(const QString &text, const QString &tags)
{
    if (tags.isEmpty()) {
        return text;
    }
    return QBTagDataDetector::stringByAddingHashtags(QBTagDataDetector::hashtagsFromTagsStrings(tags.split(u',')),
                                                     text);
}
