#pragma once

#include "QBThemeManager.h"

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
};
