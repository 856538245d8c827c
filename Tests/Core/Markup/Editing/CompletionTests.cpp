// What is offered while a tag, a link to a note or a language is typed, and what the choice does to the text.

#include "EditedNote.h"

#include <Core/Store/StoreFixture.h>

#include <Markup/Editing/QBEditorAutoCompleteCoreController.h>
#include <Markup/Editing/QBLanguageAutoCompletionItemsProvider.h>
#include <Markup/Editing/QBNoteAutoCompletionItemsProvider.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

using Type = QBAutoCompleteType;

class Item final : public QBEditorAutoCompleteItem
{
public:
    explicit Item(QString text)
        : m_text(std::move(text))
    {
    }
    [[nodiscard]] QString autoCompleteItemTitle() const override { return m_text; }
    [[nodiscard]] QString autoCompleteItemTextRepresentation() const override { return m_text; }

private:
    QString m_text;
};

/// An editor whose completion knows no store.
struct Completing
{
    explicit Completing(QStringView marked, int syntax = 0)
        : note(syntax, marked)
        , completion(note.textStorage(), {})
    {
    }
    /// What is proposed while typing: the kind and the partial text, as "1:wo"; "-" for nothing.
    [[nodiscard]] QString proposal()
    {
        if (!completion.canAutoCompleteForSelectionRange(note.selectedRange())) {
            return u"-"_s;
        }
        return QString(QString::number(static_cast<int>(completion.autocompleteType())) % u':' %
                       completion.partialCompletionString());
    }
    /// Chooses a text; the styled result with the caret.
    [[nodiscard]] QString choose(const QString &text)
    {
        note.run([&] { completion.insertCompletionForItem(Item(text), note); });
        note.controller().correctTagSelectionAfterInsertionInTextView(note);
        return note.marked();
    }

    EditedNote note;
    QBEditorAutoCompleteCoreController completion;
};

QStringList titles(const QBEditorAutoCompleteItemsProvider::Items &items)
{
    QStringList titles;
    for (const auto &item : items) {
        titles.append(item->autoCompleteItemTitle());
    }
    return titles;
}

} // namespace

TEST(CompletionProposalTest, ComesWhileAMarkerIsInReach)
{
    const QString hundred = QString(100, u'x');
    const struct
    {
        QString text;
        QString proposal;
    } cases[] = {
        {u"#wo|"_s, u"1:wo"_s},
        {u"a #wo/rk|"_s, u"1:wo/rk"_s},
        {u"#a b|"_s, u"1:a b"_s},
        {u"#a #b|"_s, u"1:b"_s},
        // The marker that closes a tag begins none.
        {u"#a b#|"_s, u"-"_s},
        {u"x #a b#|\nnext"_s, u"-"_s},
        {u"x #a b#| y"_s, u"-"_s},
        {u"#a b# |"_s, u"-"_s},
        {u"#a b#c|"_s, u"-"_s},
        {u"#a#|"_s, u"-"_s},
        {u"#a b#\n|"_s, u"-"_s},
        {u"#a b|#"_s, u"1:a b"_s},
        {u"#a |b#"_s, u"1:a "_s},
        {u"#a b# #c|"_s, u"1:c"_s},
        {u"#a b##c d|#"_s, u"1:c d"_s},
        {u"* #wo|"_s, u"1:wo"_s},
        {u"#|"_s, u"-"_s},
        {u"|#wo"_s, u"-"_s},
        {u"| #wo"_s, u"-"_s},
        {u"#wo\n|"_s, u"-"_s},
        {u"#wo\nx|"_s, u"-"_s},
        {QString(u'#' % hundred.first(98) % u'|'), QString(u"1:"_s % hundred.first(98))},
        {QString(u'#' % hundred % u'|'), u"-"_s},
        {u"`#wo|`"_s, u"-"_s},
        {u"```\n#wo|\n```"_s, u"-"_s},
        {u"# Title #wo|"_s, u"-"_s},
        {u"https://example.com/#wo|"_s, u"-"_s},
        {u"\\[\\[no|"_s, u"2:no"_s},
        {u"a \\[\\[a note|"_s, u"2:a note"_s},
        {u"\\[\\[|"_s, u"-"_s},
        {u"\\[no|"_s, u"-"_s},
        {u"`\\[\\[no|`"_s, u"-"_s},
        {u"\\[\\[closed\\]\\] and|"_s, u"-"_s},
        {QString(u"\\[\\[" % hundred.first(98) % u'|'), QString(u"2:"_s % hundred.first(98))},
        {QString(u"\\[\\[" % hundred.first(99) % u'|'), u"-"_s},
        // The marker nearest to the caret counts.
        {u"#tag \\[\\[no|"_s, u"2:no"_s},
        {u"\\[\\[no #ta|"_s, u"1:ta"_s},
        {u"```py|"_s, u"3:py"_s},
        {u"```py|\ncode\n```"_s, u"3:py"_s},
        {u"```p|y\ncode\n```"_s, u"3:p"_s},
        {u"```\na\n```\n```py|"_s, u"3:py"_s},
        {u"```|"_s, u"-"_s},
        {u"``|`py"_s, u"-"_s},
        {u"```py x|"_s, u"-"_s},
        {u"```\ncode\n```py|"_s, u"-"_s},
        {u"a ```py|"_s, u"-"_s},
        {u"|"_s, u"-"_s},
        {u"[#wo]"_s, u"-"_s},
    };
    for (const auto &[text, proposal] : cases) {
        EXPECT_EQ(Completing(text).proposal(), proposal) << text.toStdString();
    }
}

