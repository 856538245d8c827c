#pragma once

class QBLogger;

/// Writes a block of facts on the machine into the log, for bug reports.
class QBDeviceInfoLogger
{
public:
    QBDeviceInfoLogger() = delete;

    /// Writes the block at the debug level.
    static void logDeviceInfo();
    static void logDeviceInfo(QBLogger &logger);
};
