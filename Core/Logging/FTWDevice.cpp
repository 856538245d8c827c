#include "FTWDevice.h"

#include <Files/AtomicFile.h>
#include <Files/Profile.h>

#include <QCoreApplication>
#include <QLocale>
#include <QStorageInfo>
#include <QSysInfo>

#include <atomic>

using namespace Qt::StringLiterals;

namespace {

QString firmwareFact(const QString &name)
{
    const auto read = quib::readWholeFile(u"/sys/class/dmi/id/"_s % name, nullptr, /*limit=*/4096);
    const QString fact = QString::fromUtf8(read.value_or(QByteArray())).simplified();
    return fact.isEmpty() ? u"Unknown"_s : fact;
}

QStorageInfo storage()
{
    return QStorageInfo(quib::Profile::applicationGroupFolder());
}

std::atomic<double> &screenScale()
{
    static std::atomic<double> scale = 1;
    return scale;
}

} // namespace

QString FTWDevice::appShortVersion()
{
    return QCoreApplication::applicationVersion().section(u'+', 0, 0);
}

QString FTWDevice::appBuildNumber()
{
    const QString build = QCoreApplication::applicationVersion().section(u'+', 1);
    return build.isEmpty() ? u"0"_s : build;
}

QString FTWDevice::systemName()
{
    return QSysInfo::productType();
}

QString FTWDevice::systemVersion()
{
    return QSysInfo::productVersion();
}

QString FTWDevice::model()
{
    return firmwareFact(u"product_name"_s);
}

QString FTWDevice::hardwareModel()
{
    return firmwareFact(u"board_name"_s);
}

QString FTWDevice::platform()
{
    return QSysInfo::currentCpuArchitecture();
}

QString FTWDevice::freeDiskSpace()
{
    return QLocale().formattedDataSize(storage().bytesAvailable());
}

QString FTWDevice::totalDiskSpace()
{
    return QLocale().formattedDataSize(storage().bytesTotal());
}

bool FTWDevice::isRetina()
{
    return screenScale().load() > 1;
}

void FTWDevice::setScreenScale(double scale)
{
    screenScale().store(scale);
}
