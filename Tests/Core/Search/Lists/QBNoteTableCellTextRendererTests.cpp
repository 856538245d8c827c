#include <Core/Store/StoreFixture.h>
#include <Graphics/GraphicsAttributes.h>
#include <Search/Lists/NoteTableCellIcon.h>
#include <Search/Lists/QBNoteTableCellTextRenderer.h>
#include <Search/QBNoteSearchManager.h>
#include <Store/QBNoteGenericFile.h>
#include <Store/QBStaticNote.h>
#include <Support/TestSeed.h>
#include <Themes/QBNotesAppThemeManager.h>
#include <Themes/QBNotesTextThemeManager.h>

using namespace Qt::StringLiterals;
using quib::Ref;

namespace {

class RowText : public quib::tests::StoreFixture
{
protected:
    RowText()
    {
        m_theme.loadDefaultTheme();
        m_textTheme.loadDefaultTheme();
    }
    /// The text with the search's hits between brackets.
    [[nodiscard]] static QString marked(const NSAttributedString &row)
    {
        QString text;
        row.enumerateAttribute(NSBackgroundColorAttributeName, row.fullRange(),
                               NSAttributedStringEnumerationOptions::Forward,
                               [&](const quib::AttributeValue &value, NSRange range, bool *) {
                                   const QString piece = row.stringInRange(range).toString();
                                   text += value ? QString(u'[' % piece % u']') : piece;
                               });
        return text;
    }
    [[nodiscard]] QString row(const QString &text, const QString &search = {})
    {
        return marked(m_renderer.noteTableCellAttributedStringForNote(*makeNote(text), search));
    }
    [[nodiscard]] NSColor colorAt(const NSAttributedString &row, qint64 index) const
    {
        const auto value = row.attribute(NSForegroundColorAttributeName, index);
        const NSColor *color = quib::colorOfAttribute(value);
        return color != nullptr ? *color : NSColor();
    }
    [[nodiscard]] NSColor themeColor(const QString &key) const { return m_theme.colorForKey(key).value(); }
    /// Searches as the note list's rows do, in a text of one line.
    [[nodiscard]] static QString snippet(const QString &text, const QString &search)
    {
        return QBNoteTableCellTextRenderer::subtitleFromText(
            text, search, QBNoteSearchManager::defaultSearchRegexForSearchString(search));
    }

    QBNotesAppThemeManager m_theme;
    QBNotesTextThemeManager m_textTheme;
    QBNoteTableCellTextRenderer m_renderer{&m_theme, &m_textTheme};
};

} // namespace

TEST_F(RowText, IsTitleAndSubtitle)
{
    struct Case
    {
        const char *label;
        QString text;
        QString search;
        QString row;
    };
    const Case cases[] = {
        {"title and subtitle", u"# Plan\nCall *Anna*\nthen rest"_s, {}, u"Plan\nCall Anna then rest"_s},
        {"title alone", u"# Plan"_s, {}, u"Plan"_s},
        {"no title", u"\nbody"_s, {}, u"\nbody"_s},
        {"nothing at all", u""_s, {}, u"A wonderful new note\nKeep calm and write something"_s},
        {"a new note", u"# "_s, {}, u"A wonderful new note\nKeep calm and write something"_s},
        {"a blank note in a search", u"# "_s, u"#"_s, u"A wonderful new note"_s},
        {"a hit in the body", u"# Plan\nCall Anna soon"_s, u"anna"_s, u"Plan\nCall [Anna] soon"_s},
        {"a hit in title and body", u"# Anna\nCall Anna"_s, u"ANNA"_s, u"[Anna]\nCall [Anna]"_s},
        {"a hit in the title only", u"# Plan\nCall Anna"_s, u"plan"_s, u"[Plan]\nCall Anna"_s},
        {"line ends as blanks", u"# T\none\ntwo\nthree"_s, u"two"_s, u"T\none [two] three"_s},
        {"a phrase across a line end", u"# T\none\ntwo"_s, u"\"one two\""_s, u"T\n[one two]"_s},
        {"markup as it stands", u"# T\nsome *bold* text"_s, u"bold"_s, u"T\nsome *[bold]* text"_s},
        {"a special word", u"# T\n@todo\n- x"_s, u"@todo"_s, u"T\n[@todo] - x"_s},
        {"negated words are no hits", u"# T\none two"_s, u"one -two"_s, u"T\n[one] two"_s},
        {"the second term comes first", u"# T\none two"_s, u"two one"_s, u"T"_s},
        {"the second term only", u"# T two\none"_s, u"two one"_s, u"T [two]"_s},
        {"two hits", u"# T\none two one"_s, u"one two"_s, u"T\n[one] [two] [one]"_s},
        {"a broken expression", u"# T\nsome text"_s, u"\"(some\""_s, u"T\nsome text"_s},
        {"a blank search", u"# T\nsome text"_s, u"  "_s, u"T\nsome text"_s},
        {"an expression", u"# T\na\nb 123 c"_s, u"\"[0-9]+\""_s, u"T\n… b [123] c"_s},
        {"accents count in what is marked", u"# T\ncaffè caffe"_s, u"caffe"_s, u"T\ncaffè [caffe]"_s},
        {"no subtitle, no snippet", u"# Plan"_s, u"plan"_s, u"[Plan]"_s},
    };
    for (const Case &one : cases) {
        SCOPED_TRACE(one.label);
        EXPECT_EQ(row(one.text, one.search), one.row);
    }
}

