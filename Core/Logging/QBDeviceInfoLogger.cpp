#include "QBDeviceInfoLogger.h"

#include "FTWDevice.h"
#include "QBLogger.h"

using namespace Qt::StringLiterals;

void QBDeviceInfoLogger::logDeviceInfo()
{
    logDeviceInfo(QBLogger::sharedLogger());
}

void QBDeviceInfoLogger::logDeviceInfo(QBLogger &logger)
{
    logger.logDebug(u"-------- Device info: ---------"_s);
    logger.logDebug(u"App Version: "_s % FTWDevice::appShortVersion() % u" (" % FTWDevice::appBuildNumber() % u')');
    logger.logDebug(FTWDevice::systemName() % u' ' % FTWDevice::systemVersion());
    logger.logDebug(FTWDevice::model() % u" (" % FTWDevice::hardwareModel() % u' ' % FTWDevice::platform() % u')');
    logger.logDebug(u"Disk Space: "_s % FTWDevice::freeDiskSpace() % u" / " % FTWDevice::totalDiskSpace());
    logger.logDebug(u"Retina: "_s % (FTWDevice::isRetina() ? u"YES"_s : u"NO"_s));
    logger.logDebug(u"-------------------------------"_s);
}
