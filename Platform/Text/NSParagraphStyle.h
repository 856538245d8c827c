#pragma once

#include "AttributeValue.h"

#include <QList>
#include <QtGlobal>

#include <memory>

enum class NSTextAlignment : quint8
{
    Left = 0,
    Right = 1,
    Center = 2,
    Justified = 3,
    Natural = 4,
};

enum class NSLineBreakMode : quint8
{
    ByWordWrapping = 0,
    ByCharWrapping = 1,
    ByClipping = 2,
    ByTruncatingHead = 3,
    ByTruncatingTail = 4,
    ByTruncatingMiddle = 5,
};

/// A place on a line where the text after a tab begins.
struct NSTextTab
{
    double location = 0;
    NSTextAlignment alignment = NSTextAlignment::Left;
    friend bool operator==(const NSTextTab &a, const NSTextTab &b) = default;
};

/// The layout of a paragraph, to be filled in; copy() makes of it what a text can carry. Lengths are in points; 0 as
/// maximumLineHeight is no limit, and a tailIndent up to 0 counts from the far edge. A value.
struct NSMutableParagraphStyle
{
    double minimumLineHeight = 0;
    double maximumLineHeight = 0;
    double lineSpacing = 0;
    double paragraphSpacing = 0;
    double paragraphSpacingBefore = 0;
    double headIndent = 0;
    double firstLineHeadIndent = 0;
    double tailIndent = 0;
    double defaultTabInterval = 0;
    /// From 0, none, to 1.
    double hyphenationFactor = 0;
    NSTextAlignment alignment = NSTextAlignment::Natural;
    NSLineBreakMode lineBreakMode = NSLineBreakMode::ByWordWrapping;
    /// A tab every 28 points, twelve of them, unless told otherwise.
    QList<NSTextTab> tabStops = defaultTabStops();

    [[nodiscard]] static QList<NSTextTab> defaultTabStops();
    [[nodiscard]] std::shared_ptr<class NSParagraphStyle> copy() const;
    friend bool operator==(const NSMutableParagraphStyle &a, const NSMutableParagraphStyle &b) = default;
};

/// The layout of a paragraph as a text carries it. Immutable, equal by its content; any thread.
class NSParagraphStyle final : public quib::AttributeObject
{
public:
    using KindBase = NSParagraphStyle;
    static constexpr Kind kKind = Kind::ParagraphStyle;

    explicit NSParagraphStyle(NSMutableParagraphStyle values);
    [[nodiscard]] static std::shared_ptr<NSParagraphStyle> defaultParagraphStyle();
    [[nodiscard]] const NSMutableParagraphStyle &mutableCopy() const { return m_values; }

    [[nodiscard]] double minimumLineHeight() const { return m_values.minimumLineHeight; }
    [[nodiscard]] double maximumLineHeight() const { return m_values.maximumLineHeight; }
    [[nodiscard]] double lineSpacing() const { return m_values.lineSpacing; }
    [[nodiscard]] double paragraphSpacing() const { return m_values.paragraphSpacing; }
    [[nodiscard]] double paragraphSpacingBefore() const { return m_values.paragraphSpacingBefore; }
    [[nodiscard]] double headIndent() const { return m_values.headIndent; }
    [[nodiscard]] double firstLineHeadIndent() const { return m_values.firstLineHeadIndent; }
    [[nodiscard]] double tailIndent() const { return m_values.tailIndent; }
    [[nodiscard]] double defaultTabInterval() const { return m_values.defaultTabInterval; }
    [[nodiscard]] double hyphenationFactor() const { return m_values.hyphenationFactor; }
    [[nodiscard]] NSTextAlignment alignment() const { return m_values.alignment; }
    [[nodiscard]] NSLineBreakMode lineBreakMode() const { return m_values.lineBreakMode; }
    [[nodiscard]] const QList<NSTextTab> &tabStops() const { return m_values.tabStops; }

    [[nodiscard]] Kind kind() const override { return kKind; }
    [[nodiscard]] bool isShareable() const override { return true; }
    [[nodiscard]] bool isEqual(const AttributeObject &other) const override;
    [[nodiscard]] size_t hash() const override { return m_hash; }

private:
    NSMutableParagraphStyle m_values;
    size_t m_hash;
};
