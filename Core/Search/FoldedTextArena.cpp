#include "FoldedTextArena.h"

#include "ParallelChunks.h"

#include <Text/Folding.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <mutex>
#include <string_view>

namespace quib {

namespace {

/// Stands behind every text; no byte of UTF-8 is it.
constexpr char kSeparator = '\xFF';
/// Replaced texts are cleared away when they are more than this and more than half of all.
constexpr size_t kTolerableDeadBytes = 1024 * 1024;
/// Bytes of a text that are passed over rather than read once a match was found before them.
constexpr size_t kWorthSkipping = 32 * 1024;
/// Texts here and there are asked for before their turn: as many lines of each as are likely to be read, and so many
/// lines in all.
constexpr size_t kMostLinesOfText = 16;
constexpr size_t kLinesReadAhead = 48;
constexpr size_t kMostTextsReadAhead = 24;
constexpr size_t kCacheLine = 64;
/// More than a search needs behind a text to compare it in full strides.
constexpr size_t kRoomBehind = 128;
/// What one thread goes through at a time: enough to be worth a turn, little enough to be waited for. Units: bytes.
constexpr size_t kChunk = 4 * 1024 * 1024;
/// From the first texts of a chunk it is told how far one has to read for a match.
constexpr size_t kTrialTexts = 32;
/// Measured against reading in order: what a text costs that has to be waited for, in bytes, and each byte of it.
constexpr double kCostOfText = 1200;
constexpr double kCostOfByte = 3;
/// Results that are more than one of so many texts are not looked through again, but met with those of the next term,
/// which then stay known for its next letter.
constexpr size_t kManyOf = 4;
/// So few texts are looked at where they are asked for: others would have to be waited for.
constexpr size_t kFewTexts = 1024;
/// As many as a search line of a few words goes through while it is typed.
constexpr size_t kMostFindings = 8;

/// Letters, digits and marks that words and lines begin with.
constexpr std::string_view kOwnLetters = "abcdefghijklmnopqrstuvwxyz0123456789@#-_/\"'([*:+=&!?";

/// A bit for each byte that a folded text may have: those above each have one, all others share some. Inner bytes of
/// longer characters have none.
constexpr std::array<quint64, 256> makeLetters()
{
    constexpr unsigned kShared = kOwnLetters.size();
    constexpr unsigned kFirstLead = kShared + 1;
    std::array<quint64, 256> letters{};
    for (unsigned byte = 0; byte < 0x80; ++byte) {
        letters[byte] = quint64{1} << kShared;
    }
    for (unsigned i = 0; i < kOwnLetters.size(); ++i) {
        letters[static_cast<unsigned char>(kOwnLetters[i])] = quint64{1} << i;
    }
    for (unsigned byte = 0xC0; byte < 0x100; ++byte) {
        letters[byte] = quint64{1} << (kFirstLead + byte % (64 - kFirstLead));
    }
    return letters;
}

constexpr std::array<quint64, 256> kLetters = makeLetters();

quint64 lettersOf(const QByteArray &foldedText)
{
    quint64 letters = 0;
    for (const char byte : foldedText) {
        letters |= kLetters[static_cast<unsigned char>(byte)];
    }
    return letters;
}

/// Whether the mask alone tells which texts hold the needle.
bool isOwnLetter(const QByteArray &needle)
{
    return needle.size() == 1 && kOwnLetters.find(needle.front()) != std::string_view::npos;
}

/// Of texts that are too long for it, what is true as well: a match does not begin before.
quint32 clampedOffset(size_t offset)
{
    return static_cast<quint32>(std::min<size_t>(offset, std::numeric_limits<quint32>::max()));
}

template <typename Places> Places joined(const std::vector<Places> &parts)
{
    Places all;
    size_t count = 0;
    for (const Places &part : parts) {
        count += part.size();
    }
    all.reserve(count);
    for (const Places &part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

template <typename Places> Places common(const Places &first, const Places &second)
{
    Places both;
    std::set_intersection(first.begin(), first.end(), second.begin(), second.end(), std::back_inserter(both),
                          [](const auto &a, const auto &b) { return a.entry < b.entry; });
    return both;
}

} // namespace

FoldedTextArena::~FoldedTextArena()
{
    const std::unique_lock lock(*m_mutex);
}

void FoldedTextArena::setText(qint64 key, qint64 version, QStringView text)
{
    setFoldedText(key, version, foldedUtf8(text));
}

void FoldedTextArena::setFoldedText(qint64 key, qint64 version, const QByteArray &foldedText)
{
    const std::unique_lock lock(*m_mutex);
    drop(key);
    append(key, version, foldedText);
    compactIfWorthwhile();
}

void FoldedTextArena::append(qint64 key, qint64 version, const QByteArray &foldedText)
{
    forgetFindings();
    m_indexOfKey.insert(key, m_entries.size());
    m_entries.push_back({m_bytes.size(), static_cast<size_t>(foldedText.size()), key, version});
    m_letters.push_back(lettersOf(foldedText));
    m_bytes.insert(m_bytes.end(), foldedText.cbegin(), foldedText.cend());
    m_bytes.push_back(kSeparator);
    for (qsizetype i = 0; i < foldedText.size(); i += 16) {
        ++m_counts[static_cast<unsigned char>(foldedText[i])];
    }
}

void FoldedTextArena::drop(qint64 key)
{
    const auto found = m_indexOfKey.constFind(key);
    if (found == m_indexOfKey.constEnd()) {
        return;
    }
    forgetFindings();
    Entry &entry = m_entries[*found];
    entry.key = 0;
    m_deadBytes += entry.length + 1;
    m_indexOfKey.erase(found);
}

void FoldedTextArena::remove(qint64 key)
{
    const std::unique_lock lock(*m_mutex);
    drop(key);
    compactIfWorthwhile();
}

void FoldedTextArena::clear()
{
    const std::unique_lock lock(*m_mutex);
    forgetFindings();
    m_bytes = {};
    m_entries = {};
    m_letters = {};
    m_indexOfKey.clear();
    m_deadBytes = 0;
}

void FoldedTextArena::compactIfWorthwhile()
{
    if (m_deadBytes < kTolerableDeadBytes || m_deadBytes * 2 < m_bytes.size()) {
        return;
    }
    forgetFindings();
    size_t limit = 0;
    size_t kept = 0;
    for (const Entry &entry : m_entries) {
        if (entry.key == 0) {
            continue;
        }
        // Downwards only, so that nothing is written over before it was read.
        std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(entry.start), entry.length + 1,
                    m_bytes.begin() + static_cast<std::ptrdiff_t>(limit));
        m_letters[kept] = m_letters[static_cast<size_t>(&entry - m_entries.data())];
        m_entries[kept] = {limit, entry.length, entry.key, entry.version};
        m_indexOfKey[entry.key] = kept++;
        limit = m_entries[kept - 1].start + m_entries[kept - 1].length + 1;
    }
    m_entries.resize(kept);
    m_letters.resize(kept);
    m_bytes.resize(limit);
    m_deadBytes = 0;
}

void FoldedTextArena::forgetFindings() const
{
    const std::lock_guard lock(m_findingsMutex);
    m_findings.clear();
}

std::optional<FoldedTextArena::Finding> FoldedTextArena::narrowest(const QByteArray &needle) const
{
    const std::lock_guard lock(m_findingsMutex);
    std::optional<Finding> least;
    for (const Finding &finding : m_findings) {
        if (finding.needle == needle) {
            return finding;
        }
        if (needle.contains(finding.needle) && (!least || finding.places->size() <= least->places->size())) {
            least = finding;
        }
    }
    return least;
}

void FoldedTextArena::remember(const Finding &finding) const
{
    const std::lock_guard lock(m_findingsMutex);
    std::erase_if(m_findings, [&finding](const Finding &known) { return known.needle == finding.needle; });
    if (m_findings.size() == kMostFindings) {
        m_findings.erase(m_findings.begin());
    }
    m_findings.push_back(finding);
}

FoldedTextArena::Needle FoldedTextArena::needleOf(const QByteArray &bytes) const
{
    const std::string_view view(bytes.constData(), static_cast<size_t>(bytes.size()));
    return {bytes, ByteSearch(view, m_counts), lettersOf(bytes), view.size()};
}

std::shared_ptr<const FoldedTextArena::Places> FoldedTextArena::placesOf(const QByteArray &needle) const
{
    const auto known = narrowest(needle);
    std::shared_ptr<const Places> found;
    if (known && known->needle == needle) {
        found = known->places;
    } else if (known) {
        found = std::make_shared<const Places>(
            placesOf(needle, known->places, static_cast<size_t>(needle.indexOf(known->needle))));
    } else {
        found = std::make_shared<const Places>(placesOf(needle, nullptr, 0));
    }
    remember({needle, found});
    return found;
}

void FoldedTextArena::search(const Needle &needle, size_t back, std::span<const Place> within, Places *found) const
{
    std::vector<Start> starts;
    starts.reserve(within.size());
    size_t sizeWithin = 0;
    for (const Place &place : within) {
        if ((m_letters[place.entry] & needle.letters) == needle.letters) {
            const Entry &entry = m_entries[place.entry];
            const size_t offset = place.offset > back ? place.offset - back : 0;
            starts.push_back({entry.start + offset, place.entry});
            sizeWithin += entry.length - std::min(entry.length, offset);
        }
    }
    // OPTIMIZATION: a term that is met soon in most texts, or that few can have, is found by reading little of the
    // memory here and there; any other by reading all of it in order.
    const std::span<const Start> all(starts);
    const auto trial = all.first(std::min(kTrialTexts, all.size()));
    size_t sizeOfTrial = 1;
    for (const Start &start : trial) {
        const Entry &entry = m_entries[start.entry];
        sizeOfTrial += entry.start + entry.length - std::min(entry.start + entry.length, start.position);
    }
    const size_t read = look(needle, trial, found);
    const auto rest = all.subspan(trial.size());
    if (rest.empty()) {
        return;
    }
    const double expected =
        static_cast<double>(sizeWithin) * static_cast<double>(read) / static_cast<double>(sizeOfTrial);
    const size_t firstEntry = rest.front().entry;
    const size_t lastEntry = rest.back().entry;
    const size_t inOrder = m_entries[lastEntry].start + m_entries[lastEntry].length - m_entries[firstEntry].start;
    if (static_cast<double>(rest.size()) * kCostOfText + expected * kCostOfByte < static_cast<double>(inOrder)) {
        look(needle, rest, found);
        return;
    }
    Places swept;
    sweep(needle.search, firstEntry, lastEntry + 1, &swept);
    // Those in between that were not asked about are not told of.
    auto asked = rest.begin();
    for (const Place &place : swept) {
        asked = std::find_if(asked, rest.end(), [&place](const Start &start) { return start.entry >= place.entry; });
        if (asked != rest.end() && asked->entry == place.entry) {
            found->push_back(place);
        }
    }
}

void FoldedTextArena::sweep(const ByteSearch &search, size_t firstEntry, size_t limitEntry, Places *found) const
{
    const size_t limit = m_entries[limitEntry - 1].start + m_entries[limitEntry - 1].length;
    // With some room behind; no match begins in one text and ends in another.
    const std::string_view bytes(m_bytes.data(), std::min(m_bytes.size(), limit + kRoomBehind));
    size_t index = firstEntry;
    const size_t first = m_entries[firstEntry].start;
    for (size_t place = search.find(bytes, first, first); place < limit;) {
        // The entry that holds the place: the last one that starts at or before it. Matches come in order, so the
        // search for it widens from where the last one was.
        size_t step = 1;
        while (index + step < limitEntry && m_entries[index + step].start <= place) {
            index += step;
            step *= 2;
        }
        const auto low = m_entries.begin() + static_cast<std::ptrdiff_t>(index);
        const auto high = m_entries.begin() + static_cast<std::ptrdiff_t>(std::min(index + step, limitEntry));
        const auto behind = std::upper_bound(
            low, high, place, [](size_t position, const Entry &entry) { return position < entry.start; });
        index = static_cast<size_t>(behind - m_entries.begin()) - 1;
        const Entry &entry = m_entries[index];
        if (entry.key != 0) {
            found->push_back({static_cast<quint32>(index), clampedOffset(place - entry.start)});
        }
        // One match a text is enough. What is left of a short text is asked for all the same: memory that is read in
        // order is there in time, and the start of the next text would have to be waited for.
        const size_t next = entry.start + entry.length + 1;
        if (next >= bytes.size()) {
            break;
        }
        place = search.find(bytes, next - place > kWorthSkipping ? next : place + 1, next);
    }
}

/// A search in pieces, each of some entries in their order.
struct FoldedTextArena::Searching final : ChunkedWork
{
    Searching(const FoldedTextArena &searched, Needle sought, std::shared_ptr<const Places> places, size_t before,
              std::vector<size_t> ends)
        : ChunkedWork(ends.size() - 1, searched.m_mutex)
        , arena(searched)
        , needle(std::move(sought))
        , within(std::move(places))
        , back(before)
        , limits(std::move(ends))
        , parts(limits.size() - 1)
    {
    }
    [[nodiscard]] std::function<void()> workOut(size_t index) override
    {
        Places found;
        if (within == nullptr) {
            arena.search(needle, 0, arena.living(limits[index], limits[index + 1]), &found);
        } else {
            const auto placeOf = [this](size_t entry) {
                return std::lower_bound(within->begin(), within->end(), entry,
                                        [](const Place &place, size_t other) { return place.entry < other; });
            };
            arena.search(needle, back, {placeOf(limits[index]), placeOf(limits[index + 1])}, &found);
        }
        return [this, index, found = std::move(found)]() mutable { parts[index] = std::move(found); };
    }

