#pragma once

#include <Store/_QBTodo.h>

/// A to-do of a note as other devices keep it; here the text alone counts. Confined to its context's queue.
class QBTodo : public _QBTodo
{
public:
    /// A new to-do with an identifier of its own, made and changed now.
    static quib::Ref<QBTodo> insertInManagedObjectContext(NSManagedObjectContext &moc);
};
