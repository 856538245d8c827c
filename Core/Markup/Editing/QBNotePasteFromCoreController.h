#pragma once

#include <Foundation/NSRange.h>

#include <QString>
#include <QStringView>

#include <functional>

/// Makes text of the note's markup out of what is pasted. Owned by the editor; main queue.
class QBNotePasteFromCoreController
{
public:
    /// Names the language that a piece of code is in, "Unknown" when it can't tell.
    using LanguageDetector = std::function<QString(const QString &code)>;

    /// Longer code is named by so many lines at its beginning.
    static constexpr qint64 kDetectedLines = 100;

    explicit QBNotePasteFromCoreController(LanguageDetector detectLanguageWithString)
        : m_detectLanguageWithString(std::move(detectLanguageWithString))
    {
    }

    /// The text as a code block, with its language where that can be told. Null and empty give nothing.
    [[nodiscard]] QString pasteStringFromCode(const QString &code) const;

private:
    LanguageDetector m_detectLanguageWithString;
};

namespace quib {

/// A text that is put in the place of a range, with a blank at either end where it would else run into the words beside
/// it. An empty or blank text stays as it is.
[[nodiscard]] QString stringForSmartCopyInRange(QStringView string, NSRange range, const QString &withString);

} // namespace quib
