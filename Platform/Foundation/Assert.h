#pragma once

namespace quib {

[[noreturn]] void assertionFailed(const char *condition, const char *file, int line) noexcept;

} // namespace quib

/// Checked in debug and test builds: a fault of ours, never of the input's.
#ifdef QUIB_ASSERTIONS
#define QUIB_ASSERT(condition)                                                                                         \
    ((condition) ? static_cast<void>(0) : ::quib::assertionFailed(#condition, __FILE__, __LINE__))
#else
#define QUIB_ASSERT(condition) static_cast<void>(0)
#endif

/// Checked in every build: guards what was written.
#define QUIB_REQUIRE(condition)                                                                                        \
    ((condition) ? static_cast<void>(0) : ::quib::assertionFailed(#condition, __FILE__, __LINE__))
