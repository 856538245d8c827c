#include "NoteFieldSearch.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <limits>
#include <span>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr std::array kDateNames{QBNoteAttributes::creationDate, QBNoteAttributes::modificationDate};
constexpr std::array kNumberNames{QBNoteAttributes::hasImages, QBNoteAttributes::hasFiles,
                                  QBNoteAttributes::hasSourceCode, QBNoteAttributes::todoCompleted,
                                  QBNoteAttributes::todoIncompleted};
constexpr qint16 kMost = std::numeric_limits<qint16>::max();
/// Rows whose tags are counted in one question.
constexpr size_t kBatch = 1024;
constexpr size_t kBitsAWord = 64;

qint16 clamped(qint64 number)
{
    return static_cast<qint16>(std::clamp<qint64>(number, -kMost, kMost));
}

template <typename Names> std::optional<size_t> placeOf(const Names &names, QStringView name)
{
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? std::nullopt : std::optional(static_cast<size_t>(found - names.begin()));
}

/// The number that a field is compared with; nullopt for what is none, or is beyond those that are told apart.
std::optional<qint16> constantNumber(const PredicateExpression &expression)
{
    const auto *value =
        expression.kind == PredicateExpression::Kind::Constant ? std::get_if<Value>(&expression.constant) : nullptr;
    if (value == nullptr) {
        return std::nullopt;
    }
    if (const auto *flag = std::get_if<bool>(value)) {
        return *flag ? 1 : 0;
    }
    const auto *number = std::get_if<qint64>(value);
    return number != nullptr && std::abs(*number) < kMost ? std::optional(static_cast<qint16>(*number)) : std::nullopt;
}

std::optional<double> constantDate(const PredicateExpression &expression)
{
    const auto *value =
        expression.kind == PredicateExpression::Kind::Constant ? std::get_if<Value>(&expression.constant) : nullptr;
    const auto *date = value != nullptr ? std::get_if<NSDate>(value) : nullptr;
    return date != nullptr ? std::optional(date->timeIntervalSince1970()) : std::nullopt;
}

} // namespace

/// Which of the rows meet a condition, a bit each.
class NoteFieldSearch::Answer
{
public:
    /// Shape: nullopt for a condition on what the rows do not hold.
    [[nodiscard]] static std::optional<Answer> make(const Rows &rows, const PredicateNode &node)
    {
        switch (node.kind) {
        case PredicateNode::Kind::True:
        case PredicateNode::Kind::False:
            return where(rows, [&node](const Row &) { return node.kind == PredicateNode::Kind::True; });
        case PredicateNode::Kind::Comparison:
            return compared(rows, node);
        default:
            break;
        }
        std::optional<Answer> joined;
        for (const PredicateNodeRef &child : node.children) {
            const auto one = make(rows, *child);
            if (!one) {
                return std::nullopt;
            }
            if (!joined) {
                joined = one;
            }
            for (size_t i = 0; i < joined->m_bits.size(); ++i) {
                quint64 &word = joined->m_bits[i];
                word = node.kind == PredicateNode::Kind::And   ? word & one->m_bits[i]
                       : node.kind == PredicateNode::Kind::Not ? ~word
                                                               : word | one->m_bits[i];
            }
        }
        return joined;
    }

    [[nodiscard]] std::vector<qint64> keys(const Rows &rows) const
    {
        std::vector<qint64> keys;
        for (size_t i = 0; i < rows.size(); ++i) {
            if ((m_bits[i / kBitsAWord] >> (i % kBitsAWord) & 1U) != 0) {
                keys.push_back(rows[i].key);
            }
        }
        return keys;
    }

private:
    template <typename Test> [[nodiscard]] static Answer where(const Rows &rows, const Test &test)
    {
        Answer answer;
        answer.m_bits.resize((rows.size() + kBitsAWord - 1) / kBitsAWord);
        for (size_t i = 0; i < rows.size(); ++i) {
            answer.m_bits[i / kBitsAWord] |= quint64{test(rows[i]) ? 1U : 0U} << (i % kBitsAWord);
        }
        return answer;
    }

