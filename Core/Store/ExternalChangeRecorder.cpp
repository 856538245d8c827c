#include "ExternalChangeRecorder.h"

#include "QBExternalChanges.h"

#include <Logging/QBLogger.h>
#include <Store/NSManagedObjectContext.h>

using namespace Qt::StringLiterals;

namespace quib {

ExternalChangeRecorder::ExternalChangeRecorder(NSManagedObjectContext &moc, const QString &folder)
    : m_folder(folder)
    , m_willSaveToken(moc.willSave.add([this](NSManagedObjectContext &saving) { beginTurn(saving); }))
    , m_didSaveToken(
          moc.didSave.add([this](NSManagedObjectContext &, const NSManagedObjectContext::Changes &) { endTurn(); }))
{
}

void ExternalChangeRecorder::beginTurn(NSManagedObjectContext &moc)
{
    NSError error;
    m_turn = CompanionTurn::begin(m_folder, &error);
    if (!m_turn) {
        QBLogWarn(u"cannot tell whether an application is running: "_s + error.localizedDescription());
    }
    if (!m_turn || m_turn->isApplicationPresent()) {
        QBExternalChanges::updateExternalChangesInManagedObjectContext(moc);
    }
}

} // namespace quib
