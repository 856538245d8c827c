#include "Message.h"

#include <cstdio>

namespace quib {

void tellUser(const QString &message)
{
    const auto lines = message.split(u'\n');
    for (const QString &line : lines) {
        std::fprintf(stderr, "quib: %s\n", line.toLocal8Bit().constData());
    }
}

} // namespace quib
