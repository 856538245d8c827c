#pragma once

#include <QString>
#include <QStringView>

/// As much of a web page as its title needs: tags, comments and texts that hold no tags are told apart as browsers do,
/// in one pass over any text whatever. No tree is made, nothing is fetched, no entity is defined by the page. A value;
/// any thread.
class HTMLDocument
{
public:
    /// The longest title that is read; the rest is left out. Units: UTF-16 code units of the page's source.
    static constexpr qsizetype kLongestTitle = 4096;

    [[nodiscard]] static HTMLDocument documentWithString(QStringView string);

    [[nodiscard]] bool hasTitle() const { return !m_title.isNull(); }
    /// The text of the first "title" element, character references resolved; null where there is none.
    [[nodiscard]] const QString &title() const { return m_title; }

private:
    QString m_title;
};
