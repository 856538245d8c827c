#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QString>
#include <QVariantMap>

namespace quib {

/// Keys that reach the program wherever the keyboard is, by the desktop's portal
/// (org.freedesktop.portal.GlobalShortcuts): the desktop asks the user which keys these are, and keeps them. A portal
/// that starts anew is asked again. Nothing is asked for before bind(). Owned by whoever makes the windows; main queue.
class GlobalShortcuts final : public QObject
{
    Q_OBJECT

public:
    explicit GlobalShortcuts(const QDBusConnection &bus, QObject *parent = nullptr);

    struct Shortcut
    {
        QString identifier;
        /// What the user reads in the desktop's settings.
        QString description;
        /// The keys that the program would like, as desktops write them: "CTRL+LOGO+n".
        QString preferredTrigger;
    };
    /// Hands the shortcuts to the desktop; didBind or didFail tells how that went.
    void bind(const QList<Shortcut> &shortcuts);
    [[nodiscard]] bool isBound() const { return m_isBound; }

Q_SIGNALS:
    void activated(const QString &identifier);
    /// keys: what the user reads, one for each shortcut that has keys.
    void didBind(const QStringList &keys);
    /// isAbsent: there is no such portal; otherwise the user declined, or the portal failed.
    void didFail(bool isAbsent);

private Q_SLOTS:
    void sessionDidAnswer(uint response, const QVariantMap &results);
    void bindingDidAnswer(uint response, const QVariantMap &results);
    void wasActivated(const QDBusMessage &message);

private:
    void createSession();
    void fail(bool isAbsent);
    /// Calls a method of the portal and has its answer told to a slot.
    void request(const QString &method, const QVariantList &arguments, QVariantMap options, const char *answerSlot);

    QDBusConnection m_bus;
    QList<Shortcut> m_shortcuts;
    QString m_session;
    int m_requests = 0;
    bool m_isBound = false;
};

} // namespace quib
