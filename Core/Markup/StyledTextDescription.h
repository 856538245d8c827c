#pragma once

#include <Text/NSAttributedString.h>

#include <QJsonArray>
#include <QJsonValue>
#include <QString>

#include <memory>

class NSColor;
class NSFont;
class QBNotesTextThemeManager;

namespace quib {

/// Tells a styled text in words, for inspection, bug reports and golden files. Fonts and colours go by the key of the
/// theme that they come from, so that the words are the same whatever the machine's fonts. The first key of the theme
/// in its own order stands for all that have its colour. A value but for the theme, which is shared.
class StyledTextDescription
{
public:
    explicit StyledTextDescription(std::shared_ptr<QBNotesTextThemeManager> themeManager);

    /// Shape: [{"location","class","representedText"}], in order.
    [[nodiscard]] static QJsonArray attachmentsOfText(const NSAttributedString &text);
    /// Shape: [{"location","length","attributes":{name: value}}], maximal, in order.
    [[nodiscard]] QJsonArray runsOfText(const NSAttributedString &text) const;
    [[nodiscard]] QJsonValue valueInWords(const AttributeValue &value) const;

private:
    [[nodiscard]] QString colorInWords(const NSColor &color) const;
    [[nodiscard]] QString fontInWords(const NSFont &font) const;

    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
};

} // namespace quib
