#include "NSProgress.h"

#include <algorithm>

NSProgress::NSProgress(qint64 totalUnitCount)
    : m_total(totalUnitCount)
{
}

void NSProgress::setTotalUnitCount(qint64 totalUnitCount)
{
    m_total.store(totalUnitCount);
    tell();
}

void NSProgress::setCompletedUnitCount(qint64 completedUnitCount)
{
    m_completed.store(completedUnitCount);
    tell();
}

void NSProgress::addCompletedUnits(qint64 units)
{
    m_completed.fetch_add(units);
    tell();
}

double NSProgress::fractionCompleted() const
{
    const auto total = static_cast<double>(totalUnitCount());
    const auto completed = static_cast<double>(completedUnitCount());
    return total > 0 ? std::clamp(completed / total, 0.0, 1.0) : 0.0;
}

void NSProgress::cancel()
{
    if (isCancellable()) {
        m_isCancelled.store(true);
    }
}

void NSProgress::setObserver(Observer observer)
{
    const std::lock_guard lock(m_mutex);
    m_observer = std::move(observer);
}

void NSProgress::tell()
{
    const std::lock_guard lock(m_mutex);
    if (m_observer) {
        m_observer(completedUnitCount(), totalUnitCount());
    }
}
