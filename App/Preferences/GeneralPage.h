#pragma once

#include "PreferencesForm.h"

namespace quib {

/// Lists, links, where the notes lie, the log, and the way back to how it all was. Owned by the window; main queue.
class GeneralPage final : public PreferencesForm
{
    Q_OBJECT

public:
    explicit GeneralPage(QWidget *parent = nullptr);

private:
    void addReset();
};

} // namespace quib