TEST(CompletionProposalTest, TheMarkerAloneIsEnoughOnRequest)
{
    Completing tag(u"a #|");
    EXPECT_TRUE(tag.completion.canAutocompleteTagForSelectionRange(tag.note.selectedRange()));
    EXPECT_EQ(tag.completion.autocompleteType(), Type::Tag);
    EXPECT_EQ(tag.completion.partialCompletionString(), u""_s);
    EXPECT_EQ(tag.completion.fullCompletionRange(), (NSRange{2, 1}));
    EXPECT_FALSE(tag.completion.canAutocompleteNoteForSelectionRange(tag.note.selectedRange()));
    EXPECT_EQ(tag.completion.autocompleteType(), Type::None);
    Completing note(u"a \\[\\[|");
    EXPECT_TRUE(note.completion.canAutocompleteNoteForSelectionRange(note.note.selectedRange()));
    EXPECT_EQ(note.completion.fullCompletionRange(), (NSRange{2, 2}));
}

TEST(CompletionProposalTest, AClosedTagIsNoneOnRequestEither)
{
    for (const QStringView text : {QStringView(u"a #b c#|"), QStringView(u"a #b c# |"), QStringView(u"#b#|")}) {
        Completing tag(text);
        EXPECT_FALSE(tag.completion.canAutocompleteTagForSelectionRange(tag.note.selectedRange()))
            << text.toString().toStdString();
    }
}

TEST(CompletionProposalTest, TheRangeThatEndsLastIsTaken)
{
    using Controller = QBEditorAutoCompleteCoreController;
    const QBAutoCompleteProposal early{Type::Tag, u"a"_s, {5, 4}};
    const QBAutoCompleteProposal late{Type::Note, u"b"_s, {0, 10}};
    const QBAutoCompleteProposal near{Type::Tag, u"c"_s, {7, 3}};
    EXPECT_FALSE(Controller::prioritizedProposalFromProposals({}));
    EXPECT_EQ(Controller::prioritizedProposalFromProposals({early, late}), late);
    EXPECT_EQ(Controller::prioritizedProposalFromProposals({late, early}), late);
    EXPECT_EQ(Controller::prioritizedProposalFromProposals({late, near}), near);
}

