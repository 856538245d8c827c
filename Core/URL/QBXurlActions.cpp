#include "QBXurlActions.h"

#include "IACManager.h"
#include "QBXurlCoreController.h"
#include "XURLParameters.h"

#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesThemesManager.h>

using namespace Qt::StringLiterals;

/// How a note is to be shown.
struct QBXurlActions::NoteWork
{
    QString header = {};
    QString attachment = {};
    bool newWindow = false;
    bool floating = false;
    bool edit = false;
};

QBXurlActions::QBXurlActions(QBCoreDataStack &stack, QBXurlInterface *interface)
    : m_stack(stack)
    , m_interface(interface)
    , m_controller(std::make_unique<QBXurlCoreController>(stack))
    , m_self(std::make_shared<QBXurlActions *>(this))
{
    const auto add = [this](const QString &name, Action action) {
        m_actions.append({name, [weak = std::weak_ptr(m_self), action](const IACParameters &parameters,
                                                                       const IACSuccessBlock &success,
                                                                       const IACFailureBlock &failure) {
                              if (const auto self = weak.lock()) {
                                  (*self)->run(action, parameters, success, failure);
                              }
                          }});
    };
    add(u"open-tag"_s, &QBXurlActions::openTag);
    add(u"rename-tag"_s, &QBXurlActions::renameTag);
    add(u"delete-tag"_s, &QBXurlActions::deleteTag);
    add(u"open-note"_s, &QBXurlActions::openNote);
    add(u"create"_s, &QBXurlActions::create);
    add(u"trash"_s, &QBXurlActions::trash);
    add(u"archive"_s, &QBXurlActions::archive);
    add(u"untagged"_s, &QBXurlActions::untagged);
    add(u"todo"_s, &QBXurlActions::todo);
    add(u"today"_s, &QBXurlActions::today);
    add(u"tags"_s, &QBXurlActions::tags);
    add(u"search"_s, &QBXurlActions::search);
    add(u"add-text"_s, &QBXurlActions::addText);
    add(u"add-file"_s, &QBXurlActions::addFile);
    add(u"change-theme"_s, &QBXurlActions::changeTheme);
    add(u"change-font"_s, &QBXurlActions::changeFont);
    add(u"open-quib-pro"_s, &QBXurlActions::openQuibPro);
    add(u"open-themes"_s, &QBXurlActions::openThemes);
}

QBXurlActions::~QBXurlActions() = default;

void QBXurlActions::setupXCallbackURLs(IACManager &manager)
{
    manager.setCallbackURLScheme(kScheme);
    for (const auto &[name, block] : m_actions) {
        manager.handleAction(name, block);
    }
}

void QBXurlActions::run(Action action, const IACParameters &parameters, const IACSuccessBlock &success,
                        const IACFailureBlock &failure)
{
    m_hasReached = false;
    // Actions see what is typed, and write behind it.
    if (m_interface != nullptr) {
        m_interface->saveNote(/*forceSave=*/true);
    }
    const auto noticed = [weak = std::weak_ptr(m_self), success](const std::optional<IACParameters> &result,
                                                                 bool cancelled) {
        success(result, cancelled);
        // Afterwards: what is opened in answer may run an action of its own.
        if (const auto self = weak.lock()) {
            (*self)->m_hasReached = true;
        }
    };
    (this->*action)(parameters, noticed, failure);
    if (std::exchange(m_hasReached, false)) {
        showMainWindow(parameters);
    }
}

void QBXurlActions::showMainWindow(const IACParameters &parameters)
{
    if (m_interface != nullptr && quib::xurlShowWindow(parameters)) {
        m_interface->showMainWindow();
    }
}

