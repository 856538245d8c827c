#pragma once

#include "Command.h"

#include <Foundation/NSError.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBNote.h>

#include <QList>
#include <QString>

#include <memory>

class QBCoreDataStack;

namespace quib::cli {

/// One run of quibctl on a profile: opens preferences and store when a command first asks for them, and makes what was
/// changed durable before success is told. Main queue.
class Session
{
public:
    Session();
    ~Session();

    /// The main context of the opened store.
    /// Errors: null after the reason was told; the command then ends with Failed.
    [[nodiscard]] NSManagedObjectContext *context();
    [[nodiscard]] QBCoreDataStack *stack();
    /// The syntax of the profile's notes: 0 native, 1 Markdown.
    [[nodiscard]] int syntax() const;

    /// The note of an identifier, or of an unambiguous beginning of one that has at least four characters.
    /// Errors: null after "no note ..." or "several notes ..." was told.
    [[nodiscard]] Ref<QBNote> note(const QString &identifier);
    /// All notes, or an empty list when any is missing: nothing is done by halves.
    [[nodiscard]] QList<Ref<QBNote>> notes(const QStringList &identifiers);

    /// Saves durably. Errors: false after the reason was told.
    [[nodiscard]] bool save();

private:
    struct Private;
    std::unique_ptr<Private> m_d;
};

} // namespace quib::cli
