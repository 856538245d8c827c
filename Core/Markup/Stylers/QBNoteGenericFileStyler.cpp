#include "QBNoteGenericFileStyler.h"

#include "QBNoteTextAttachmentConfiguring.h"

#include <Markup/Attachments/QBGenericFileTextAttachment.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/Syntax/StylerSyntax.h>
#include <Text/NSStringHelpers.h>
#include <Themes/QBNotesTextThemeManager.h>

#include <QUrl>

#include <algorithm>

using quib::syntax::Construct;

namespace {

/// Units that stand in the query of a URL as they are, beside letters, digits and "-._~".
constexpr char kPlainInQuery[] = "!$&'()*+,/:;=?@";

} // namespace

const NSRegularExpression &QBNoteGenericFileStyler::stylerRegularExpression()
{
    return quib::syntax::stylerRegularExpression(Construct::GenericFile, /*syntax=*/0);
}

QStringList QBNoteGenericFileStyler::stylerMarkerComponents()
{
    return quib::syntax::stylerMarkerComponents(Construct::GenericFile);
}

QString QBNoteGenericFileStyler::pathComponentFromTextRepresentation(const QString &textRepresentation)
{
    const qsizetype start = textRepresentation.indexOf(u':') + 1;
    return start == 0 ? QString() : textRepresentation.mid(start, textRepresentation.size() - 1 - start);
}

QString QBNoteGenericFileStyler::filenameFromAttachmentRepresentedString(const QString &representedString)
{
    const qsizetype start = representedString.indexOf(u'/') + 1;
    if (start == 0) {
        return {};
    }
    QString name = representedString.sliced(start);
    if (name.endsWith(u']')) {
        name.chop(1);
    }
    return QString::fromLatin1(QUrl::toPercentEncoding(name, QByteArray(kPlainInQuery)));
}

const NSRegularExpression *QBNoteGenericFileStyler::regularExpression() const
{
    return &stylerRegularExpression();
}

int QBNoteGenericFileStyler::stylerRegularExpressionRepresentedTextGroupIndex() const
{
    return quib::syntax::representedTextGroupIndex(Construct::GenericFile);
}

std::shared_ptr<QBNotesTextAttachment> QBNoteGenericFileStyler::makeTextAttachment(const QString &representedText) const
{
    return std::make_shared<QBGenericFileTextAttachment>(representedText, themeManager());
}

bool QBNoteGenericFileStyler::isOwnTextAttachment(const QBNotesTextAttachment &attachment) const
{
    return dynamic_cast<const QBGenericFileTextAttachment *>(&attachment) != nullptr;
}

quib::AttributeNameMask QBNoteGenericFileStyler::ownTextAttachmentClasses() const
{
    auto classes = quib::AttributeNameMask::ofClass(typeid(QBGenericFileTextAttachment));
    classes |= quib::AttributeNameMask::ofClass(typeid(QBImageTextAttachment));
    return classes;
}

std::optional<quib::AttributeSet>
QBNoteGenericFileStyler::attributesWithTextAttachmentForRepresentedText(const QString &representedText)
{
    const auto attachment = makeTextAttachment(representedText);
    if (auto *configurator = textAttachmentConfigurator()) {
        configurator->configureTextAttachment(*attachment, *this);
    }
    quib::AttributeSet attributes = attachmentAttributes();
    attributes.insert(NSAttachmentAttributeName, attachment);
    return attributes;
}

quib::AttributeSet QBNoteGenericFileStyler::attachmentAttributes() const
{
    return themeManager() ? themeManager()->defaultTextAttributes() : quib::AttributeSet();
}

void QBNoteGenericFileStyler::enumerateValidAttachmentsInAttributedString(const NSAttributedString &attributedString,
                                                                          NSRange range,
                                                                          const AttachmentBlock &usingBlock) const
{
    enumerateOwnAttachments(attributedString, range, usingBlock);
}

void QBNoteGenericFileStyler::removeInString(QString &string, NSRange &range) const
{
    const QList<NSTextCheckingResult> matches = regularExpression()->matchesInString(string, 0, range);
    if (matches.isEmpty()) {
        return;
    }
    QString left;
    left.reserve(string.size());
    qint64 done = 0;
    qint64 newLimit = range.limit();
    const auto keep = [&](qint64 limit) {
        left.append(QStringView(string).sliced(done, limit - done));
        done = limit;
    };
    for (auto match = matches.cbegin(); match != matches.cend();) {
        const NSRange line = quib::paragraphRangeForRange(string, match->range());
        keep(line.location);
        const qsizetype before = left.size();
        for (; match != matches.cend() && line.contains(match->range().location); ++match) {
            keep(match->range().location);
            done = match->range().limit();
            newLimit -= match->range().length;
        }
        keep(line.limit());
        const QStringView rest = QStringView(left).sliced(before);
        if (std::ranges::all_of(rest, [](QChar unit) { return quib::isNewline(unit.unicode()); })) {
            // What of the line's end lay behind the range was not part of it.
            newLimit -= std::clamp<qint64>(range.limit() - (line.limit() - rest.size()), 0, rest.size());
            left.truncate(before);
        }
    }
    keep(string.size());
    string = left;
    range.length = std::max<qint64>(newLimit - range.location, 0);
}
