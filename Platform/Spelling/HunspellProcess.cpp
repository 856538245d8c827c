#include "HunspellProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <hunspell/hunspell.h>
#include <poll.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

namespace quib {

namespace {

/// How long somebody may wait. Units: milliseconds.
constexpr int kLongestLoad = 10'000;
constexpr int kLongestCheck = 3'000;
constexpr int kLongestSearch = 10'000;
/// What the process may ask for beyond what it begins with. Units: bytes.
constexpr rlim_t kMostMemory = 512 * 1024 * 1024;
constexpr std::uint32_t kLongestAnswer = 64 * 1024;

/// The first word of a command line that makes a program such a process.
constexpr char kServing[] = "--serve-spelling";
/// Where the process finds its end of the connection.
constexpr int kSocket = 3;
/// Whether the program knows what to do when it is started so.
bool s_isPrepared = false;

constexpr char kCheck = 'c';
constexpr char kSuggest = 's';

bool sendAll(int socket, const void *bytes, size_t size)
{
    const auto *next = static_cast<const char *>(bytes);
    while (size > 0) {
        const ssize_t sent = send(socket, next, size, MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) {
            continue;
        }
        if (sent <= 0) {
            return false;
        }
        next += sent;
        size -= static_cast<size_t>(sent);
    }
    return true;
}

// The process itself. Where it is a copy of its owner it has one thread, so that it uses nothing of what other threads
// may have been in the middle of: no Qt, no shared object of ours, and it never returns.

bool receiveAll(int socket, void *bytes, size_t size)
{
    auto *next = static_cast<char *>(bytes);
    while (size > 0) {
        const ssize_t received = recv(socket, next, size, 0);
        if (received < 0 && errno == EINTR) {
            continue;
        }
        if (received <= 0) {
            return false;
        }
        next += received;
        size -= static_cast<size_t>(received);
    }
    return true;
}

bool reply(int socket, const char *bytes, size_t size)
{
    const auto length = static_cast<std::uint32_t>(std::min<size_t>(size, kLongestAnswer));
    return sendAll(socket, &length, sizeof length) && sendAll(socket, bytes, length);
}

/// Closes what the owner has open, takes its handlers of signals away, and keeps to a share of the memory.
void settleDown(int socket)
{
    const int nothing = open("/dev/null", O_RDWR);
    for (const int standard : {0, 1, 2}) {
        dup2(nothing, standard);
    }
    if (socket != kSocket) {
        dup2(socket, kSocket);
    }
    close_range(kSocket + 1, ~0U, 0);
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGALRM, SIGTERM, SIGINT, SIGHUP, SIGPIPE}) {
        std::signal(signal, SIG_DFL);
    }
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    prctl(PR_SET_NAME, "quib-spelling");
    prctl(PR_SET_DUMPABLE, 0);
    const rlimit noCore{0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    // Sanitizers have terabytes of their own.
    long pages = 0;
    if (FILE *sizes = std::fopen("/proc/self/statm", "re"); sizes != nullptr) {
        if (std::fscanf(sizes, "%ld", &pages) == 1) {
            const rlim_t most = static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE)) + kMostMemory;
            const rlimit memory{most, most};
            setrlimit(RLIMIT_AS, &memory);
        }
        std::fclose(sizes);
    }
#endif
}

/// Starts this program once more, as such a process. Gives -1 where that fails.
pid_t startAnew(int socket, QByteArray affixPath, QByteArray wordsPath)
{
    posix_spawn_file_actions_t actions;
    if (posix_spawn_file_actions_init(&actions) != 0) {
        return -1;
    }
    QByteArray name("quib-spelling");
    QByteArray serving(kServing);
    std::array<char *, 5> words{name.data(), serving.data(), affixPath.data(), wordsPath.data(), nullptr};
    pid_t child = -1;
    if (posix_spawn_file_actions_adddup2(&actions, socket, kSocket) != 0 ||
        posix_spawn(&child, "/proc/self/exe", &actions, nullptr, words.data(), environ) != 0) {
        child = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    return child;
}

[[noreturn]] void serve(const char *affixPath, const char *wordsPath)
{
    // A process whose owner is gone must not work for ever.
    const auto within = [](int milliseconds) { alarm(static_cast<unsigned>(milliseconds / 1000 + 1)); };
    within(kLongestLoad);
    Hunhandle *dictionary = Hunspell_create(affixPath, wordsPath);
    if (dictionary == nullptr) {
        _exit(1);
    }
    const char *encoding = Hunspell_get_dic_encoding(dictionary);
    bool isOpen = reply(kSocket, encoding, std::strlen(encoding));
    while (isOpen) {
        alarm(0);
        char what = 0;
        std::uint16_t length = 0;
        static std::array<char, HunspellProcess::kLongestWord + 1> word;
        if (!receiveAll(kSocket, &what, sizeof what) || !receiveAll(kSocket, &length, sizeof length) ||
            length >= word.size() || !receiveAll(kSocket, word.data(), length)) {
            break;
        }
        word[length] = '\0';
        if (what == kCheck) {
            within(kLongestCheck);
            isOpen = reply(kSocket, Hunspell_spell(dictionary, word.data()) != 0 ? "1" : "0", 1);
        } else {
            within(kLongestSearch);
            static std::array<char, kLongestAnswer> words;
            size_t size = 0;
            char **list = nullptr;
            const int count = Hunspell_suggest(dictionary, &list, word.data());
            for (int i = 0; i < count; ++i) {
                const size_t wordSize = std::strlen(list[i]);
                if (size + wordSize + 1 > words.size()) {
                    break;
                }
                std::memcpy(words.data() + size, list[i], wordSize);
                size += wordSize;
                words[size++] = '\n';
            }
            Hunspell_free_list(dictionary, &list, count);
            isOpen = reply(kSocket, words.data(), size);
        }
    }
    _exit(0);
}

} // namespace

