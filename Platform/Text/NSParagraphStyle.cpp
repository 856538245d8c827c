#include "NSParagraphStyle.h"

#include <QHashFunctions>

#include <utility>

namespace {

constexpr int kDefaultTabCount = 12;
constexpr double kDefaultTabDistance = 28;

[[nodiscard]] size_t hashOf(const NSMutableParagraphStyle &values)
{
    size_t hash =
        qHashMulti(0, values.minimumLineHeight, values.maximumLineHeight, values.lineSpacing, values.paragraphSpacing,
                   values.paragraphSpacingBefore, values.headIndent, values.firstLineHeadIndent, values.tailIndent,
                   values.defaultTabInterval, values.hyphenationFactor, static_cast<int>(values.alignment),
                   static_cast<int>(values.lineBreakMode));
    for (const NSTextTab &tab : values.tabStops) {
        hash = qHashMulti(hash, tab.location, static_cast<int>(tab.alignment));
    }
    return hash;
}

} // namespace

QList<NSTextTab> NSMutableParagraphStyle::defaultTabStops()
{
    static const QList<NSTextTab> s_tabs = [] {
        QList<NSTextTab> tabs;
        for (int number = 1; number <= kDefaultTabCount; ++number) {
            tabs.append(NSTextTab{number * kDefaultTabDistance, NSTextAlignment::Left});
        }
        return tabs;
    }();
    return s_tabs;
}

std::shared_ptr<NSParagraphStyle> NSMutableParagraphStyle::copy() const
{
    return std::make_shared<NSParagraphStyle>(*this);
}

NSParagraphStyle::NSParagraphStyle(NSMutableParagraphStyle values)
    : m_values(std::move(values))
    , m_hash(hashOf(m_values))
{
}

std::shared_ptr<NSParagraphStyle> NSParagraphStyle::defaultParagraphStyle()
{
    static const auto s_style = std::make_shared<NSParagraphStyle>(NSMutableParagraphStyle());
    return s_style;
}

bool NSParagraphStyle::isEqual(const AttributeObject &other) const
{
    return m_values == static_cast<const NSParagraphStyle &>(other).m_values;
}
