// What cmake --install puts in place, and that it names the program where it then is.

#include <Support/QtPrinters.h>
#include <Support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

QString readResource(const QString &name)
{
    QFile file(QStringLiteral(QUIB_SOURCE_DIR "/Resources/") + name);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// Those of the interface, English aside.
QStringList languages()
{
    QStringList found;
    const QDir folder(QStringLiteral(QUIB_SOURCE_DIR "/Resources/Translations"));
    for (const QString &name : folder.entryList({u"quib_*.ts"_s})) {
        if (name != u"quib_en.ts") {
            found.append(name.sliced(5).chopped(3));
        }
    }
    return found;
}

} // namespace

TEST(Installation, TheDesktopsFilesSpeakEveryLanguageOfTheInterface)
{
    ASSERT_FALSE(languages().isEmpty());
    const QString metainfo = readResource(u"metainfo/net.quibworks.Quib.metainfo.xml"_s);
    for (const QString &language : languages()) {
        for (const QString &element : {u"summary"_s, u"p"_s, u"li"_s}) {
            EXPECT_EQ(metainfo.count(QString(u'<' % element % u" xml:lang=\""_s % language % u"\">"_s)),
                      metainfo.count(QString(u'<' % element % u'>')))
                << language.toStdString() << ' ' << element.toStdString();
        }
        EXPECT_TRUE(metainfo.contains(QString(u">"_s % language % u"</lang>"_s)));
        static const QRegularExpression key(u"^(Name|GenericName|Comment|Keywords)=(.*)$"_s,
                                            QRegularExpression::MultilineOption);
        for (const QString &name : {u"net.quibworks.Quib.desktop.in"_s, u"net.quibworks.Quib.SendTo.desktop.in"_s}) {
            for (const QString &group : readResource(u"desktop/"_s + name).split(u"\n["_s)) {
                for (auto match = key.globalMatch(group); match.hasNext();) {
                    const auto line = match.next();
                    const QString translated = u'\n' % line.captured(1) % u'[' % language % u"]="_s;
                    EXPECT_TRUE(line.captured(2) == u"Quib" || group.count(translated) == 1)
                        << name.toStdString() << ' ' << line.captured().toStdString() << ' ' << language.toStdString();
                }
            }
        }
    }
}

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
