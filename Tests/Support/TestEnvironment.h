#pragma once

namespace quib::tests {

/// The surroundings in which every test program runs, whatever the machine's: a time zone with summer time, the C
/// locale in UTF-8, English numbers and dates, no proxy, no display unless QT_QPA_PLATFORM names one. The first thing
/// that `main` does.
void prepareTestEnvironment();

} // namespace quib::tests
