#pragma once

#include <Text/NSMutableAttributedString.h>

#include <utility>
#include <vector>

namespace quib {

/// Gathers what a styler adds to a text, to add it in as few passes over the text as can be. Until flush the text may
/// be read as it was; what is gathered must be flushed before the text is read for it and before this goes.
class AttributeAdditions
{
public:
    explicit AttributeAdditions(NSMutableAttributedString &text)
        : m_text(text)
    {
    }
    AttributeAdditions(const AttributeAdditions &) = delete;
    AttributeAdditions &operator=(const AttributeAdditions &) = delete;
    ~AttributeAdditions() = default;

    /// Later additions win over earlier ones. Cheapest in ascending order.
    void add(NSRange range, AttributeSet attributes)
    {
        if (range.length <= 0 || attributes.isEmpty()) {
            return;
        }
        if (m_pending.size() == kMostPending ||
            (!m_pending.empty() && m_pending.back().range.limit() > range.location)) {
            flush();
        }
        m_pending.push_back({range, std::move(attributes)});
    }
    void flush()
    {
        m_text.addAttributes(m_pending);
        m_pending.clear();
    }

private:
    /// As many as stay in the processor's cache until they are flushed.
    static constexpr size_t kMostPending = 8192;

    NSMutableAttributedString &m_text;
    std::vector<NSMutableAttributedString::Addition> m_pending;
};

} // namespace quib
