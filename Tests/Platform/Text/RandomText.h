#pragma once

#include <QString>
#include <QStringView>

#include <cstdlib>
#include <random>

namespace quib::tests {

/// The seed of a property test: QUIB_TEST_SEED to replay a failure, else a fresh one. Print it with SCOPED_TRACE.
[[nodiscard]] inline unsigned testSeed()
{
    const char *replayed = std::getenv("QUIB_TEST_SEED");
    return replayed != nullptr ? static_cast<unsigned>(std::strtoul(replayed, nullptr, 10)) : std::random_device()();
}

/// At most longest pieces drawn from the alphabet's units.
[[nodiscard]] inline QString randomText(std::mt19937 &random, QStringView alphabet, size_t longest)
{
    QString text;
    for (size_t left = random() % (longest + 1); left > 0; --left) {
        text.append(alphabet[static_cast<qsizetype>(random() % static_cast<size_t>(alphabet.size()))]);
    }
    return text;
}

} // namespace quib::tests
