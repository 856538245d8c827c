#include "LinePattern.h"

#include "LinePatternProgram_p.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace quib {

/// The program made deterministic, as far as lines have asked for it so far.
///
/// A state is the set of places that can be reached before the next letter is known, with all that conditions ask of
/// the letters before: whether there was any, and whether the last that is not combining is of a word. Conditions are
/// decided when the next letter comes, so that a state needs to know nothing of what is behind it.
class LinePattern::Machine
{
public:
    explicit Machine(LineProgram program)
        : m_program(std::move(program))
        , m_marks(m_program.places.size(), 0)
    {
        forgetStates();
    }

    bool isFoundIn(std::span<const LineAlphabet::Letter> line)
    {
        StateIndex state = kStart;
        for (const LineAlphabet::Letter letter : line) {
            StateIndex next = m_ways[state * kWidth + letter];
            if (next == kUnknown) {
                next = learn(state, letter);
            }
            if (next == kFound) {
                return true;
            }
            state = next;
        }
        const StateIndex end = m_ways[state * kWidth + LineAlphabet::kEnd];
        return (end == kUnknown ? learn(state, LineAlphabet::kEnd) : end) == kFound;
    }

private:
    using StateIndex = std::uint32_t;
    static constexpr StateIndex kUnknown = 0xFFFFFFFF;
    static constexpr StateIndex kFound = 0;
    static constexpr StateIndex kStart = 1;
    static constexpr size_t kWidth = LineAlphabet::kEnd + 1;

    struct State
    {
        bool isAtStart = false;
        bool isBehindWord = false;
        /// Sorted.
        std::vector<std::uint16_t> places;
        friend auto operator<=>(const State &a, const State &b) = default;
    };

    void forgetStates()
    {
        m_states.clear();
        m_indices.clear();
        m_ways.clear();
        // The found one is never left, and needs no places.
        m_states.emplace_back();
        m_ways.resize(kWidth, kFound);
        static_cast<void>(indexOf(State{.isAtStart = true, .isBehindWord = false, .places = {0}}));
    }

    StateIndex indexOf(State state)
    {
        const auto [known, isNew] = m_indices.try_emplace(state, static_cast<StateIndex>(m_states.size()));
        if (isNew) {
            m_states.push_back(std::move(state));
            m_ways.resize(m_ways.size() + kWidth, kUnknown);
        }
        return known->second;
    }

    /// Where a letter leads from a state. All states may be others afterwards, but for the one returned.
    StateIndex learn(StateIndex from, size_t letter)
    {
        const State next = stateBehind(m_states[from], letter);
        if (m_isFound) {
            m_ways[from * kWidth + letter] = kFound;
            return kFound;
        }
        if (m_states.size() >= kMostStates && !m_indices.contains(next)) {
            forgetStates();
            return indexOf(next);
        }
        const StateIndex index = indexOf(next);
        m_ways[from * kWidth + letter] = index;
        return index;
    }

    /// Sets m_isFound where the pattern is found on the way.
    State stateBehind(const State &from, size_t letter)
    {
        const LineAlphabet &alphabet = LineAlphabet::shared();
        const bool isAtEnd = letter == LineAlphabet::kEnd;
        const bool isCombining = !isAtEnd && alphabet.combining()[letter];
        const bool isWord = !isAtEnd && alphabet.word()[letter];
        State next{.isAtStart = false, .isBehindWord = isCombining ? from.isBehindWord : isWord, .places = {}};

        m_isFound = false;
        std::ranges::fill(m_marks, 0);
        std::vector<std::uint16_t> waiting;
        const auto reach = [this, &waiting](std::uint16_t place) {
            if ((m_marks[place] & kReached) == 0) {
                m_marks[place] |= kReached;
                waiting.push_back(place);
            }
        };
        const auto keep = [this, &next](std::uint16_t place) {
            if ((m_marks[place] & kKept) == 0) {
                m_marks[place] |= kKept;
                next.places.push_back(place);
            }
        };
        for (const std::uint16_t place : from.places) {
            reach(place);
        }
        // A match may begin behind every letter.
        keep(0);
        while (!waiting.empty()) {
            const LineProgram::Place &place = m_program.places[waiting.back()];
            waiting.pop_back();
            bool isPassed = false;
            switch (place.step) {
            case LineProgram::Step::Letter:
                if (!isAtEnd && place.set[letter]) {
                    keep(place.next);
                }
                break;
            case LineProgram::Step::Fork:
                reach(place.next);
                reach(place.other);
                break;
            case LineProgram::Step::AtStart:
                isPassed = from.isAtStart;
                break;
            case LineProgram::Step::AtEnd:
                isPassed = isAtEnd;
                break;
            case LineProgram::Step::AtWordBoundary:
                isPassed = !isCombining && isWord != from.isBehindWord;
                break;
            case LineProgram::Step::NotBefore:
                isPassed = isAtEnd || !place.set[letter];
                break;
            case LineProgram::Step::Found:
                m_isFound = true;
                return next;
            }
            if (isPassed) {
                reach(place.next);
            }
        }
        std::ranges::sort(next.places);
        return next;
    }

    static constexpr std::uint8_t kReached = 1;
    static constexpr std::uint8_t kKept = 2;

    LineProgram m_program;
    std::vector<State> m_states;
    std::map<State, StateIndex> m_indices;
    /// For each state and letter the state behind it.
    std::vector<StateIndex> m_ways;
    /// Scratch of stateBehind, a mark a place.
    std::vector<std::uint8_t> m_marks;
    bool m_isFound = false;
};

LinePattern::LinePattern(QStringView pattern, Case caseSensitivity)
{
    if (auto program = LineProgram::compiled(pattern, caseSensitivity)) {
        m_machine = std::make_unique<Machine>(std::move(*program));
    }
}

LinePattern::LinePattern(LinePattern &&) noexcept = default;
LinePattern &LinePattern::operator=(LinePattern &&) noexcept = default;
LinePattern::~LinePattern() = default;

bool LinePattern::isValid() const
{
    return m_machine != nullptr;
}

bool LinePattern::isFoundIn(std::span<const LineAlphabet::Letter> line)
{
    return m_machine != nullptr && m_machine->isFoundIn(line);
}

} // namespace quib
