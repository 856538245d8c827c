#include "NoteStatistics.h"

#include <QString>
#include <QTextBoundaryFinder>

#include <algorithm>

namespace quib {

namespace {

/// Longer paragraphs are counted in pieces. Units: UTF-16 code units.
constexpr qsizetype kLongestPiece = 16384;

/// Scripts without blanks between words: each of their characters counts as a word.
bool isWordByItself(char32_t character)
{
    switch (QChar::script(character)) {
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
        return true;
    default:
        return false;
    }
}

void count(QStringView piece, NoteStatistics &into)
{
    QTextBoundaryFinder graphemes(QTextBoundaryFinder::Grapheme, piece.data(), piece.size());
    while (graphemes.toNextBoundary() != -1) {
        ++into.characters;
    }
    into.characters -= piece.count(QChar::ObjectReplacementCharacter);
    bool isInWord = false;
    for (qsizetype i = 0; i < piece.size(); ++i) {
        char32_t character = piece[i].unicode();
        if (piece[i].isHighSurrogate() && i + 1 < piece.size() && piece[i + 1].isLowSurrogate()) {
            character = QChar::surrogateToUcs4(piece[i], piece[i + 1]);
            ++i;
        }
        const bool isLetter = QChar::isLetterOrNumber(character) || QChar::isMark(character);
        const bool joins = isInWord && (character == u'\'' || character == 0x2019 || character == u'-');
        if (isLetter && isWordByItself(character)) {
            ++into.words;
            isInWord = false;
        } else if (isLetter) {
            into.words += isInWord ? 0 : 1;
            isInWord = true;
        } else if (!joins) {
            isInWord = false;
        }
    }
}

} // namespace

NoteStatistics NoteStatistics::ofText(QStringView text)
{
    NoteStatistics statistics;
    for (const QStringView paragraph : text.tokenize(u'\n')) {
        const bool hasSomething = std::any_of(paragraph.begin(), paragraph.end(), [](QChar character) {
            return !character.isSpace() && character != QChar::ObjectReplacementCharacter;
        });
        statistics.paragraphs += hasSomething ? 1 : 0;
        for (qsizetype start = 0; start < paragraph.size(); start += kLongestPiece) {
            count(paragraph.mid(start, kLongestPiece), statistics);
        }
    }
    return statistics;
}

} // namespace quib
