#pragma once

#include "IACCallbacks.h"
#include "QBXurlTokenController.h"

#include <Foundation/NSDate.h>
#include <Foundation/NSRange.h>
#include <Markup/Syntax/QBNoteSection.h>
#include <Store/NSFetchRequest.h>
#include <Store/QBNote.h>
#include <Store/QBNoteTag.h>

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

class NSManagedObjectContext;
class QBCoreDataStack;
class QBNotesTextStorage;

/// The logic of every URL action: it reads parameters, changes the store, and reports on the callbacks, of which any
/// may be absent. What is to happen in windows it only asks for, through updateInterface; it never touches one. What a
/// handler changed is durable before it reports success. Nothing is rolled back when a later step fails.
///
/// The text of an error for the caller stands in the error's domain; the codes are those of ErrorCode. Owned by the
/// process, beside the stack that outlives it. Main queue; create works on a queue of its own and comes back.
class QBXurlCoreController
{
public:
    using Parameters = IACParameters;
    /// The note, the header to scroll to (as titleForXURL writes it) and the attachment; either of the latter may be
    /// null.
    using UpdateNote = std::function<void(const QString &identifier, const QString &header, const QString &attachment)>;
    using UpdateList = std::function<void(bool show, const QString &search)>;
    /// The tag is null for a search in all notes.
    using UpdateSearch = std::function<void(const quib::Ref<QBNoteTag> &tag, const QString &term)>;
    using UpdateCreated = std::function<void(const QString &identifier)>;

    enum class ErrorCode : qint64
    {
        Parameter = 1,
        NotFound = 2,
        Token = 3,
        Internal = 4,
    };

    /// The largest JSON of notes or tags that is handed out, so that a caller's URL stays one that can be opened.
    /// Units: bytes of UTF-8.
    static constexpr qsizetype kLargestResult = 10 * 1024 * 1024;

    explicit QBXurlCoreController(QBCoreDataStack &stack, qsizetype largestResult = kLargestResult);
    ~QBXurlCoreController();
    QBXurlCoreController(const QBXurlCoreController &) = delete;
    QBXurlCoreController &operator=(const QBXurlCoreController &) = delete;

    // Notes: QBXurlCoreController+Notes.cpp

    void handleOpenNote(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure,
                        const UpdateNote &updateInterface);
    void handleAddText(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure,
                       const UpdateNote &updateInterface);
    void handleAddFile(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure,
                       const UpdateNote &updateInterface);

    // A new note: QBXurlCoreController+Create.cpp

    /// Reports later, on the main queue.
    void handleCreate(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure,
                      const UpdateCreated &updateInterface);
    /// Whether an action has still to report.
    [[nodiscard]] bool hasPendingActions() const { return m_pendingActions > 0; }

    // Lists: QBXurlCoreController+Lists.cpp

    void handleTrash(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure,
                     const UpdateList &updateInterface);
    void handleArchive(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure,
                       const UpdateList &updateInterface);
    void handleUntagged(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure,
                        const UpdateList &updateInterface);
    void handleToday(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure,
                     const UpdateList &updateInterface);
    void handleTodo(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure,
                    const UpdateList &updateInterface);
    void handleSearch(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure,
                      const UpdateSearch &updateInterface);

    // Tags, themes and fonts: QBXurlCoreController+Tags.cpp

