"""The lints find what they are for, and leave alone what is right."""

import unittest

import comment_tags
import commit_messages
import file_size
import layers
import translations
import words


class Words(unittest.TestCase):
    def test_forbidden_words_are_found(self):
        for line in ("as the specificatio" "n says", "see Par" "t 4.1", "// issu" "e 12", "open(\"/roo" "t/x\")",
                     "class QB" "uffet", "an L" "LM", "a sub-agen" "t"):
            self.assertTrue(list(words.findings_in("x", line)), line)

    def test_ordinary_words_are_left_alone(self):
        for line in ("a special case", "Part of the note", "the issue is", "~/work", "class QBNote", "QByteArray bytes",
                     "User-Agent: Quib", "#include <Store/QBNote.h>"):
            self.assertEqual(list(words.findings_in("x", line)), [], line)


class Translations(unittest.TestCase):
    @staticmethod
    def file(*messages):
        return f"<TS><context><name>C</name>{''.join(messages)}</context></TS>"

    @staticmethod
    def message(source, *forms, kind=""):
        if len(forms) > 1:
            inner = "".join(f"<numerusform>{form}</numerusform>" for form in forms)
            return f'<message numerus="yes"><source>{source}</source><translation{kind}>{inner}</translation></message>'
        return f"<message><source>{source}</source><translation{kind}>{forms[0]}</translation></message>"

    def findings(self, language, *arguments, **named):
        return list(translations.findings_in(language, self.file(self.message(*arguments, **named))))

    def test_what_cannot_stand_for_its_text_is_found(self):
        for case in (("Open", ""), ("%1 of %2", "%1 von %3"), ("%1 of %2", "%1 und %1"), ("&amp;File", "Datei"),
                     ("File", "&amp;Datei"), ("&amp;File", "&amp;Da&amp;tei"), ("Size ", "Größe"), ("a\nb", "a b"),
                     ("%n notes", "%n Notiz", "Notizen %1"), ("%n notes", "%n", "%n", "%n")):
            self.assertTrue(self.findings("de", *case), case)
        self.assertTrue(self.findings("de", "Open", "Öffnen", kind=' type="unfinished"'))
        self.assertTrue(self.findings("ar", "%n notes", "a", "b"), "six forms in Arabic")

    def test_menus_have_keys_of_their_own(self):
        def found(*pairs):
            return list(translations.findings_in_menus("de", self.file(*(self.message(*pair) for pair in pairs))))
        self.assertTrue(found(("&amp;Go", "&amp;Anzeigen"), ("&amp;View", "&amp;ansicht")))
        self.assertEqual(found(("&amp;Go", "&amp;Gehe zu"), ("&amp;View", "&amp;Ansicht")), [])

    def test_what_stands_for_its_text_is_left_alone(self):
        for case in (("Open", "Öffnen"), ("%1 of %2", "%2 / %1"), ("&amp;File", "ファイル(&amp;F)"), (" pt", "\u00a0pt"),
                     ("R&amp;amp;D", "F&amp;amp;E"), ("%n notes", "eine Notiz", "%n Notizen")):
            self.assertEqual(self.findings("de", *case), [], case)


class FileSize(unittest.TestCase):
    def test_long_files_need_a_reason(self):
        body = "int x;\n" * 901
        self.assertIsNotNone(file_size.finding_in("x", body))
        self.assertIsNone(file_size.finding_in("x", "// Long file: one table\n" + body))
        self.assertIsNone(file_size.finding_in("x", "int x;\n" * 900))
        self.assertIsNotNone(file_size.finding_in("x", body + "// Long file: too late\n"))


class CommentTags(unittest.TestCase):
    def test_only_three_tags(self):
        for line in ("int x; // TOD" "O: later", "// HAC" "K", "// FIXME later", "// NOTE:"):
            self.assertTrue(list(comment_tags.findings_in("x", line)), line)
        for line in ("// NOTE: holds for both", "// FIXME: loses the last byte", "u\"// TOD" "O\"_s", "// a todo item"):
            self.assertEqual(list(comment_tags.findings_in("x", line)), [], line)


class Layers(unittest.TestCase):
    files = {"Platform/Text/A.h", "Platform/Files/B.h", "Core/Store/C.h", "Core/Tags/D.h", "Platform/Foundation/E.h"}
    modules = layers.Modules({
        "Platform/Foundation": "quib_module(Foundation)",
        "Platform/Text": "quib_module(Text DEPENDS Foundation PRIVATE ICU::uc)",
        "Platform/Files": "quib_module(Files DEPENDS Foundation)",
        "Core/Tags": "# quib_module(Nothing)\nquib_module(Tags DEPENDS Text)",
        "Core/Store": "quib_module(CoreStore DEPENDS Tags)\ntarget_link_libraries(CoreStore PRIVATE Files)",
    })

    def found(self, name, line):
        return list(layers.findings_in(name, line, self.modules, self.files))

    def test_arrows_that_have_a_link(self):
        for name, include in (("Core/Tags/D.h", "<Text/A.h>"), ("Core/Tags/D.h", "<Foundation/E.h>"),
                              ("Core/Store/C.h", "<Files/B.h>"), ("Core/Store/C.h", "<QString>"),
                              ("Core/Store/C.h", "\"C.h\""), ("Platform/Text/A_p.h", "<unicode/uregex.h>"),
                              ("Platform/Text/A.cpp", "<unicode/uregex.h>")):
            self.assertEqual(self.found(name, f"#include {include}"), [], (name, include))

    def test_arrows_that_have_none(self):
        for name, include in (("Core/Tags/D.h", "<Files/B.h>"), ("Core/Tags/D.h", "<Store/C.h>"),
                              ("Platform/Text/A.h", "<Tags/D.h>"), ("Platform/Text/A.h", "<unicode/uregex.h>"),
                              ("Core/Store/C.h", "<QWidget>"), ("Core/Store/C.cpp", "<QImage>"),
                              ("Core/Store/C.cpp", "\"Tags/D.h\"")):
            self.assertTrue(self.found(name, f"#include {include}"), (name, include))

    def test_circles(self):
        self.assertEqual(self.modules.circles(), [])
        circle = layers.Modules({"Core/A": "quib_module(A DEPENDS B)", "Core/B": "quib_module(B DEPENDS A)"})
        self.assertEqual(circle.circles(), ["A", "B"])


class CommitMessages(unittest.TestCase):
    def test_good(self):
        for message in ("Store: Keep rows packed\n\nOne snapshot is shared.\n",
                        "Platform/Text: Fold \"[cd]\" once\n\nBoth sides agree then.\n"):
            self.assertEqual(list(commit_messages.findings_in(message)), [], message)

    def test_bad(self):
        for message in ("Keep rows packed\n\nWhy.\n", "Store: keep rows packed\n\nWhy.\n", "Store: Keep rows packed.\n\nWhy.\n",
                        "Store: Keep rows packed\n", "Store: Fix bug\n\nWhy.\n", "Store: Added rows to it\n\nWhy.\n",
                        "Store: " + "Keep it " * 12 + "\n\nWhy.\n", "Store: Keep it so\nWhy.\n"):
            self.assertTrue(list(commit_messages.findings_in(message)), message)


if __name__ == "__main__":
    unittest.main()
