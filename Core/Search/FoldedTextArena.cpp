#include "FoldedTextArena.h"

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

std::vector<qint64> FoldedTextArena::keysOfTextsContaining(QStringView term) const
{
    const QByteArray needle = foldedUtf8(term);
    const std::shared_lock lock(m_mutex);
    std::vector<qint64> found;
    if (needle.isEmpty()) {
        for (const Entry &entry : m_entries) {
            if (entry.key != 0) {
                found.push_back(entry.key);
            }
        }
    } else {
        const std::string_view bytes(m_bytes.data(), m_bytes.size());
        const ByteSearch search(std::string_view(needle.constData(), static_cast<size_t>(needle.size())), m_counts);
        size_t index = 0;
        for (size_t place = search.find(bytes, 0); place != std::string_view::npos;) {
            // The entry that holds the place: the last one that starts at or before it. Matches come in order, so the
            // search for it widens from where the last one was.
            size_t step = 1;
            while (index + step < m_entries.size() && m_entries[index + step].start <= place) {
                index += step;
                step *= 2;
            }
            const auto first = m_entries.begin() + static_cast<std::ptrdiff_t>(index);
            const auto last = m_entries.begin() + static_cast<std::ptrdiff_t>(std::min(index + step, m_entries.size()));
            const auto behind = std::upper_bound(
                first, last, place, [](size_t position, const Entry &entry) { return position < entry.start; });
            index = static_cast<size_t>(behind - m_entries.begin()) - 1;
            const Entry &entry = m_entries[index];
            if (entry.key != 0) {
                found.push_back(entry.key);
            }
            // One match a text is enough.
            place = search.find(bytes, entry.start + entry.length + 1);
        }
    }
    if (!std::is_sorted(found.begin(), found.end())) {
        std::sort(found.begin(), found.end());
    }
    return found;
}

std::vector<qint64> FoldedTextArena::keysOfTextsContainingAll(const QStringList &terms) const
{
    if (terms.isEmpty()) {
        return keysOfTextsContaining(QStringView());
    }
    // How rare a term is, is told by its rarest byte and its length; a wrong guess costs time only.
    const auto commonness = [this](const QString &term) {
        const QByteArray needle = foldedUtf8(term);
        uint64_t least = UINT64_MAX;
        const std::shared_lock lock(m_mutex);
        for (const char byte : needle) {
            least = std::min(least, m_counts[static_cast<unsigned char>(byte)]);
        }
        return static_cast<double>(least) / static_cast<double>(1 + needle.size() * needle.size());
    };
    QList<std::pair<double, QString>> ordered;
    for (const QString &term : terms) {
        ordered.append({commonness(term), term});
    }
    std::stable_sort(ordered.begin(), ordered.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    std::vector<qint64> found = keysOfTextsContaining(ordered.constFirst().second);
    for (qsizetype i = 1; i < ordered.size() && !found.empty(); ++i) {
        found = keysOfTextsContaining(ordered[i].second, found);
    }
    return found;
}

std::vector<qint64> FoldedTextArena::keysOfTextsContaining(QStringView term, const std::vector<qint64> &within) const
{
    const QByteArray needle = foldedUtf8(term);
    if (needle.isEmpty()) {
        return within;
    }
    const std::shared_lock lock(m_mutex);
    const ByteSearch search(std::string_view(needle.constData(), static_cast<size_t>(needle.size())), m_counts);
    std::vector<qint64> found;
    for (const qint64 key : within) {
        const auto index = m_indexOfKey.constFind(key);
        if (index == m_indexOfKey.constEnd()) {
            continue;
        }
        const Entry &entry = m_entries[*index];
        if (search.find(std::string_view(m_bytes.data() + entry.start, entry.length), 0) != std::string_view::npos) {
            found.push_back(key);
        }
    }
    return found;
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
