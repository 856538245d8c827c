#pragma once

#include <QStringList>

#include <memory>
#include <vector>

QT_BEGIN_NAMESPACE
class QTranslator;
QT_END_NAMESPACE

namespace quib {

/// The language of the interface: the first of the desktop's languages that the program is translated into, else
/// English. Its texts, those of the toolkit, and the direction of the layout hold as long as this lives. Made after the
/// application object and before any window; main queue.
class InterfaceLanguage final
{
public:
    /// The languages of the desktop, the best first.
    InterfaceLanguage();
    /// Shape: names of languages as "de", "pt-BR".
    explicit InterfaceLanguage(const QStringList &languages);
    ~InterfaceLanguage();
    InterfaceLanguage(const InterfaceLanguage &) = delete;
    InterfaceLanguage &operator=(const InterfaceLanguage &) = delete;

    /// The language as it is named in the translations: "de"; "en" where the texts are as they were written.
    [[nodiscard]] const QString &name() const { return m_name; }
    /// The languages that the program is translated into, English among them, in the order of their names.
    [[nodiscard]] static QStringList availableNames();

private:
    bool install(const QString &fileName, const QString &folder);

    QString m_name;
    bool m_hasSetDirection = false;
    std::vector<std::unique_ptr<QTranslator>> m_translators;
};

} // namespace quib
