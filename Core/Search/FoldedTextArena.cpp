#include "FoldedTextArena.h"

#include "ParallelChunks.h"

#include <Text/Folding.h>

#include <algorithm>
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
/// Texts here and there are asked for this many before their turn, by the lines of their beginning.
constexpr size_t kReadAhead = 3;
constexpr size_t kLinesReadAhead = 16;
constexpr size_t kCacheLine = 64;
/// More than a search needs behind a text to compare it in full strides.
constexpr size_t kRoomBehind = 128;
/// What one thread goes through at a time: enough to be worth a turn, little enough to be waited for. Units: bytes.
constexpr size_t kChunk = 4 * 1024 * 1024;
/// As many as a search line of a few words goes through while it is typed.
constexpr size_t kMostFindings = 8;

} // namespace

void FoldedTextArena::setText(qint64 key, qint64 version, QStringView text)
{
    setFoldedText(key, version, foldedUtf8(text));
}

void FoldedTextArena::setFoldedText(qint64 key, qint64 version, const QByteArray &foldedText)
{
    const std::unique_lock lock(m_mutex);
    drop(key);
    append(key, version, foldedText);
    compactIfWorthwhile();
}

void FoldedTextArena::append(qint64 key, qint64 version, const QByteArray &foldedText)
{
    forgetFindings();
    m_indexOfKey.insert(key, m_entries.size());
    m_entries.push_back({m_bytes.size(), static_cast<size_t>(foldedText.size()), key, version});
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
    const std::unique_lock lock(m_mutex);
    drop(key);
    compactIfWorthwhile();
}

void FoldedTextArena::clear()
{
    const std::unique_lock lock(m_mutex);
    forgetFindings();
    m_bytes = {};
    m_entries = {};
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
        m_entries[kept] = {limit, entry.length, entry.key, entry.version};
        m_indexOfKey[entry.key] = kept++;
        limit = m_entries[kept - 1].start + m_entries[kept - 1].length + 1;
    }
    m_entries.resize(kept);
    m_bytes.resize(limit);
    m_deadBytes = 0;
}

void FoldedTextArena::forgetFindings() const
{
    const std::lock_guard lock(m_findingsMutex);
    m_findings.clear();
}

std::shared_ptr<const FoldedTextArena::Indexes> FoldedTextArena::narrowest(const QByteArray &needle,
                                                                           bool *isExact) const
{
    const std::lock_guard lock(m_findingsMutex);
    std::shared_ptr<const Indexes> least;
    for (const Finding &finding : m_findings) {
        if (finding.needle == needle) {
            *isExact = true;
            return finding.entries;
        }
        if (needle.contains(finding.needle) && (least == nullptr || finding.entries->size() < least->size())) {
            least = finding.entries;
        }
    }
    *isExact = false;
    return least;
}

void FoldedTextArena::remember(const QByteArray &needle, const std::shared_ptr<const Indexes> &entries) const
{
    const std::lock_guard lock(m_findingsMutex);
    std::erase_if(m_findings, [&needle](const Finding &finding) { return finding.needle == needle; });
    if (m_findings.size() == kMostFindings) {
        m_findings.erase(m_findings.begin());
    }
    m_findings.push_back({needle, entries});
}

std::shared_ptr<const FoldedTextArena::Indexes> FoldedTextArena::entriesContaining(const QByteArray &needle) const
{
    bool isExact = false;
    const auto known = narrowest(needle, &isExact);
    std::shared_ptr<const Indexes> found = known;
    if (!isExact && known != nullptr && known->size() < m_entries.size() / 2) {
        found = std::make_shared<const Indexes>(entriesContaining(needle, *known));
    } else if (!isExact) {
        const ByteSearch search(std::string_view(needle.constData(), static_cast<size_t>(needle.size())), m_counts);
        // Entries of about one chunk's bytes each.
        std::vector<size_t> limits{0};
        for (size_t start = 0; limits.back() < m_entries.size();) {
            start += kChunk;
            const auto behind =
                std::lower_bound(m_entries.begin() + static_cast<std::ptrdiff_t>(limits.back() + 1), m_entries.end(),
                                 start, [](const Entry &entry, size_t position) { return entry.start < position; });
            limits.push_back(static_cast<size_t>(behind - m_entries.begin()));
        }
        std::vector<Indexes> parts(limits.size() - 1);
        runInChunks(parts.size(), [&](size_t i) { sweep(search, limits[i], limits[i + 1], &parts[i]); });
        auto all = std::make_shared<Indexes>();
        for (const Indexes &part : parts) {
            all->insert(all->end(), part.begin(), part.end());
        }
        found = std::move(all);
    }
    remember(needle, found);
    return found;
}

