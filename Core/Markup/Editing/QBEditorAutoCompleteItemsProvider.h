#pragma once

#include "QBEditorAutoCompleteItem.h"

#include <QList>
#include <QString>

#include <functional>

/// Supplies the completions of one kind. Owned by the completion controller; main queue.
class QBEditorAutoCompleteItemsProvider
{
public:
    using Items = QList<QBEditorAutoCompleteItem::Ref>;
    /// Whether an entry comes before another one, by their titles.
    using SortDescriptor =
        std::function<bool(const QBEditorAutoCompleteItem::Ref &a, const QBEditorAutoCompleteItem::Ref &b)>;

    QBEditorAutoCompleteItemsProvider() = default;
    QBEditorAutoCompleteItemsProvider(const QBEditorAutoCompleteItemsProvider &) = delete;
    QBEditorAutoCompleteItemsProvider &operator=(const QBEditorAutoCompleteItemsProvider &) = delete;
    virtual ~QBEditorAutoCompleteItemsProvider();

    [[nodiscard]] quint64 maxNumberOfCompletions() const { return kMaxNumberOfCompletions; }
    /// What the last update found, in order; never more than the maximum.
    [[nodiscard]] const Items &itemsForCompletion() const { return m_itemsForCompletion; }
    /// Finds the completions of what was typed so far. Spelled so.
    virtual void updateCompletionForPartiaString(const QString &partialString, const QString &fullText) = 0;
    /// Titles that hold the text earlier come first, whatever its case, and those without it last; of two that hold it
    /// in the same place, the alphabet decides.
    [[nodiscard]] virtual SortDescriptor completionSortDescriptorForPartialString(const QString &partialString) const;

protected:
    static constexpr quint64 kMaxNumberOfCompletions = 20;

    /// Puts entries in order and keeps as many as may be shown.
    void setItemsForCompletion(Items items, const QString &partialString);
    /// The same for entries that are in order already.
    void setOrderedItemsForCompletion(Items items);

private:
    Items m_itemsForCompletion;
};
