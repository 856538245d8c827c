// The entry of every test program: fixed surroundings, one event loop owner, tests after.

#include "TestEnvironment.h"

#include <Foundation/WorkerThreads.h>

#include <gtest/gtest.h>

#include <QCoreApplication>

int main(int argc, char **argv)
{
    quib::tests::prepareTestEnvironment();
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return quib::WorkerThreads::endProcess(RUN_ALL_TESTS());
}
