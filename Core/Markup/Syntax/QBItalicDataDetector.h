#pragma once

#include <Text/NSRegularExpression.h>

#include <QStringList>

/// Says whether a marker may open or close italics; asked by QBItalicDataDetector. Both answers are yes by default.
class QBItalicDataDetectorDelegate
{
public:
    virtual ~QBItalicDataDetectorDelegate() = default;
    [[nodiscard]] virtual bool dataDetectorShouldMatchBeginMarkerInRange(NSRange range)
    {
        static_cast<void>(range);
        return true;
    }
    [[nodiscard]] virtual bool dataDetectorShouldMatchEndMarkerInRange(NSRange range)
    {
        static_cast<void>(range);
        return true;
    }
};

/// Finds italics: pairs of markers inside a paragraph, the opening one not behind a digit nor before a blank, the
/// closing one not behind a blank nor before a digit. Groups: 1 begin marker, 2 what lies between, 3 end marker. For
/// several pairs of markers a paragraph is gone through once a pair, in the pairs' order. Immutable but for its
/// delegate, which must outlive its use.
class QBItalicDataDetector : public NSRegularExpression
{
public:
    /// beginMarkers and endMarkers go in parallel.
    QBItalicDataDetector(QStringList beginMarkers, QStringList endMarkers,
                         QBItalicDataDetectorDelegate *delegate = nullptr);

    [[nodiscard]] const QStringList &beginMarkers() const { return m_beginMarkers; }
    [[nodiscard]] const QStringList &endMarkers() const { return m_endMarkers; }
    void setDelegate(QBItalicDataDetectorDelegate *delegate) { m_delegate = delegate; }

    void enumerateMatchesInString(QStringView string, Options matchingOptions, NSRange range,
                                  const MatchCallback &usingBlock) const override;
    /// The same without a detector, for those who ask once.
    static void enumerateItalics(QStringView string, NSRange range, const QStringList &beginMarkers,
                                 const QStringList &endMarkers, QBItalicDataDetectorDelegate *delegate,
                                 const MatchCallback &usingBlock);

private:
    [[nodiscard]] static NSTextCheckingResult ranges(NSRange fromBeginRange, NSRange endRange);

    QStringList m_beginMarkers;
    QStringList m_endMarkers;
    QBItalicDataDetectorDelegate *m_delegate;
};
