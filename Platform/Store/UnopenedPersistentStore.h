#pragma once

class NSPersistentStore;

namespace quib {

/// Stands in where no store could be opened: every read and every save fails with PersistentStoreOpen, so that what
/// was typed stays pending in its context. One for the process, any thread.
[[nodiscard]] NSPersistentStore *unopenedPersistentStore();

} // namespace quib