void QBXurlActions::openNoteInWindow(const QString &identifier, const NoteWork &work)
{
    m_hasReached = true;
    if (m_interface == nullptr) {
        return;
    }
    const auto note = QBNote::noteWithUniqueIdentifier(identifier, *m_stack.managedObjectContext());
    if (!note) {
        return;
    }
    if (work.newWindow) {
        m_interface->detachEditorWindowForNote(*note, work.floating);
    } else {
        if (!m_interface->isNoteVisible(*note)) {
            m_interface->setCurrentSearch({});
        }
        m_interface->showNote(*note);
    }
    if (!work.header.isEmpty() || !work.attachment.isEmpty()) {
        m_interface->scrollNote(*note, work.header, work.attachment);
    }
    if (work.edit && !note->isTrashed() && !note->isArchived()) {
        m_interface->editNoteAtEnd(*note);
    }
}

void QBXurlActions::openNote(const IACParameters &parameters, const IACSuccessBlock &success,
                             const IACFailureBlock &failure)
{
    m_controller->handleOpenNote(
        parameters, success, failure,
        [this, &parameters](const QString &identifier, const QString &header, const QString &attachment) {
            openNoteInWindow(identifier, {.header = header,
                                          .attachment = attachment,
                                          .newWindow = quib::xurlNewWindow(parameters),
                                          .floating = quib::xurlFloatOnTop(parameters),
                                          .edit = quib::xurlEditNote(parameters)});
        });
}

void QBXurlActions::addText(const IACParameters &parameters, const IACSuccessBlock &success,
                            const IACFailureBlock &failure)
{
    m_controller->handleAddText(
        parameters, success, failure,
        [this, &parameters](const QString &identifier, const QString &header, const QString &attachment) {
            if (quib::xurlOpenNote(parameters)) {
                openNoteInWindow(identifier, {.header = header,
                                              .attachment = attachment,
                                              .newWindow = quib::xurlNewWindow(parameters),
                                              .edit = quib::xurlEditNote(parameters)});
            }
        });
}

void QBXurlActions::addFile(const IACParameters &parameters, const IACSuccessBlock &success,
                            const IACFailureBlock &failure)
{
    m_controller->handleAddFile(
        parameters, success, failure,
        [this, &parameters](const QString &identifier, const QString &header, const QString &attachment) {
            if (quib::xurlOpenNote(parameters)) {
                openNoteInWindow(identifier, {.header = header,
                                              .attachment = attachment,
                                              .newWindow = quib::xurlNewWindow(parameters),
                                              .edit = quib::xurlEditNote(parameters)});
            }
        });
}

void QBXurlActions::create(const IACParameters &parameters, const IACSuccessBlock &success,
                           const IACFailureBlock &failure)
{
    // The note comes later, and with it its window work: the main window too is shown only then.
    m_controller->handleCreate(
        parameters, success, failure, [weak = std::weak_ptr(m_self), parameters](const QString &identifier) {
            const auto self = weak.lock();
            if (!self) {
                return;
            }
            if (quib::xurlOpenNote(parameters)) {
                (*self)->openNoteInWindow(identifier, {.newWindow = quib::xurlNewWindow(parameters),
                                                       .floating = quib::xurlFloatOnTop(parameters),
                                                       .edit = quib::xurlEditNote(parameters)});
            }
            (*self)->showMainWindow(parameters);
        });
}

void QBXurlActions::showListInWindow(QBXurlList list, bool show, const QString &search)
{
    m_hasReached = true;
    if (m_interface == nullptr || !show) {
        return;
    }
    m_interface->showList(list);
    if (!search.isEmpty()) {
        m_interface->setCurrentSearch(search);
    }
}

void QBXurlActions::trash(const IACParameters &parameters, const IACSuccessBlock &success,
                          const IACFailureBlock &failure)
{
    m_controller->handleTrash(parameters, success, failure, [this](bool show, const QString &search) {
        showListInWindow(QBXurlList::Trash, show, search);
    });
}

void QBXurlActions::archive(const IACParameters &parameters, const IACSuccessBlock &success,
                            const IACFailureBlock &failure)
{
    m_controller->handleArchive(parameters, success, failure, [this](bool show, const QString &search) {
        showListInWindow(QBXurlList::Archive, show, search);
    });
}

