#include "ScriptFonts.h"

#include <Foundation/Clock.h>
#include <Graphics/GraphicsContext.h>
#include <Graphics/ParagraphLayout.h>
#include <Text/NSAttributedString.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QFontDatabase>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Scripts that have a font here. One without any makes the font library try every font, for nothing.
QStringList scriptsWithFonts()
{
    const std::pair<QFontDatabase::WritingSystem, QString> scripts[] = {
        {QFontDatabase::Any, u"\U0001F600"_s},
        {QFontDatabase::SimplifiedChinese, u"\u6F22\u5B57"_s},
        {QFontDatabase::Japanese, u"\u304B\u306A"_s},
        {QFontDatabase::Korean, u"\uD55C\uAE00"_s},
        {QFontDatabase::Arabic, u"\u0639\u0631\u0628\u064A"_s},
        {QFontDatabase::Hebrew, u"\u05E2\u05D1\u05E8"_s},
        {QFontDatabase::Devanagari, u"\u0939\u093F\u0928"_s},
        {QFontDatabase::Thai, u"\u0E44\u0E17\u0E22"_s},
        {QFontDatabase::Greek, u"\u0395\u03BB"_s},
        {QFontDatabase::Cyrillic, u"\u041A\u0438"_s},
    };
    QStringList found;
    for (const auto &[system, letters] : scripts) {
        if (system == QFontDatabase::Any || !QFontDatabase::families(system).isEmpty()) {
            found.append(letters);
        }
    }
    return found;
}

} // namespace

ScriptFonts::ScriptFonts(std::shared_ptr<QBNotesTextThemeManager> themeManager)
    : m_themeManager(std::move(themeManager))
    , m_left(scriptsWithFonts())
{
}

ScriptFonts::~ScriptFonts() = default;

void ScriptFonts::loadLater()
{
    if (!m_left.isEmpty()) {
        m_timer = Clock::shared().schedule(kDelay, [this] { loadNext(); });
    }
}

void ScriptFonts::loadNext()
{
    // Laid out and drawn as a text is, on a picture that nobody sees.
    constexpr QSizeF kSide(8, 8);
    const NSAttributedString text(m_left.takeFirst(), m_themeManager->defaultTextAttributes());
    const ParagraphLayout layout(text, text.fullRange(), kSide.width());
    GraphicsContext context(kSide, 1);
    layout.drawIn(context, {0, 0});
    if (m_left.isEmpty()) {
        m_timer.reset();
    } else {
        m_timer = Clock::shared().schedule(kInterval, [this] { loadNext(); });
    }
}

} // namespace quib
