// Links, tags, colours, arrows and addresses: what stands in the place of text or beside it, and where it leads.

#include "StyledInline.h"

#include <Graphics/GraphicsAttributes.h>
#include <Markup/Stylers/QBNoteAddressesStyler.h>
#include <Markup/Stylers/QBNoteImageMarkdownStyler.h>
#include <Markup/Stylers/QBNoteLinkedNoteStyler.h>
#include <Markup/Stylers/QBNoteNormalTextStyler.h>
#include <Markup/Stylers/QBNoteTagStyler.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <gtest/gtest.h>

#include <QSet>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

struct Case
{
    QString text;
    QString shown;
};

/// What a text looks like when it is new and when it is styled again; it always stays what it was.
void checkShown(const QList<Case> &cases)
{
    for (const Case &expected : cases) {
        SCOPED_TRACE(expected.text.toStdString());
        for (const auto theme : {StyledInline::Theme::Plain, StyledInline::Theme::None}) {
            StyledInline styled(/*syntax=*/0, theme);
            styled.load(expected.text);
            EXPECT_EQ(styled.shown(), expected.shown);
            EXPECT_EQ(styled.expanded(), expected.text);
            const QString fresh = styled.marks();
            styled.restyle();
            EXPECT_EQ(styled.marks(), fresh);
            EXPECT_EQ(styled.expanded(), expected.text);
        }
    }
}

QString linkAt(const StyledInline &styled, const QString &place)
{
    return styled.valueAt(NSLinkAttributeName, place).urlValue().toString(QUrl::FullyEncoded);
}

} // namespace

TEST(InlineAttachments, StandWhereTheirConstructIsWhole)
{
    checkShown({
        {u"a -> b <- c"_s, u"a → b ← c"_s},
        {u"(->) ->."_s, u"(→) →."_s},
        {u"a->b -> "_s, u"a->b → "_s},
        {u"->"_s, u"→"_s},
        {u"#123456"_s, u"■#123456"_s},
        {u"a (#12abEF), b"_s, u"a (■#12abEF), b"_s},
        {u"#12345g #12345 #1234567"_s, u"¦#12345g¦ #12345 #1234567"_s},
        {u"#aabbcc."_s, u"■#aabbcc."_s},
        {u"#tag and #a b# end"_s, u"¦#tag¦ and ¦#a b#¦ end"_s},
        {u"word#a b#c"_s, u"word¦#a b#¦c"_s},
        {u"(#tag), #t/u."_s, u"(¦#tag¦), ¦#t/u¦."_s},
        {u"# x ## #123 word#tag"_s, u"@ x ## #123 word#tag"_s},
        {u"x #a b##c d#"_s, u"x ¦#a b#¦¦#c d#¦"_s},
        {u"[t](http://a.bc)"_s, u"[t](§)"_s},
        {u"a[t](u)b [x](y)"_s, u"a[t](§)b [x](§)"_s},
        {u"[a[b](u)"_s, u"[a[b](§)"_s},
        {u"[a]b](u) [](u) [a]( [t](u\n)"_s, u"[a]b](u) [](u) [a]( [t](u\n)"_s},
        {u"[t](quib://x-callback-url/open-note?id=1)"_s, u"[t](¶)"_s},
        {u"x[t](quib://a)y [t](quibble)"_s, u"x[t](¶)y [t](¶)"_s},
        {u"[a [b] c](quib://a)"_s, u"[a [b] c](¶)"_s},
        {u"![alt](pic.png \"x y\")"_s, u"![alt](§)"_s},
        {u"[t](http://a:b)"_s, u"[t](http://a:b)"_s},
        {u"\uFFFC [t](\uFFFC) #a\uFFFC"_s, u"\uFFFC [t](\uFFFC) ¦#a\uFFFC¦"_s},
    });
}

