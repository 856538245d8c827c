#include "CorpusGenerator.h"

#include <QSet>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <numbers>

using namespace Qt::StringLiterals;

namespace quib::benchmarks {

namespace {

constexpr qsizetype kWordCount = 6000;
constexpr double kMedianBytes = 1500;
constexpr double kSigma = 1.0;
constexpr double kLeastBytes = 40;
constexpr double kMostBytes = 256.0 * 1024;

/// SplitMix64: one step a draw and no state to warm up, so that every note can have a sequence of its own.
class Random
{
public:
    explicit Random(quint64 seed)
        : m_state(seed)
    {
    }
    quint64 next()
    {
        m_state += 0x9E3779B97F4A7C15U;
        quint64 value = m_state;
        value = (value ^ (value >> 30U)) * 0xBF58476D1CE4E5B9U;
        value = (value ^ (value >> 27U)) * 0x94D049BB133111EBU;
        return value ^ (value >> 31U);
    }
    /// In [0, limit).
    qsizetype below(qsizetype limit) { return static_cast<qsizetype>(next() % static_cast<quint64>(limit)); }
    /// In [0, 1).
    double unit() { return static_cast<double>(next() >> 11U) * 0x1.0p-53; }
    bool chance(double probability) { return unit() < probability; }
    /// Normally distributed with mean 0 and deviation 1.
    double normal()
    {
        const double radius = std::sqrt(-2.0 * std::log(1.0 - unit()));
        return radius * std::cos(2.0 * std::numbers::pi * unit());
    }

private:
    quint64 m_state;
};

/// Different words of two to four syllables, in a fixed order.
QStringList wordsOf(QStringView syllables, quint64 seed, qsizetype fewest, qsizetype most, qsizetype count)
{
    const QList<QStringView> parts = syllables.split(u' ');
    Random random(seed);
    QStringList words;
    QSet<QString> known;
    while (words.size() < count) {
        QString word;
        for (qsizetype left = fewest + random.below(most - fewest + 1); left > 0; --left) {
            word += parts.at(random.below(parts.size()));
        }
        if (!known.contains(word)) {
            known.insert(word);
            words.append(word);
        }
    }
    return words;
}

qsizetype utf8Bytes(QStringView text)
{
    qsizetype bytes = 0;
    for (const QChar unit : text) {
        // A surrogate is half of four bytes.
        bytes += unit.unicode() < 0x80 ? 1 : unit.unicode() < 0x800 || unit.isSurrogate() ? 2 : 3;
    }
    return bytes;
}

constexpr char16_t kLatinSyllables[] =
    u"ba ne ti ro lu mar ven tor sil can ber é ña ö ü gra pla stre con dis per tra ing ment tion ça è ß å æ ő ł ka "
    u"mo di sa le no ci fu wo the an er in on re";
constexpr char16_t kCyrillicSyllables[] =
    u"ва не ти ро лу мар вен тор сил кан бер ё на ще гра пла стре кон дис пер тра ние ость ый й ка мо ди са ле но";
constexpr char16_t kGreekSyllables[] =
    u"βα νε τι ρο λου μαρ βεν τορ σιλ καν ά έ ή γρα πλα στρε κον δις περ τρα ση μός ώ κα μο δι σα λε νο ϋ";
constexpr char16_t kEastAsianSyllables[] = u"日 本 語 学 生 会 社 今 年 中 国 人 大 小 山 川 新 聞 時 間 の は を に "
                                           u"が で と も です ます カ メ ラ ノ ー ト 的 是 不 了 在 有 我 他 这 们";
constexpr char16_t kArabicSyllables[] = u"ال كت اب مد رس ة بي ت ور د قل م حب شم س ق مر ما ء نه ر سم ا جد يد كب ير";

constexpr const char16_t *kEmoji[] = {u"😀", u"👍🏽", u"🎉", u"❤️", u"👩‍👩‍👧", u"🇮🇹", u"🚀", u"✅"};
constexpr const char16_t *kHosts[] = {u"example.org", u"www.example.com", u"docs.example.net"};
constexpr const char16_t *kCodeLines[] = {
    u"for (int i = 0; i < count; ++i) {",
    u"    total += values[i]; // sum",
    u"}",
    u"def value(self, key):",
    u"    return self._values.get(key, None)",
    u"SELECT * FROM notes WHERE title = 'x';",
    u"const answer = items.map(item => item.id);",
    u"#include <vector>",
    u"",
};

} // namespace

/// Writes one note; knows how many bytes of UTF-8 it has.
class CorpusGenerator::Writer
{
public:
    Writer(const CorpusGenerator &generator, qsizetype index)
        : m_generator(generator)
        , m_random(generator.m_seed ^ (static_cast<quint64>(index + 1) * 0xD1B54A32D192ED03U))
        , m_words(scriptOf(m_random.unit()))
        , m_between(m_words == &generator.m_eastAsian ? QStringView() : QStringView(u" "))
    {
    }

