// The entry of every test program: one event loop owner, a fixed locale, tests after.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLocale>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    return RUN_ALL_TESTS();
}
