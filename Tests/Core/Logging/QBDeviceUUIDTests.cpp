// The device's name for the vector clock: stable, its own for each machine and each profile.

#include <Files/Profile.h>
#include <Logging/QBDeviceUUID.h>
#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QRegularExpression>

using namespace Qt::StringLiterals;
using quib::Profile;
using quib::tests::TemporaryFolder;

namespace {

bool isCanonical(const QString &uuid)
{
    static const QRegularExpression form(u"\\A[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\z"_s);
    return form.match(uuid).hasMatch();
}

TEST(DeviceIdentifier, IsCanonicalAndTheSameEachTime)
{
    const TemporaryFolder folder;
    Profile::setRoot(folder.path(u"one"_s));
    const auto one = QBDeviceUUID::deviceUUID();
    Profile::setRoot(folder.path(u"two"_s));
    const auto two = QBDeviceUUID::deviceUUID();
    Profile::setRoot(folder.path(u"one"_s));
    const auto again = QBDeviceUUID::deviceUUID();
    Profile::setRoot(QString());
    ASSERT_TRUE(one && two);
    EXPECT_TRUE(isCanonical(*one)) << qPrintable(*one);
    EXPECT_EQ(one, again);
    EXPECT_NE(one, two);
}

TEST(DeviceIdentifier, DependsOnMachineAndProfileAlone)
{
    const QByteArray machine("0123456789abcdef0123456789abcdef");
    const QString uuid = QBDeviceUUID::uuidForMachine(machine, u"/home/u/profile"_s);
    // Fixed for all time: clocks in stored notes count by it.
    EXPECT_EQ(uuid, QBDeviceUUID::uuidForMachine(machine, u"/home/u/profile"_s));
    EXPECT_EQ(uuid, QStringLiteral("3DB96360-15AC-5BB7-9250-6FAEB2F36E87"));
    EXPECT_TRUE(isCanonical(uuid));
    EXPECT_NE(uuid, QBDeviceUUID::uuidForMachine(machine, u"/home/u/other"_s));
    EXPECT_NE(uuid, QBDeviceUUID::uuidForMachine("1123456789abcdef0123456789abcdef", u"/home/u/profile"_s));
    EXPECT_FALSE(uuid.toLower().contains(u"0123456789abcdef"));
}

TEST(DeviceIdentifier, OfTheMachineIsTheFirstValidOne)
{
    const TemporaryFolder folder;
    const QString missing = folder.path(u"missing"_s);
    const QString fresh = folder.write(u"fresh"_s, "uninitialized\n");
    const QString valid = folder.write(u"valid"_s, "0123456789abcdef0123456789abcdef\n");
    const QString other = folder.write(u"other"_s, "ffffffffffffffffffffffffffffffff\n");
    EXPECT_EQ(QBDeviceUUID::machineIdentifier({missing, fresh, valid, other}), "0123456789abcdef0123456789abcdef");
    EXPECT_TRUE(QBDeviceUUID::machineIdentifier({missing, fresh}).isEmpty());
}

TEST(DeviceIdentifier, WithoutAMachinesIsKeptInAFile)
{
    const TemporaryFolder folder;
    const QString path = folder.path(u"new/.device-id"_s);
    const auto made = QBDeviceUUID::keptIdentifier(path);
    ASSERT_TRUE(made);
    EXPECT_TRUE(isCanonical(*made));
    EXPECT_EQ(QBDeviceUUID::keptIdentifier(path), made);
    EXPECT_EQ(folder.names(u"new"_s), QStringList{u".device-id"_s});
    folder.write(u"new/.device-id"_s, "damaged");
    const auto repaired = QBDeviceUUID::keptIdentifier(path);
    ASSERT_TRUE(repaired);
    EXPECT_EQ(QBDeviceUUID::keptIdentifier(path), repaired);
    EXPECT_FALSE(QBDeviceUUID::keptIdentifier(folder.write(u"file"_s, "") + u"/below"_s));
}

TEST(DeviceName, IsNotEmpty)
{
    EXPECT_FALSE(QBDeviceUUID::deviceName().isEmpty());
}

} // namespace
