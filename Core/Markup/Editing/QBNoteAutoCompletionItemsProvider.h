#pragma once

#include "QBEditorAutoCompleteItemsProvider.h"

#include <memory>

class NSManagedObjectContext;

/// Offers the notes that a link can lead to: those with what was typed in their title, and before anything was typed
/// the ones that were changed last.
class QBNoteAutoCompletionItemsProvider : public QBEditorAutoCompleteItemsProvider
{
public:
    /// Not owned. Without it nothing is found.
    explicit QBNoteAutoCompletionItemsProvider(std::weak_ptr<NSManagedObjectContext> managedObjectContext)
        : m_managedObjectContext(std::move(managedObjectContext))
    {
    }

    void updateCompletionForPartiaString(const QString &partialString, const QString &fullText) override;

private:
    std::weak_ptr<NSManagedObjectContext> m_managedObjectContext;
};
