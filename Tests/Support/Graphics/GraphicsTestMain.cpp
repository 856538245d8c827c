// The entry of test programs that ask for fonts: as the plain one, with an application object that knows them.

#include <Graphics/GraphicsEnvironment.h>

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QLocale>

int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const auto application = quib::GraphicsEnvironment::makeApplication(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    return RUN_ALL_TESTS();
}
