#pragma once

#include <Store/Ref.h>

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <utility>

class NSManagedObjectContext;
class NSManagedObjectModel;
class QBNoteTag;

namespace quib {

/// Remembers, for one context, which tag a name stands for, so that a rewrite of many notes does not ask the store for
/// the same tags again and again. Holds found tags only: what it does not know is fetched. A remembered tag is given
/// only while it lives in the context under the title it was found by and nobody wrote to the store since.
/// Confined to the context's queue, but for forContext.
class TagLookup
{
public:
    /// The lookup of a context, made at its first use. Any thread.
    [[nodiscard]] static std::shared_ptr<TagLookup> forContext(NSManagedObjectContext &moc);
    explicit TagLookup(std::shared_ptr<const NSManagedObjectModel> model);
    ~TagLookup();
    TagLookup(const TagLookup &) = delete;
    TagLookup &operator=(const TagLookup &) = delete;

    /// The tag of a name that is sanitised already, or null.
    [[nodiscard]] Ref<QBNoteTag> tagWithName(const QString &name, NSManagedObjectContext &moc);
    /// One tag a name, null where there is none; few fetches however many the names.
    [[nodiscard]] QList<Ref<QBNoteTag>> tagsWithNames(const QStringList &names, NSManagedObjectContext &moc);
    void remember(QBNoteTag &tag);

private:
    struct Entry
    {
        Ref<QBNoteTag> tag;
        QString title;
    };
    void forgetIfStoreChanged(NSManagedObjectContext &moc);
    [[nodiscard]] Ref<QBNoteTag> remembered(const QString &key, NSManagedObjectContext &moc);

    /// What the tags are described by; they may outlive their context here, and so the stack that owns the model.
    std::shared_ptr<const NSManagedObjectModel> m_model;
    QHash<QString, Entry> m_entries; // by folded title
    std::optional<qint64> m_changeCounter;
};

} // namespace quib