TEST(CompletionProposalTest, LooksBackInTheParagraphOnly)
{
    using Controller = QBEditorAutoCompleteCoreController;
    const auto range = [](qint64 caret, NSRange paragraph, qint64 length) {
        return Controller::backwardSearchRangeForSelectionRange({caret, 0}, paragraph, length);
    };
    EXPECT_EQ(range(50, {0, 60}, 100), (NSRange{0, 50}));
    EXPECT_EQ(range(150, {0, 160}, 100), (NSRange{50, 100}));
    EXPECT_EQ(range(150, {140, 20}, 100), (NSRange{140, 10}));
    EXPECT_EQ(range(140, {140, 20}, 100), (NSRange{140, 0}));
}

TEST(CompletionInsertionTest, TakesThePlaceOfWhatWasTyped)
{
    const struct
    {
        QString before;
        QString choice;
        QString after;
    } cases[] = {
        {u"#wo|"_s, u"#work"_s, u"#work |"_s},
        {u"a #wo| b"_s, u"#work"_s, u"a #work| b"_s},
        {u"a #wo|rk b"_s, u"#work/home"_s, u"a #work/home| b"_s},
        {u"#wo|\nnext"_s, u"#work"_s, u"#work |\nnext"_s},
        {u"#wo|"_s, u"#at work#"_s, u"#at work#|"_s},
        {u"#wo|. So"_s, u"#work"_s, u"#work|. So"_s},
        {u"a\\[\\[no|"_s, u"[[note]]"_s, u"a\\[\\[note\\]\\]|"_s},
        {u"\\[\\[no| b"_s, u"[[note]]"_s, u"\\[\\[note\\]\\]| b"_s},
        {u"```py|\ncode\n```"_s, u"python"_s, u"```python|\ncode\n```"_s},
        {u"```p|y\ncode\n```"_s, u"python"_s, u"```python|\ncode\n```"_s},
    };
    for (const auto &[before, choice, after] : cases) {
        Completing completing(before);
        ASSERT_NE(completing.proposal(), u"-"_s) << before.toStdString();
        EXPECT_EQ(completing.choose(choice), after) << before.toStdString();
        completing.note.undoManager().undo();
        EXPECT_EQ(completing.note.marked(), before) << "undone";
    }
}

TEST(CompletionInsertionTest, NothingIsInsertedOnceTheCompletionEnded)
{
    Completing completing(u"#wo|");
    ASSERT_EQ(completing.proposal(), u"1:wo"_s);
    completing.completion.resetCompletion();
    EXPECT_EQ(completing.completion.completionItemsProvider(), nullptr);
    EXPECT_EQ(completing.choose(u"#work"_s), u"#wo|"_s);
    ASSERT_EQ(completing.proposal(), u"1:wo"_s);
    completing.note.run([&] { completing.note.insertText(u""_s, completing.note.textStorage().fullRange()); });
    EXPECT_EQ(completing.choose(u"#work"_s), u"|"_s) << "the text is another one";
}

TEST(LanguageCompletionTest, OffersNamesByAnyPartOfThem)
{
    QBLanguageAutoCompletionItemsProvider provider;
    const auto offered = [&provider](const QString &partial) {
        provider.updateCompletionForPartiaString(partial, {});
        return titles(provider.itemsForCompletion());
    };
    EXPECT_EQ(offered(u"py"_s), (QStringList{u"py"_s, u"python"_s, u"renpy"_s}));
    EXPECT_EQ(offered(u"PY"_s), offered(u"py"_s));
    EXPECT_EQ(offered(u"p\u00FD"_s), offered(u"py"_s)) << "marks on letters don't count";
    EXPECT_EQ(offered(u"basic"_s), (QStringList{u"basic"_s, u"visual-basic"_s})) << "the earlier place first";
    EXPECT_EQ(offered(u"dfs"_s), QStringList{u"DFS"_s});
    EXPECT_EQ(offered(u"nothing"_s), QStringList());
    EXPECT_EQ(offered(u""_s), QStringList());
    EXPECT_EQ(offered(u"a"_s).size(), 20);
    EXPECT_EQ(offered(u"a"_s).first(), u"abap"_s);
    EXPECT_EQ(provider.maxNumberOfCompletions(), 20U);
}

