// The entry of test programs that show windows: as the plain one, with an application of windows.

#include <gtest/gtest.h>

#include <QApplication>
#include <QLocale>

// For the leak checker, where it is built in: what the libraries keep to the end.
extern "C" __attribute__((visibility("default"))) const char *__lsan_default_suppressions(); // NOLINT
extern "C" const char *__lsan_default_suppressions()                                         // NOLINT
{
    return "leak:libfontconfig\nleak:libx265\nleak:libQt6\n";
}

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen"); // a test is listed and run alike where there is no display
    }
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    const QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0);
    return RUN_ALL_TESTS();
}
