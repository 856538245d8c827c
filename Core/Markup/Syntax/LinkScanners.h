#pragma once

#include "SyntaxScanner.h"

#include <QList>

#include <utility>

namespace quib::syntax {

/// [title](url). Groups: 1 title, 2 URL text.
class TitledURLScanner final : public SyntaxScanner
{
public:
    explicit TitledURLScanner(const QString &pattern)
        : SyntaxScanner(pattern, AnchorsMatchLines)
    {
    }

protected:
    void scan(QStringView region, Sink &sink) const override;
};

/// ![alt](url "title"). Groups: 1 alt text, 2 what stands in the parentheses.
class MarkdownImageScanner final : public SyntaxScanner
{
public:
    explicit MarkdownImageScanner(const QString &pattern)
        : SyntaxScanner(pattern, AnchorsMatchLines)
    {
    }

protected:
    void scan(QStringView region, Sink &sink) const override;
};

/// [title](quib...). Groups: 1 title, 2 link.
class LinkedNoteScanner final : public SyntaxScanner
{
public:
    explicit LinkedNoteScanner(const QString &pattern)
        : SyntaxScanner(pattern, AnchorsMatchLines)
    {
    }

protected:
    void scan(QStringView region, Sink &sink) const override;
};

/// [file:id/name] or [image:id/name]. Groups: 1 the kind, 2 identifier, 3 name.
class FileMarkerScanner final : public SyntaxScanner
{
public:
    FileMarkerScanner(const QString &pattern, const QString &kind)
        : SyntaxScanner(pattern, AnchorsMatchLines)
        , m_opening(QString(u'[' % kind % u':'))
    {
    }

protected:
    void scan(QStringView region, Sink &sink) const override;

private:
    QString m_opening;
};

/// A colour code between boundaries. Group 1: the code.
class ColorScanner final : public SyntaxScanner
{
public:
    explicit ColorScanner(const QString &pattern)
        : SyntaxScanner(pattern, AnchorsMatchLines)
    {
    }

protected:
    void scan(QStringView region, Sink &sink) const override;
};

/// An arrow, -> or <-, between boundaries. Group 1: the arrow.
class ArrowScanner final : public SyntaxScanner
{
public:
    explicit ArrowScanner(const QString &pattern)
        : SyntaxScanner(pattern, AnchorsMatchLines)
    {
    }

protected:
    void scan(QStringView region, Sink &sink) const override;
};

/// One of some units, wherever it stands.
class UnitScanner final : public SyntaxScanner
{
public:
    /// Units: in ascending order.
    UnitScanner(const QString &pattern, QList<char16_t> units)
        : SyntaxScanner(pattern)
        , m_units(std::move(units))
    {
    }

protected:
    void scan(QStringView region, Sink &sink) const override;

private:
    QList<char16_t> m_units;
};

} // namespace quib::syntax
