#pragma once

#include "NSPredicate.h"
#include "NSSortDescriptor.h"

#include <QList>
#include <QString>
#include <QStringList>

/// What to fetch: entity, condition, order, limit. A value.
struct NSFetchRequest
{
    QString entityName;
    NSPredicate::Ref predicate = {};
    QList<NSSortDescriptor> sortDescriptors = {};
    /// 0: no limit.
    qint64 fetchLimit = 0;
    /// Hints: only these attributes are read at once (others when asked for); empty reads all but lazy ones.
    QStringList propertiesToFetch = {};
    QStringList relationshipKeyPathsForPrefetching = {};
    /// Rows of entities below entityName too.
    bool includesSubentities = true;
    /// False: identities only, attributes when asked for.
    bool includesPropertyValues = true;
};
