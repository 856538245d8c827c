#pragma once

#include <Foundation/DispatchQueue.h>
#include <Foundation/NotificationCenter.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/NSPersistentStore.h>
#include <Store/QBNote.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace quib {

/// Something of all notes that a search keeps in memory: read from the store, in the background or now, and following
/// the context's saves. It is known only as long as it is what the store holds: not before it was read, and not when
/// somebody else wrote, who is noticed by the store's change counter. Queue: the context's.
template <typename Contents> class NoteMirror : public std::enable_shared_from_this<NoteMirror<Contents>>
{
public:
    /// Reads it all, on any queue.
    /// Errors: nullopt where that fails, or there is no room for it.
    using Reader = std::function<std::optional<Contents>(NSPersistentStore &store, const NSEntityDescription *entity,
                                                         NSError *error)>;
    /// Takes a save over.
    /// Errors: false where it must be read anew.
    using Follower = std::function<bool(Contents &contents, const NSManagedObjectContext::Changes &changes)>;

    /// context: a root context, which must outlive the mirror.
    [[nodiscard]] static std::shared_ptr<NoteMirror> make(NSManagedObjectContext &context, Reader read, Follower follow)
    {
        const std::shared_ptr<NoteMirror> mirror(new NoteMirror(context, std::move(read), std::move(follow)));
        mirror->m_didSave = context.didSave.add(
            [mirror = mirror.get()](NSManagedObjectContext &, const NSManagedObjectContext::Changes &changes) {
                mirror->takeOver(changes);
            });
        return mirror;
    }

    /// Reads on a queue, and again there whenever it is no longer known.
    void startFilling(std::shared_ptr<DispatchQueue> queue)
    {
        m_fillingQueue = std::move(queue);
        m_fillingQueue->async([weak = this->weak_from_this(), coordinator = m_context.persistentStoreCoordinator(),
                               read = m_read, entity = m_entity, home = m_context.queue()] {
            NSPersistentStore &store = *coordinator->persistentStore();
            // Asked before the rows are read: what is written meanwhile moves the counter on.
            const auto counter = store.changeCounter(nullptr);
            auto contents = std::make_shared<std::optional<Contents>>(counter ? read(store, entity, nullptr)
                                                                              : std::optional<Contents>());
            home->async([weak, contents, counter = counter.value_or(-1)] {
                if (const auto mirror = weak.lock()) {
                    mirror->take(std::move(*contents), counter);
                }
            });
        });
    }
    /// Reads now.
    /// Errors: false.
    [[nodiscard]] bool fill(NSError *error)
    {
        const auto counter = store().changeCounter(error);
        if (!counter) {
            return false;
        }
        take(m_read(store(), m_entity, error), *counter);
        return isFilled();
    }
    [[nodiscard]] bool isFilled() const { return m_contents.has_value(); }

    /// What the store holds now; null where it is to be asked itself.
    [[nodiscard]] const Contents *contents()
    {
        if (m_contents && store().changeCounter(nullptr) != m_changeCounter) {
            forget();
        }
        return m_contents ? &*m_contents : nullptr;
    }
    [[nodiscard]] NSPersistentStore &store() const
    {
        return *m_context.persistentStoreCoordinator()->persistentStore();
    }
    /// That of notes.
    [[nodiscard]] const NSEntityDescription *entity() const { return m_entity; }

private:
    NoteMirror(NSManagedObjectContext &context, Reader read, Follower follow)
        : m_context(context)
        , m_entity(context.managedObjectModel().entityNamed(QBNote::entityName()))
        , m_read(std::move(read))
        , m_follow(std::move(follow))
    {
    }
    void take(std::optional<Contents> contents, qint64 changeCounter)
    {
        if (contents && store().changeCounter(nullptr) != changeCounter) {
            forget(); // a writer was quicker
        } else if (contents) {
            m_contents = std::move(contents);
            m_changeCounter = changeCounter;
        }
    }
    void takeOver(const NSManagedObjectContext::Changes &changes)
    {
        if (!m_contents) {
            return; // what was saved is in the rows, or moves the counter while they are read
        }
        // Our own save moves the counter by one; any further and somebody else wrote too.
        if (store().changeCounter(nullptr) != m_changeCounter + 1 || !m_follow(*m_contents, changes)) {
            forget();
            return;
        }
        ++m_changeCounter;
    }
    void forget()
    {
        m_contents.reset();
        if (m_fillingQueue != nullptr) {
            startFilling(m_fillingQueue);
        }
    }

    NSManagedObjectContext &m_context;
    const NSEntityDescription *m_entity;
    Reader m_read;
    Follower m_follow;
    std::shared_ptr<DispatchQueue> m_fillingQueue; ///< null where nobody asked for it
    std::optional<Contents> m_contents;
    /// The store's when the contents agreed with it.
    qint64 m_changeCounter = -1;
    ObservationToken m_didSave;
};

} // namespace quib