TEST(InlineAttachments, TakePartInNoLaterPassThatUnmakesThem)
{
    StyledInline styled;
    styled.load(u"a #123456 b"_s);
    styled.edit(u"6 b"_s, u"7 b"_s);
    EXPECT_EQ(styled.shown(), u"a ■#123457 b"_s);
    EXPECT_EQ(styled.valueAt(QBNoteColorStylerAttributeName, u"■"_s),
              attributeValue(NSColor::colorFromHexString(u"#123457")));
    styled.edit(u"457"_s, u"45"_s);
    EXPECT_EQ(styled.shown(), u"a #12345 b"_s);
    styled.edit(u"45 "_s, u"456 "_s);
    EXPECT_EQ(styled.shown(), u"a ■#123456 b"_s);

    styled.load(u"a #tag b"_s);
    styled.edit(u"tag"_s, u"t g"_s);
    EXPECT_EQ(styled.shown(), u"a ¦#t¦ g b"_s);
    styled.edit(u"g b"_s, u"g# b"_s);
    EXPECT_EQ(styled.shown(), u"a ¦#t g#¦ b"_s);
    styled.edit(u"#t"_s, u"t"_s);
    EXPECT_EQ(styled.shown(), u"a t g# b"_s);

    styled.load(u"x [t](u) y"_s);
    styled.edit(u"]("_s, u"] ("_s);
    EXPECT_EQ(styled.shown(), u"x [t] (u) y"_s);
    EXPECT_FALSE(styled.valueAt(NSLinkAttributeName, u"t"_s));
    styled.edit(u"] ("_s, u"]("_s);
    EXPECT_EQ(styled.shown(), u"x [t](§) y"_s);
}

TEST(InlineAttachments, ATitledLinkMarksItsParts)
{
    for (const QString &link : {u"http://a.bc"_s, u"quib://a"_s}) {
        const QChar sign = link.startsWith(u'q') ? u'¶' : u'§';
        StyledInline styled;
        styled.load(QString(u"x [a b](" % link % u") y"));
        const auto with = [sign](const QString &text) { return QString(text).replace(u'$', sign); };
        EXPECT_EQ(styled.marked(NSLinkAttributeName), with(u"x [{a b}]($) y"_s));
        EXPECT_EQ(styled.marked(QBNoteSkipStylingAttributeName), with(u"x [{a b}]($) y"_s));
        EXPECT_EQ(styled.marked(QBNoteSkipAttachmentReplacementAttributeName), with(u"x [{a b}]($) y"_s));
        EXPECT_EQ(styled.marked(QBTitledUrlStylerAttributeName), with(u"x {[a b]($)} y"_s));
        EXPECT_EQ(styled.marked(QBNoteSkipLineBreakByWordAttributeName), with(u"x [a b]{($)} y"_s));
        EXPECT_EQ(styled.coloured(styled.theme().linkTextColor()), with(u"x [{a b}]($) y"_s));
        EXPECT_EQ(styled.coloured(styled.theme().styleMarkerTextColor()), with(u"x {[}a b{](}${)} y"_s));
        EXPECT_EQ(styled.marked(NSKernAttributeName, styled.theme().paragraphFontXHeight() / 5),
                  with(u"x {[}a {b}]($) y"_s));
    }
    // A guarded title has no markup inside; a code span is not guarded from the link around it.
    StyledInline styled;
    styled.load(u"[a *b* #c](u) *d*"_s);
    EXPECT_EQ(styled.shown(), u"[a *b* #c](§) *d*"_s);
    EXPECT_EQ(styled.marked(QBNoteBoldTextStylerAttributeName), u"[a *b* #c](§) *{d}*"_s);
    styled.load(u"[a `b` c](u)"_s);
    EXPECT_EQ(styled.marked(QBTitledUrlStylerAttributeName), u"{[a `b` c](§)}"_s);
}

