#include "InterfaceLanguage.h"

#include <QDir>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr QLatin1StringView kFolder{":/Translations"};
constexpr QLatin1StringView kPrefix{"quib_"};

/// The translation for a language of the desktop; null where there is none.
QString nameFor(const QString &language)
{
    const QString tag = QString(language).replace(u'_', u'-');
    // What no region has settled for itself is that of the language.
    const QString bare = tag.section(u'-', 0, 0).toLower();
    if (bare == "c"_L1 || bare == "posix"_L1) {
        return u"en"_s;
    }
    const QStringList names = InterfaceLanguage::availableNames();
    return names.contains(bare) ? bare : QString();
}

} // namespace

InterfaceLanguage::InterfaceLanguage()
    : InterfaceLanguage(QLocale::system().uiLanguages())
{
}

InterfaceLanguage::InterfaceLanguage(const QStringList &languages)
    : m_name(u"en"_s)
{
    for (const QString &language : languages) {
        if (const QString name = nameFor(language); !name.isNull()) {
            m_name = name;
            break;
        }
    }
    // 1. The toolkit's texts where they are installed; English is what it has without.
    if (m_name != "en"_L1) {
        install(u"qtbase_"_s % m_name, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    }
    // 2. Ours, in English the plurals.
    install(QString(kPrefix % m_name), QString(kFolder));
    // 3. The direction, also where the toolkit's texts are missing.
    if (QLocale(m_name).textDirection() == Qt::RightToLeft && !QGuiApplication::isRightToLeft()) {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        m_hasSetDirection = true;
    }
}

InterfaceLanguage::~InterfaceLanguage()
{
    if (QCoreApplication::instance() == nullptr) {
        return; // the application went first, and took what was set with it
    }
    for (const auto &translator : m_translators) {
        QCoreApplication::removeTranslator(translator.get());
    }
    if (m_hasSetDirection) {
        QGuiApplication::setLayoutDirection(Qt::LayoutDirectionAuto);
    }
}

bool InterfaceLanguage::install(const QString &fileName, const QString &folder)
{
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(fileName, folder) || !QCoreApplication::installTranslator(translator.get())) {
        return false;
    }
    m_translators.push_back(std::move(translator));
    return true;
}

QStringList InterfaceLanguage::availableNames()
{
    QStringList names;
    for (const QString &file : QDir(QString(kFolder)).entryList({u"quib_*.qm"_s}, QDir::Files, QDir::Name)) {
        names.append(file.chopped(3).sliced(kPrefix.size()));
    }
    return names;
}

} // namespace quib
