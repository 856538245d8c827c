#include "DesktopAppearance.h"

#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr auto kService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kInterface = "org.freedesktop.portal.Settings"_L1;
constexpr auto kGroup = "org.freedesktop.appearance"_L1;
constexpr auto kKey = "color-scheme"_L1;
/// A portal that is slow to start must not hold up the window. Units: milliseconds.
constexpr int kPatience = 250;
constexpr uint kPrefersDark = 1;

/// Values come wrapped once or twice, by the portal's version.
QVariant unwrapped(QVariant value)
{
    while (value.canConvert<QDBusVariant>()) {
        value = value.value<QDBusVariant>().variant();
    }
    return value;
}

} // namespace

DesktopAppearance::DesktopAppearance(QDBusConnection bus, QObject *parent)
    : QObject(parent)
{
    const QPalette palette = QGuiApplication::palette();
    m_isDark = palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
    if (!bus.isConnected()) {
        return;
    }
    bus.connect(kService, kPath, kInterface, u"SettingChanged"_s, this, SLOT(settingDidChange(QDBusMessage)));
    QDBusMessage question = QDBusMessage::createMethodCall(kService, kPath, kInterface, u"Read"_s);
    question.setArguments({QString(kGroup), QString(kKey)});
    const QDBusMessage answer = bus.call(question, QDBus::Block, kPatience);
    if (answer.type() == QDBusMessage::ReplyMessage && !answer.arguments().isEmpty()) {
        m_isDark = unwrapped(answer.arguments().constFirst()).toUInt() == kPrefersDark;
    }
}

void DesktopAppearance::settingDidChange(const QDBusMessage &message)
{
    const QVariantList arguments = message.arguments();
    if (arguments.size() == 3 && arguments[0].toString() == kGroup && arguments[1].toString() == kKey) {
        take(unwrapped(arguments[2]).toUInt());
    }
}

void DesktopAppearance::take(uint scheme)
{
    const bool isDark = scheme == kPrefersDark;
    if (isDark != m_isDark) {
        m_isDark = isDark;
        Q_EMIT didChange(isDark);
    }
}

} // namespace quib