    template <typename Get, typename Constant>
    [[nodiscard]] static std::optional<Answer> compared(const Rows &rows, PredicateOperator operation, const Get &get,
                                                        Constant constant)
    {
        const auto by = [&](const auto &holds) {
            return where(rows, [&](const Row &row) { return holds(get(row), constant); });
        };
        switch (operation) {
        case PredicateOperator::Equal:
            return by(std::equal_to<Constant>());
        case PredicateOperator::NotEqual:
            return by(std::not_equal_to<Constant>());
        case PredicateOperator::Less:
            return by(std::less<Constant>());
        case PredicateOperator::LessOrEqual:
            return by(std::less_equal<Constant>());
        case PredicateOperator::Greater:
            return by(std::greater<Constant>());
        case PredicateOperator::GreaterOrEqual:
            return by(std::greater_equal<Constant>());
        default:
            return std::nullopt;
        }
    }

    [[nodiscard]] static std::optional<Answer> compared(const Rows &rows, const PredicateNode &node)
    {
        const PredicateExpression &left = node.left;
        if (node.isAny || left.path.size() != 1 || !left.variable.isEmpty()) {
            return std::nullopt;
        }
        std::optional<size_t> number;
        if (left.kind == PredicateExpression::Kind::Count) {
            number = left.path.constFirst() == QBNoteRelationships::tags ? std::optional(kNumbers - 1) : std::nullopt;
        } else if (left.kind == PredicateExpression::Kind::KeyPath) {
            number = placeOf(kNumberNames, left.path.constFirst());
            const auto date = placeOf(kDateNames, left.path.constFirst());
            if (const auto constant = constantDate(node.right); date && constant) {
                return compared(
                    rows, node.operation, [place = *date](const Row &row) { return row.dates[place]; }, *constant);
            }
        }
        const auto constant = constantNumber(node.right);
        if (!number || !constant) {
            return std::nullopt;
        }
        return compared(
            rows, node.operation, [place = *number](const Row &row) { return row.numbers[place]; }, *constant);
    }

    std::vector<quint64> m_bits; // those behind the last row mean nothing
};

NoteFieldSearch::NoteFieldSearch(NSManagedObjectContext &context)
    : m_rows(NoteMirror<Rows>::make(
          context, &NoteFieldSearch::rowsIn,
          [this](Rows &rows, const NSManagedObjectContext::Changes &changes) { return follow(rows, changes); }))
{
}

// Filling

NoteFieldSearch::Slots NoteFieldSearch::slotsOf(const NSEntityDescription *entity)
{
    Slots slotsOfFields;
    const auto slotOf = [entity](QLatin1StringView name) { return entity->attributeNamed(QString(name))->slot; };
    std::transform(kDateNames.begin(), kDateNames.end(), slotsOfFields.dates.begin(), slotOf);
    std::transform(kNumberNames.begin(), kNumberNames.end(), slotsOfFields.numbers.begin(), slotOf);
    return slotsOfFields;
}

bool NoteFieldSearch::countTags(NSPersistentStore &store, const NSEntityDescription *entity,
                                const std::vector<Row *> &rows, NSError *error)
{
    const auto *tags = entity->relationshipNamed(QString(QBNoteRelationships::tags));
    for (size_t first = 0; first < rows.size(); first += kBatch) {
        const auto batch = std::span(rows).subspan(first, std::min(kBatch, rows.size() - first));
        QList<NSManagedObjectID> identities;
        for (const Row *row : batch) {
            identities.append(NSManagedObjectID(entity, row->key));
        }
        const auto targets = store.targetsForObjects(identities, tags, error);
        if (!targets) {
            return false;
        }
        for (Row *row : batch) {
            row->numbers.back() = clamped(targets->value(NSManagedObjectID(entity, row->key)).size());
        }
    }
    return true;
}

