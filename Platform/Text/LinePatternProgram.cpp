#include "LinePatternProgram_p.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <string>

namespace quib {

namespace {

using Set = LineAlphabet::Set;
using Case = LinePattern::Case;
using Step = LineProgram::Step;

constexpr int kDeepestGroup = 50;
constexpr int kUnbounded = -1;
/// What {n} may ask for.
constexpr int kHighestCount = 100;

/// A pattern as it is written.
struct Node
{
    enum class Kind
    {
        /// Literal characters that stand side by side.
        Text,
        /// One character of a set.
        Letter,
        Sequence,
        Choice,
        Repeat,
        Condition,
    };
    Kind kind = Kind::Sequence;
    std::u32string text{};
    Set set{};
    Step condition = Step::Found;
    int fewest = 0;
    int most = 0;
    std::vector<Node> children{};
};

char32_t folded(char32_t character)
{
    return character >= U'A' && character <= U'Z' ? character + 0x20 : character;
}

/// The letters of a character, and where case does not count those that fold to the same character.
Set lettersOf(char32_t character, Case caseSensitivity)
{
    Set set{};
    const LineAlphabet &alphabet = LineAlphabet::shared();
    set.set(alphabet.letterOf(character));
    const char32_t lower = folded(character);
    if (caseSensitivity == Case::Insensitive && lower >= U'a' && lower <= U'z') {
        set.set(alphabet.letterOf(lower));
        set.set(alphabet.letterOf(lower - 0x20));
        for (int i = 0; i < LineAlphabet::kSpecial; ++i) {
            const QStringView special = LineAlphabet::special(i).folded;
            if (special.size() == 1 && special.front().unicode() == lower) {
                set.set(static_cast<size_t>(LineAlphabet::kAscii + i));
            }
        }
    }
    return set;
}

/// Literals must have a letter of their own.
bool isTellable(char32_t character)
{
    return LineAlphabet::shared().letterOf(character) < LineAlphabet::kAscii + LineAlphabet::kSpecial;
}

class Parser
{
public:
    Parser(QStringView pattern, Case caseSensitivity)
        : m_pattern(pattern)
        , m_case(caseSensitivity)
    {
    }

    std::optional<Node> parsed()
    {
        Node node = choice(0);
        if (m_failed || m_position != m_pattern.size()) {
            return std::nullopt;
        }
        return node;
    }

private:
    [[nodiscard]] bool atEnd() const { return m_position >= m_pattern.size(); }
    [[nodiscard]] char16_t peek() const { return atEnd() ? u'\0' : m_pattern[m_position].unicode(); }
    [[nodiscard]] bool take(QStringView token)
    {
        if (!m_pattern.sliced(m_position).startsWith(token)) {
            return false;
        }
        m_position += token.size();
        return true;
    }
    void fail() { m_failed = true; }

    Node choice(int depth)
    {
        Node node{.kind = Node::Kind::Choice};
        if (depth > kDeepestGroup) {
            fail();
            return node;
        }
        do {
            node.children.push_back(sequence(depth));
        } while (!m_failed && take(u"|"));
        return node;
    }

    Node sequence(int depth)
    {
        Node node{.kind = Node::Kind::Sequence};
        while (!m_failed && !atEnd() && peek() != u'|' && peek() != u')') {
            Node next = piece(depth);
            const bool isRepeated = quantify(next);
            Node *last = node.children.empty() ? nullptr : &node.children.back();
            if (!isRepeated && next.kind == Node::Kind::Text && last != nullptr && last->kind == Node::Kind::Text) {
                last->text += next.text;
            } else {
                node.children.push_back(std::move(next));
            }
        }
        return node;
    }

