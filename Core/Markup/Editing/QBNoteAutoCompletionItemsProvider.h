#pragma once

#include "QBEditorAutoCompleteItemsProvider.h"

#include <Foundation/NotificationCenter.h>

#include <memory>

class NSManagedObjectContext;

/// Offers the notes that a link can lead to: those with what was typed in their title, and before anything was typed
/// the ones that were changed last.
class QBNoteAutoCompletionItemsProvider : public QBEditorAutoCompleteItemsProvider
{
public:
    /// Not owned. Without it nothing is found.
    explicit QBNoteAutoCompletionItemsProvider(std::weak_ptr<NSManagedObjectContext> managedObjectContext);

    void updateCompletionForPartiaString(const QString &partialString, const QString &fullText) override;

private:
    std::weak_ptr<NSManagedObjectContext> m_managedObjectContext;
    /// What no title holds, until a note changes: what is typed behind it need not be looked for.
    QString m_missing;
    quib::ObservationToken m_contextObserver;
};
