#pragma once

#include <Files/PropertyList.h>
#include <Graphics/NSColor.h>

#include <QString>

#include <memory>
#include <optional>

/// One named value of a theme. Shared by the themes it is in and by who edits it; the theme keeps proxyValue in step.
/// Queue: that of its themes.
class QBThemeItem
{
public:
    /// A value is a string or a number; anything else is no value.
    QBThemeItem(QString key, quib::PropertyValue value, QString kind);

    // New items, as an editor of themes adds them.

    [[nodiscard]] static std::shared_ptr<QBThemeItem> fontThemeItem();
    [[nodiscard]] static std::shared_ptr<QBThemeItem> colorThemeItem();
    [[nodiscard]] static std::shared_ptr<QBThemeItem> numberThemeItem();
    /// Heads a section in an editor; nothing reads it.
    [[nodiscard]] static std::shared_ptr<QBThemeItem> groupThemeItem();

    /// "color", "font", "number" or "group".
    [[nodiscard]] const QString &kind() const { return m_kind; }
    void setKind(const QString &kind) { m_kind = kind; }
    /// One that begins with "$" is a variable, which other items refer to.
    [[nodiscard]] const QString &key() const { return m_key; }
    void setKey(const QString &key) { m_key = key; }
    /// As written in the file.
    [[nodiscard]] const quib::PropertyValue &value() const { return m_value; }
    void setValue(quib::PropertyValue value);
    /// The value once variables and "@alpha" are resolved; null where that leads nowhere, or before it was done.
    [[nodiscard]] const quib::PropertyValue &proxyValue() const { return m_proxyValue; }
    void setProxyValue(const quib::PropertyValue &value);

    [[nodiscard]] bool isVariable() const { return m_key.startsWith(u'$'); }
    /// The variable that the whole value is; null where it is none.
    [[nodiscard]] const QString &reference() const { return m_reference; }
    /// The colour of proxyValue; nullopt where that is no string.
    [[nodiscard]] const std::optional<NSColor> &color() const { return m_color; }

private:
    QString m_kind;
    QString m_key;
    quib::PropertyValue m_value;
    QString m_reference; ///< read from m_value when that is set
    quib::PropertyValue m_proxyValue;
    std::optional<NSColor> m_color; ///< read from m_proxyValue when that is set
};
