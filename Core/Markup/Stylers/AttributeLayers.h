#pragma once

#include "AttributeAdditions.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace quib {

/// Attributes that a styler lays over each other in a stretch of text, later ones over earlier ones: handed on as
/// pieces side by side, so that a pass of the styler is one walk over the text. Stretches come in ascending order;
/// flush ends each.
class AttributeLayers
{
public:
    AttributeLayers(const NSAttributedString &text, AttributeAdditions &additions)
        : m_text(text)
        , m_additions(additions)
    {
    }
    AttributeLayers(const AttributeLayers &) = delete;
    AttributeLayers &operator=(const AttributeLayers &) = delete;
    ~AttributeLayers() = default;

    /// Shape: what of the range lies outside of the text is left out.
    void add(NSRange range, AttributeSet attributes)
    {
        const NSRange inText = NSIntersectionRange(range, m_text.fullRange());
        if (inText.length <= 0 || attributes.isEmpty()) {
            return;
        }
        if (m_count == m_layers.size()) {
            flush();
        }
        m_layers[m_count++] = {inText, std::move(attributes)};
    }
    void flush()
    {
        std::array<qint64, 2 * kMostLayers> edges{};
        size_t edgeCount = 0;
        for (size_t layer = 0; layer < m_count; ++layer) {
            edges[edgeCount++] = m_layers[layer].range.location;
            edges[edgeCount++] = m_layers[layer].range.limit();
        }
        std::sort(edges.begin(), edges.begin() + static_cast<std::ptrdiff_t>(edgeCount));
        for (size_t edge = 1; edge < edgeCount; ++edge) {
            const NSRange piece{edges[edge - 1], edges[edge] - edges[edge - 1]};
            AttributeSet attributes;
            for (size_t layer = 0; layer < m_count && piece.length > 0; ++layer) {
                if (m_layers[layer].range.contains(piece.location)) {
                    attributes.insert(m_layers[layer].attributes);
                }
            }
            m_additions.add(piece, std::move(attributes));
        }
        m_count = 0;
    }

private:
    /// More are handed on in several rounds, which is slower.
    static constexpr size_t kMostLayers = 8;

    const NSAttributedString &m_text;
    AttributeAdditions &m_additions;
    std::array<NSMutableAttributedString::Addition, kMostLayers> m_layers;
    size_t m_count = 0;
};

} // namespace quib
