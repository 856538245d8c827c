#pragma once

#include "QBEditorAutoCompleteItemsProvider.h"

#include <QList>
#include <QString>

#include <memory>

namespace quib {

/// An object of the store as an entry of a list of completions: what it said when the list was made.
class StoreCompletionItem final : public QBEditorAutoCompleteItem
{
public:
    StoreCompletionItem(QString title, QString textRepresentation)
        : m_title(std::move(title))
        , m_textRepresentation(std::move(textRepresentation))
    {
    }
    [[nodiscard]] QString autoCompleteItemTitle() const override { return m_title; }
    [[nodiscard]] QString autoCompleteItemTextRepresentation() const override { return m_textRepresentation; }

private:
    QString m_title;
    QString m_textRepresentation;
};

/// The entries of tags or notes, in their order.
template <typename Object>
[[nodiscard]] QBEditorAutoCompleteItemsProvider::Items completionItems(const QList<Object> &objects)
{
    QBEditorAutoCompleteItemsProvider::Items items;
    items.reserve(objects.size());
    for (const auto &object : objects) {
        items.append(std::make_shared<const StoreCompletionItem>(object->autoCompleteItemTitle(),
                                                                 object->autoCompleteItemTextRepresentation()));
    }
    return items;
}

} // namespace quib
