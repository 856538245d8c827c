#pragma once

#include <QStringList>

#include <memory>

class QBNotesTextThemeManager;

namespace quib {

class TimerToken;

/// Loads the fonts of scripts that a theme's font has no letters for, one script at a time while nobody types or
/// scrolls: the first note in such a script would pay for its fonts in a frame. Owned by an editor's pane; main queue.
class ScriptFonts
{
public:
    /// So long nothing is loaded after the beginning, and after the user did something. Units: seconds.
    static constexpr double kDelay = 1.5;
    /// From one script to the next. Units: seconds.
    static constexpr double kInterval = 0.1;

    explicit ScriptFonts(std::shared_ptr<QBNotesTextThemeManager> themeManager);
    ~ScriptFonts();
    ScriptFonts(const ScriptFonts &) = delete;
    ScriptFonts &operator=(const ScriptFonts &) = delete;

    /// Begins, when a first text was shown; waits, when the user is at work; and does nothing once all is loaded.
    void loadLater();
    /// Those that are still to be loaded, by a few of their letters.
    [[nodiscard]] const QStringList &scriptsLeft() const { return m_left; }

private:
    void loadNext();

    std::shared_ptr<QBNotesTextThemeManager> m_themeManager;
    QStringList m_left;
    std::unique_ptr<TimerToken> m_timer;
};

} // namespace quib
