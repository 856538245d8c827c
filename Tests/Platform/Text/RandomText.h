#pragma once

#include <QString>
#include <QStringView>

#include <random>

namespace quib::tests {

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
