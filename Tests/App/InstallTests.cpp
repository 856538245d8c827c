// What cmake --install puts in place, and that it names the program where it then is.

#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace quib::tests {

TEST(Installation, EverythingIsInPlaceAndNamesTheInstalledProgram)
{
    const TemporaryFolder folder;
    QProcess install;
    install.start(u"cmake"_s, {u"--install"_s, QStringLiteral(QUIB_BINARY_DIR), u"--prefix"_s, folder.path()});
    ASSERT_TRUE(install.waitForFinished(120'000));
    ASSERT_EQ(install.exitCode(), 0) << install.readAllStandardError().toStdString();
    for (const QString &name :
         {u"bin/quib"_s, u"bin/quibctl"_s, u"share/applications/net.quibworks.Quib.desktop"_s,
          u"share/applications/net.quibworks.Quib.SendTo.desktop"_s,
          u"share/dbus-1/services/net.quibworks.Quib.service"_s, u"share/mime/packages/net.quibworks.Quib.xml"_s,
          u"share/metainfo/net.quibworks.Quib.metainfo.xml"_s,
          u"share/icons/hicolor/scalable/apps/net.quibworks.Quib.svg"_s,
          u"share/icons/hicolor/symbolic/apps/net.quibworks.Quib-symbolic.svg"_s,
          u"share/icons/hicolor/16x16/apps/net.quibworks.Quib.png"_s,
          u"share/icons/hicolor/512x512/apps/net.quibworks.Quib.png"_s, u"share/man/man1/quibctl.1"_s}) {
        EXPECT_TRUE(QFileInfo(folder.path(name)).size() > 0) << name.toStdString();
    }
    const QByteArray program = folder.path(u"bin/quib"_s).toUtf8();
    const QByteArray service = folder.read(u"share/dbus-1/services/net.quibworks.Quib.service"_s);
    EXPECT_TRUE(service.contains(QByteArray("\nExec=" + program + " --service\n"))) << service.constData();
    const QByteArray entry = folder.read(u"share/applications/net.quibworks.Quib.desktop"_s);
    EXPECT_TRUE(entry.contains(QByteArray("\nExec=" + program + " %U\n"))) << entry.constData();
    QProcess version;
    version.start(QString::fromUtf8(program), {u"--version"_s});
    ASSERT_TRUE(version.waitForFinished(60'000));
    EXPECT_TRUE(version.readAllStandardOutput().startsWith("quib "));
}

} // namespace quib::tests
