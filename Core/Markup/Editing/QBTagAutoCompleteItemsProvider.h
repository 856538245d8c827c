#pragma once

#include "QBEditorAutoCompleteItemsProvider.h"

#include <Store/QBNoteTag.h>

#include <memory>

class NSManagedObjectContext;

/// Offers the tags in use: those with what was typed in their title, and before anything was typed the popular ones.
class QBTagAutoCompleteItemsProvider : public QBEditorAutoCompleteItemsProvider
{
public:
    /// Not owned. Without it nothing is found.
    explicit QBTagAutoCompleteItemsProvider(std::weak_ptr<NSManagedObjectContext> managedObjectContext)
        : m_managedObjectContext(std::move(managedObjectContext))
    {
    }

    void updateCompletionForPartiaString(const QString &partialString, const QString &fullText) override;
    void updateCompletionForPartiaTagString(const QString &partialTagString, const QString &noteText,
                                            const QList<quib::Ref<QBNoteTag>> &excludeTags);
    [[nodiscard]] SortDescriptor completionSortDescriptorForPartiaTagString(const QString &partialTagString) const
    {
        return completionSortDescriptorForPartialString(partialTagString);
    }

private:
    std::weak_ptr<NSManagedObjectContext> m_managedObjectContext;
};
