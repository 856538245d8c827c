#pragma once

#include <QString>

#include <memory>

/// One entry of a list of completions. Immutable; any queue, unless its class says otherwise.
class QBEditorAutoCompleteItem
{
public:
    using Ref = std::shared_ptr<const QBEditorAutoCompleteItem>;

    QBEditorAutoCompleteItem() = default;
    QBEditorAutoCompleteItem(const QBEditorAutoCompleteItem &) = delete;
    QBEditorAutoCompleteItem &operator=(const QBEditorAutoCompleteItem &) = delete;
    virtual ~QBEditorAutoCompleteItem();

    /// What the list shows.
    [[nodiscard]] virtual QString autoCompleteItemTitle() const = 0;
    /// What comes into the text.
    [[nodiscard]] virtual QString autoCompleteItemTextRepresentation() const = 0;
};
