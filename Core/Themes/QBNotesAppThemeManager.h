#pragma once

#include "QBThemeManager.h"

#include <Graphics/NSImage.h>

#include <functional>

/// The colours of everything but the editor. One for the program, whose main function, or a test, owns it. Colours are
/// read by key.
class QBNotesAppThemeManager : public QBThemeManager
{
public:
    QBNotesAppThemeManager() = default;
    ~QBNotesAppThemeManager() override;

    /// The installed manager; null before one is installed. Queue: main.
    [[nodiscard]] static QBNotesAppThemeManager *sharedThemeManager();
    static void setSharedThemeManager(QBNotesAppThemeManager *manager);

    /// The theme before any is chosen.
    void loadDefaultTheme();

    /// A picture drawn in the theme's colours, drawn at the first asking and kept until the theme changes. Shape: the
    /// key is the picture's name and the states that it was drawn for.
    [[nodiscard]] NSImage cachedImageForKey(const QString &key,
                                            const std::function<NSImage()> &imageProviderBlock) const
    {
        return themeCache().value(key, imageProviderBlock);
    }
};