TEST(InlineAttachments, ALinkLeadsWhereItsTextSays)
{
    for (const auto &[text, url] : {
             std::pair(u"http://a.bc/d?e=f#g"_s, u"http://a.bc/d?e=f#g"_s),
             std::pair(u"a.bc/d"_s, u"http://a.bc/d"_s),
             std::pair(u"a.bc/d e"_s, u"http://a.bc/d%20e"_s),
             std::pair(u"http://a.bc/d e"_s, u"http://a.bc/d%20e"_s),
             std::pair(u"http://a.bc/d%20e f"_s, u"http://a.bc/d%2520e%20f"_s),
             std::pair(u"http://a.bc/\u00E9"_s, u"http://a.bc/%C3%A9"_s),
             std::pair(u"http://a_b.cd/e"_s, u"http://a_b.cd/e"_s),
             std::pair(u"http://a.bc/{d}^"_s, u"http://a.bc/%7Bd%7D%5E"_s),
             std::pair(u"http://a.bc/%zz"_s, u"http://a.bc/%25zz"_s),
             std::pair(u"localhost:80/d"_s, u"localhost:80/d"_s),
             std::pair(u"mailto:x@a.bc"_s, u"mailto:x@a.bc"_s),
             std::pair(u"quib://x-callback-url/open-note?title=a%26b"_s,
                       u"quib://x-callback-url/open-note?title=a%26b"_s),
             std::pair(u"/d"_s, u"http:///d"_s),
             std::pair(u"http://\u043F\u0440\u0438\u043C\u0435\u0440.\u0440\u0444/\u044F a"_s,
                       u"http://xn--e1afmkfd.xn--p1ai/%D1%8F%20a"_s),
             std::pair(u"m\u00FCnchen.de/stra\u00DFe"_s, u"http://xn--mnchen-3ya.de/stra%C3%9Fe"_s),
             // A URL may name hosts that none is: there is nowhere to go then.
             std::pair(u"a b"_s, u""_s),
             std::pair(u"http://a.bc \"d\""_s, u""_s),
             std::pair(u"http://a%2Fb/c"_s, u""_s),
             std::pair(u"http://a:99999/"_s, u""_s),
         }) {
        StyledInline styled;
        styled.load(QString(u"[t](" % text % u')'));
        EXPECT_EQ(linkAt(styled, u"t"_s), url) << text.toStdString();
        EXPECT_TRUE(styled.shown() == u"[t](§)" || styled.shown() == u"[t](¶)") << text.toStdString();
        EXPECT_EQ(styled.expanded(), QString(u"[t](" % text % u')'));
    }
    // No URL can hold a lone surrogate: the markup stays as it is.
    StyledInline styled;
    const QString broken = u"[t](a"_s + QChar(0xD800) + u") [["_s + QChar(0xDC00) + u"]] #x"_s + QChar(0xD801);
    styled.load(broken);
    EXPECT_EQ(styled.marked(NSAttachmentAttributeName),
              u"[t](a"_s + QChar(0xD800) + u") [["_s + QChar(0xDC00) + u"]] {¦}#x"_s + QChar(0xD801) + u"{¦}"_s);
    EXPECT_EQ(styled.expanded(), broken);
    EXPECT_EQ(styled.marked(NSLinkAttributeName), styled.shown());
    EXPECT_EQ(styled.marked(QBNoteWikiTextStylerAttributeName), styled.shown());
}

