#pragma once

#include <QString>

#include <random>

namespace quib::tests {

/// A text of pieces that tags are made of and that decide whether something is one.
[[nodiscard]] inline QString randomTagText(std::mt19937 &random, size_t longest)
{
    static const char16_t *const kPieces[] = {
        u"#",  u"#",  u"#",  u"#",      u" ",       u" ",       u"\n", u"a",      u"b",      u"é",      u"É",
        u"/",  u"1",  u"-",  u"\t",     u"\r",      u"\r\n",    u".",  u",",      u"'",      u"\"",     u"(",
        u")",  u"[",  u"]",  u"{",      u"}",       u"!",       u"?",  u";",      u":",      u"\u2026", u"\u3001",
        u"؛",  u"،",  u"\v", u"\u0085", u"\u2028",  u"\u00A0",  u"😀",  u"\xD83D", u"\xDE00", u"\uFFFC", u"\u200B",
        u"##", u"#a", u"a#", u"#a b#",  u"#aabbcc", u"#12-3",   u"_",  u"*",      u"0aF",    u"#a/b",   u"#A",
        u"#é", u"# ", u" #", u"\n\n",   u"#ábc",    u"#Abc d#", u"\\", u"$",      u"^",      u"#012345"};
    QString text;
    for (size_t left = random() % (longest + 1); left > 0; --left) {
        if (random() % 60 == 0) {
            text.append(QChar(random() % 2 == 0 ? u'\0' : static_cast<char16_t>(random())));
        } else {
            text.append(QStringView(kPieces[random() % std::size(kPieces)]));
        }
    }
    return text;
}

} // namespace quib::tests