namespace {

template <typename Row, typename Slots> void readFields(const RowSnapshot &values, const Slots &slotsOfFields, Row &row)
{
    for (size_t i = 0; i < slotsOfFields.dates.size(); ++i) {
        const int slot = slotsOfFields.dates[i];
        row.dates[i] = values.isNull(slot) ? std::numeric_limits<double>::quiet_NaN()
                                           : values.dateAt(slot).timeIntervalSince1970();
    }
    for (size_t i = 0; i < slotsOfFields.numbers.size(); ++i) {
        const int slot = slotsOfFields.numbers[i];
        const bool isFlag = values.entity()->slotLayout(slot).type == NSAttributeType::Boolean;
        row.numbers[i] = isFlag ? (values.boolAt(slot) ? 1 : 0) : clamped(values.integerAt(slot));
    }
}

} // namespace

std::optional<NoteFieldSearch::Rows> NoteFieldSearch::rowsIn(NSPersistentStore &store,
                                                             const NSEntityDescription *entity, NSError *error)
{
    QStringList names;
    std::copy(kDateNames.begin(), kDateNames.end(), std::back_inserter(names));
    std::copy(kNumberNames.begin(), kNumberNames.end(), std::back_inserter(names));
    const Slots slotsOfFields = slotsOf(entity);
    Rows rows;
    const bool isRead = store.enumerateRows(
        entity, names,
        [&](const StoredRow &stored) {
            Row &row = rows.emplace_back();
            row.key = stored.objectID.key();
            readFields(*stored.snapshot, slotsOfFields, row);
            return true;
        },
        error);
    std::vector<Row *> all;
    std::transform(rows.begin(), rows.end(), std::back_inserter(all), [](Row &row) { return &row; });
    if (!isRead || !countTags(store, entity, all, error)) {
        return std::nullopt;
    }
    rows.shrink_to_fit();
    return rows;
}

// Following

bool NoteFieldSearch::follow(Rows &rows, const NSManagedObjectContext::Changes &changes) const
{
    const NSEntityDescription *const notes = m_rows->entity();
    // 1. Which notes were written, and which are gone.
    std::vector<Row> written;
    const Slots slotsOfFields = slotsOf(notes);
    for (const auto *set : {&changes.inserted, &changes.updated}) {
        for (const auto &object : *set) {
            if (object->entity() != notes) {
                continue;
            }
            // Of a note that a list read the row may have some of them only.
            const RowSnapshot *values = nullptr;
            for (const int slot : slotsOfFields.dates) {
                values = object->rowWithAttributeSlot(slot);
            }
            for (const int slot : slotsOfFields.numbers) {
                values = object->rowWithAttributeSlot(slot);
            }
            if (values != nullptr) {
                Row &row = written.emplace_back();
                row.key = object->objectID().key();
                readFields(*values, slotsOfFields, row);
            }
        }
    }
    std::ranges::sort(written, {}, &Row::key);
    std::vector<qint64> gone;
    for (const auto &object : changes.deleted) {
        if (object->entity() == notes) {
            gone.push_back(object->objectID().key());
        }
    }
    std::ranges::sort(gone);
    // 2. A tag that comes or goes tells its notes, so that those are all whose tags can have changed.
    std::vector<Row *> counted;
    std::ranges::transform(written, std::back_inserter(counted), [](Row &row) { return &row; });
    if (!countTags(m_rows->store(), notes, counted, nullptr)) {
        return false;
    }
    // 3. Known ones in their places, new ones all at once.
    std::vector<Row> joining;
    for (const Row &row : written) {
        const auto place = std::ranges::lower_bound(rows, row.key, {}, &Row::key);
        if (place != rows.end() && place->key == row.key) {
            *place = row;
        } else {
            joining.push_back(row);
        }
    }
    if (!gone.empty()) {
        std::erase_if(rows, [&gone](const Row &row) { return std::ranges::binary_search(gone, row.key); });
    }
    const auto end = static_cast<std::ptrdiff_t>(rows.size());
    rows.insert(rows.end(), joining.begin(), joining.end());
    std::ranges::inplace_merge(rows, rows.begin() + end, {}, &Row::key);
    return true;
}

// Answering

std::optional<std::vector<qint64>> NoteFieldSearch::keysMeeting(const PredicateNode &condition)
{
    const Rows *rows = m_rows->contents();
    const auto answer = rows != nullptr ? Answer::make(*rows, condition) : std::nullopt;
    return answer ? std::optional(answer->keys(*rows)) : std::nullopt;
}

} // namespace quib
