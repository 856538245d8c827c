// The entry of test programs that ask for fonts: as the plain one, with an application object that knows them.

#include <Foundation/WorkerThreads.h>
#include <Graphics/GraphicsEnvironment.h>
#include <Support/TestEnvironment.h>

#include <gtest/gtest.h>

#include <QCoreApplication>

// For the leak checker, where it is built in: what the libraries keep to the end, and the encoder of the samples.
extern "C" __attribute__((visibility("default"))) const char *__lsan_default_suppressions(); // NOLINT
extern "C" const char *__lsan_default_suppressions()                                         // NOLINT
{
    return "leak:libfontconfig\nleak:libx265\n";
}

int main(int argc, char **argv)
{
    quib::tests::prepareTestEnvironment();
    testing::InitGoogleTest(&argc, argv);
    const auto application = quib::GraphicsEnvironment::makeApplication(argc, argv);
    return quib::WorkerThreads::endProcess(RUN_ALL_TESTS());
}
