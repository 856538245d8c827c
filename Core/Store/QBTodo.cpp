#include "QBTodo.h"

#include <Foundation/Identifiers.h>

quib::Ref<QBTodo> QBTodo::insertInManagedObjectContext(NSManagedObjectContext &moc)
{
    auto todo = _QBTodo::insertInManagedObjectContext(moc);
    const NSDate now = NSDate::now();
    todo->setUniqueIdentifier(quib::globallyUniqueString());
    todo->setCreationDate(now);
    todo->setModificationDate(now);
    return todo;
}