    Node piece(int depth)
    {
        if (take(u"(?!")) {
            Node inner = piece(depth);
            const bool isOne = inner.kind == Node::Kind::Letter || inner.kind == Node::Kind::Text;
            if (!isOne || !take(u")")) {
                fail();
                return inner;
            }
            return condition(Step::NotBefore,
                             inner.kind == Node::Kind::Text ? lettersOf(inner.text.front(), m_case) : inner.set);
        }
        if (take(u"(")) {
            Node inner = peek() == u'?' ? (fail(), Node()) : choice(depth + 1);
            if (!take(u")")) {
                fail();
            }
            return inner;
        }
        if (take(u"[")) {
            return bracket();
        }
        if (take(u".")) {
            return letter(LineAlphabet::shared().anything());
        }
        if (take(u"^")) {
            return condition(Step::AtStart, {});
        }
        if (take(u"$")) {
            // The end, or the place before the one character that ends the line. That is read here, so nothing may
            // follow.
            const QStringView rest = m_pattern.sliced(m_position);
            if (!std::ranges::all_of(rest, [](QChar unit) { return unit == u')'; })) {
                fail();
            }
            Node ending{.kind = Node::Kind::Repeat, .fewest = 0, .most = 1};
            ending.children.push_back(letter(LineAlphabet::shared().lineEnd()));
            Node node{.kind = Node::Kind::Sequence};
            node.children.push_back(std::move(ending));
            node.children.push_back(condition(Step::AtEnd, {}));
            return node;
        }
        if (take(u"\\b")) {
            return condition(Step::AtWordBoundary, {});
        }
        if (const auto set = classEscape()) {
            return letter(*set);
        }
        if (QStringView(u"*+?{}]").contains(peek())) {
            fail();
            return {};
        }
        return literal();
    }

    std::optional<Set> classEscape()
    {
        if (take(u"\\w")) {
            return LineAlphabet::shared().word();
        }
        if (take(u"\\s")) {
            return LineAlphabet::shared().space();
        }
        return std::nullopt;
    }

    /// One character, escaped or bare.
    char32_t character()
    {
        if (take(u"\\n")) {
            return U'\n';
        }
        const bool isEscaped = take(u"\\");
        const char16_t unit = peek();
        const bool isPlainEscape = unit < 0x80 && !QChar::isLetterOrNumber(unit);
        if (atEnd() || (isEscaped && !isPlainEscape) || QChar::isSurrogate(unit) || !isTellable(unit)) {
            fail();
            return 0;
        }
        ++m_position;
        return unit;
    }

    Node literal()
    {
        Node node{.kind = Node::Kind::Text};
        node.text = std::u32string(1, character());
        return node;
    }

    /// A set, from behind its opening bracket.
    Node bracket()
    {
        Set set;
        if (peek() == u'^' || peek() == u']') {
            fail();
        }
        while (!m_failed && !take(u"]")) {
            if (QStringView(u"[&-").contains(peek()) || atEnd()) {
                fail();
                break;
            }
            if (const auto escaped = classEscape()) {
                set |= *escaped;
                continue;
            }
            const char32_t first = character();
            const char32_t last = take(u"-") ? character() : first;
            if (first > last || (first != last && last >= LineAlphabet::kAscii)) {
                fail();
            }
            for (char32_t c = first; !m_failed && c <= last; ++c) {
                set |= lettersOf(c, m_case);
            }
        }
        return letter(set);
    }

    static Node letter(const Set &set)
    {
        Node node{.kind = Node::Kind::Letter};
        node.set = set;
        return node;
    }

    static Node condition(Step step, const Set &set)
    {
        Node node{.kind = Node::Kind::Condition};
        node.condition = step;
        node.set = set;
        return node;
    }

    /// Wraps the node in the quantifier that stands behind it, if any.
    bool quantify(Node &node)
    {
        int fewest = 0;
        int most = kUnbounded;
        if (take(u"+")) {
            fewest = 1;
        } else if (take(u"?")) {
            most = 1;
        } else if (take(u"{")) {
            fewest = number();
            most = !take(u",") ? fewest : kUnbounded;
            if (!take(u"}")) {
                fail();
            }
        } else if (!take(u"*")) {
            return false;
        }
        // Reluctant and possessive forms, and quantifiers of quantifiers, are not of the dialect.
        if (node.kind == Node::Kind::Condition || QStringView(u"*+?{").contains(peek())) {
            fail();
        }
        Node repeat{.kind = Node::Kind::Repeat, .fewest = fewest, .most = most};
        repeat.children.push_back(std::move(node));
        node = std::move(repeat);
        return true;
    }

    int number()
    {
        int value = 0;
        const qsizetype start = m_position;
        while (!m_failed && peek() >= u'0' && peek() <= u'9') {
            value = value * 10 + (m_pattern[m_position++].unicode() - u'0');
            if (value > kHighestCount) {
                fail();
            }
        }
        if (m_position == start) {
            fail();
        }
        return value;
    }