TEST_F(RowText, SnippetsAreTwoHundredUnitsFromTheWordBeforeTheHit)
{
    const QString filler = u"lorem ipsum "_s.repeated(40); // 480 units
    struct Case
    {
        const char *label;
        QString text;
        QString search;
        QString snippet;
    };
    const Case cases[] = {
        {"no text", u""_s, u"x"_s, u""_s},
        {"no hit", filler, u"nowhere"_s, filler.left(200)},
        {"no hit in a short text", u"short"_s, u"nowhere"_s, u"short"_s},
        {"at the very start", u"anna calls"_s, u"anna"_s, u"anna calls"_s},
        {"behind a mark at the start", u"(anna) calls"_s, u"anna"_s, u"(anna) calls"_s},
        {"behind the first word", u"call anna"_s, u"anna"_s, u"call anna"_s},
        {"far on", QString(filler % u"before anna "_s % filler), u"anna"_s,
         QString(u"… "_s % QString(u"before anna "_s % filler).left(200))},
        {"near the end", QString(filler % u"before anna"_s), u"anna"_s, u"… before anna"_s},
        {"inside of a word", QString(filler % u"prehanna"_s), u"anna"_s, u"… prehanna"_s},
        {"behind a full stop", QString(filler % u"end. Anna"_s), u"anna"_s, u"… end. Anna"_s},
        {"no word before", QString(u"... "_s.repeated(100) % u"anna"_s), u"anna"_s, u"... "_s.repeated(50)},
        {"another term's hit", QString(filler % u"anna"_s), u"anna lorem"_s, QString()},
        {"a group that took no part", u"b a"_s, u"a b"_s, QString()},
    };
    for (const Case &one : cases) {
        SCOPED_TRACE(one.label);
        const QString found = snippet(one.text, one.search);
        EXPECT_EQ(found, one.snippet);
        EXPECT_EQ(found.isNull(), one.snippet.isNull());
    }
}

