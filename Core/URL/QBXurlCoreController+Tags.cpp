#include "QBXurlCoreController.h"
#include "XurlReports.h"

#include <Store/CurrentSyntax.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Text/NSStringHelpers.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

using namespace Qt::StringLiterals;
using quib::Ref;
using quib::reportFailure;
using quib::reportSuccess;

namespace {

/// The themes that come without the subscription.
constexpr QLatin1StringView kFreeThemes[] = {"Red Graphite"_L1, "High Contrast"_L1, "Dark Graphite"_L1};

} // namespace

Ref<QBNoteTag> QBXurlCoreController::tagNamedInParameters(const Parameters &parameters,
                                                          const IACFailureBlock &failure) const
{
    const QString name = parameters.value(u"name"_s);
    if (name.isEmpty()) {
        reportFailure(failure, ErrorCode::Parameter, "Tag name required"_L1);
        return {};
    }
    auto tag = QBNoteTag::tagWithName(name, moc());
    if (!tag) {
        reportFailure(failure, ErrorCode::NotFound, quib::kTagMissing);
    }
    return tag;
}

void QBXurlCoreController::handleTags(const Parameters &parameters, const IACSuccessBlock &success,
                                      const IACFailureBlock &failure)
{
    if (!isTokenValid(parameters.value(u"token"_s))) {
        reportFailure(failure, ErrorCode::Token, quib::kTokenRequired);
        return;
    }
    QJsonArray names;
    for (const auto &tag : QBNoteTag::populatedNotesTagsInManagedObjectContext(moc())) {
        names.append(QJsonObject{{u"name"_s, tag->title()}});
    }
    const QByteArray json = QJsonDocument(names).toJson(QJsonDocument::Compact);
    if (json.size() > m_largestResult) {
        reportFailure(failure, ErrorCode::Internal, "Error serializing results"_L1);
        return;
    }
    reportSuccess(success, {{u"tags"_s, QString::fromUtf8(json)}});
}

Ref<QBNoteTag> QBXurlCoreController::handleOpenTag(const Parameters &parameters, const IACSuccessBlock &success,
                                                   const IACFailureBlock &failure)
{
    if (hasInvalidToken(parameters, quib::kTokenRequired, failure)) {
        return {};
    }
    auto tag = tagNamedInParameters(parameters, failure);
    if (!tag) {
        return {};
    }
    if (!parameters.contains(u"token"_s)) {
        reportSuccess(success);
    } else if (success) {
        const auto notes = tag->notes();
        reportNotes({notes.cbegin(), notes.cend()}, quib::kResultsNotFetched, success, failure);
    }
    return tag;
}

void QBXurlCoreController::handleRenameTag(const Parameters &parameters, const IACSuccessBlock &success,
                                           const IACFailureBlock &failure)
{
    const QString newName = parameters.value(u"new_name"_s);
    if (newName.isEmpty() && !parameters.value(u"name"_s).isEmpty()) {
        reportFailure(failure, ErrorCode::Parameter, "New Tag name required"_L1);
        return;
    }
    const auto tag = tagNamedInParameters(parameters, failure);
    if (!tag) {
        return;
    }
    // A rename to the name as it stands gives no tag: there is nothing to save, and nothing wrong.
    if (tag->renameTagWithTagNamed(newName, quib::currentSyntax()) && !save(failure)) {
        return;
    }
    reportSuccess(success);
}

void QBXurlCoreController::handleDeleteTag(const Parameters &parameters, const IACSuccessBlock &success,
                                           const IACFailureBlock &failure)
{
    const auto tag = tagNamedInParameters(parameters, failure);
    if (!tag) {
        return;
    }
    tag->deleteTagWithSyntax(quib::currentSyntax());
    if (!save(failure)) {
        return;
    }
    reportSuccess(success);
}

std::optional<QString> QBXurlCoreController::handleChangeTheme(const Parameters &parameters,
                                                               const IACSuccessBlock &success,
                                                               const IACFailureBlock & /*failure*/)
{
    const QString theme = quib::trimmedWhitespaceAndNewlines(parameters.value(u"theme"_s));
    // The gate of the paid subscription.
    if (!QBNotesPreferenceManager::sharedPreferenceManager()->isProSubscriptionValid() &&
        std::find(std::cbegin(kFreeThemes), std::cend(kFreeThemes), theme) == std::cend(kFreeThemes)) {
        return std::nullopt;
    }
    if (success) {
        success(std::nullopt, /*cancelled=*/false);
    }
    return theme;
}

QString QBXurlCoreController::handleChangeFont(const Parameters &parameters, const IACSuccessBlock &success,
                                               const IACFailureBlock & /*failure*/)
{
    if (success) {
        success(std::nullopt, /*cancelled=*/false);
    }
    return parameters.value(u"font"_s);
}
