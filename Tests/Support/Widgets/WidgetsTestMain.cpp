// The entry of test programs that show windows: as the plain one, with an application of windows.

#include <Foundation/WorkerThreads.h>
#include <Support/TestEnvironment.h>

#include <gtest/gtest.h>

#include <QApplication>

// For the leak checker, where it is built in: what the libraries keep to the end.
extern "C" __attribute__((visibility("default"))) const char *__lsan_default_suppressions(); // NOLINT
extern "C" const char *__lsan_default_suppressions()                                         // NOLINT
{
    return "leak:libfontconfig\nleak:libx265\nleak:libQt6\n";
}

int main(int argc, char **argv)
{
    quib::tests::prepareTestEnvironment();
    testing::InitGoogleTest(&argc, argv);
    const QApplication application(argc, argv);
    QApplication::setCursorFlashTime(0);
    return quib::WorkerThreads::endProcess(RUN_ALL_TESTS());
}