TEST(LanguageCompletionTest, KnowsTheseNamesInThisOrder)
{
    constexpr QStringView kNames =
        u"actionscript abap apacheconf ada applescript apl arff arduino asm6502 asciidoc autohotkey aspnet "
        "bash autoit batch basic brainfuck bison c bro clj clike coffee clojure cpp coffeescript csharp "
        "crystal css csp dart d diff DFS docker django dotnet dockerfile elisp eiffel elm elixir emacs-lisp "
        "emacs erlang erb flow extend fountain fortran gedcom fsharp git gherkin go glsl groovy graphql "
        "handlebars haml haxe haskell hsts hpkp http html icon ichigojam ini inform7 io insertBefore java j "
        "jinja2 javascript js jolie jsonp json julia jsx kotlin keyman less latex lisp liquid lolcode "
        "livescript makefile lua markup markdown mat markup-templating matlab mathml mel md monkey mizar "
        "n4jsd n4js nginx nasm nix nim objc nsis objectpascal objectivec opencl ocaml parigp oz pascal "
        "parser php perl powershell plsql prolog processing protobuf properties puppet pug py pure q python "
        "r qore reason rb rest renpy roboconf rip rust ruby sass sas scala sc scss scheme shell sh smarty "
        "smalltalk sql soy svg stylus tap swift textile tcl tsx ts twig tt2 vb typescript velocity vbnet "
        "vhdl verilog visual-basic vim wiki wasm xeoracube xeora xojo xml yaml xquery";
    const QStringList names = QBLanguageAutoCompletionItemsProvider::languageNames();
    const QList<QStringView> expected = kNames.split(u' ');
    ASSERT_EQ(names.size(), expected.size());
    for (qsizetype i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(names[i], expected[i]) << i;
    }
}

class StoreCompletion : public StoreFixture
{
protected:
    /// What is offered for a text with a caret.
    [[nodiscard]] QStringList offered(QStringView marked, bool onRequest = false)
    {
        EditedNote note(0, marked);
        QBEditorAutoCompleteCoreController completion(note.textStorage(), stack->managedObjectContext());
        const NSRange caret = note.selectedRange();
        const bool can = onRequest ? completion.canAutocompleteTagForSelectionRange(caret) ||
                                         completion.canAutocompleteNoteForSelectionRange(caret)
                                   : completion.canAutoCompleteForSelectionRange(caret);
        EXPECT_TRUE(can);
        completion.updateCompletionResults();
        representations.clear();
        for (const auto &item : completion.completionItems()) {
            representations.append(item->autoCompleteItemTextRepresentation());
        }
        return titles(completion.completionItems());
    }

    void add(const QString &text) { m_notes.append(makeNote(text)); }

    QStringList representations;

private:
    QList<Ref<QBNote>> m_notes;
};

TEST_F(StoreCompletion, OffersTagsInUseByAnyPartOfThem)
{
    add(u"#work #homework #At Work# #play"_s);
    makeNote(u"#workshop"_s)->trash();
    makeNote(u"#worked"_s)->archive();
    save();
    EXPECT_EQ(offered(u"#work|"), (QStringList{u"work"_s, u"At Work"_s, u"homework"_s}))
        << "the earlier place first; tags of trashed and archived notes are not in use";
    EXPECT_EQ(offered(u"#play|"), QStringList{u"play"_s});
    EXPECT_EQ(representations, QStringList{u"#play"_s});
    EXPECT_EQ(offered(u"#at w|"), QStringList{u"At Work"_s});
    EXPECT_EQ(representations, QStringList{u"#At Work#"_s});
    EXPECT_EQ(offered(u"#gone|"), QStringList());
}

TEST_F(StoreCompletion, LooksAgainForWhatWasMissingOnceANoteIsThere)
{
    QBNoteAutoCompletionItemsProvider provider(stack->managedObjectContext());
    const auto found = [&provider](const QString &partial) {
        provider.updateCompletionForPartiaString(partial, {});
        return titles(provider.itemsForCompletion());
    };
    add(u"# Soup"_s);
    save();
    EXPECT_EQ(found(u"so"_s), QStringList{u"Soup"_s});
    EXPECT_EQ(found(u"sof"_s), QStringList());
    EXPECT_EQ(found(u"sofa"_s), QStringList());
    EXPECT_EQ(found(u"so"_s), QStringList{u"Soup"_s});
    EXPECT_EQ(found(u"sofa"_s), QStringList());
    add(u"# Sofa bed"_s);
    save();
    EXPECT_EQ(found(u"sofa b"_s), QStringList{u"Sofa bed"_s});
}

