#pragma once

#include "NoteTextView.h"
#include "QBEditorAutoCompleteItemsProvider.h"
#include "QBNoteAutoCompletionItemsProvider.h"

#include <Foundation/NSRange.h>

#include <QList>
#include <QString>

#include <memory>
#include <optional>
#include <utility>

class NSManagedObjectContext;
class QBNotesTextStorage;

/// What is completed.
enum class QBAutoCompleteType : quint8
{
    None = 0,
    Tag = 1,
    Note = 2,
    Language = 3,
};

/// The outcome of one test of the text around a caret. A value.
struct QBAutoCompleteProposal
{
    QBAutoCompleteType autocompleteType = QBAutoCompleteType::None;
    /// What was typed of it so far, without the marker before it.
    QString partialCompletionString;
    /// What the choice replaces.
    NSRange fullCompletionRange = kNotFoundRange;

    friend bool operator==(const QBAutoCompleteProposal &a, const QBAutoCompleteProposal &b) = default;
};

/// Tells from the text around the caret whether a tag, a link to a note or the language of a code block is being typed,
/// and completes it. Owned by the editor; main queue.
class QBEditorAutoCompleteCoreController
{
public:
    using Proposal = std::optional<QBAutoCompleteProposal>;

    /// Neither is owned; the text outlives the controller. Without a context, or with one that is gone, only languages
    /// are completed.
    QBEditorAutoCompleteCoreController(QBNotesTextStorage &textStorage,
                                       std::weak_ptr<NSManagedObjectContext> managedObjectContext);
    ~QBEditorAutoCompleteCoreController();
    QBEditorAutoCompleteCoreController(const QBEditorAutoCompleteCoreController &) = delete;
    QBEditorAutoCompleteCoreController &operator=(const QBEditorAutoCompleteCoreController &) = delete;

    /// Who finds notes sooner than the store does.
    void setNoteFinder(QBNoteAutoCompletionItemsProvider::NoteFinder finder) { m_noteFinder = std::move(finder); }
    /// How far before the caret a marker is looked for. Units: UTF-16 units.
    [[nodiscard]] qint64 maxBackwardSearchLength() const { return m_maxBackwardSearchLength; }

    // Whether there is something to complete. Each keeps what it finds, and forgets what was found before.

    /// While typing: something must have been typed behind the marker.
    [[nodiscard]] bool canAutoCompleteForSelectionRange(NSRange selectionRange);
    // On request: the marker alone is enough.
    [[nodiscard]] bool canAutocompleteTagForSelectionRange(NSRange selectionRange);
    [[nodiscard]] bool canAutocompleteNoteForSelectionRange(NSRange selectionRange);

    // The tests

    [[nodiscard]] Proposal tagsCompleteProposalForSelectionRange(NSRange selectionRange, NSRange paragraphRange) const;
    [[nodiscard]] Proposal tagsCompleteProposalForSelectionRange(NSRange selectionRange, NSRange paragraphRange,
                                                                 bool allowEmptyString) const;
    [[nodiscard]] Proposal notesCompleteProposalForSelectionRange(NSRange selectionRange, NSRange paragraphRange) const;
    [[nodiscard]] Proposal notesCompleteProposalForSelectionRange(NSRange selectionRange, NSRange paragraphRange,
                                                                  bool allowEmptyString) const;
    [[nodiscard]] Proposal languageCompleteProposalForSelectionRange(NSRange selectionRange,
                                                                     NSRange paragraphRange) const;
    /// The one whose range ends last; of those that end together, the one that begins last.
    [[nodiscard]] static Proposal prioritizedProposalFromProposals(const QList<QBAutoCompleteProposal> &proposals);
    /// Whether a marker there is none: it stands in code, in a header, or in a link.
    [[nodiscard]] bool indexContainsAttributesToSkip(qint64 index) const;
    /// Where markers are looked for: before the caret, in its paragraph, and not too far.
    [[nodiscard]] static NSRange backwardSearchRangeForSelectionRange(NSRange selectionRange, NSRange paragraphRange,
                                                                      qint64 maxBackwardLength);

    // The completion under way

    [[nodiscard]] const QString &partialCompletionString() const { return m_current.partialCompletionString; }
    [[nodiscard]] QBAutoCompleteType autocompleteType() const { return m_current.autocompleteType; }
    [[nodiscard]] NSRange fullCompletionRange() const { return m_current.fullCompletionRange; }
    /// Where the caret is behind what was typed; the range may go on behind it. -1 while nothing is completed.
    [[nodiscard]] qint64 caret() const { return m_caret; }
    /// Made when it is asked for first; null while nothing is completed. Valid until the kind changes.
    [[nodiscard]] QBEditorAutoCompleteItemsProvider *completionItemsProvider();
    void updateCompletionResults();
    [[nodiscard]] QBEditorAutoCompleteItemsProvider::Items completionItems() const;
    /// Puts the choice in the place of what was typed, as one step that can be undone, with the caret behind it. A tag
    /// is kept apart by blanks from a word next to it. The change waits for its styling.
    void insertCompletionForItem(const QBEditorAutoCompleteItem &item, quib::NoteTextView &inTextView);
    void resetCompletion();

private:
    bool setCurrent(const Proposal &proposal, NSRange selectionRange);
    [[nodiscard]] NSRange paragraphRangeOf(NSRange selectionRange) const;
    [[nodiscard]] Proposal markerProposal(QBAutoCompleteType type, QStringView marker, NSRange selectionRange,
                                          NSRange paragraphRange, bool allowEmptyString) const;
    [[nodiscard]] QString spacedTag(const QString &tag, NSRange range) const;

    QBNotesTextStorage &m_textStorage;
    std::weak_ptr<NSManagedObjectContext> m_managedObjectContext;
    QBNoteAutoCompletionItemsProvider::NoteFinder m_noteFinder;
    qint64 m_maxBackwardSearchLength = 100;
    QBAutoCompleteProposal m_current;
    qint64 m_caret = -1;
    std::unique_ptr<QBEditorAutoCompleteItemsProvider> m_completionItemsProvider; ///< of the current kind, or null
};
