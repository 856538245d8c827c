#include "ScriptFonts.h"

#include <Foundation/Clock.h>
#include <Graphics/GraphicsAttributes.h>
#include <Graphics/GraphicsContext.h>
#include <Graphics/ParagraphLayout.h>
#include <Text/NSAttributedString.h>

#include <QFont>
#include <QFontDatabase>
#include <QImage>
#include <QPainter>
#include <QTextLayout>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Of the widest layout, and of a picture that nobody sees. Units: points.
constexpr int kSide = 8;

/// A few letters of each script, which the font library looks for by itself. It tries one font after the other until
/// one has a letter; what it learns by that holds for the script in that font, be the letter found or not.
QStringList letters()
{
    // Those that are met everywhere, fonts or none: smileys and flags, Han, Hiragana and Katakana.
    QStringList letters{u"\U0001F600"_s, u"\U0001F1EE\U0001F1F9"_s, u"\u6F22\u5B57"_s, u"\u304B\u306A"_s,
                        u"\u30AB\u30CA"_s};
    const std::pair<QFontDatabase::WritingSystem, QString> others[] = {
        {QFontDatabase::Greek, u"\u0395\u03BB"_s},        {QFontDatabase::Cyrillic, u"\u041A\u0438"_s},
        {QFontDatabase::Arabic, u"\u0639\u0631\u0628"_s}, {QFontDatabase::Hebrew, u"\u05E2\u05D1"_s},
        {QFontDatabase::Korean, u"\uD55C\uAE00"_s},       {QFontDatabase::Devanagari, u"\u0939\u093F\u0928"_s},
        {QFontDatabase::Thai, u"\u0E44\u0E17\u0E22"_s},
    };
    for (const auto &[system, some] : others) {
        if (!QFontDatabase::families(system).isEmpty()) {
            letters.append(some);
        }
    }
    return letters;
}

} // namespace

ScriptFonts::ScriptFonts(std::function<QList<NSFont>()> fonts, Layout layout)
    : m_fontsInUse(std::move(fonts))
    , m_layout(std::move(layout))
{
}

ScriptFonts::~ScriptFonts() = default;

void ScriptFonts::loadLater()
{
    m_timer = Clock::shared().schedule(kDelay, [this] { begin(); });
}

void ScriptFonts::begin()
{
    QList<NSFont> fonts;
    for (const NSFont &font : m_fontsInUse()) {
        if (!fonts.contains(font)) {
            fonts.append(font);
        }
    }
    if (fonts != m_fonts) {
        m_fonts = fonts;
        m_kept.assign(static_cast<size_t>(fonts.size()), nullptr);
        m_left.clear();
        const QStringList scripts = letters();
        for (qsizetype font = 0; font < fonts.size(); ++font) {
            for (const QString &some : scripts) {
                m_left.append({font, some});
            }
        }
    }
    if (m_left.isEmpty()) {
        m_timer.reset();
    } else {
        loadNext();
    }
}

void ScriptFonts::loadNext()
{
    const Step step = m_left.takeFirst();
    m_kept[static_cast<size_t>(step.font)] = m_layout(step.letters, m_fonts[step.font]);
    if (m_left.isEmpty()) {
        m_timer.reset();
    } else {
        m_timer = Clock::shared().schedule(kInterval, [this] { loadNext(); });
    }
}

std::shared_ptr<const void> ScriptFonts::layoutInView(const QString &letters, const NSFont &font)
{
    auto layout = std::make_shared<QTextLayout>(letters, font.font());
    layout->beginLayout();
    layout->createLine().setLineWidth(kSide);
    layout->endLayout();
    QImage picture(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    layout->draw(&painter, {0, 0});
    return layout;
}

std::shared_ptr<const void> ScriptFonts::layoutInNote(const QString &letters, const NSFont &font)
{
    AttributeSet attributes;
    attributes.insert(NSFontAttributeName, attributeValue(font));
    const NSAttributedString text(letters, attributes);
    auto layout = std::make_shared<ParagraphLayout>(text, text.fullRange(), kSide);
    GraphicsContext context(QSizeF(kSide, kSide), 1);
    layout->drawIn(context, {0, 0});
    return layout;
}

} // namespace quib
