#pragma once

#include <Foundation/Clock.h>
#include <Foundation/NSRange.h>
#include <Foundation/NotificationCenter.h>
#include <Spelling/SpellingService.h>

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

class QBNotesTextStorage;

namespace quib {

/// What the checking of spelling needs of a view of a note's text.
class SpellableView
{
public:
    SpellableView() = default;
    SpellableView(const SpellableView &) = delete;
    SpellableView &operator=(const SpellableView &) = delete;
    virtual ~SpellableView() = default;

    /// What of the text is seen, roughly.
    [[nodiscard]] virtual NSRange visibleRange() = 0;
    [[nodiscard]] virtual NSRange selectedRange() const = 0;
    /// Only a text that can be changed is checked.
    [[nodiscard]] virtual bool isEditable() const = 0;
    /// Marks words, in the place of the marks that reach into the range.
    virtual void setSpellingMarks(std::vector<NSRange> marks, NSRange inRange) = 0;
};

/// Keeps the misspelt words marked that are seen: paragraphs are checked when they come into view or have changed, a
/// moment after the last key, off the main queue. Code, tags, links and whatever else says so is left alone, and so is
/// the word that is being typed until the caret leaves it. Owned by its editor, which tells it of what happens; main
/// queue. Needs no window.
///
/// Invariants: (1) Checked ranges are whole paragraphs, or parts of very long ones, sorted and apart. (2) Marks are set
/// only for the text that was looked at: an answer that comes after an edit is thrown away, and asked for again.
class SpellingController
{
public:
    /// From the last key to the check. Units: seconds.
    static constexpr double kDelay = 0.25;
    /// Longer paragraphs are checked where they are seen. Units: UTF-16.
    static constexpr qint64 kLongestParagraph = 10'000;
    /// No more is checked at once.
    static constexpr qint64 kLongestCheck = 30'000;

    /// The text and the view must outlive the controller; the service need not.
    SpellingController(QBNotesTextStorage &textStorage, SpellableView &view);
    ~SpellingController();
    SpellingController(const SpellingController &) = delete;
    SpellingController &operator=(const SpellingController &) = delete;

    /// Off: nothing is marked.
    void setEnabled(bool isEnabled);
    [[nodiscard]] bool isEnabled() const { return m_isEnabled; }

    // What the editor tells. Edits are seen by the controller itself.

    /// Another text is shown: nobody has typed in it yet.
    void textWasLoaded();
    void selectionDidChange();
    /// The view was scrolled or has another size.
    void visibleRangeDidChange();
    /// All is checked anew: other words are right than before.
    void checkAgain();

    // The misspelt word at a place

    [[nodiscard]] QString wordInRange(NSRange range) const;
    /// Errors: the completion is not called where there is no service, and after the controller's end.
    void findSuggestions(NSRange wordRange, std::function<void(const QStringList &suggestions)> completion);
    void ignoreWord(const QString &word);
    void learnWord(const QString &word);

private:
    void textDidEdit(quint32 editedMask, NSRange editedRange, qint64 changeInLength);
    void schedule(double delay);
    void check();
    void takeAnswer(quint64 version, const std::vector<NSRange> &checked, const SpellingService::Misspelt &misspelt);
    /// What of the visible text is to be looked at, in pieces.
    [[nodiscard]] std::vector<NSRange> uncheckedRanges();
    [[nodiscard]] SpellingService::Paragraph paragraphInRange(NSRange range) const;
    /// The paragraph, or the part around a place where it is very long.
    [[nodiscard]] NSRange pieceAtLocation(qint64 location) const;
    void setChecked(NSRange range);
    void setUnchecked(NSRange range);
    /// Whether a word is being written.
    [[nodiscard]] bool isBeingTyped(NSRange word) const;

    QBNotesTextStorage &m_textStorage;
    SpellableView &m_view;
    bool m_isEnabled = true;
    std::vector<NSRange> m_checked;
    quint64 m_version = 0; ///< counts edits
    bool m_isChecking = false;
    NSRange m_lastEdit = kNotFoundRange; ///< what was typed last; not-found when the caret has left it
    NSRange m_withheld = kNotFoundRange; ///< the misspelt word that is not marked as long as it is being typed
    std::unique_ptr<TimerToken> m_timer;
    ObservationToken m_edits;
    ObservationToken m_words;
    const SpellingService *m_service = nullptr; ///< whose words are observed; may be gone
    /// Dies with the controller: what comes later finds nobody.
    std::shared_ptr<SpellingController *> m_self;
};

} // namespace quib
