#include "StoreFetch.h"

#include <Logging/QBLogger.h>

using namespace Qt::StringLiterals;

namespace quib {

void logFetchError(const NSError &error, const char *function, int line)
{
    if (QBLogger::isEnabled(QBLogger::Error)) {
        const QString reason =
            error.localizedDescription().isEmpty() ? u"Unknown Error"_s : error.localizedDescription();
        QBLogger::sharedLogger().logError(QBLogger::format(function, line, u"Error while fetching\n"_s + reason));
    }
}

} // namespace quib
