#pragma once

#include <Graphics/NSFont.h>

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace quib {

class TimerToken;

/// Finds, ahead of the first text that needs them, the fonts of letters that the fonts in use have not, and finds out
/// about those that no font has: the first note in such a script would pay for it in a frame, once more for each of its
/// fonts. A few letters in one font at a time, while nobody types or scrolls. Owned by a view of texts; main queue.
class ScriptFonts
{
public:
    /// So long nothing is loaded after the beginning, and after the user did something. Units: seconds.
    static constexpr double kDelay = 1.5;
    /// From one step to the next. Units: seconds.
    static constexpr double kInterval = 0.01;

    /// Lays letters out in a font, just as the view's texts are. What comes back is kept, and keeps what was loaded.
    using Layout = std::function<std::shared_ptr<const void>(const QString &letters, const NSFont &font)>;

    /// fonts: those that the view's texts are in; asked for after every pause, as themes and sizes change.
    ScriptFonts(std::function<QList<NSFont>()> fonts, Layout layout);
    ~ScriptFonts();
    ScriptFonts(const ScriptFonts &) = delete;
    ScriptFonts &operator=(const ScriptFonts &) = delete;

    /// Begins, when a first text was shown; waits, when the user is at work; and does nothing once all is loaded.
    void loadLater();
    /// Steps to come, as far as is known.
    [[nodiscard]] qsizetype stepsLeft() const { return m_left.size(); }

    /// A layout on a painter's device, at the size that it has there.
    [[nodiscard]] static std::shared_ptr<const void> layoutInView(const QString &letters, const NSFont &font);
    /// A layout as a paragraph of a note.
    [[nodiscard]] static std::shared_ptr<const void> layoutInNote(const QString &letters, const NSFont &font);

private:
    struct Step
    {
        qsizetype font; // an index of m_fonts
        QString letters;
    };

    void begin();
    void loadNext();

    std::function<QList<NSFont>()> m_fontsInUse;
    Layout m_layout;
    QList<NSFont> m_fonts;
    QList<Step> m_left;
    std::vector<std::shared_ptr<const void>> m_kept; // by font
    std::unique_ptr<TimerToken> m_timer;
};

} // namespace quib
