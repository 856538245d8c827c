#pragma once

#include "PreferencesForm.h"

namespace quib {

/// Name, version, and whose work the program stands on. Owned by the window; main queue.
class AboutPage final : public PreferencesForm
{
    Q_OBJECT

public:
    explicit AboutPage(QWidget *parent = nullptr);
};

} // namespace quib
