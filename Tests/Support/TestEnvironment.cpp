#include "TestEnvironment.h"

#include <QLocale>

#include <ctime>

namespace quib::tests {

void prepareTestEnvironment()
{
    qputenv("TZ", "Europe/Rome");
    ::tzset();
    qputenv("LC_ALL", "C.UTF-8");
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

} // namespace quib::tests