    void handleTags(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    /// The tag, in every case that is not a failure.
    quib::Ref<QBNoteTag> handleOpenTag(const Parameters &parameters, const IACSuccessBlock &success,
                                       const IACFailureBlock &failure);
    void handleRenameTag(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    void handleDeleteTag(const Parameters &parameters, const IACSuccessBlock &success, const IACFailureBlock &failure);
    /// The theme's name, trimmed. Nothing, and no callback, for a theme that needs the subscription where there is
    /// none.
    std::optional<QString> handleChangeTheme(const Parameters &parameters, const IACSuccessBlock &success,
                                             const IACFailureBlock &failure);
    /// The name of the font theme; null where none was given.
    QString handleChangeFont(const Parameters &parameters, const IACSuccessBlock &success,
                             const IACFailureBlock &failure);

    // Helpers

    /// Whether there is a token and the one given is it.
    [[nodiscard]] bool isTokenValid(const QString &token) const;
    /// A JSON array with title, identifier, dates and pin of each note that is not locked.
    /// Errors: nothing where the array would be larger than a result may be.
    [[nodiscard]] std::optional<QString> resultForNotes(const QList<quib::Ref<QBNote>> &notes) const;
    /// The pinned ones first, of equals the ones changed last.
    [[nodiscard]] static QList<quib::Ref<QBNote>> sortNotes(const QList<quib::Ref<QBNote>> &notes);
    /// ISO 8601; empty for no date.
    [[nodiscard]] static QString formatDateForXURL(std::optional<NSDate> date);
    /// The first section of that title, in any case; nothing for none and for an empty title.
    [[nodiscard]] static std::optional<QBNoteSection> sectionForNote(const QBNote &note, const QString &withTitle);
    /// Puts a text into a note, or into one of its sections, in the way that the mode names; a null mode appends.
    /// Errors: false, with the failure told, for a mode that is none.
    [[nodiscard]] static bool addText(const QString &text, QBNote &toNote,
                                      const std::optional<QBNoteSection> &andSection, const QString &usingMode,
                                      const IACFailureBlock &failure);
    /// Makes an attachment of the bytes and gives its marker. The name is made safe; no folder in it is followed.
    /// Errors: nothing where the file could not be written or named. Queue: the context's.
    [[nodiscard]] static std::optional<QString> saveFileWithData(const QByteArray &data, const QString &andName,
                                                                 NSManagedObjectContext &withMoc);
    /// The bytes of a base 64 text in which all other characters are passed over.
    /// Errors: nothing for a text without any, or one that is cut.
    [[nodiscard]] static std::optional<QByteArray> dataFromBase64(const QString &text);
    /// The range of the header's line in a styled text, else that of the attachment, which may be named by its file
    /// name or by the reference in its marker; not-found for none.
    [[nodiscard]] static NSRange rangeToScrollForHeader(const QString &header, const QString &orAttachment,
                                                        const QBNotesTextStorage &inStorage);

private:
    struct Creation;

    /// A list that can be read with a token: shows it, and answers with its notes.
    void handleList(const NSFetchRequest &request, const Parameters &parameters, const IACSuccessBlock &success,
                    const IACFailureBlock &failure, const UpdateList &updateInterface);
    /// Reports the notes, or the failure with the message given.
    void reportNotes(const QList<quib::Ref<QBNote>> &notes, const QString &failureMessage,
                     const IACSuccessBlock &success, const IACFailureBlock &failure) const;
    /// The tag that a parameter names. Errors: null after the failure was told.
    [[nodiscard]] quib::Ref<QBNoteTag> tagNamedInParameters(const Parameters &parameters,
                                                            const IACFailureBlock &failure) const;
    /// Saves at once. Errors: false after the failure was told; the changes stay pending.
    [[nodiscard]] bool save(const IACFailureBlock &failure);
    /// Has what a failed action left pending saved with the next turn of the event loop.
    void saveLater();
    /// Returns true when the parameters name a token that is not the valid one; the failure is then told.
    [[nodiscard]] bool hasInvalidToken(const Parameters &parameters, const QString &message,
                                       const IACFailureBlock &failure) const;
    void finishCreation(const Creation &creation);
    [[nodiscard]] NSManagedObjectContext &moc() const;

    QBCoreDataStack &m_stack;
    QBXurlTokenController m_tokenController;
    qsizetype m_largestResult;
    int m_pendingActions = 0;
    /// Lives as long as this; what comes back from another queue looks here first.
    std::shared_ptr<QBXurlCoreController *> m_self;
};
