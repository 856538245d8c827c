#include "QBNoteTableCellTextRenderer.h"

#include "NoteTableCellIcon.h"
#include "ShortTimeAgo.h"

#include <Graphics/GraphicsAttributes.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNote.h>
#include <Store/QBNoteFile.h>
#include <Store/QBStaticNote.h>
#include <Text/NSMutableAttributedString.h>
#include <Text/NSParagraphStyle.h>
#include <Text/NSStringHelpers.h>
#include <Text/WordBoundaries.h>
#include <Themes/QBNotesAppThemeManager.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QCoreApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Sizes of a row's fonts, in points; a list is denser than the editor.
constexpr double kTitleSize = 13;
constexpr double kSubtitleSize = 12;
constexpr double kInfoSize = 11;
constexpr qint64 kSnippetLength = 200;
/// More rows than a window shows, and some way of scrolling.
constexpr qsizetype kCachedRows = 500;

[[nodiscard]] QString localised(const char *text)
{
    return QCoreApplication::translate("QBNoteTableCellTextRenderer", text);
}

/// What a snippet is taken from: the text behind its first line, without white space at both ends.
[[nodiscard]] QStringView bodyOfText(QStringView text)
{
    const qsizetype lineEnd = text.indexOf(u'\n');
    if (lineEnd < 0) {
        return {};
    }
    qsizetype start = lineEnd;
    qsizetype limit = text.size();
    while (start < limit && quib::isWhitespaceOrNewline(text[start].unicode())) {
        ++start;
    }
    while (start < limit && quib::isWhitespaceOrNewline(text[limit - 1].unicode())) {
        --limit;
    }
    return text.sliced(start, limit - start);
}

} // namespace

/// What is shown of a note of either class.
struct QBNoteTableCellTextRenderer::RowContent
{
    const QBNote *note;
    const QBStaticNote *staticNote;

    explicit RowContent(const NSManagedObject &object)
        : note(dynamic_cast<const QBNote *>(&object))
        , staticNote(note == nullptr ? dynamic_cast<const QBStaticNote *>(&object) : nullptr)
    {
    }
    [[nodiscard]] QString title() const
    {
        return note != nullptr ? note->title() : staticNote != nullptr ? staticNote->title() : QString();
    }
    [[nodiscard]] QString subtitle() const
    {
        return note != nullptr ? note->subtitle() : staticNote != nullptr ? staticNote->subtitle() : QString();
    }
    [[nodiscard]] QString text() const
    {
        return note != nullptr ? note->text() : staticNote != nullptr ? staticNote->text() : QString();
    }
    [[nodiscard]] bool hasFiles() const { return note != nullptr && !note->files().isEmpty(); }
};

QBNoteTableCellTextRenderer::QBNoteTableCellTextRenderer(const QBNotesAppThemeManager *theme,
                                                         const QBNotesTextThemeManager *textTheme)
    : m_theme(theme)
    , m_textTheme(textTheme)
    , m_cache(kCachedRows)
{
}

void QBNoteTableCellTextRenderer::setTextTheme(const QBNotesTextThemeManager *textTheme)
{
    m_textTheme = textTheme;
    emptyCache();
}

NSAttributedString QBNoteTableCellTextRenderer::noteTableCellAttributedStringForNote(const NSManagedObject &note,
                                                                                     const QString &searchText)
{
    return row(note, searchText, RowKind::Plain);
}

NSAttributedString
QBNoteTableCellTextRenderer::noteConflictedTableCellAttributedStringForNote(const NSManagedObject &note,
                                                                            const QString &searchText, bool isHeader)
{
    return row(note, searchText, isHeader ? RowKind::ConflictHeader : RowKind::Conflict);
}

