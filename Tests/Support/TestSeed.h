#pragma once

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>

namespace quib::tests {

/// The seed of a property test: a fixed one, or QUIB_TEST_SEED to replay or to widen. Every failure that happens while
/// it lives prints it.
class TestSeed
{
public:
    TestSeed()
        : m_value(fromEnvironment())
        , m_trace(__FILE__, __LINE__, "QUIB_TEST_SEED=" + std::to_string(m_value))
    {
    }
    [[nodiscard]] unsigned value() const { return m_value; }
    [[nodiscard]] std::mt19937 generator() const { return std::mt19937(m_value); }

private:
    static unsigned fromEnvironment()
    {
        const char *given = std::getenv("QUIB_TEST_SEED");
        return given != nullptr ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : 20170302U;
    }

    unsigned m_value;
    testing::ScopedTrace m_trace;
};

} // namespace quib::tests
