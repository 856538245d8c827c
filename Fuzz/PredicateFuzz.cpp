// Conditions from any text: what parses must print to a form that parses to the same form again and holds for the same
// strings, and must compile for a store's table or be refused. The first byte chooses how many arguments there are.

#include <Store/NSManagedObjectModel.h>
#include <Store/NSPredicate.h>
#include <Store/SQLPredicateCompiler.h>
#include <Text/Folding.h>

#include <cstdint>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

void expect(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

const NSEntityDescription *noteEntity()
{
    static const auto model = NSManagedObjectModel::modelWithContentsOfFile(u":/Model.momd/Model 3.mom"_s);
    expect(model != nullptr);
    return model->entityNamed(u"QBNote"_s);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    static const NSEntityDescription *const entity = noteEntity();
    if (size == 0) {
        return 0;
    }
    const QList<NSPredicateArgument> known{predicateArgument(u"title"_s), predicateArgument(QStringList{u"a"_s}),
                                           quib::Value(NSDate::dateWithTimeIntervalSince1970(1.7e9))};
    const QString format =
        quib::fromUtf8Lossless(reinterpret_cast<const char *>(data + 1), static_cast<qsizetype>(size - 1));
    NSError error;
    const auto predicate = NSPredicate::predicateWithFormat(format, known.mid(0, data[0] % 4), &error);
    if (!predicate) {
        expect(error.isSet());
        return 0;
    }
    const QString printed = predicate->predicateFormat();
    const auto again = NSPredicate::predicateWithFormat(printed, {}, &error);
    expect(again != nullptr && again->predicateFormat() == printed);
    for (const QString &string : {QString(), u"a"_s, u"Title"_s}) {
        expect(predicate->evaluateWithString(string) == again->evaluateWithString(string));
    }
    error = {};
    const auto fragment = quib::compilePredicate(*predicate, entity, &error);
    expect(fragment ? fragment->sql.count('?') == fragment->bindings.size() : error.isSet());
    return 0;
}