    [[nodiscard]] qsizetype drawBytes()
    {
        const double bytes = kMedianBytes * std::exp(kSigma * m_random.normal());
        return static_cast<qsizetype>(std::clamp(bytes, kLeastBytes, kMostBytes));
    }

    [[nodiscard]] QString write(qsizetype bytes)
    {
        m_text.reserve(bytes + 512);
        const bool hasHeadings = m_random.chance(0.5);
        const bool hasTodos = m_random.chance(0.35);
        const bool hasCode = m_random.chance(0.10);
        const bool hasLinks = m_random.chance(0.25);
        const bool hasWikiLinks = m_random.chance(0.15);
        const bool hasAttachments = m_random.chance(0.20);
        const bool hasTags = m_random.chance(0.70);

        append(u"# ");
        words(2 + m_random.below(5), /*withMarks=*/false);
        append(u"\n");
        // The parts that a note has come at least once, the short ones in notes of any length.
        if (hasTags) {
            tags();
        }
        if (hasAttachments) {
            attachment();
        }
        if (hasTodos) {
            todos();
        }
        if (hasLinks) {
            link();
        }
        if (hasWikiLinks) {
            wikiLink();
        }
        if (hasCode) {
            code();
        }
        while (m_bytes < bytes) {
            paragraph();
            if (hasHeadings && m_random.chance(0.15)) {
                append(m_random.chance(0.5) ? u"## " : u"### ");
                words(2 + m_random.below(4), /*withMarks=*/false);
                append(u"\n");
            }
            if (hasTodos && m_random.chance(0.15)) {
                todos();
            }
            if (hasLinks && m_random.chance(0.10)) {
                link();
            }
            if (hasCode && m_random.chance(0.05)) {
                code();
            }
            if (hasAttachments && m_random.chance(0.03)) {
                attachment();
            }
        }
        return std::move(m_text);
    }

private:
    const QStringList *scriptOf(double share) const
    {
        return share < 0.60   ? &m_generator.m_latin
               : share < 0.74 ? &m_generator.m_cyrillic
               : share < 0.80 ? &m_generator.m_greek
               : share < 0.92 ? &m_generator.m_eastAsian
                              : &m_generator.m_arabic;
    }

    void append(QStringView piece)
    {
        m_text += piece;
        m_bytes += utf8Bytes(piece);
    }

    const QString &anyWord()
    {
        // The share of a rank falls with the rank: of all words half are among the first hundredth.
        const double draw = m_random.unit();
        const double rank = std::pow(static_cast<double>(m_words->size()), draw) - 1.0;
        return m_words->at(static_cast<qsizetype>(rank));
    }

    void words(qsizetype count, bool withMarks)
    {
        for (qsizetype place = 0; place < count; ++place) {
            if (place > 0) {
                append(m_between);
            }
            const double kind = m_random.unit();
            if (withMarks && kind < 0.02) {
                static constexpr const char16_t *kMarks[] = {u"*", u"/", u"_", u"-", u"::", u"`"};
                const QStringView mark = kMarks[m_random.below(static_cast<qsizetype>(std::size(kMarks)))];
                append(mark);
                append(anyWord());
                append(mark);
            } else if (withMarks && kind < 0.045) {
                append(kEmoji[m_random.below(static_cast<qsizetype>(std::size(kEmoji)))]);
            } else if (kind < 0.06) {
                append(QString::number(m_random.below(3000)));
            } else {
                append(anyWord());
            }
        }
    }

    void paragraph()
    {
        for (qsizetype sentences = 1 + m_random.below(4); sentences > 0; --sentences) {
            words(5 + m_random.below(14), /*withMarks=*/true);
            append(m_random.chance(0.8) ? u". " : u"? ");
        }
        append(m_random.chance(0.5) ? u"\n\n" : u"\n");
    }

