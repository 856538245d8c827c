#pragma once

#include "QBEditorAutoCompleteItemsProvider.h"

#include <QStringList>

/// The name of a language, which is both shown and put into the text.
class QBLanguageCompletionItem final : public QBEditorAutoCompleteItem
{
public:
    explicit QBLanguageCompletionItem(QString languageName)
        : m_languageName(std::move(languageName))
    {
    }
    [[nodiscard]] QString autoCompleteItemTitle() const override { return m_languageName; }
    [[nodiscard]] QString autoCompleteItemTextRepresentation() const override { return m_languageName; }

private:
    QString m_languageName;
};

/// Offers the languages that code can be coloured in, by any part of their names.
class QBLanguageAutoCompletionItemsProvider : public QBEditorAutoCompleteItemsProvider
{
public:
    [[nodiscard]] static const QStringList &languageNames();

    void updateCompletionForPartiaString(const QString &partialString, const QString &fullText) override;
};
