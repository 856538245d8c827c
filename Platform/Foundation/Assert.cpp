#include "Assert.h"

#include <cstdio>
#include <cstdlib>

namespace quib {

void assertionFailed(const char *condition, const char *file, int line) noexcept
{
    std::fprintf(stderr, "%s:%d: assertion failed: %s\n", file, line, condition);
    std::abort();
}

} // namespace quib