    QStringView m_pattern;
    Case m_case;
    qsizetype m_position = 0;
    bool m_failed = false;
};

/// Lays a pattern out from its end to its beginning: what follows a piece is there before the piece.
class Emitter
{
public:
    explicit Emitter(Case caseSensitivity)
        : m_case(caseSensitivity)
    {
    }

    std::optional<LineProgram> program(const Node &node)
    {
        // Place 0 is kept for the beginning.
        static_cast<void>(add({}));
        const std::uint16_t found = add({.step = Step::Found});
        const std::uint16_t start = emit(node, found);
        m_program.places[0] = {.step = Step::Fork, .next = start, .other = start};
        if (m_isTooLong) {
            return std::nullopt;
        }
        return std::move(m_program);
    }

private:
    std::uint16_t add(const LineProgram::Place &place)
    {
        if (m_program.places.size() >= LineProgram::kMostPlaces) {
            m_isTooLong = true;
            return 0;
        }
        m_program.places.push_back(place);
        return static_cast<std::uint16_t>(m_program.places.size() - 1);
    }

    std::uint16_t fork(std::uint16_t next, std::uint16_t other)
    {
        return add({.step = Step::Fork, .next = next, .other = other});
    }

    std::uint16_t emit(const Node &node, std::uint16_t next)
    {
        if (m_isTooLong) {
            return next;
        }
        switch (node.kind) {
        case Node::Kind::Text:
            return emitText(node.text, next);
        case Node::Kind::Letter:
            return add({.step = Step::Letter, .next = next, .set = node.set});
        case Node::Kind::Condition:
            return add({.step = node.condition, .next = next, .set = node.set});
        case Node::Kind::Sequence:
            for (auto child = node.children.rbegin(); child != node.children.rend(); ++child) {
                next = emit(*child, next);
            }
            return next;
        case Node::Kind::Choice: {
            std::uint16_t entry = emit(node.children.back(), next);
            for (auto child = node.children.rbegin() + 1; child != node.children.rend(); ++child) {
                entry = fork(emit(*child, next), entry);
            }
            return entry;
        }
        case Node::Kind::Repeat:
            return emitRepeat(node, next);
        }
        return next;
    }

    std::uint16_t emitRepeat(const Node &node, std::uint16_t next)
    {
        const Node &child = node.children.front();
        std::uint16_t entry = next;
        if (node.most == kUnbounded) {
            entry = fork(next, next);
            const std::uint16_t body = emit(child, entry);
            m_program.places[entry].other = body;
        } else {
            for (int i = node.fewest; i < node.most; ++i) {
                entry = fork(next, emit(child, entry));
            }
        }
        for (int i = 0; i < node.fewest; ++i) {
            entry = emit(child, entry);
        }
        return entry;
    }

    /// Literal characters side by side; without case, a character that folds to several of them stands for these.
    std::uint16_t emitText(const std::u32string &text, std::uint16_t next)
    {
        std::vector<std::uint16_t> entries(text.size() + 1, next);
        for (size_t i = text.size(); i-- > 0;) {
            entries[i] = add({.step = Step::Letter, .next = entries[i + 1], .set = lettersOf(text[i], m_case)});
            for (int s = 0; m_case == Case::Insensitive && s < LineAlphabet::kSpecial; ++s) {
                const QStringView several = LineAlphabet::special(s).folded;
                const auto length = static_cast<size_t>(several.size());
                if (length < 2 || length > text.size() - i ||
                    !std::ranges::equal(several, std::u32string_view(text).substr(i, length),
                                        [](QChar a, char32_t b) { return a.unicode() == folded(b); })) {
                    continue;
                }
                Set set;
                set.set(static_cast<size_t>(LineAlphabet::kAscii + s));
                entries[i] = fork(entries[i], add({.step = Step::Letter, .next = entries[i + length], .set = set}));
            }
        }
        return entries.front();
    }

    Case m_case;
    LineProgram m_program;
    bool m_isTooLong = false;
};

} // namespace

std::optional<LineProgram> LineProgram::compiled(QStringView pattern, LinePattern::Case caseSensitivity)
{
    const auto node = Parser(pattern, caseSensitivity).parsed();
    return node ? Emitter(caseSensitivity).program(*node) : std::nullopt;
}

} // namespace quib