void FoldedTextArena::sweep(const ByteSearch &search, size_t firstEntry, size_t limitEntry, Indexes *found) const
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
            found->push_back(index);
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

FoldedTextArena::Indexes FoldedTextArena::entriesContaining(const QByteArray &needle, const Indexes &within) const
{
    const ByteSearch search(std::string_view(needle.constData(), static_cast<size_t>(needle.size())), m_counts);
    // Texts of about one chunk's bytes, if they are as long as all are in the middle.
    const size_t entries = std::max<size_t>(1, m_entries.size());
    const size_t most = std::max<size_t>(1, kChunk / (m_bytes.size() / entries + 1));
    std::vector<Indexes> parts((within.size() + most - 1) / most);
    runInChunks(parts.size(), [&](size_t i) {
        const std::span all(within);
        look(search, needle.size(), all.subspan(i * most, std::min(most, within.size() - i * most)), &parts[i]);
    });
    Indexes found;
    for (const Indexes &part : parts) {
        found.insert(found.end(), part.begin(), part.end());
    }
    return found;
}

void FoldedTextArena::look(const ByteSearch &search, qsizetype needleSize, std::span<const size_t> within,
                           Indexes *found) const
{
    for (size_t i = 0; i < within.size(); ++i) {
        if (i + kReadAhead < within.size()) {
            const char *const start = m_bytes.data() + m_entries[within[i + kReadAhead]].start;
            for (size_t line = 0; line < kLinesReadAhead; ++line) {
                __builtin_prefetch(start + line * kCacheLine);
            }
        }
        const Entry &entry = m_entries[within[i]];
        const size_t end = entry.start + entry.length;
        // A little of what follows is searched too, as the search wants room behind a text; no match begins in one text
        // and ends in another.
        const size_t limit = std::min(m_bytes.size(), end + static_cast<size_t>(needleSize) + kRoomBehind);
        if (search.find(std::string_view(m_bytes.data(), limit), entry.start, entry.start) < end) {
            found->push_back(within[i]);
        }
    }
}

std::vector<qint64> FoldedTextArena::keysOfEntries(const Indexes &indexes) const
{
    std::vector<qint64> keys;
    keys.reserve(indexes.size());
    for (const size_t index : indexes) {
        keys.push_back(m_entries[index].key);
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
    const std::shared_lock lock(m_mutex);
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
        bool isExact = false;
        const auto known = narrowest(needle, &isExact);
        return known == nullptr ? m_entries.size() : known->size();
    };
    const auto known = std::min_element(needles.begin(), needles.end(), [&](const auto &a, const auto &b) {
        return knownCount(a.second) < knownCount(b.second);
    });
    if (known != needles.end() && knownCount(known->second) < m_entries.size() / 8) {
        std::rotate(needles.begin(), known, known + 1);
    }
    Indexes found;
    if (needles.empty()) {
        for (size_t index = 0; index < m_entries.size(); ++index) {
            if (m_entries[index].key != 0) {
                found.push_back(index);
            }
        }
        return keysOfEntries(found);
    }
    found = *entriesContaining(needles.front().second);
    for (size_t i = 1; i < needles.size() && !found.empty(); ++i) {
        found = entriesContaining(needles[i].second, found);
    }
    return keysOfEntries(found);
}

std::vector<qint64> FoldedTextArena::keysOfTextsContaining(QStringView term, const std::vector<qint64> &within) const
{
    const QByteArray needle = foldedUtf8(term);
    if (needle.isEmpty()) {
        return within;
    }
    const std::shared_lock lock(m_mutex);
    Indexes indexes;
    for (const qint64 key : within) {
        const auto index = m_indexOfKey.constFind(key);
        if (index != m_indexOfKey.constEnd()) {
            indexes.push_back(*index);
        }
    }
    std::sort(indexes.begin(), indexes.end());
    return keysOfEntries(entriesContaining(needle, indexes));
}

qint64 FoldedTextArena::versionOfKey(qint64 key) const
{
    const std::shared_lock lock(m_mutex);
    const auto found = m_indexOfKey.constFind(key);
    return found == m_indexOfKey.constEnd() ? -1 : m_entries[*found].version;
}

QList<qint64> FoldedTextArena::keys() const
{
    const std::shared_lock lock(m_mutex);
    return m_indexOfKey.keys();
}

qint64 FoldedTextArena::count() const
{
    const std::shared_lock lock(m_mutex);
    return m_indexOfKey.size();
}

qint64 FoldedTextArena::sizeInBytes() const
{
    const std::shared_lock lock(m_mutex);
    return static_cast<qint64>(m_bytes.size());
}

void FoldedTextArena::reserve(qint64 bytes)
{
    const std::unique_lock lock(m_mutex);
    m_bytes.reserve(static_cast<size_t>(bytes));
}

} // namespace quib
