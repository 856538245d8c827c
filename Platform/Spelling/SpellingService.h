#pragma once

#include "SpellChecker.h"

#include <Foundation/DispatchQueue.h>
#include <Foundation/NSRange.h>
#include <Foundation/NotificationCenter.h>

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <vector>

namespace quib {

/// The spelling checker of a process. Its work is done on a queue of its own; it is asked, and answers, on the main
/// queue. Installed by whoever starts the program, or by a test; editors of a process without one check nothing.
class SpellingService
{
public:
    /// A paragraph, and what is not to be looked at in it, sorted.
    struct Paragraph
    {
        QString text;
        std::vector<NSRange> skipped;
    };
    using Misspelt = std::vector<std::vector<NSRange>>;

    /// The options of the desktop and the profile.
    [[nodiscard]] static SpellChecker::Options standardOptions();
    explicit SpellingService(SpellChecker::Options options);
    /// Work and answers on given queues: tests run them by hand.
    SpellingService(SpellChecker::Options options, std::shared_ptr<DispatchQueue> workQueue,
                    std::shared_ptr<DispatchQueue> answerQueue);
    /// Drops what waits, and waits for what is under way: no answer is given any more that was not on its way already.
    ~SpellingService();
    SpellingService(const SpellingService &) = delete;
    SpellingService &operator=(const SpellingService &) = delete;

    /// The installed service; null for none.
    [[nodiscard]] static SpellingService *sharedService();
    static void setSharedService(SpellingService *service);

    /// The dictionaries of these languages, as their files are named, and no others; of none, those of the desktop's
    /// languages and then whichever there are. Observers of the words are told.
    void setLanguages(const QStringList &languages);

    /// The misspelt words of each paragraph.
    void findMisspelt(std::vector<Paragraph> paragraphs, std::function<void(const Misspelt &misspelt)> completion);
    /// Words to put in the place of one.
    void findSuggestions(const QString &word, const QString &inParagraph,
                         std::function<void(const QStringList &suggestions)> completion);
    /// The word is right from now on: in this run, or, where it is learned, in all others too. What was misspelt before
    /// is asked for anew by whoever observes.
    /// Errors: a word that could not be written down is right for this run; ifFailed is told.
    void ignoreWord(const QString &word);
    void learnWord(const QString &word, std::function<void(const NSError &error)> ifFailed);
    [[nodiscard]] ObservationToken observeWords(std::function<void()> observer);

private:
    struct State;

    std::shared_ptr<State> m_state;
};

} // namespace quib
