// The entry of the tests of spelling: as every other, but dictionaries are at work in this program started anew, as
// they are in the application. In all other test programs they are at work in copies.

#include <Spelling/HunspellProcess.h>
#include <Support/TestEnvironment.h>

#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char **argv)
{
    quib::HunspellProcess::prepare(argc, argv);
    quib::tests::prepareTestEnvironment();
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
