#pragma once

#include <Files/Descriptor.h>
#include <Foundation/NSError.h>

#include <QString>

#include <optional>

namespace quib {

/// A profile held by one application, from before it opens the store until the lock is destroyed or the process ends in
/// any way: the kernel lets go of it. A second application on the same profile is refused; companions may read and
/// write beside the holder, and learn from the lock that it is there. A resource, movable; any thread.
class ProfileLock
{
public:
    /// Takes the profile, then waits until companions that began to save before have ended, so that whatever is written
    /// from now on is also told. Waits while a companion saves, for seconds at most.
    /// Shape:   an empty folder stands for the profile's persistent data; it is made if missing.
    /// Errors:  nullopt; FileLocking when another application holds the profile (its process is named, and in causeCode
    ///          where known), or when a companion never ended its save; others as fillFileError.
    [[nodiscard]] static std::optional<ProfileLock> acquire(const QString &folder, NSError *error);

    /// Whether an application holds the profile now. Nothing is made or locked by asking. False where that cannot be
    /// found out.
    [[nodiscard]] static bool isHeld(const QString &folder);
    /// The process that holds the profile, 0 where it cannot be told, nothing when no application does.
    [[nodiscard]] static std::optional<qint64> holder(const QString &folder);

private:
    explicit ProfileLock(Descriptor file)
        : m_file(std::move(file))
    {
    }

    Descriptor m_file;
};

/// A companion's time to save: while it lasts, an application that starts waits before it opens the store, unless it
/// held the profile already. A resource, movable; any thread.
class CompanionTurn
{
public:
    /// Shape:   as ProfileLock::acquire.
    /// Errors:  nullopt, as fillFileError.
    [[nodiscard]] static std::optional<CompanionTurn> begin(const QString &folder, NSError *error);

    /// Whether an application held the profile when the turn began, and so must be told what is saved. When false, one
    /// that comes reads the store only after the turn.
    [[nodiscard]] bool isApplicationPresent() const { return !m_file.isOpen(); }

private:
    explicit CompanionTurn(Descriptor file)
        : m_file(std::move(file))
    {
    }

    Descriptor m_file; ///< locked while no application is there
};

} // namespace quib