    void todos()
    {
        for (qsizetype items = 1 + m_random.below(5); items > 0; --items) {
            append(m_random.chance(0.6) ? u"- " : u"+ ");
            words(2 + m_random.below(6), /*withMarks=*/false);
            append(u"\n");
        }
    }

    void link()
    {
        append(u"https://");
        append(kHosts[m_random.below(static_cast<qsizetype>(std::size(kHosts)))]);
        append(u"/%1?page=%2\n"_s.arg(m_random.below(100000)).arg(m_random.below(50)));
    }

    void wikiLink()
    {
        append(u"[[");
        words(3, /*withMarks=*/false);
        append(u"]]\n");
    }

    void code()
    {
        append(u"```\n");
        for (qsizetype lines = 3 + m_random.below(10); lines > 0; --lines) {
            append(kCodeLines[m_random.below(static_cast<qsizetype>(std::size(kCodeLines)))]);
            append(u"\n");
        }
        append(u"```\n");
    }

    void attachment()
    {
        const QString digits = QString::number(m_random.next() | (quint64(1) << 63U), 16).toUpper();
        const QString identifier = QStringView(digits).first(8) % u'-' % QStringView(digits).sliced(8, 4) %
                                   u"-4000-8000-" % QStringView(digits).sliced(4, 12);
        const bool isImage = m_random.chance(0.75);
        append(isImage ? u"[image:" : u"[file:");
        append(identifier);
        append(u"/");
        append(anyWord());
        append(isImage ? u".jpg]\n" : u".pdf]\n");
    }

    void tags()
    {
        for (qsizetype left = 1 + m_random.below(3); left > 0; --left) {
            // Few tags are on many notes.
            const double draw = m_random.unit();
            append(u"#");
            append(m_generator.m_tags.at(static_cast<qsizetype>(draw * draw * static_cast<double>(kTagCount))));
            append(left > 1 ? u" " : u"\n");
        }
    }

    const CorpusGenerator &m_generator;
    Random m_random;
    const QStringList *m_words;
    QStringView m_between;
    QString m_text;
    qsizetype m_bytes = 0;
};

CorpusGenerator::CorpusGenerator(quint64 seed)
    : m_seed(seed)
    , m_latin(wordsOf(kLatinSyllables, seed + 1, 1, 4, kWordCount))
    , m_cyrillic(wordsOf(kCyrillicSyllables, seed + 2, 1, 4, kWordCount))
    , m_greek(wordsOf(kGreekSyllables, seed + 3, 1, 4, kWordCount))
    , m_eastAsian(wordsOf(kEastAsianSyllables, seed + 4, 1, 3, kWordCount))
    , m_arabic(wordsOf(kArabicSyllables, seed + 5, 2, 4, kWordCount))
{
    // A tree of 20 roots with 4 branches each and 2 leaves or 3 on those: parents before children, 300 in all.
    const QStringList names = wordsOf(kLatinSyllables, seed + 6, 2, 3, kTagCount);
    qsizetype next = 0;
    for (qsizetype root = 0; root < 20; ++root) {
        const QString rootName = names.at(next++);
        m_tags.append(rootName);
        for (qsizetype branch = 0; branch < 4; ++branch) {
            const QString branchName = rootName + u'/' + names.at(next++);
            m_tags.append(branchName);
            for (qsizetype leaf = branch < 2 ? 2 : 3; leaf > 0; --leaf) {
                m_tags.append(branchName + u'/' + names.at(next++));
            }
        }
    }
    Q_ASSERT(m_tags.size() == kTagCount);
}

QString CorpusGenerator::text(qsizetype index) const
{
    Writer writer(*this, index);
    const qsizetype bytes = writer.drawBytes();
    return writer.write(bytes);
}

QString CorpusGenerator::textWithBytes(qsizetype index, qsizetype bytes) const
{
    return Writer(*this, index).write(bytes);
}

QList<QString> CorpusGenerator::texts(qsizetype count) const
{
    QList<QString> texts;
    texts.reserve(count);
    for (qsizetype index = 0; index < count; ++index) {
        texts.append(text(index));
    }
    return texts;
}

} // namespace quib::benchmarks
