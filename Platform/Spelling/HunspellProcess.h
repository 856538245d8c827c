#pragma once

#include <QByteArray>

#include <memory>
#include <optional>

#include <sys/types.h>

namespace quib {

/// A dictionary at work in a process of its own. The library that reads dictionaries trusts them: a broken one makes it
/// read through null pointers, ask for memory without end, or never come back. There it takes nobody along. One thread
/// at a time; every call waits for its answer, for seconds at most.
///
/// Invariants: (1) The process ends when its owner does, however that ends. (2) One that did not answer properly once
/// is ended, and is asked no more.
class HunspellProcess
{
public:
    /// For main, before anything else: where this program was started to be such a process, it is one, and does not
    /// come back. Processes are this program started anew from then on. Without, they are copies of their owner: of a
    /// large one that takes a while, and the owner pays for each page of its memory that it writes to next.
    static void prepare(int argc, char **argv);
    /// Starts the process and has it load the two files, which need not be a dictionary.
    /// Errors: null where that fails, or takes too long.
    [[nodiscard]] static std::unique_ptr<HunspellProcess> processWithFiles(const QByteArray &affixPath,
                                                                           const QByteArray &wordsPath);
    ~HunspellProcess();
    HunspellProcess(const HunspellProcess &) = delete;
    HunspellProcess &operator=(const HunspellProcess &) = delete;

    /// The name of the encoding that words are given in.
    [[nodiscard]] const QByteArray &encoding() const { return m_encoding; }
    /// Requires: a word is at most kLongestWord bytes, without NUL.
    /// Errors: nothing where the process has failed.
    [[nodiscard]] std::optional<bool> isRight(const QByteArray &word);
    /// Words, a line each.
    [[nodiscard]] std::optional<QByteArray> suggestions(const QByteArray &forWord);

    static constexpr qsizetype kLongestWord = 1000;

private:
    HunspellProcess(pid_t process, int socket);
    /// Gives -1 where no process can be started.
    [[nodiscard]] static pid_t start(int socket, const QByteArray &affixPath, const QByteArray &wordsPath);
    /// Sends a request and waits for its answer.
    [[nodiscard]] std::optional<QByteArray> ask(char what, const QByteArray &word, int milliseconds);
    [[nodiscard]] std::optional<QByteArray> answer(int milliseconds);
    void end();

    pid_t m_process = -1;
    int m_socket = -1;
    QByteArray m_encoding;
};

} // namespace quib