TEST(InlineAttachments, ATitleIsFoundFromItsAttachment)
{
    const auto titleOf = [](const QString &text) {
        const QString withPlaceholder = QString(text).replace(u'@', NSTextAttachment::placeholderString());
        const NSRange range = QBNoteTitledUrlStyler::titleRangeForAttachmentAtIndex(
            text.indexOf(u'@'), NSAttributedString(withPlaceholder));
        return range.isFound() ? text.sliced(range.location, range.length) : u"none"_s;
    };
    EXPECT_EQ(titleOf(u"[a b](@)"_s), u"a b"_s);
    EXPECT_EQ(titleOf(u"[x [a](@"_s), u"a"_s);
    for (const QString &text : {u"@"_s, u"(@)"_s, u"](@)"_s, u"[](@)"_s, u"[a\nb](@)"_s, u"[a] (@)"_s, u"[a](x@)"_s}) {
        EXPECT_EQ(titleOf(text), u"none"_s) << text.toStdString();
    }
    EXPECT_EQ(QBNoteTitledUrlStyler::titleRangeForAttachmentAtIndex(9, NSAttributedString(u"[a]("_s)), kNotFoundRange);
    EXPECT_EQ(QBNoteTitledUrlStyler::titledURLForUrlString(u"http://a.b"_s, u"a [b] c"_s, u"text"_s, {0, 4}),
              u"[a b c](http://a.b)"_s);
}

TEST(InlineAttachments, ATagMarksItselfWithItsSpacers)
{
    StyledInline styled;
    styled.load(u"x #a b# #t"_s);
    EXPECT_EQ(styled.marked(QBNoteTagStylerAttributeName), u"x {¦#a b#¦} {¦#t¦}"_s);
    EXPECT_EQ(styled.marked(QBNoteTagStylerMarkerAttributeName), u"x ¦{#}a b{#}¦ ¦{#}t¦"_s);
    EXPECT_EQ(styled.marked(QBNoteTagSpacerAttributeName), u"x {¦}#a b#{¦} {¦}#t{¦}"_s);
    for (const NSAttributeName &guard : {QBNoteSkipHyphenationAttributeName, QBNoteSkipLineBreakByWordAttributeName,
                                         QBNoteSkipSpellCheckerAttributeName, QBNoteSkipStylingAttributeName,
                                         QBNoteFullSelectionRangeAttributeName, NSLinkAttributeName}) {
        EXPECT_EQ(styled.marked(guard), u"x {¦#a b#¦} {¦#t¦}"_s) << guard.string().toStdString();
    }
    EXPECT_EQ(styled.valueAt(QBNoteTagStylerAttributeName, u"#a"_s), AttributeValue(u"a b#_4"_s));
    EXPECT_EQ(styled.valueAt(QBNoteFullSelectionRangeAttributeName, u"#t"_s), AttributeValue(u"t_12"_s));
    EXPECT_EQ(linkAt(styled, u"#a"_s), u"quib://x-callback-url/open-tag?name=a%20b"_s);
    EXPECT_EQ(styled.coloured(styled.theme().hashMarkerTextColor()), u"x ¦{#}a b{#}¦ ¦{#}t¦"_s);
    EXPECT_EQ(styled.coloured(styled.theme().hashTextColor()), u"x {¦}#{a b}#{¦} {¦}#{t¦}"_s);

    styled.load(u"#a&b=c/d+e\u00E9"_s);
    EXPECT_EQ(linkAt(styled, u"#a"_s), u"quib://x-callback-url/open-tag?name=a%26b%3Dc/d+e%C3%A9"_s);
    // Nothing is styled inside, and two like tags are two.
    styled.load(u"#a*b*c #a*b*c"_s);
    EXPECT_EQ(styled.marked(QBNoteBoldTextStylerAttributeName), styled.shown());
    EXPECT_EQ(styled.marked(QBNoteFullSelectionRangeAttributeName), u"{¦#a*b*c¦} {¦#a*b*c¦}"_s);
}

