#pragma once

#include <QByteArray>

namespace quib::tests {

/// The real disk, offered to SQLite as a file layer of its own name, that can be filled up and given room again. One
/// for the process; any thread.
class FullDisk
{
public:
    [[nodiscard]] static QByteArray name();
    /// Whether all that is written from now on fails.
    static void setFull(bool isFull);
};

} // namespace quib::tests