NSAttributedString QBNoteTableCellTextRenderer::row(const NSManagedObject &note, const QString &searchText,
                                                    RowKind kind)
{
    // A saved note is told from its earlier self by its row's version; one with changes has none yet.
    if (note.managedObjectContext() == nullptr || note.hasChanges()) {
        return makeRow(note, searchText, kind);
    }
    const qint64 version = note.managedObjectContext()->rowVersion(note);
    const Circumstances circumstances{searchText, kind, m_theme != nullptr ? m_theme->cacheGeneration() : 0,
                                      m_textTheme != nullptr ? m_textTheme->cacheGeneration() : 0};
    const CachedRow *const cached = m_cache.object(note.objectID());
    if (cached != nullptr && cached->version == version && cached->circumstances == circumstances) {
        return cached->text;
    }
    const NSAttributedString text = makeRow(note, searchText, kind);
    m_cache.insert(note.objectID(), new CachedRow{version, circumstances, text});
    return text;
}

NSAttributedString QBNoteTableCellTextRenderer::makeRow(const NSManagedObject &note, const QString &searchText,
                                                        RowKind kind)
{
    // 1. The note's own fields.
    const RowContent content(note);
    QString title = content.title();
    QString subtitle = content.subtitle();
    // 2. A note with nothing in it says so.
    const bool isBlank = title.isEmpty() && subtitle.isEmpty() && !content.hasFiles();
    if (isBlank) {
        title = localised(QT_TRANSLATE_NOOP("QBNoteTableCellTextRenderer", "A wonderful new note"));
        subtitle = localised(QT_TRANSLATE_NOOP("QBNoteTableCellTextRenderer", "Keep calm and write something"));
    }
    // 3. The place where the search hit stands for the subtitle.
    if (!searchText.isEmpty() && !subtitle.isEmpty()) {
        const QString text = content.text();
        subtitle = snippet(bodyOfText(text), preparedSearch(searchText));
    }
    // 4. Title and subtitle, each in its own attributes.
    const quib::AttributeSet titleAttributes =
        attributes(titleFont(), isBlank ? u"Note Table Cell Title Empty Color"_s : u"Note Table Cell Title Color"_s,
                   /*isOneLine=*/true);
    NSMutableAttributedString row;
    if (kind == RowKind::ConflictHeader) {
        const QString heading = localised(QT_TRANSLATE_NOOP("QBNoteTableCellTextRenderer", "Conflicted")) % u'\n';
        row.appendAttributedString(
            NSAttributedString(heading, attributes(titleFont().fontWithSize(kInfoSize),
                                                   u"Note Table Cell Pin Icon Color"_s, /*isOneLine=*/true)));
    }
    row.appendAttributedString(
        NSAttributedString(kind == RowKind::Plain ? title : QString(title % u"   "_s), titleAttributes));
    if (!subtitle.isEmpty()) {
        row.appendAttributedString(NSAttributedString(QString(u'\n' % subtitle),
                                                      attributes(subtitleFont(), u"Note Table Cell Subtitle Color"_s)));
    }
    // 5. Every hit stands out.
    if (!searchText.isEmpty()) {
        if (const auto &regex = preparedSearch(searchText).regex()) {
            quib::AttributeSet highlight;
            highlight.insert(NSBackgroundColorAttributeName, color(u"Note Table Cell Search Background Color"_s));
            highlight.insert(NSForegroundColorAttributeName, color(u"Note Table Cell Search Text Color"_s));
            for (const NSTextCheckingResult &match : regex->matchesInString(row.string(), 0, row.fullRange())) {
                row.addAttributes(highlight, match.range());
            }
        }
    }
    return row;
}

