#include "SpellingService.h"

#include <Files/Profile.h>

#include <atomic>
#include <utility>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

SpellingService *s_sharedService = nullptr;

} // namespace

/// Outlives the service as long as work is under way.
struct SpellingService::State
{
    State(SpellChecker::Options options, std::shared_ptr<DispatchQueue> work, std::shared_ptr<DispatchQueue> answers)
        : checker(std::move(options))
        , workQueue(std::move(work))
        , answerQueue(std::move(answers))
    {
    }

    SpellChecker checker; ///< the work queue's
    std::shared_ptr<DispatchQueue> workQueue;
    std::shared_ptr<DispatchQueue> answerQueue;
    ObserverList<> observers; ///< the answer queue's
    std::atomic<bool> isClosed = false;
};

SpellChecker::Options SpellingService::standardOptions()
{
    return {standardSpellingFolders(), desktopSpellingLanguages(),
            QString(Profile::applicationSupportFolder() % u"/Spelling/Words.txt"_s)};
}

SpellingService::SpellingService(SpellChecker::Options options)
    : SpellingService(std::move(options), DispatchQueue::serial(u"spellingQueue"_s), DispatchQueue::main())
{
}

SpellingService::SpellingService(SpellChecker::Options options, std::shared_ptr<DispatchQueue> workQueue,
                                 std::shared_ptr<DispatchQueue> answerQueue)
    : m_state(std::make_shared<State>(std::move(options), std::move(workQueue), std::move(answerQueue)))
{
}

SpellingService::~SpellingService()
{
    m_state->isClosed = true;
    m_state->workQueue->sync([] {});
    if (s_sharedService == this) {
        s_sharedService = nullptr;
    }
}

SpellingService *SpellingService::sharedService()
{
    return s_sharedService;
}

void SpellingService::setSharedService(SpellingService *service)
{
    s_sharedService = service;
}

void SpellingService::setLanguages(const QStringList &languages)
{
    m_state->workQueue->async([state = m_state, languages] {
        if (!state->isClosed) {
            state->checker.setLanguages(languages.isEmpty() ? desktopSpellingLanguages() : languages,
                                        /*hasOnlyLanguages=*/!languages.isEmpty());
            state->answerQueue->async([state] { state->observers.notify(); });
        }
    });
}

void SpellingService::findMisspelt(std::vector<Paragraph> paragraphs,
                                   std::function<void(const Misspelt &misspelt)> completion)
{
    m_state->workQueue->async(
        [state = m_state, paragraphs = std::move(paragraphs), completion = std::move(completion)]() mutable {
            Misspelt misspelt;
            for (const Paragraph &paragraph : paragraphs) {
                if (state->isClosed) {
                    return;
                }
                misspelt.push_back(state->checker.misspeltRangesInParagraph(paragraph.text, paragraph.skipped));
            }
            state->answerQueue->async(
                [misspelt = std::move(misspelt), completion = std::move(completion)] { completion(misspelt); });
        });
}

void SpellingService::findSuggestions(const QString &word, const QString &inParagraph,
                                      std::function<void(const QStringList &suggestions)> completion)
{
    m_state->workQueue->async([state = m_state, word, inParagraph, completion = std::move(completion)]() mutable {
        if (state->isClosed) {
            return;
        }
        state->answerQueue->async([suggestions = state->checker.suggestionsForWord(word, inParagraph),
                                   completion = std::move(completion)] { completion(suggestions); });
    });
}

void SpellingService::ignoreWord(const QString &word)
{
    m_state->workQueue->async([state = m_state, word] {
        if (!state->isClosed) {
            state->checker.ignoreWord(word);
            state->answerQueue->async([state] { state->observers.notify(); });
        }
    });
}

void SpellingService::learnWord(const QString &word, std::function<void(const NSError &error)> ifFailed)
{
    m_state->workQueue->async([state = m_state, word, ifFailed = std::move(ifFailed)]() mutable {
        NSError error;
        const bool isLearned = state->checker.learnWord(word, &error);
        if (state->isClosed) {
            return;
        }
        state->answerQueue->async([state, isLearned, error, ifFailed = std::move(ifFailed)] {
            if (!isLearned) {
                ifFailed(error);
            }
            state->observers.notify();
        });
    });
}

ObservationToken SpellingService::observeWords(std::function<void()> observer)
{
    return m_state->observers.add(std::move(observer));
}

} // namespace quib
