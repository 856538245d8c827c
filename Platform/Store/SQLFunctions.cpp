#include "SQLFunctions.h"

#include "SQLNames.h"

#include <Text/Folding.h>

#include <QSet>

#include <cstring>
#include <memory>
#include <string_view>

#include <sqlite3.h>

namespace quib {

namespace {

constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;

std::string_view bytesOf(sqlite3_value *value)
{
    // sqlite3_value_blob gives text as its bytes, whatever they are; the length counts U+0000 too.
    const auto *bytes = static_cast<const char *>(sqlite3_value_blob(value));
    const int size = sqlite3_value_bytes(value);
    return bytes == nullptr ? std::string_view("") : std::string_view(bytes, static_cast<size_t>(size));
}

bool isNull(sqlite3_value *value)
{
    return sqlite3_value_type(value) == SQLITE_NULL;
}

void giveBytes(sqlite3_context *context, const QByteArray &bytes)
{
    sqlite3_result_blob64(context, bytes.constData(), static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT);
}

bool holds(std::string_view text, std::string_view part)
{
    return part.empty() || memmem(text.data(), text.size(), part.data(), part.size()) != nullptr;
}

void foldCaseAndDiacritic(sqlite3_context *context, int /*count*/, sqlite3_value **values)
{
    if (isNull(values[0])) {
        sqlite3_result_null(context);
        return;
    }
    const auto text = bytesOf(values[0]);
    giveBytes(context, foldedUtf8(fromUtf8Lossless(text.data(), static_cast<qsizetype>(text.size()))));
}

void foldWith(sqlite3_context *context, int /*count*/, sqlite3_value **values)
{
    if (isNull(values[0])) {
        sqlite3_result_null(context);
        return;
    }
    const auto text = bytesOf(values[0]);
    const auto option = static_cast<FoldOption>(sqlite3_value_int(values[1]) & 3);
    giveBytes(context,
              toUtf8Lossless(foldedString(fromUtf8Lossless(text.data(), static_cast<qsizetype>(text.size())), option)));
}

void containsFolded(sqlite3_context *context, int /*count*/, sqlite3_value **values)
{
    if (isNull(values[0]) || isNull(values[1])) {
        sqlite3_result_int(context, 0);
        return;
    }
    const auto text = bytesOf(values[0]);
    const QByteArray folded = foldedUtf8(fromUtf8Lossless(text.data(), static_cast<qsizetype>(text.size())));
    const bool isFound =
        holds(std::string_view(folded.constData(), static_cast<size_t>(folded.size())), bytesOf(values[1]));
    sqlite3_result_int(context, isFound ? 1 : 0);
}

template <bool (*test)(std::string_view, std::string_view)>
void compareStrings(sqlite3_context *context, int /*count*/, sqlite3_value **values)
{
    const bool isTrue = !isNull(values[0]) && !isNull(values[1]) && test(bytesOf(values[0]), bytesOf(values[1]));
    sqlite3_result_int(context, isTrue ? 1 : 0);
}

bool beginsWith(std::string_view text, std::string_view part)
{
    return text.substr(0, part.size()) == part;
}

bool endsWith(std::string_view text, std::string_view part)
{
    return text.size() >= part.size() && text.substr(text.size() - part.size()) == part;
}

int compareNaturally(void * /*data*/, int leftSize, const void *left, int rightSize, const void *right)
{
    return localizedStandardCompare(fromUtf8Lossless(static_cast<const char *>(left), leftSize),
                                    fromUtf8Lossless(static_cast<const char *>(right), rightSize));
}

QByteArray packedKey(char kind, const QByteArray &bytes)
{
    return kind + bytes;
}

void isInList(sqlite3_context *context, int /*count*/, sqlite3_value **values)
{
    using Keys = QSet<QByteArray>;
    auto *keys = static_cast<Keys *>(sqlite3_get_auxdata(context, 1));
    std::unique_ptr<Keys> unpacked;
    if (keys == nullptr) {
        unpacked = std::make_unique<Keys>();
        keys = unpacked.get();
        const auto list = bytesOf(values[1]);
        for (size_t i = 0; i + 5 <= list.size();) {
            quint32 size = 0;
            std::memcpy(&size, list.data() + i + 1, sizeof(size));
            if (i + 5 + size > list.size()) {
                break;
            }
            keys->insert(packedKey(list[i], QByteArray(list.data() + i + 5, static_cast<qsizetype>(size))));
            i += 5 + size;
        }
    }
    QByteArray key;
    if (sqlite3_value_type(values[0]) == SQLITE_INTEGER) {
        key = packedKey('i', QByteArray::number(static_cast<qint64>(sqlite3_value_int64(values[0]))));
    } else if (!isNull(values[0])) {
        const auto text = bytesOf(values[0]);
        key = packedKey('s', QByteArray(text.data(), static_cast<qsizetype>(text.size())));
    }
    sqlite3_result_int(context, !key.isNull() && keys->contains(key) ? 1 : 0);
    if (unpacked) {
        // Kept for the next row; SQLite may free it at once, so nothing is asked of it after this.
        sqlite3_set_auxdata(context, 1, unpacked.release(), [](void *data) { delete static_cast<Keys *>(data); });
    }
}

} // namespace

QByteArray packedList(const QList<Value> &values)
{
    QByteArray packed;
    for (const Value &value : values) {
        QByteArray bytes;
        char kind = 's';
        if (const auto *number = std::get_if<qint64>(&value)) {
            kind = 'i';
            bytes = QByteArray::number(*number);
        } else if (const auto *text = std::get_if<QString>(&value)) {
            bytes = toUtf8Lossless(*text);
        } else {
            continue;
        }
        const auto size = static_cast<quint32>(bytes.size());
        packed.append(kind);
        packed.append(reinterpret_cast<const char *>(&size), sizeof(size));
        packed.append(bytes);
    }
    return packed;
}

int registerSQLFunctions(sqlite3 *database)
{
    struct Function
    {
        const char *name;
        int count;
        void (*run)(sqlite3_context *, int, sqlite3_value **);
    };
    constexpr Function kFunctions[] = {
        {kSQLFold, 1, foldCaseAndDiacritic},
        {kSQLFoldWith, 2, foldWith},
        {kSQLContainsFolded, 2, containsFolded},
        {kSQLContains, 2, compareStrings<holds>},
        {kSQLBeginsWith, 2, compareStrings<beginsWith>},
        {kSQLEndsWith, 2, compareStrings<endsWith>},
        {kSQLIn, 2, isInList},
    };
    for (const Function &function : kFunctions) {
        if (const int result = sqlite3_create_function_v2(database, function.name, function.count, kFlags, nullptr,
                                                          function.run, nullptr, nullptr, nullptr);
            result != SQLITE_OK) {
            return result;
        }
    }
    return sqlite3_create_collation_v2(database, kSQLLocalizedStandard, SQLITE_UTF8, nullptr, compareNaturally,
                                       nullptr);
}

} // namespace quib
