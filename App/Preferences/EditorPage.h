#pragma once

#include "PreferencesForm.h"

QT_BEGIN_NAMESPACE
class QDoubleSpinBox;
QT_END_NAMESPACE

namespace quib {

/// How text looks and is written, with a sample that follows. Owned by the window; main queue.
class EditorPage final : public PreferencesForm
{
    Q_OBJECT

public:
    explicit EditorPage(QWidget *parent = nullptr);

private:
    void addFonts();
    void addMarkup();
    void addWriting();
    void addSpellingLanguages();
};

} // namespace quib