TEST(InlineAttachments, SpacersAreToldToHaveGoneAndComeAndStandAsIfPlacedAnew)
{
    struct Edit
    {
        QString text;
        NSRange replaced; ///< in the styled text
        QString by;
    };
    const QList<Edit> edits{
        {u"#a #b c# d"_s, {14, 0}, u"x"_s},
        {u"#a #b c# d"_s, {0, 0}, u"x "_s},
        {u"#a #b c# d"_s, {0, 0}, u"x"_s},
        {u"#a #b c# d"_s, {10, 1}, {}},
        {u"#a #b c# d"_s, {2, 1}, {}},
        {u"#a##b# c"_s, {0, 0}, u"("_s},
        {u"#a#b# c"_s, {6, 0}, u"#"_s},
        {u"#a #b"_s, {0, 10}, u"none"_s},
        {u"#a"_s, {4, 0}, u" #b \uFFFC#c"_s},
        {u"#a/b #c"_s, {4, 0}, u" "_s},
        {u"#a"_s, {3, 1}, u"\uFFFC"_s},
        // Two spacers that close tags come to stand side by side, and two that open some.
        {u"#a #b c# d"_s, {4, 6}, {}},
        {u"#a #b #c"_s, {3, 4}, {}},
        {u"#a #b c"_s, {1, 4}, {}},
        {u"#a #b #c d#"_s, {0, 11}, u"x"_s},
        // One that opened a tag stands where another tag is closed.
        {u"#b c# d"_s, {0, 0}, u"#a "_s},
    };
    for (const Edit &edit : edits) {
        SCOPED_TRACE(QString(edit.text % u" <- " % edit.by).toStdString());
        QBNoteTagStyler styler;
        styler.setThemeManager(inlineTheme());
        NSMutableAttributedString text(edit.text);
        NSRange range = text.fullRange();
        styler.addTextAttachmentsInAttributedString(text, range, {});
        styler.applyStyleIn(text, range, nullptr);
        text.replaceCharactersInRange(edit.replaced, NSAttributedString(edit.by));

        QString told = text.string().toString();
        range = text.fullRange();
        bool isAdding = false;
        styler.replaceTextAttachmentsInAttributedString(
            text, range, [&](NSRange replaced, const auto &replacement, bool * /*stop*/) {
                // All go, from the last to the first, before any comes.
                EXPECT_FALSE(isAdding && replaced.length > 0);
                isAdding = isAdding || replaced.length == 0;
                told.replace(replaced.location, replaced.length, replacement.string);
            });
        EXPECT_EQ(told, text.string());
        EXPECT_EQ(range, text.fullRange());
        styler.styleTextInAttributedString(text, range, nullptr);

        QString plain = told;
        for (qint64 place = text.length() - 1; place >= 0; --place) {
            if (text.attribute(NSAttachmentAttributeName, place)) {
                plain.remove(place, 1);
            }
        }
        NSMutableAttributedString fresh(plain);
        NSRange whole = fresh.fullRange();
        styler.addTextAttachmentsInAttributedString(fresh, whole, {});
        styler.applyStyleIn(fresh, whole, nullptr);
        EXPECT_EQ(fresh.string(), text.string());
        for (const NSAttributeName &name :
             {NSAttachmentAttributeName, QBNoteTagStylerAttributeName, QBNoteTagSpacerAttributeName}) {
            for (qint64 place = 0; place < fresh.length(); ++place) {
                EXPECT_EQ(fresh.attribute(name, place), text.attribute(name, place)) << place;
            }
        }
    }
}

TEST(InlineAttachments, SpacersOfOneRoleAreOneAttachment)
{
    StyledInline styled;
    styled.load(u"#a #b c##d/e# and (#f)"_s);
    QSet<const AttributeObject *> opening;
    QSet<const AttributeObject *> closing;
    bool isOpening = true;
    for (qint64 place = 0; place < styled.text().length(); ++place) {
        if (const auto spacer = styled.text().attribute(NSAttachmentAttributeName, place)) {
            (isOpening ? opening : closing).insert(spacer.objectValue().get());
            isOpening = !isOpening;
        }
    }
    EXPECT_EQ(opening.size(), 1);
    EXPECT_EQ(closing.size(), 1);
    EXPECT_FALSE(opening.intersects(closing));
    EXPECT_TRUE(isOpening);
}

