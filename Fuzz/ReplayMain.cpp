// Makes a fuzz target a test: replays the seeds of a folder, then a fixed number of mutations drawn from a fixed seed.
//
// Usage: <target> SEEDS     the seeds and the mutations
//        <target> FILE      one input, as a found crash is replayed
//
// QUIB_TEST_SEED draws other mutations; QUIB_FUZZ_RUNS sets their number. The input at work is written to
// <target>.crash in the working directory before it is tried, so that a crash leaves its cause behind.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

namespace {

using Input = std::vector<uint8_t>;

constexpr int kDefaultRuns = 4000;
constexpr size_t kLongestInput = 4096;

/// Bytes that parsers of text and of binary lists treat as special.
constexpr uint8_t kTellingBytes[] = {0x00, 0x01, 0x7F, 0x80, 0xBF, 0xC0, 0xD8, 0xED, 0xEF, 0xFE, 0xFF, '\n', '\r',
                                     '\t', ' ',  '"',  '\'', '#',  '(',  ')',  '*',  '+',  '-',  '/',  ':',  '<',
                                     '>',  '@',  '[',  '\\', ']',  '_',  '`',  '{',  '|',  '}',  '~',  '0',  '9'};

Input contentsOf(const std::filesystem::path &path)
{
    std::ifstream file(path, std::ios::binary);
    return Input(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

std::vector<Input> seedsIn(const std::filesystem::path &folder)
{
    // Sorted, so that the mutations do not depend on the order of the folder.
    std::vector<std::filesystem::path> paths;
    std::error_code error;
    for (const auto &entry : std::filesystem::directory_iterator(folder, error)) {
        paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    std::vector<Input> seeds;
    for (const auto &path : paths) {
        seeds.push_back(contentsOf(path));
    }
    return seeds;
}

class Mutator
{
public:
    Mutator(unsigned seed, const std::vector<Input> &seeds)
        : m_random(seed)
        , m_seeds(seeds)
    {
    }

    [[nodiscard]] Input next()
    {
        Input input = m_seeds.empty() || below(8) == 0 ? noise() : m_seeds[below(m_seeds.size())];
        for (size_t left = 1 + below(6); left > 0; --left) {
            mutate(input);
        }
        if (input.size() > kLongestInput) {
            input.resize(kLongestInput);
        }
        return input;
    }

private:
    size_t below(size_t limit) { return limit == 0 ? 0 : m_random() % limit; }
    uint8_t byte()
    {
        return below(2) == 0 ? kTellingBytes[below(std::size(kTellingBytes))] : static_cast<uint8_t>(below(256));
    }

    Input noise()
    {
        Input input(below(64));
        for (uint8_t &value : input) {
            value = byte();
        }
        return input;
    }

    void mutate(Input &input)
    {
        const size_t place = below(input.size() + 1);
        const auto at = input.begin() + static_cast<std::ptrdiff_t>(place);
        const size_t length = std::min(below(32), input.size() - place);
        switch (below(6)) {
        case 0:
            input.insert(at, 1 + below(4), byte());
            break;
        case 1:
            input.erase(at, at + static_cast<std::ptrdiff_t>(length));
            break;
        case 2: {
            const Input piece(at, at + static_cast<std::ptrdiff_t>(length));
            const size_t target = below(input.size() + 1);
            input.insert(input.begin() + static_cast<std::ptrdiff_t>(target), piece.begin(), piece.end());
            break;
        }
        case 3:
            if (!m_seeds.empty()) {
                const Input &other = m_seeds[below(m_seeds.size())];
                input.insert(at, other.begin(), other.end());
            }
            break;
        case 4:
            if (place < input.size()) {
                input[place] = static_cast<uint8_t>(input[place] ^ (1U << below(8)));
            }
            break;
        default:
            if (place < input.size()) {
                input[place] = byte();
            }
            break;
        }
    }

    std::mt19937 m_random;
    const std::vector<Input> &m_seeds;
};

unsigned numberFromEnvironment(const char *name, unsigned otherwise)
{
    const char *given = std::getenv(name);
    return given != nullptr ? static_cast<unsigned>(std::strtoul(given, nullptr, 10)) : otherwise;
}

/// The file that holds the input at work, rewritten in place: opening it anew would cost more than most inputs do.
class CrashFile
{
public:
    explicit CrashFile(const char *program)
        : m_path(std::filesystem::path(program).filename().string() + ".crash")
        , m_descriptor(open(m_path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600))
    {
    }
    /// Every input was survived.
    ~CrashFile()
    {
        close(m_descriptor);
        unlink(m_path.c_str());
    }
    CrashFile(const CrashFile &) = delete;
    CrashFile &operator=(const CrashFile &) = delete;

    void run(const Input &input) const
    {
        if (pwrite(m_descriptor, input.data(), input.size(), 0) != static_cast<ssize_t>(input.size()) ||
            ftruncate(m_descriptor, static_cast<off_t>(input.size())) != 0) {
            std::fprintf(stderr, "%s can't be written\n", m_path.c_str());
            std::exit(1);
        }
        // A copy of exactly the input's size, so that the address sanitizer sees the first byte read behind it.
        const Input exact(input);
        LLVMFuzzerTestOneInput(exact.data(), exact.size());
    }

private:
    std::string m_path;
    int m_descriptor;
};

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s SEEDS|FILE\n", argv[0]);
        return 2;
    }
    const std::filesystem::path given(argv[1]);
    const CrashFile file(argv[0]);
    if (std::filesystem::is_regular_file(given)) {
        file.run(contentsOf(given));
        return 0;
    }
    const std::vector<Input> seeds = seedsIn(given);
    const unsigned seed = numberFromEnvironment("QUIB_TEST_SEED", 20170302U);
    const unsigned runs = numberFromEnvironment("QUIB_FUZZ_RUNS", kDefaultRuns);
    std::printf("%zu seeds, %u mutations, QUIB_TEST_SEED=%u\n", seeds.size(), runs, seed);
    std::fflush(stdout);
    file.run({});
    for (const Input &input : seeds) {
        file.run(input);
    }
    Mutator mutator(seed, seeds);
    for (unsigned count = 0; count < runs; ++count) {
        file.run(mutator.next());
    }
    return 0;
}
