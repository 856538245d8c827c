#include "TestEnvironment.h"

#include <QLocale>

#include <ctime>

namespace quib::tests {

void prepareTestEnvironment()
{
    qputenv("TZ", "Europe/Rome");
    ::tzset();
    qputenv("LC_ALL", "C.UTF-8");
    for (const char *proxy : {"http_proxy", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"}) {
        qunsetenv(proxy);
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
}

} // namespace quib::tests