    const FoldedTextArena &arena; // guarded
    const Needle needle;
    const std::shared_ptr<const Places> within;
    const size_t back;
    const std::vector<size_t> limits;
    std::vector<Places> parts;
};

FoldedTextArena::Places FoldedTextArena::placesOf(const QByteArray &needle, const std::shared_ptr<const Places> &within,
                                                  size_t back) const
{
    const Needle wanted = needleOf(needle);
    if (isOwnLetter(needle)) {
        // OPTIMIZATION: no text is read; where the letter is, is found with the next one.
        Places found = within != nullptr ? *within : living(0, m_entries.size());
        std::erase_if(found, [&](const Place &place) { return (m_letters[place.entry] & wanted.letters) == 0; });
        for (Place &place : found) {
            place.offset = 0;
        }
        return found;
    }
    // Entries of about one chunk's bytes each.
    std::vector<size_t> limits{0};
    if (within != nullptr && within->size() < kFewTexts) {
        limits.push_back(m_entries.size());
    }
    for (size_t start = 0; limits.back() < m_entries.size();) {
        start += kChunk;
        const auto behind =
            std::lower_bound(m_entries.begin() + static_cast<std::ptrdiff_t>(limits.back() + 1), m_entries.end(), start,
                             [](const Entry &entry, size_t position) { return entry.start < position; });
        limits.push_back(static_cast<size_t>(behind - m_entries.begin()));
    }
    const auto searching = std::make_shared<Searching>(*this, wanted, within, back, std::move(limits));
    runInChunks(searching);
    return joined(searching->parts);
}

FoldedTextArena::Places FoldedTextArena::living(size_t firstEntry, size_t limitEntry) const
{
    Places places;
    places.reserve(limitEntry - firstEntry);
    for (size_t index = firstEntry; index < limitEntry; ++index) {
        if (m_entries[index].key != 0) {
            places.push_back({static_cast<quint32>(index), 0});
        }
    }
    return places;
}

size_t FoldedTextArena::look(const Needle &needle, std::span<const Start> starts, Places *found) const
{
    size_t read = 0;
    size_t lately = 0; // what one of the last texts took, sixteen times
    for (size_t i = 0; i < starts.size(); ++i) {
        const size_t lines = std::min(kMostLinesOfText, lately / 16 / kCacheLine + 1);
        const size_t ahead = i + std::min(kMostTextsReadAhead, kLinesReadAhead / lines);
        if (ahead < starts.size()) {
            const char *const start = m_bytes.data() + starts[ahead].position;
            for (size_t line = 0; line < lines; ++line) {
                __builtin_prefetch(start + line * kCacheLine);
            }
        }
        const Entry &entry = m_entries[starts[i].entry];
        const size_t end = entry.start + entry.length;
        // A little of what follows is searched too, as the search wants room behind a text; no match begins in one text
        // and ends in another.
        const size_t limit = std::min(m_bytes.size(), end + needle.size + kRoomBehind);
        const size_t start = starts[i].position;
        const size_t place = needle.search.find(std::string_view(m_bytes.data(), limit), start, start);
        if (place < end) {
            found->push_back({starts[i].entry, clampedOffset(place - entry.start)});
        }
        const size_t taken = std::min(place, end) - std::min(start, end);
        read += taken;
        lately += taken - lately / 16;
    }
    return read;
}

std::vector<qint64> FoldedTextArena::keysOfPlaces(const Places &places) const
{
    std::vector<qint64> keys;
    keys.reserve(places.size());
    for (const Place &place : places) {
        keys.push_back(m_entries[place.entry].key);
    }
    if (!std::is_sorted(keys.begin(), keys.end())) {
        std::sort(keys.begin(), keys.end());
    }
    return keys;
}

std::vector<qint64> FoldedTextArena::keysOfTextsContaining(QStringView term) const
{
    return keysOfTextsContainingAll({term.toString()});
}

std::vector<qint64> FoldedTextArena::keysOfTextsContainingAll(const QStringList &terms) const
{
    const std::shared_lock lock(*m_mutex);
    // How rare a term is, is told by its rarest byte and its length; a wrong guess costs time only.
    std::vector<std::pair<double, QByteArray>> needles;
    for (const QString &term : terms) {
        const QByteArray needle = foldedUtf8(term);
        if (needle.isEmpty()) {
            continue; // held by all
        }
        uint64_t least = UINT64_MAX;
        for (const char byte : needle) {
            least = std::min(least, m_counts[static_cast<unsigned char>(byte)]);
        }
        needles.emplace_back(static_cast<double>(least) / static_cast<double>(1 + needle.size() * needle.size()),
                             needle);
    }
    std::stable_sort(needles.begin(), needles.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    // What was found of one of them lately goes first, where it leaves little to look at.
    const auto knownCount = [this](const QByteArray &needle) {
        const auto known = narrowest(needle);
        return known ? known->places->size() : m_entries.size();
    };
    const auto known = std::min_element(needles.begin(), needles.end(), [&](const auto &a, const auto &b) {
        return knownCount(a.second) < knownCount(b.second);
    });
    if (known != needles.end() && knownCount(known->second) < m_entries.size() / 8) {
        std::rotate(needles.begin(), known, known + 1);
    }
    if (needles.empty()) {
        return keysOfPlaces(living(0, m_entries.size()));
    }
    std::shared_ptr<const Places> found = placesOf(needles.front().second);
    for (size_t i = 1; i < needles.size() && !found->empty(); ++i) {
        const QByteArray &needle = needles[i].second;
        const auto alone = narrowest(needle);
        if ((alone && alone->needle == needle) || found->size() > m_entries.size() / kManyOf) {
            found = std::make_shared<const Places>(common(*found, *placesOf(needle)));
        } else {
            auto anywhere = std::make_shared<Places>(*found);
            for (Place &place : *anywhere) {
                place.offset = 0;
            }
            found = std::make_shared<const Places>(placesOf(needle, anywhere, 0));
        }
    }
    return keysOfPlaces(*found);
}

std::vector<qint64> FoldedTextArena::keysOfTextsContaining(QStringView term, const std::vector<qint64> &within) const
{
    const QByteArray needle = foldedUtf8(term);
    if (needle.isEmpty()) {
        return within;
    }
    const std::shared_lock lock(*m_mutex);
    const auto places = std::make_shared<Places>();
    for (const qint64 key : within) {
        const auto index = m_indexOfKey.constFind(key);
        if (index != m_indexOfKey.constEnd()) {
            places->push_back({static_cast<quint32>(*index), 0});
        }
    }
    std::sort(places->begin(), places->end(), [](const Place &a, const Place &b) { return a.entry < b.entry; });
    return keysOfPlaces(placesOf(needle, places, 0));
}

qint64 FoldedTextArena::versionOfKey(qint64 key) const
{
    const std::shared_lock lock(*m_mutex);
    const auto found = m_indexOfKey.constFind(key);
    return found == m_indexOfKey.constEnd() ? -1 : m_entries[*found].version;
}

QList<qint64> FoldedTextArena::keys() const
{
    const std::shared_lock lock(*m_mutex);
    return m_indexOfKey.keys();
}

qint64 FoldedTextArena::count() const
{
    const std::shared_lock lock(*m_mutex);
    return m_indexOfKey.size();
}

qint64 FoldedTextArena::sizeInBytes() const
{
    const std::shared_lock lock(*m_mutex);
    return static_cast<qint64>(m_bytes.size());
}

void FoldedTextArena::reserve(qint64 bytes)
{
    const std::unique_lock lock(*m_mutex);
    m_bytes.reserve(static_cast<size_t>(bytes));
}

} // namespace quib
