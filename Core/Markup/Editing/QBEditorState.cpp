#include "QBEditorState.h"

#include <cmath>

using namespace Qt::StringLiterals;
using quib::PropertyValue;

namespace {

constexpr double kSecondsOfMinute = 60;

PropertyValue archivedRange(NSRange range)
{
    return PropertyValue::Array{range.location, range.length};
}

NSRange unarchivedRange(const PropertyValue &archive)
{
    const auto *parts = archive.asArray();
    if (parts == nullptr || parts->size() != 2) {
        return kNotFoundRange;
    }
    const qint64 location = parts->at(0).toInteger(-1);
    const qint64 length = parts->at(1).toInteger(-1);
    return location < 0 || length < 0 || length > NSNotFound - location ? kNotFoundRange : NSRange{location, length};
}

double unarchivedNumber(const PropertyValue &archive)
{
    const double number = archive.toDouble();
    return std::isfinite(number) ? number : 0;
}

} // namespace

bool QBEditorState::isValidForDate(NSDate otherDate) const
{
    const double minutes = std::abs(otherDate.timeIntervalSinceDate(date)) / kSecondsOfMinute;
    return std::floor(minutes) < kValidMinutes;
}

bool QBEditorState::isValidForVectorClock(const MRVectorClock &otherClock) const
{
    return vectorClock && vectorClock->compare(otherClock) == MRVectorClock::Equal;
}

PropertyValue QBEditorState::archived() const
{
    PropertyValue::Dictionary archive{
        {u"UUID"_s, UUID},
        {u"date"_s, date},
        {u"editRange"_s, archivedRange(editRange)},
        {u"scrollPosition"_s, scrollPosition},
        {u"scrollWidth"_s, scrollWidth},
        {u"firstParagraphRange"_s, archivedRange(firstParagraphRange)},
        {u"isFirstResponder"_s, isFirstResponder},
    };
    if (vectorClock) {
        archive.insert(u"vectorClock"_s, vectorClock->data());
    }
    return archive;
}

std::optional<QBEditorState> QBEditorState::unarchived(const PropertyValue &archive)
{
    const auto *values = archive.asDictionary();
    if (values == nullptr) {
        return std::nullopt;
    }
    const auto uuid = values->value(u"UUID"_s).asString();
    const auto date = values->value(u"date"_s).asDate();
    if (!uuid || !date) {
        return std::nullopt;
    }
    QBEditorState state;
    state.UUID = *uuid;
    state.date = *date;
    if (const auto data = values->value(u"vectorClock"_s).asData()) {
        state.vectorClock = MRVectorClock::initWithData(*data);
    }
    state.editRange = unarchivedRange(values->value(u"editRange"_s));
    state.scrollPosition = unarchivedNumber(values->value(u"scrollPosition"_s));
    state.scrollWidth = unarchivedNumber(values->value(u"scrollWidth"_s));
    state.firstParagraphRange = unarchivedRange(values->value(u"firstParagraphRange"_s));
    state.isFirstResponder = values->value(u"isFirstResponder"_s).toBool();
    return state;
}
