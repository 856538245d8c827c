#include "MRVectorClock.h"
#include "QBNote.h"

#include <Logging/QBDeviceUUID.h>

std::optional<MRVectorClock> QBNote::noteVectorClock() const
{
    return MRVectorClock::initWithData(vectorClock());
}

void QBNote::updateNoteVectorClock()
{
    const auto device = QBDeviceUUID::deviceUUID();
    if (!device) {
        return;
    }
    MRVectorClock clock = noteVectorClock().value_or(MRVectorClock());
    clock.updateClockValueForID(*device);
    setVectorClock(clock.data());
}

void QBNote::mergeVectorClockWithClock(const MRVectorClock &clock)
{
    setVectorClock(noteVectorClock().value_or(MRVectorClock()).mergeClock(clock).data());
}