TEST(InlineAttachments, AMarkOverATagsEndTakesItsSpacer)
{
    const NSAttributeName &mark = QBNoteBoundaryMarkerAttributeName;
    StyledInline styled;
    styled.text() = NSMutableAttributedString(u"x #ab y"_s);
    styled.text().addAttribute(mark, 1, {2, 3});
    styled.restyle();
    EXPECT_EQ(styled.marked(mark), u"x {¦#ab¦} y"_s);
    styled.text() = NSMutableAttributedString(u"x #ab y"_s);
    styled.text().addAttribute(mark, 1, {4, 2});
    styled.restyle();
    EXPECT_EQ(styled.marked(mark), u"x ¦#a{b¦ }y"_s);
}

TEST(InlineAttachments, AColourMarksItsCode)
{
    StyledInline styled;
    styled.load(u"x #12abEF y"_s);
    EXPECT_EQ(styled.marked(QBNoteColorStylerAttributeName), u"x {■#12abEF} y"_s);
    EXPECT_EQ(styled.marked(QBNoteSkipLineBreakByWordAttributeName), u"x {■#12abEF} y"_s);
    EXPECT_EQ(styled.coloured(styled.theme().styleMarkerTextColor()), u"x ■{#}12abEF y"_s);
    EXPECT_EQ(styled.marked(NSFontAttributeName, styled.theme().monospaceFontAttribute()), u"x ■{#12abEF} y"_s);
    const auto *color = colorOfAttribute(styled.text().attribute(QBNoteColorStylerAttributeName, 3));
    ASSERT_NE(color, nullptr);
    EXPECT_EQ(color->hexString(), u"12ABEF"_s);
}

TEST(InlineAttachments, AWikiLinkOpensItsNoteOrMakesIt)
{
    StyledInline styled;
    styled.load(u"x [[a-b *c*]] y"_s);
    EXPECT_EQ(styled.marked(QBNoteWikiTextStylerAttributeName), u"x {[[a-b *c*]]} y"_s);
    EXPECT_EQ(styled.marked(QBNoteWikiTextStylerMarkerAttributeName), u"x {[[}a-b *c*{]]} y"_s);
    EXPECT_EQ(styled.marked(NSLinkAttributeName), u"x [[{a-b *c*}]] y"_s);
    EXPECT_EQ(styled.marked(QBNoteSkipStylingAttributeName), u"x [[{a-b *c*}]] y"_s);
    EXPECT_EQ(styled.marked(QBNoteSkipAttachmentReplacementAttributeName), u"x [[{a-b *c*}]] y"_s);
    EXPECT_EQ(styled.marked(QBNoteBoldTextStylerAttributeName), u"x [[a-b *{c}*]] y"_s);
    EXPECT_EQ(styled.coloured(styled.theme().styleMarkerTextColor()), u"x {[[}a-b *c*{]]} y"_s);
    EXPECT_EQ(styled.valueAt(NSLinkAttributeName, u"a-b"_s).urlValue(),
              QUrl(u"quib://x-callback-url/open-note?title=a%2Db%20%2Ac%2A&x-error=quib%3A%2F%2Fx%2Dcallback%2Durl"
                   "%2Fcreate%3Ftitle%3Da%252Db%2520%252Ac%252A"_s));
    styled.load(u"`[[a]]` [[ b]] [[#t]] [[c]]"_s);
    EXPECT_EQ(styled.marked(NSLinkAttributeName), u"`[[a]]` [[ b]] [[{¦#t¦}]] [[{c}]]"_s);
    EXPECT_EQ(styled.marked(QBNoteWikiTextStylerAttributeName), u"`[[a]]` [[ b]] [[¦#t¦]] {[[c]]}"_s);
}

