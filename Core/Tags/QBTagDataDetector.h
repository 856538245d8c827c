#pragma once

#include <Text/NSRegularExpression.h>

#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>

#include <memory>

/// What a tag is in a text, and how tag text is added, renamed and removed. Immutable; any thread. The joined pattern
/// is the definition of a tag; matching is done by a scanner that gives the same matches in one pass over the text. A
/// match's range 0 is the tag with its hashes, range 1 the content of a closed tag (`#a tag#`).
class QBTagDataDetector : public NSRegularExpression
{
public:
    /// `#tag`: a hash, then non-space characters up to a boundary.
    [[nodiscard]] static const QString &singleTagRegularExpressionPattern();
    /// `#a tag#`: words with spaces between two hashes of one line.
    [[nodiscard]] static const QString &multiWordTagRegularExpressionPattern();
    /// The single pattern alone.
    [[nodiscard]] static const NSRegularExpression &singleTagRegularExpression();
    /// The group that holds what a match stands for: the whole match.
    [[nodiscard]] static qint64 regularExpressionRepresentedTextGroupIndex() { return 0; }
    /// One detector for the process, built at its first use.
    [[nodiscard]] static const QBTagDataDetector &sharedDetector();

    QBTagDataDetector();
    ~QBTagDataDetector() override;

    void enumerateMatchesInString(QStringView string, Options matchingOptions, NSRange range,
                                  const MatchCallback &usingBlock) const override;

    // QBTagDataDetector+Names.cpp

    /// True for a text with its hash that is one tag of the single form from end to end.
    [[nodiscard]] static bool isSingleTag(QStringView string);
    /// The tag's text for a name: `#name`, closed where the single form would not hold the whole name.
    [[nodiscard]] static QString hashTagStringForTagName(const QString &tagName);
    /// The tag texts of trimmed names; the empty ones are left out.
    [[nodiscard]] static QStringList hashtagsFromTagsStrings(const QStringList &tagsStrings);
    /// An expression that finds one tag in a text, whatever its case. Never null.
    [[nodiscard]] static std::shared_ptr<const NSRegularExpression>
    tagRegularExpressionForHashtagString(const QString &hashtagString);
    /// The key by which two tags are the same: levels without hashes, case and diacritics.
    [[nodiscard]] static QStringList diacriticTagComponentsFromString(QStringView string);

    // QBTagDataDetector+Editing.cpp

    /// The text with each tag that is the same as hashtag written as withHastag; an empty one deletes them, with the
    /// blank that would be left over. A closed tag stays closed.
    [[nodiscard]] static QString stringByReplacingHashtag(const QString &hashtag, const QString &withHastag,
                                                          const QString &inString);
    /// The text with the hashtags added: to the last line when it ends in a tag, else as a paragraph of their own.
    [[nodiscard]] static QString stringByAddingHashtags(const QStringList &hashtags, const QString &toString);
    /// Deletes all tags in the range, and the lines that held nothing else.
    void removeTagsInString(QString &string, NSRange range) const;
    /// The same for matches that are known already.
    /// Shape:   matches ascending and disjoint; those that don't lie in inRange are left alone.
    void removeTagsInString(QString &string, const QList<NSTextCheckingResult> &withMatches, NSRange inRange) const;
};
