// Writes the table behind the folding of Platform/Text to the file named on the command line. Run by the build; its
// result is never edited by hand.
//
// An entry says what one code point becomes when case and diacritics are ignored:
//   0                        itself
//   kFoldedMark              itself, a combining mark
//   a code point             that one
//   kFoldedSequence | place  the code points at that place of the sequences, their number first; with kFoldedMark they
//                            are combining marks
// A mark with a base in the same decomposition is settled here; only a mark that stands alone depends on the text.
// Hangul syllables are left out: they decompose by arithmetic.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <vector>

#include <unicode/uchar.h>
#include <unicode/unorm2.h>
#include <unicode/ustring.h>
#include <unicode/utf16.h>

namespace {

constexpr UChar32 kLimit = 0x110000;
constexpr UChar32 kFirstBaseThatKeepsItsMarks = 0x510;
constexpr UChar32 kFirstHangul = 0xAC00;
constexpr UChar32 kLastHangul = 0xD7A3;
constexpr int kBlockBits = 7;
constexpr std::uint32_t kFoldedMark = 0x80000000U;
constexpr std::uint32_t kFoldedSequence = 0x40000000U;

[[noreturn]] void fail(const char *what, UChar32 codePoint)
{
    std::fprintf(stderr, "generate_folding_table: %s at U+%04X\n", what, static_cast<unsigned>(codePoint));
    std::exit(1);
}

bool isMark(UChar32 codePoint)
{
    return (U_GET_GC_MASK(codePoint) & U_GC_M_MASK) != 0;
}

/// Decomposed, folded, and the marks dropped whose base stands in front of them here and is below the limit.
std::vector<UChar32> folded(const UNormalizer2 *normalizer, UChar32 codePoint)
{
    UChar decomposition[64];
    UErrorCode status = U_ZERO_ERROR;
    int32_t length = unorm2_getDecomposition(normalizer, codePoint, decomposition, 64, &status);
    if (length < 0) {
        length = 0;
        U16_APPEND_UNSAFE(decomposition, length, codePoint);
    }
    UChar foldedUnits[128];
    const int32_t foldedLength = u_strFoldCase(foldedUnits, 128, decomposition, length, U_FOLD_CASE_DEFAULT, &status);
    if (U_FAILURE(status)) {
        fail(u_errorName(status), codePoint);
    }
    std::vector<UChar32> result;
    UChar32 base = -1;
    for (int32_t i = 0; i < foldedLength;) {
        UChar32 next = 0;
        U16_NEXT(foldedUnits, i, foldedLength, next);
        if (!isMark(next)) {
            base = next;
        } else if (base >= 0 && base < kFirstBaseThatKeepsItsMarks) {
            continue;
        }
        result.push_back(next);
    }
    return result;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: generate_folding_table FILE\n");
        return 2;
    }
    UErrorCode status = U_ZERO_ERROR;
    const UNormalizer2 *normalizer = unorm2_getNFDInstance(&status);
    if (U_FAILURE(status)) {
        std::fprintf(stderr, "generate_folding_table: %s\n", u_errorName(status));
        return 1;
    }

    std::vector<std::uint32_t> sequences;
    std::map<std::vector<std::uint32_t>, unsigned> blockIndexes;
    std::vector<std::vector<std::uint32_t>> blocks;
    std::vector<unsigned> index;
    std::vector<std::uint32_t> block;
    for (UChar32 codePoint = 0; codePoint < kLimit; ++codePoint) {
        std::uint32_t entry = 0;
        const bool hangul = codePoint >= kFirstHangul && codePoint <= kLastHangul;
        if (!hangul && !U_IS_SURROGATE(codePoint)) {
            const std::vector<UChar32> result = folded(normalizer, codePoint);
            if (result.empty()) {
                fail("nothing is left", codePoint);
            }
            const bool mark = isMark(result.front());
            if (mark && !isMark(result.back())) {
                fail("a mark with a base behind it", codePoint);
            }
            if (result.size() > 1) {
                entry = kFoldedSequence | static_cast<std::uint32_t>(sequences.size());
                sequences.push_back(static_cast<std::uint32_t>(result.size()));
                for (const UChar32 part : result) {
                    sequences.push_back(static_cast<std::uint32_t>(part));
                }
            } else if (result.front() != codePoint) {
                entry = static_cast<std::uint32_t>(result.front());
            }
            if (mark) {
                entry |= kFoldedMark;
            }
        }
        block.push_back(entry);
        if (block.size() == size_t{1} << kBlockBits) {
            const auto [found, isNew] = blockIndexes.try_emplace(block, static_cast<unsigned>(blocks.size()));
            if (isNew) {
                blocks.push_back(block);
            }
            index.push_back(found->second);
            block.clear();
        }
    }

    std::FILE *out = std::fopen(argv[1], "w");
    if (out == nullptr) {
        std::perror(argv[1]);
        return 1;
    }
    std::fprintf(out, "// Made by Tools/generate_folding_table.cpp. Do not edit.\n");
    std::fprintf(out, "constexpr int kFoldedBlockBits = %d;\n", kBlockBits);
    std::fprintf(out, "constexpr std::uint32_t kFoldedMark = 0x%XU;\n", kFoldedMark);
    std::fprintf(out, "constexpr std::uint32_t kFoldedSequence = 0x%XU;\n", kFoldedSequence);
    std::fprintf(out, "constexpr char32_t kFirstBaseThatKeepsItsMarks = 0x%XU;\n",
                 static_cast<unsigned>(kFirstBaseThatKeepsItsMarks));
    const auto write = [out](const char *type, const char *name, const auto &values) {
        std::fprintf(out, "constexpr %s %s[] = {", type, name);
        for (size_t i = 0; i < values.size(); ++i) {
            std::fprintf(out, "%s%u,", i % 16 == 0 ? "\n    " : "", static_cast<unsigned>(values[i]));
        }
        std::fprintf(out, "\n};\n");
    };
    write("std::uint16_t", "kFoldedIndex", index);
    std::vector<std::uint32_t> entries;
    for (const std::vector<std::uint32_t> &each : blocks) {
        entries.insert(entries.end(), each.begin(), each.end());
    }
    write("std::uint32_t", "kFoldedEntries", entries);
    write("char32_t", "kFoldedSequences", sequences);
    return std::fclose(out) == 0 ? 0 : 1;
}
