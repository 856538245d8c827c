#pragma once

#include <Foundation/NSRange.h>

#include <QString>
#include <QStringView>
#include <QUrl>

#include <optional>

namespace quib {

/// Finds the links of a text from left to right: addresses with a scheme, bare domains and addresses of mail. The text
/// must outlive it and not change. Each unit is looked at a bounded number of times, whatever the text holds.
class LinkScanner
{
public:
    struct Link
    {
        NSRange range;
        QUrl url;
    };
    /// A longer address is no link: nobody follows it, and half of it leads elsewhere.
    static constexpr qsizetype kLongestLink = 8192;

    explicit LinkScanner(QStringView text)
        : m_text(text)
    {
    }

    /// The next link; nothing when there is none any more.
    [[nodiscard]] std::optional<Link> next();
    /// How many looks at units it took so far: the measure of the work, for tests.
    [[nodiscard]] qint64 workDone() const { return m_work; }

private:
    /// A stretch of word characters and of . _ % + and -, in which every kind of link begins. It ends where, in a
    /// label, letters that are written without spaces meet others: those are two words.
    struct Run
    {
        qsizetype start = 0;
        qsizetype limit = 0;
        bool hasDot = false;
    };

    [[nodiscard]] char16_t unitAt(qsizetype index) const;
    [[nodiscard]] char32_t characterAt(qsizetype index) const;
    [[nodiscard]] char32_t characterBefore(qsizetype index) const;
    [[nodiscard]] QStringView part(qsizetype start, qsizetype limit) const;
    [[nodiscard]] Run runAt(qsizetype start) const;
    /// Goes on to the next run that may begin a link: one with a dot in it, or a colon or an "@" behind.
    void skipToCandidate();

    // With a scheme

    std::optional<Link> linkWithScheme(const Run &run);
    std::optional<Link> hierarchicalLink(qsizetype start, qsizetype authority, bool needsHost);
    std::optional<Link> mailtoLink(qsizetype start, qsizetype address);
    std::optional<Link> telephoneLink(qsizetype start, qsizetype number) const;
    [[nodiscard]] qsizetype schemeStart(const Run &run) const;

    // Without one

    std::optional<Link> mailLink(const Run &run);
    std::optional<Link> bareLink(const Run &run);

    // LinkScanner+Parts.cpp: the parts of an address. Each gives where the part ends; the start where there is none.

    [[nodiscard]] qsizetype userInfoLimit(qsizetype start) const;
    [[nodiscard]] qsizetype hostLimit(qsizetype start) const;
    [[nodiscard]] qsizetype portLimit(qsizetype start) const;
    [[nodiscard]] bool beginsTail(qsizetype index) const;
    /// The end of path, query and fragment: brackets balanced, the sentence's punctuation left out. -1 for a link that
    /// would be too long; *end is where to go on in either case.
    [[nodiscard]] qsizetype tailLimit(qsizetype linkStart, qsizetype start, qsizetype *end) const;
    [[nodiscard]] qsizetype trimmedLimit(qsizetype linkStart, qsizetype start, qsizetype limit) const;
    [[nodiscard]] bool beginsAnotherLink(qsizetype index) const;
    /// The marker or quote that opens right before the link, and so closes it: 0 for none.
    [[nodiscard]] char16_t openerBefore(qsizetype linkStart) const;

    QStringView m_text;
    qsizetype m_at = 0;
    /// The next dot, colon or "@" at or behind m_at, when it is not less than that.
    qsizetype m_nextSign = -1;
    mutable qint64 m_work = 0;
};

} // namespace quib