void QBXurlActions::untagged(const IACParameters &parameters, const IACSuccessBlock &success,
                             const IACFailureBlock &failure)
{
    m_controller->handleUntagged(parameters, success, failure, [this](bool show, const QString &search) {
        showListInWindow(QBXurlList::Untagged, show, search);
    });
}

void QBXurlActions::todo(const IACParameters &parameters, const IACSuccessBlock &success,
                         const IACFailureBlock &failure)
{
    m_controller->handleTodo(parameters, success, failure, [this](bool show, const QString &search) {
        showListInWindow(QBXurlList::Todo, show, search);
    });
}

void QBXurlActions::today(const IACParameters &parameters, const IACSuccessBlock &success,
                          const IACFailureBlock &failure)
{
    m_controller->handleToday(parameters, success, failure, [this](bool show, const QString &search) {
        showListInWindow(QBXurlList::Today, show, search);
    });
}

void QBXurlActions::search(const IACParameters &parameters, const IACSuccessBlock &success,
                           const IACFailureBlock &failure)
{
    m_controller->handleSearch(parameters, success, failure,
                               [this](const quib::Ref<QBNoteTag> &tag, const QString &term) {
                                   m_hasReached = true;
                                   if (m_interface == nullptr) {
                                       return;
                                   }
                                   if (tag) {
                                       m_interface->selectTag(*tag);
                                   } else {
                                       m_interface->showList(QBXurlList::AllNotes);
                                   }
                                   m_interface->setCurrentSearch(term);
                               });
}

void QBXurlActions::tags(const IACParameters &parameters, const IACSuccessBlock &success,
                         const IACFailureBlock &failure)
{
    m_controller->handleTags(parameters, success, failure);
}

void QBXurlActions::openTag(const IACParameters &parameters, const IACSuccessBlock &success,
                            const IACFailureBlock &failure)
{
    const auto tag = m_controller->handleOpenTag(parameters, success, failure);
    if (tag && m_interface != nullptr) {
        m_interface->selectTag(*tag);
        m_interface->focusNotesTable();
    }
}

void QBXurlActions::renameTag(const IACParameters &parameters, const IACSuccessBlock &success,
                              const IACFailureBlock &failure)
{
    m_controller->handleRenameTag(parameters, success, failure);
}

void QBXurlActions::deleteTag(const IACParameters &parameters, const IACSuccessBlock &success,
                              const IACFailureBlock &failure)
{
    m_controller->handleDeleteTag(parameters, success, failure);
}

void QBXurlActions::changeTheme(const IACParameters &parameters, const IACSuccessBlock &success,
                                const IACFailureBlock &failure)
{
    // A name that no theme has is not kept: it may be anything, and would stand for the default theme only.
    const auto theme = m_controller->handleChangeTheme(parameters, success, failure);
    if (theme && QBNotesThemesManager::availableThemesNames().contains(*theme)) {
        QBNotesPreferenceManager::sharedPreferenceManager()->setCurrentAppThemeName(*theme);
    }
}

void QBXurlActions::changeFont(const IACParameters &parameters, const IACSuccessBlock &success,
                               const IACFailureBlock &failure)
{
    const QString font = m_controller->handleChangeFont(parameters, success, failure);
    if (!QBNotesThemesManager::availableFontThemesNames().contains(font)) {
        return;
    }
    if (m_interface != nullptr) {
        m_interface->loadFontThemeName(font);
    }
    QBNotesPreferenceManager::sharedPreferenceManager()->setFontThemeName(font);
}

void QBXurlActions::openQuibPro(const IACParameters &parameters, const IACSuccessBlock & /*success*/,
                                const IACFailureBlock & /*failure*/)
{
    showMainWindow(parameters);
    if (m_interface != nullptr) {
        m_interface->showQuibProPreferences();
    }
}

void QBXurlActions::openThemes(const IACParameters &parameters, const IACSuccessBlock & /*success*/,
                               const IACFailureBlock & /*failure*/)
{
    showMainWindow(parameters);
    if (m_interface != nullptr) {
        m_interface->showThemesPreferences();
    }
}