TEST_F(StoreCompletion, OffersThePopularTagsBeforeAnythingIsTyped)
{
    add(u"#a #b #c"_s);
    add(u"#b #c"_s);
    add(u"#c"_s);
    for (int i = 0; i < 5; ++i) {
        makeNote(u"#trashed"_s)->trash();
    }
    save();
    EXPECT_EQ(offered(u"#|", /*onRequest=*/true), (QStringList{u"c"_s, u"b"_s, u"a"_s}));
    for (int i = 0; i < 30; ++i) {
        add(QString(u"#many"_s % QString::number(i)));
    }
    save();
    EXPECT_EQ(offered(u"#|", /*onRequest=*/true).size(), 20);
    EXPECT_EQ(offered(u"#|", /*onRequest=*/true).first(), u"c"_s);
    EXPECT_EQ(offered(u"#man|").size(), 20);
}

TEST_F(StoreCompletion, OffersTagsThatBeginWithTheTextBeforeAllOthers)
{
    for (int i = 0; i < 30; ++i) {
        add(QString(u"#a"_s % QString::number(i) % u"x"_s));
    }
    add(u"#xylophone"_s);
    save();
    EXPECT_EQ(offered(u"#x|").first(), u"xylophone"_s) << "though thirty others come first by name";
    EXPECT_EQ(offered(u"#x|").size(), 20);
}

TEST_F(StoreCompletion, OffersNotesByAnyPartOfTheirTitle)
{
    add(u"Shopping list"_s);
    clock.advance(1);
    add(u"A list"_s);
    clock.advance(1);
    add(u"list of lists"_s);
    clock.advance(1);
    makeNote(u"Lists, old"_s)->trash();
    makeNote(u"Lists, done"_s)->archive();
    add(u""_s);
    save();
    EXPECT_EQ(offered(u"\\[\\[LIST|"), (QStringList{u"list of lists"_s, u"A list"_s, u"Shopping list"_s}));
    EXPECT_EQ(representations.first(), u"[[list of lists]]"_s);
    EXPECT_EQ(offered(u"\\[\\[|", /*onRequest=*/true),
              (QStringList{u"list of lists"_s, u"A list"_s, u"Shopping list"_s}))
        << "the last changed one first";
    for (int i = 0; i < 30; ++i) {
        add(QString(u"Note "_s % QString::number(i)));
    }
    save();
    EXPECT_EQ(offered(u"\\[\\[note|").size(), 20);
    EXPECT_EQ(offered(u"\\[\\[|", /*onRequest=*/true).size(), 20);
}

TEST_F(StoreCompletion, OffersNotesThatBeginWithTheTextBeforeAllOthers)
{
    add(u"Xylophone"_s);
    for (int i = 0; i < 30; ++i) {
        clock.advance(1);
        add(QString(u"Box "_s % QString::number(i)));
    }
    save();
    EXPECT_EQ(offered(u"\\[\\[x|").first(), u"Xylophone"_s) << "though thirty others were changed later";
    EXPECT_EQ(offered(u"\\[\\[x|").size(), 20);
}

TEST_F(StoreCompletion, FindsNothingOnceTheStoreIsGone)
{
    add(u"#work"_s);
    save();
    EditedNote note(0, u"#wo|");
    QBEditorAutoCompleteCoreController completion(note.textStorage(), stack->managedObjectContext());
    ASSERT_TRUE(completion.canAutoCompleteForSelectionRange(note.selectedRange()));
    completion.updateCompletionResults();
    EXPECT_EQ(completion.completionItems().size(), 1);
    close();
    completion.updateCompletionResults();
    EXPECT_TRUE(completion.completionItems().isEmpty());
}

} // namespace quib::tests