NSAttributedString
QBNoteTableCellTextRenderer::noteTableCellInfoAttributedStringForNote(const NSManagedObject &note) const
{
    const RowContent content(note);
    const std::optional<NSDate> date =
        content.note != nullptr ? content.note->modificationDate() : std::optional<NSDate>();
    const QString age = date ? quib::shortTimeAgoSinceNow(*date) : u"^_^"_s;
    const quib::AttributeSet dateAttributes =
        attributes(subtitleFont().fontWithSize(kInfoSize), u"Note Table Cell Subtitle Color"_s);
    NSMutableAttributedString info(QString(age % u" \n"_s), dateAttributes);
    const auto appendIcon = [&](quib::NoteTableCellIcon::Picture picture) {
        quib::AttributeSet iconAttributes = dateAttributes;
        iconAttributes.insert(NSForegroundColorAttributeName, color(u"Note Table Cell Pin Icon Color"_s));
        iconAttributes.insert(NSAttachmentAttributeName, std::make_shared<quib::NoteTableCellIcon>(picture));
        info.appendAttributedString(NSAttributedString(NSTextAttachment::placeholderString(), iconAttributes));
    };
    if (content.note != nullptr && content.note->isPinned()) {
        appendIcon(quib::NoteTableCellIcon::Picture::Pin);
    }
    if (content.note != nullptr && content.note->hasConflictedNotes()) {
        appendIcon(quib::NoteTableCellIcon::Picture::Conflict);
    }
    return info;
}

QString QBNoteTableCellTextRenderer::subtitleFromText(const QString &text, const QString &search,
                                                      const std::shared_ptr<const NSRegularExpression> &searchRegex)
{
    return snippet(text, quib::SnippetSearch(search, searchRegex, quib::LineFeeds::Stand));
}

QString QBNoteTableCellTextRenderer::snippet(QStringView text, const quib::SnippetSearch &search)
{
    if (text.isEmpty()) {
        return u""_s;
    }
    // 1. The place of the hit.
    const quib::SnippetSearch::Hit hit = search.firstHitInString(text);
    if (hit.isFound && !hit.firstTerm.isFound()) {
        return {};
    }
    const qint64 hitStart = hit.isFound ? hit.firstTerm.location : 0;
    // 2. One word before it.
    const std::optional<qint64> word = quib::locationOfLastWord(text.first(hitStart));
    // 3. Without a word the snippet is the text's beginning.
    const qint64 start = word.value_or(0);
    // 4. and 5. As much as a row can show, in one line.
    const qint64 length = std::min<qint64>(kSnippetLength, text.size() - start);
    QString result = start != 0 ? u"… "_s : QString();
    result += text.sliced(start, length);
    return search.lineFeeds() == quib::LineFeeds::AreBlanks ? result.replace(u'\n', u' ') : result;
}

const quib::SnippetSearch &QBNoteTableCellTextRenderer::preparedSearch(const QString &searchText)
{
    if (!m_search || m_searchText != searchText) {
        m_searchText = searchText;
        m_search.emplace(searchText, QBNoteSearchManager::defaultSearchRegexForSearchString(searchText),
                         quib::LineFeeds::AreBlanks);
    }
    return *m_search;
}

quib::AttributeSet QBNoteTableCellTextRenderer::attributes(const NSFont &font, const QString &colorKey,
                                                           bool isOneLine) const
{
    quib::AttributeSet attributes;
    attributes.insert(NSFontAttributeName, quib::attributeValue(font));
    attributes.insert(NSForegroundColorAttributeName, color(colorKey));
    if (isOneLine) {
        NSMutableParagraphStyle style;
        style.lineBreakMode = NSLineBreakMode::ByTruncatingTail;
        attributes.insert(NSParagraphStyleAttributeName, style.copy());
    }
    return attributes;
}

quib::AttributeValue QBNoteTableCellTextRenderer::color(const QString &key) const
{
    return m_theme != nullptr ? m_theme->colorAttributeForKey(key) : quib::AttributeValue();
}

NSFont QBNoteTableCellTextRenderer::titleFont() const
{
    return m_textTheme != nullptr ? m_textTheme->titleFontOfSize(kTitleSize) : NSFont::boldSystemFontOfSize(kTitleSize);
}

NSFont QBNoteTableCellTextRenderer::subtitleFont() const
{
    return m_textTheme != nullptr ? m_textTheme->paragraphFontOfSize(kSubtitleSize)
                                  : NSFont::systemFontOfSize(kSubtitleSize);
}
