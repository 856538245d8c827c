#include "DesktopOpener.h"

#include <QProcess>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace quib {

bool openWithDesktop(const QUrl &url)
{
    const QString text = url.toString(QUrl::FullyEncoded);
    // A scheme in front: no URL can be taken for an option.
    if (!url.isValid() || url.scheme().isEmpty() || text.size() > kLongestOpenedURL) {
        return false;
    }
    const QString opener = QStandardPaths::findExecutable(u"xdg-open"_s);
    if (opener.isEmpty()) {
        return false;
    }
    QProcess process;
    process.setProgram(opener);
    process.setArguments({text});
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    return process.startDetached();
}

} // namespace quib