TEST(InlineAttachments, ASpacerThatAnEditLeftAloneBeginsNoTag)
{
    for (const auto &[cut, left] : {std::pair(u"\uFFFC#a"_s, u" b#¦ z\nwords {¦#t¦} {¦#u v#¦}"_s),
                                    std::pair(u"#a b#\uFFFC"_s, u"¦ z\nwords {¦#t¦} {¦#u v#¦}"_s),
                                    std::pair(u"\uFFFC#a b"_s, u"#¦ z\nwords {¦#t¦} {¦#u v#¦}"_s)}) {
        StyledInline styled;
        styled.load(u"#a b# z\nwords #t #u v#"_s);
        NSMutableAttributedString &text = styled.text();
        text.deleteCharactersInRange({text.string().indexOf(cut), cut.size()});
        text.removeAttribute(QBNoteTagStylerAttributeName, text.fullRange());
        QBNoteTagStyler styler;
        NSRange range = text.fullRange();
        styler.applyStyleIn(text, range, nullptr);
        EXPECT_EQ(styled.marked(QBNoteTagStylerAttributeName), left);
    }
}

TEST(InlineAttachments, LinksToNotesAndTagsHaveWhatAttachmentsInTheirNamesStandFor)
{
    for (const auto &[text, shown, value] : {
             std::tuple(u"[[a -> b]]"_s, u"[[a → b]]"_s, u"title=a%20-%3E%20b&"_s),
             std::tuple(u"[[a <- b]]"_s, u"[[a ← b]]"_s, u"title=a%20%3C-%20b&"_s),
             std::tuple(u"[[#123456]]"_s, u"[[■#123456]]"_s, u"title=%23123456&"_s),
             std::tuple(u"#a -> b#"_s, u"¦#a → b#¦"_s, u"name=a%20-%3E%20b"_s),
             std::tuple(u"#a -> b# #a <- b#"_s, u"¦#a → b#¦ ¦#a ← b#¦"_s, u"name=a%20-%3E%20b"_s),
             std::tuple(u"#a <- b# #a -> b#"_s, u"¦#a ← b#¦ ¦#a → b#¦"_s, u"name=a%20%3C-%20b"_s),
         }) {
        StyledInline styled;
        styled.load(text);
        EXPECT_EQ(styled.shown(), shown);
        const QString place = shown.startsWith(u'[') ? shown.sliced(2, 2) : u"a "_s;
        EXPECT_TRUE(linkAt(styled, place).contains(value)) << linkAt(styled, place).toStdString();
        styled.restyle();
        EXPECT_TRUE(linkAt(styled, place).contains(value)) << linkAt(styled, place).toStdString();
    }
    // Neighbours of one look lead to two tags.
    StyledInline styled;
    styled.load(u"#a -> b# #a <- c#"_s);
    EXPECT_TRUE(linkAt(styled, u"a ←"_s).endsWith(u"name=a%20%3C-%20c"));
    // An arrow that comes later changes where the link leads.
    styled.load(u"[[a - b]]"_s);
    styled.edit(u"- "_s, u"-> "_s);
    EXPECT_TRUE(linkAt(styled, u"a →"_s).contains(u"title=a%20-%3E%20b&"));
}

TEST(InlineAttachments, ABareLinkIsMarkedOutsideOfGuardedText)
{
    StyledInline styled;
    styled.load(u"see http://a.bc/d, `http://a.bc` and #http://a.bc"_s);
    EXPECT_EQ(styled.marked(QBNoteURLTextStylerAttributeName),
              u"see {http://a.bc/d}, `http://a.bc` and ¦#http¦://a.bc"_s);
    EXPECT_EQ(linkAt(styled, u"http"_s), u"http://a.bc/d"_s);
    EXPECT_EQ(styled.valueAt(QBNoteURLTextStylerAttributeName, u"http"_s), QUrl(u"http://a.bc/d"_s));
    EXPECT_EQ(styled.coloured(styled.theme().linkTextColor()), styled.marked(QBNoteURLTextStylerAttributeName));
}

