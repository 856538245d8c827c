#include "SQLNames.h"

namespace quib {

namespace {

QByteArray quoted(const QString &name)
{
    QByteArray text = name.toUtf8();
    text.replace('"', "\"\"");
    return '"' + text + '"';
}

const NSRelationshipDescription *owningSide(const NSRelationshipDescription *relationship)
{
    return relationship->ownsJoinTable ? relationship : relationship->inverse;
}

} // namespace

QByteArray SQLNames::table(const NSEntityDescription *entity)
{
    return quoted(entity->rootEntity()->name());
}

bool SQLNames::hasEntityColumn(const NSEntityDescription *entity)
{
    return entity->rootEntity()->withSubentities().size() > 1;
}

QByteArray SQLNames::column(const QString &property)
{
    return quoted(property);
}

QByteArray SQLNames::foldedColumn(const QString &attribute)
{
    return quoted(attribute + QLatin1StringView("_cd"));
}

QByteArray SQLNames::lazyTable(const NSEntityDescription *entity, const QString &attribute)
{
    return quoted(QString(entity->rootEntity()->name() % u'_' % attribute));
}

QByteArray SQLNames::joinTable(const NSRelationshipDescription *relationship)
{
    const auto *owner = owningSide(relationship);
    return quoted(QString(owner->entity->rootEntity()->name() % u'_' % owner->name));
}

QByteArray SQLNames::joinOwnColumn(const NSRelationshipDescription *relationship)
{
    return relationship->ownsJoinTable ? "source" : "target";
}

QByteArray SQLNames::joinOtherColumn(const NSRelationshipDescription *relationship)
{
    return relationship->ownsJoinTable ? "target" : "source";
}

} // namespace quib
