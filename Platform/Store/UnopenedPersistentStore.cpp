#include "UnopenedPersistentStore.h"

#include "NSPersistentStore.h"

using namespace Qt::StringLiterals;

namespace quib {

namespace {

NSError refusal()
{
    return {kNSCocoaErrorDomain, static_cast<qint64>(NSCocoaErrorCode::PersistentStoreOpen),
            u"the store is not open"_s};
}

std::nullopt_t refused(NSError *error)
{
    if (error != nullptr) {
        *error = refusal();
    }
    return std::nullopt;
}

class UnopenedPersistentStore final : public NSPersistentStore
{
public:
    const std::shared_ptr<const NSManagedObjectModel> &model() const override { return m_model; }
    QString identifier() const override { return {}; }
    std::optional<QList<StoredRow>> fetch(const NSFetchRequest &, NSError *error) override { return refused(error); }
    std::optional<QList<NSManagedObjectID>> fetchIDs(const NSFetchRequest &, NSError *error) override
    {
        return refused(error);
    }
    std::optional<QList<RowVersion>> rowVersions(const QString &, NSError *error) override { return refused(error); }
    std::optional<qint64> count(const NSFetchRequest &, NSError *error) override { return refused(error); }
    std::optional<QList<QList<Value>>> fetchDictionaries(const NSFetchRequest &, const QStringList &,
                                                         NSError *error) override
    {
        return refused(error);
    }
    std::optional<StoredRow> row(const NSManagedObjectID &, NSError *error) override { return refused(error); }
    std::optional<LazyValue> lazyValue(const NSManagedObjectID &, int, NSError *error) override
    {
        return refused(error);
    }
    std::optional<QList<NSManagedObjectID>> targets(const NSManagedObjectID &, const NSRelationshipDescription *,
                                                    NSError *error) override
    {
        return refused(error);
    }
    std::optional<QHash<NSManagedObjectID, QList<NSManagedObjectID>>>
    targetsForObjects(const QList<NSManagedObjectID> &, const NSRelationshipDescription *, NSError *error) override
    {
        return refused(error);
    }
    SaveResult save(const SaveRequest &) override
    {
        SaveResult result;
        result.error = refusal();
        return result;
    }
    std::optional<QHash<NSManagedObjectID, NSManagedObjectID>> reserveIdentities(const QList<NSManagedObjectID> &,
                                                                                 NSError *error) override
    {
        return refused(error);
    }
    bool enumerateLazyValues(const NSEntityDescription *, int, const LazyVisitor &, NSError *error) override
    {
        refused(error);
        return false;
    }
    bool enumerateRows(const NSEntityDescription *, const QStringList &, const RowVisitor &, NSError *error) override
    {
        refused(error);
        return false;
    }
    std::optional<qint64> changeCounter(NSError *error) override { return refused(error); }
    std::optional<QStringList> integrityProblems(NSError *error) override { return refused(error); }

private:
    std::shared_ptr<const NSManagedObjectModel> m_model;
};

} // namespace

NSPersistentStore *unopenedPersistentStore()
{
    static UnopenedPersistentStore shared;
    return &shared;
}

} // namespace quib
