#include "QBEditorAutoCompleteItemsProvider.h"

#include <Text/UserLocale.h>

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <utility>

QBEditorAutoCompleteItemsProvider::~QBEditorAutoCompleteItemsProvider() = default;

QBEditorAutoCompleteItemsProvider::SortDescriptor
QBEditorAutoCompleteItemsProvider::completionSortDescriptorForPartialString(const QString &partialString) const
{
    QCollator collator(QLocale(QString::fromLatin1(quib::userLocale())));
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return [partialString, collator](const QBEditorAutoCompleteItem::Ref &a, const QBEditorAutoCompleteItem::Ref &b) {
        const QString titleOfA = a->autoCompleteItemTitle();
        const QString titleOfB = b->autoCompleteItemTitle();
        // A place that is not there is the last one.
        const auto placeInA = static_cast<size_t>(titleOfA.indexOf(partialString, 0, Qt::CaseInsensitive));
        const auto placeInB = static_cast<size_t>(titleOfB.indexOf(partialString, 0, Qt::CaseInsensitive));
        if (placeInA != placeInB) {
            return placeInA < placeInB;
        }
        return collator.compare(titleOfA, titleOfB) < 0;
    };
}

void QBEditorAutoCompleteItemsProvider::setItemsForCompletion(Items items, const QString &partialString)
{
    std::ranges::stable_sort(items, completionSortDescriptorForPartialString(partialString));
    setOrderedItemsForCompletion(std::move(items));
}

void QBEditorAutoCompleteItemsProvider::setOrderedItemsForCompletion(Items items)
{
    if (std::cmp_greater(items.size(), kMaxNumberOfCompletions)) {
        items.resize(static_cast<qsizetype>(kMaxNumberOfCompletions));
    }
    m_itemsForCompletion = std::move(items);
}