HunspellProcess::HunspellProcess(pid_t process, int socket)
    : m_process(process)
    , m_socket(socket)
{
}

HunspellProcess::~HunspellProcess()
{
    end();
}

void HunspellProcess::prepare(int argc, char **argv)
{
    if (argc == 4 && std::strcmp(argv[1], kServing) == 0) {
        settleDown(kSocket);
        serve(argv[2], argv[3]);
    }
    s_isPrepared = true;
}

pid_t HunspellProcess::start(int socket, const QByteArray &affixPath, const QByteArray &wordsPath)
{
    if (s_isPrepared) {
        // It borrows its owner's memory until it is another program: nothing is copied.
        const pid_t child = startAnew(socket, affixPath, wordsPath);
        if (child > 0) {
            return child;
        }
    }
    const pid_t child = fork();
    if (child == 0) {
        settleDown(socket);
        serve(affixPath.constData(), wordsPath.constData());
    }
    return child;
}

std::unique_ptr<HunspellProcess> HunspellProcess::processWithFiles(const QByteArray &affixPath,
                                                                   const QByteArray &wordsPath)
{
    std::array<int, 2> sockets{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, sockets.data()) != 0) {
        return nullptr;
    }
    const pid_t child = start(sockets[1], affixPath, wordsPath);
    close(sockets[1]);
    if (child < 0) {
        close(sockets[0]);
        return nullptr;
    }
    std::unique_ptr<HunspellProcess> process(new HunspellProcess(child, sockets[0]));
    const auto encoding = process->answer(kLongestLoad);
    if (!encoding) {
        return nullptr;
    }
    process->m_encoding = *encoding;
    return process;
}

void HunspellProcess::end()
{
    if (m_socket >= 0) {
        close(m_socket);
        m_socket = -1;
        kill(m_process, SIGKILL);
        while (waitpid(m_process, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
}

std::optional<bool> HunspellProcess::isRight(const QByteArray &word)
{
    const auto answered = ask(kCheck, word, kLongestCheck);
    return answered ? std::optional(*answered != "0") : std::nullopt;
}

std::optional<QByteArray> HunspellProcess::suggestions(const QByteArray &forWord)
{
    return ask(kSuggest, forWord, kLongestSearch);
}

std::optional<QByteArray> HunspellProcess::ask(char what, const QByteArray &word, int milliseconds)
{
    const auto length = static_cast<std::uint16_t>(word.size());
    if (m_socket < 0 || word.size() > kLongestWord) {
        return std::nullopt;
    }
    QByteArray request(1, what);
    request.append(reinterpret_cast<const char *>(&length), sizeof length).append(word);
    if (!sendAll(m_socket, request.constData(), static_cast<size_t>(request.size()))) {
        end();
        return std::nullopt;
    }
    return answer(milliseconds);
}

std::optional<QByteArray> HunspellProcess::answer(int milliseconds)
{
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::milliseconds(milliseconds);
    QByteArray received;
    std::uint32_t length = 0;
    while (true) {
        if (received.size() >= static_cast<qsizetype>(sizeof length)) {
            std::memcpy(&length, received.constData(), sizeof length);
            if (length > kLongestAnswer) {
                break;
            }
            if (received.size() == static_cast<qsizetype>(sizeof length + length)) {
                return received.sliced(sizeof length);
            }
        }
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
        pollfd waiting{m_socket, POLLIN, 0};
        const int ready = left.count() > 0 ? poll(&waiting, 1, static_cast<int>(left.count())) : 0;
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        std::array<char, 4096> part{};
        const ssize_t size = ready > 0 ? recv(m_socket, part.data(), part.size(), 0) : 0;
        if (size < 0 && errno == EINTR) {
            continue;
        }
        if (size <= 0 || received.size() + size > static_cast<qsizetype>(sizeof length + kLongestAnswer)) {
            break;
        }
        received.append(part.data(), size);
    }
    end();
    return std::nullopt;
}

} // namespace quib
