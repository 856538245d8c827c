#include "Commands.h"
#include "Output.h"
#include "Session.h"

#include <Foundation/NSProgress.h>
#include <Store/QBStoreChecker.h>

#include <QCommandLineParser>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace quib::cli {

ExitStatus runCheck(Session &session, const QCommandLineParser &parser)
{
    QBCoreDataStack *stack = session.stack();
    if (stack == nullptr) {
        return ExitStatus::Failed;
    }
    const bool repair = parser.isSet(u"repair"_s);
    NSProgress progress;
    progress.setObserver([](qint64 completedUnitCount, qint64 totalUnitCount) {
        showProgress(u"checking notes: %1 of %2"_s.arg(completedUnitCount).arg(totalUnitCount));
    });
    NSError error;
    const auto findings = QBStoreChecker(*stack).checkStore(repair, progress, &error);
    showProgress({});
    if (!findings) {
        complain(error.localizedDescription());
        return ExitStatus::Failed;
    }
    QJsonArray array;
    qsizetype left = 0;
    for (const QBStoreFinding &finding : *findings) {
        left += finding.isRepaired ? 0 : 1;
        if (parser.isSet(u"json"_s)) {
            array.append(QJsonObject{
                {u"object"_s, finding.object}, {u"message"_s, finding.message}, {u"repaired"_s, finding.isRepaired}});
        } else {
            printLine(QString(singleLine(finding.object) % u": " % finding.message %
                              (finding.isRepaired ? u" (repaired)"_s : QString())));
        }
    }
    if (parser.isSet(u"json"_s)) {
        printJson(array);
    } else if (findings->isEmpty()) {
        printLine(u"nothing wrong was found"_s);
    }
    return left == 0 ? ExitStatus::Done : ExitStatus::Failed;
}

} // namespace quib::cli
