#pragma once

#include <Search/Lists/ListSteps.h>
#include <Store/NSManagedObjectContext.h>

#include <QList>

#include <vector>

namespace quib::tests {

/// The rule that a live list follows, spelled out: copy the whole list, take out, append, sort all of it, and look
/// every index up in plain arrays. What the real lists do with searches, this does with copies.
class CopyAndSortModel
{
public:
    using Objects = std::vector<NSManagedObject *>;

    CopyAndSortModel(Objects objects, NSFetchRequest request, const NSEntityDescription *entity)
        : m_request(std::move(request))
        , m_entity(entity)
        , m_objects(std::move(objects))
    {
    }

    /// The reports about one notification, empty when it concerns no object of the list.
    QList<ListStep> take(const NSManagedObjectContext::Changes &changes);
    [[nodiscard]] const Objects &objects() const { return m_objects; }

private:
    void sort(Objects *objects) const;
    [[nodiscard]] QList<ListStep> steps(const Objects &before, const Objects &deleted, const Objects &inserted,
                                        const Objects &updated) const;

    NSFetchRequest m_request;
    const NSEntityDescription *m_entity;
    Objects m_objects;
};

} // namespace quib::tests