TEST_F(RowText, FindsTheHitsThatTheExpressionFinds)
{
    const quib::tests::TestSeed seed;
    auto generator = seed.generator();
    const auto random = [&generator](size_t bound) { return generator() % bound; };
    const QStringList pieces{u"ab"_s, u"b"_s, u"Ab"_s, u" "_s, u"\n"_s, u" \n"_s, u"c"_s, u"ss"_s, u"ß"_s, u"c.c"_s};
    const QStringList searches{u"ab"_s,        u"b ab"_s,    u"\"ab b\""_s,         u"\"b\" ss"_s, u"\"a.\" c"_s,
                               u"ß c.c"_s,     u"-ab c"_s,   u"\"b b\" \"c ab\""_s, u"c.c"_s,      u"nowhere b"_s,
                               u"\"(c|b)\""_s, u"\"[\" b"_s, u"@c \"ss b\""_s};
    int hits = 0;
    for (int round = 0; round < 5'000 && !HasFailure(); ++round) {
        QString text;
        for (size_t n = random(30); n > 0; --n) {
            text += pieces[static_cast<qsizetype>(random(static_cast<size_t>(pieces.size())))];
        }
        const QString search = searches[static_cast<qsizetype>(random(static_cast<size_t>(searches.size())))];
        const auto regex = QBNoteSearchManager::defaultSearchRegexForSearchString(search);
        const auto lineFeeds = random(2) == 0 ? quib::LineFeeds::Stand : quib::LineFeeds::AreBlanks;
        QString flat = text;
        if (lineFeeds == quib::LineFeeds::AreBlanks) {
            flat.replace(u'\n', u' ');
        }
        const auto match = regex ? regex->firstMatchInString(flat, 0, {0, flat.size()}) : std::nullopt;
        const auto hit = quib::SnippetSearch(search, regex, lineFeeds).firstHitInString(text);
        ASSERT_EQ(hit.isFound, match.has_value()) << search.toStdString() << " in " << text.toStdString();
        if (match) {
            ++hits;
            EXPECT_EQ(hit.firstTerm, match->rangeAtIndex(1)) << search.toStdString() << " in " << text.toStdString();
        }
    }
    EXPECT_GT(hits, 2'000);
}

TEST_F(RowText, WearsTheThemesColours)
{
    const auto note = makeNote(u"# Plan\nCall Anna"_s);
    const NSAttributedString row = m_renderer.noteTableCellAttributedStringForNote(*note, u"anna"_s);
    EXPECT_EQ(colorAt(row, 0), themeColor(u"Note Table Cell Title Color"_s));
    EXPECT_EQ(colorAt(row, 6), themeColor(u"Note Table Cell Subtitle Color"_s));
    EXPECT_EQ(colorAt(row, 10), themeColor(u"Note Table Cell Search Text Color"_s));
    const auto background = row.attribute(NSBackgroundColorAttributeName, 10);
    ASSERT_NE(quib::colorOfAttribute(background), nullptr);
    EXPECT_EQ(*quib::colorOfAttribute(background), themeColor(u"Note Table Cell Search Background Color"_s));
    const NSAttributedString blank = m_renderer.noteTableCellAttributedStringForNote(*makeNote(u""_s));
    EXPECT_EQ(colorAt(blank, 0), themeColor(u"Note Table Cell Title Empty Color"_s));
    const auto titleFont = row.attribute(NSFontAttributeName, 0);
    ASSERT_NE(quib::fontOfAttribute(titleFont), nullptr);
    EXPECT_EQ(quib::fontOfAttribute(titleFont)->familyName(), m_textTheme.titleFontOfSize(13).familyName());
}

TEST_F(RowText, WorksWithoutAnyTheme)
{
    QBNoteTableCellTextRenderer renderer;
    const auto note = makeNote(u"# Plan\nCall Anna"_s);
    EXPECT_EQ(renderer.noteTableCellAttributedStringForNote(*note, u"anna"_s).string().toString(),
              u"Plan\nCall Anna"_s);
}

TEST_F(RowText, OfAConflictGroupSaysSoInItsHead)
{
    const auto note = makeNote(u"# Plan\nCall Anna"_s);
    const auto text = [&](const QString &search, bool isHeader) {
        return marked(m_renderer.noteConflictedTableCellAttributedStringForNote(*note, search, isHeader));
    };
    EXPECT_EQ(text({}, /*isHeader=*/true), u"Conflicted\nPlan   \nCall Anna"_s);
    EXPECT_EQ(text({}, /*isHeader=*/false), u"Plan   \nCall Anna"_s);
    EXPECT_EQ(text(u"anna"_s, /*isHeader=*/false), u"Plan   \nCall [Anna]"_s);
}

TEST_F(RowText, ANoteOfAttachmentsAloneIsNotBlank)
{
    const auto note = makeNote(u""_s);
    const auto file = QBNoteGenericFile::insertInManagedObjectContext(moc());
    note->addFilesObject(file.get());
    EXPECT_EQ(marked(m_renderer.noteTableCellAttributedStringForNote(*note)), u""_s);
}

TEST_F(RowText, InfoIsTheAgeAndTheMarks)
{
    using Picture = quib::NoteTableCellIcon::Picture;
    const auto info = [&](const QBNote &note) { return m_renderer.noteTableCellInfoAttributedStringForNote(note); };
    const auto pictures = [](const NSAttributedString &text) {
        std::vector<Picture> found;
        for (qint64 i = 0; i < text.length(); ++i) {
            if (const auto value = text.attribute(NSAttachmentAttributeName, i);
                const auto *icon = value.as<NSTextAttachment>()) {
                EXPECT_EQ(text.characterAtIndex(i), 0xFFFC);
                found.push_back(dynamic_cast<const quib::NoteTableCellIcon *>(icon)->picture());
            }
        }
        return found;
    };
    const auto note = makeNote(u"# Plan"_s);
    EXPECT_EQ(info(*note).string().toString(), u"now \n"_s);
    clock.advance(3 * 3'600);
    EXPECT_EQ(info(*note).string().toString(), u"3h \n"_s);
    note->pin();
    EXPECT_EQ(info(*note).string().toString(), u"3h \n\uFFFC"_s);
    EXPECT_EQ(pictures(info(*note)), std::vector{Picture::Pin});
    const auto other = makeNote(u"# Other"_s);
    note->markAsConflictedFromNote(*other);
    EXPECT_EQ(pictures(info(*note)), (std::vector{Picture::Pin, Picture::Conflict}));
    EXPECT_EQ(pictures(info(*other)), std::vector{Picture::Conflict});
    note->setModificationDate(std::nullopt);
    EXPECT_EQ(info(*note).string().toString(), u"^_^ \n\uFFFC\uFFFC"_s);
}

TEST_F(RowText, IsMadeOfSampleNotesToo)
{
    auto &memory = *stack->inMemoryManagedObjectContext();
    const auto note =
        QBStaticNote::staticNoteWithItem({u"id"_s, u"# Sample\nof all"_s, u"Sample"_s, u"of all"_s}, memory);
    EXPECT_EQ(marked(m_renderer.noteTableCellAttributedStringForNote(*note)), u"Sample\nof all"_s);
    EXPECT_EQ(marked(m_renderer.noteTableCellAttributedStringForNote(*note, u"all"_s)), u"Sample\nof [all]"_s);
    EXPECT_EQ(m_renderer.noteTableCellInfoAttributedStringForNote(*note).string().toString(), u"^_^ \n"_s);
}

TEST_F(RowText, FollowsTheNoteTheSearchAndTheTheme)
{
    const auto note = makeNote(u"# Plan\nCall Anna"_s);
    const auto now = [&](const QString &search) {
        return marked(m_renderer.noteTableCellAttributedStringForNote(*note, search));
    };
    save();
    EXPECT_EQ(now({}), u"Plan\nCall Anna"_s);
    EXPECT_EQ(now(u"call"_s), u"Plan\n[Call] Anna"_s);
    EXPECT_EQ(now(u"anna"_s), u"Plan\nCall [Anna]"_s);
    // Neither title nor subtitle tell of what changes behind them.
    const QString filler = u"\nlorem ipsum"_s.repeated(40);
    note->updateNoteWithText(QString(u"# Plan\nCall Anna"_s % filler), 0);
    save();
    EXPECT_TRUE(now(u"zoe"_s).startsWith(u"Plan\nCall Anna lorem"_s));
    note->updateNoteWithText(QString(u"# Plan\nCall Anna"_s % filler % u" Zoe"_s), 0, /*updateModificationDate=*/false);
    EXPECT_EQ(now(u"zoe"_s), u"Plan\n… ipsum [Zoe]"_s);
    save();
    EXPECT_EQ(now(u"zoe"_s), u"Plan\n… ipsum [Zoe]"_s);
    // Going back without a save.
    note->updateNoteWithText(u"# Other"_s, 0);
    EXPECT_EQ(now({}), u"Other"_s);
    moc().refreshObject(note.get(), /*mergeChanges=*/false);
    EXPECT_EQ(now(u"zoe"_s), u"Plan\n… ipsum [Zoe]"_s);
    const NSColor before = colorAt(m_renderer.noteTableCellAttributedStringForNote(*note), 0);
    const auto theme = std::make_shared<QBTheme>();
    m_theme.loadTheme(theme);
    EXPECT_NE(colorAt(m_renderer.noteTableCellAttributedStringForNote(*note), 0), before);
}