TEST(InlineAttachments, AnImageOfMarkdownCanBeReadBack)
{
    struct Image
    {
        QString text;
        QString url;
        QString title;
        QString alt;
    };
    StyledInline styled;
    for (const Image &image : {
             Image{u"![a b](c.png)"_s, u"c.png"_s, u""_s, u"a b"_s},
             Image{u"![](c.png)"_s, u"c.png"_s, u""_s, u""_s},
             Image{u"![a](c.png \"t \"u\"\")"_s, u"c.png"_s, u"t \"u\""_s, u"a"_s},
             Image{u"![]( c.png\n\"t\" )"_s, u"c.png"_s, u"t"_s, u""_s},
             Image{u"![#tag](\"t\")"_s, u""_s, u"t"_s, u"#tag"_s},
             Image{u"![](#123456)![b](c)"_s, u"#123456"_s, u""_s, u""_s},
             Image{u"x ![b](c)![d](e)"_s, u"c"_s, u""_s, u"b"_s},
         }) {
        SCOPED_TRACE(image.text.toStdString());
        styled.load(image.text);
        for (int pass = 0; pass < 2; ++pass) {
            QString url;
            QString title;
            QString alt;
            EXPECT_TRUE(
                QBNoteImageMarkdownStyler::getUrl(&url, &title, &alt, styled.text(), styled.text().fullRange()));
            EXPECT_EQ(url, image.url);
            EXPECT_EQ(title, image.title);
            EXPECT_EQ(alt, image.alt);
            EXPECT_EQ(styled.expanded(), image.text);
            styled.restyle();
        }
    }
    StyledInline plain({std::make_shared<QBNoteImageMarkdownStyler>()});
    plain.load(u"x ![a](b \"c\") `y`"_s);
    EXPECT_EQ(plain.marked(QBMarkdownImageStylerAttributeName), u"x {![a](b \"c\")} `y`"_s);
    EXPECT_EQ(plain.marked(QBMarkdownImageStylerAttributeMarker), u"x {![}a{](}b \"c\"{)} `y`"_s);
    EXPECT_EQ(plain.marked(QBMarkdownImageStylerAttributeAlt), u"x ![{a}](b \"c\") `y`"_s);
    EXPECT_EQ(plain.marked(QBMarkdownImageStylerAttributeUrl), u"x ![a]({b \"c\"}) `y`"_s);
    EXPECT_EQ(plain.marked(QBMarkdownImageStylerAttributeTitle), u"x ![a](b \"{c}\") `y`"_s);
    styled.load(u"`![a](b)` !(a)[b]"_s);
    QString url;
    QString title;
    QString alt;
    EXPECT_FALSE(QBNoteImageMarkdownStyler::getUrl(&url, &title, &alt, styled.text(), styled.text().fullRange()));
}

TEST(InlineAttachments, AnAddressLeadsToAMapWhenThatIsAskedFor)
{
    StyledInline styled({std::make_shared<QBNoteNormalTextStyler>(), std::make_shared<QBNoteAddressesStyler>()});
    const QString text = u"Meet at 1600 Pennsylvania Avenue NW, Washington, DC 20500 today"_s;
    styled.load(text);
    EXPECT_EQ(styled.marked(QBNoteAddressesStylerAttributeName),
              u"Meet at !{1600 Pennsylvania Avenue NW, Washington, DC 20500} today"_s);
    EXPECT_EQ(styled.marked(NSUnderlineStyleAttributeName, 257),
              u"Meet at !{1600 Pennsylvania Avenue NW, Washington, DC 20500} today"_s);
    EXPECT_TRUE(
        linkAt(styled, u"1600"_s).endsWith(u"?q=1600%20Pennsylvania%20Avenue%20NW,%20Washington,%20DC%2020500"));
    EXPECT_EQ(styled.valueAt(NSUnderlineColorAttributeName, u"1600"_s), attributeValue(*styled.theme().mapTextColor()));
    const QString fresh = styled.shown();
    styled.restyle();
    EXPECT_EQ(styled.shown(), fresh);
    EXPECT_EQ(styled.expanded(), text);
}

} // namespace quib::tests
