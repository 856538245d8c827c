#pragma once

#include "SnippetSearch.h"

#include <Graphics/NSFont.h>
#include <Store/NSManagedObjectID.h>
#include <Text/AttributeSet.h>
#include <Text/NSAttributedString.h>

#include <QCache>
#include <QString>

#include <memory>
#include <optional>

class NSManagedObject;
class QBNotesAppThemeManager;
class QBNotesTextThemeManager;

/// Makes the texts of the note list's rows: title, subtitle or the place where a search hit, age and marks. Notes are
/// QBNotes or the built-in QBStaticNotes. What was made of a saved note is kept until the note, the search or the
/// theme changes. Owned by the list; main queue.
class QBNoteTableCellTextRenderer
{
public:
    /// theme gives the colours, textTheme the fonts, so that rows look like what they open. Both are held without
    /// owning them; without one, rows have no colours, or the system's fonts.
    explicit QBNoteTableCellTextRenderer(const QBNotesAppThemeManager *theme = nullptr,
                                         const QBNotesTextThemeManager *textTheme = nullptr);

    [[nodiscard]] const QBNotesTextThemeManager *textTheme() const { return m_textTheme; }
    void setTextTheme(const QBNotesTextThemeManager *textTheme);

    /// The text of a plain row or an image row: the title, and the subtitle on the next line.
    /// Shape:   with a search, the subtitle is the snippet of its first hit, and every hit has a background.
    [[nodiscard]] NSAttributedString noteTableCellAttributedStringForNote(const NSManagedObject &note,
                                                                          const QString &searchText = {});
    /// The text of a row in a conflict group; the header says what the group is.
    [[nodiscard]] NSAttributedString noteConflictedTableCellAttributedStringForNote(const NSManagedObject &note,
                                                                                    const QString &searchText,
                                                                                    bool isHeader);
    /// The age of the note's last change, then its marks as pictures (quib::NoteTableCellIcon).
    [[nodiscard]] NSAttributedString noteTableCellInfoAttributedStringForNote(const NSManagedObject &note) const;

    /// A stretch of the text of at most 200 units, from the word before the first hit on, with "… " in front when the
    /// text's beginning is left out; the beginning itself where there is no hit.
    /// Shape:   null when the hit is of another term than the search's first.
    [[nodiscard]] static QString subtitleFromText(const QString &text, const QString &search,
                                                  const std::shared_ptr<const NSRegularExpression> &searchRegex);

    [[nodiscard]] NSFont titleFont() const;
    [[nodiscard]] NSFont subtitleFont() const;

    void emptyCache() { m_cache.clear(); }

private:
    enum class RowKind : quint8
    {
        Plain,
        Conflict,
        ConflictHeader,
    };
    struct RowContent;
    /// All that a row's text depends on besides the note.
    struct Circumstances
    {
        QString searchText;
        RowKind kind = RowKind::Plain;
        quint64 themeGeneration = 0;
        quint64 textThemeGeneration = 0;
        friend bool operator==(const Circumstances &a, const Circumstances &b) = default;
    };
    struct CachedRow
    {
        qint64 version = 0;
        Circumstances circumstances;
        NSAttributedString text;
    };

    [[nodiscard]] NSAttributedString row(const NSManagedObject &note, const QString &searchText, RowKind kind);
    [[nodiscard]] NSAttributedString makeRow(const NSManagedObject &note, const QString &searchText, RowKind kind);
    [[nodiscard]] static QString snippet(QStringView text, const quib::SnippetSearch &search);
    /// The search of that text, prepared once for all rows.
    [[nodiscard]] const quib::SnippetSearch &preparedSearch(const QString &searchText);
    [[nodiscard]] quib::AttributeSet attributes(const NSFont &font, const QString &colorKey,
                                                bool isOneLine = false) const;
    [[nodiscard]] quib::AttributeValue color(const QString &key) const;

    const QBNotesAppThemeManager *m_theme;
    const QBNotesTextThemeManager *m_textTheme;
    QCache<NSManagedObjectID, CachedRow> m_cache;
    QString m_searchText;
    std::optional<quib::SnippetSearch> m_search;
};
