#pragma once

#include "QBEditorAutoCompleteItemsProvider.h"

#include <Foundation/NotificationCenter.h>
#include <Store/Ref.h>

#include <QList>

#include <functional>
#include <memory>
#include <optional>

class NSManagedObjectContext;
class QBNote;

/// Offers the notes that a link can lead to: those with what was typed in their title, and before anything was typed
/// the ones that were changed last.
class QBNoteAutoCompletionItemsProvider : public QBEditorAutoCompleteItemsProvider
{
public:
    /// Gives the notes of QBNote::findNotesForPartialtitle, sooner; nullopt where the store has to be asked.
    using NoteFinder =
        std::function<std::optional<QList<quib::Ref<QBNote>>>(const QString &partialTitle, qint64 limitTo)>;

    /// Not owned. Without it nothing is found.
    explicit QBNoteAutoCompletionItemsProvider(std::weak_ptr<NSManagedObjectContext> managedObjectContext,
                                               NoteFinder noteFinder = {});

    void updateCompletionForPartiaString(const QString &partialString, const QString &fullText) override;

private:
    std::weak_ptr<NSManagedObjectContext> m_managedObjectContext;
    NoteFinder m_noteFinder;
    /// What no title holds, until a note changes: what is typed behind it need not be looked for.
    QString m_missing;
    quib::ObservationToken m_contextObserver;
};
