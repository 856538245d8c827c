#include "StyledNote.h"

#include <Markup/Stylers/QBNoteTextStylerAttributes.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

/// Whether the attributes are of a line whose marker hangs beside the column.
bool hasMarker(const QJsonObject &attributes)
{
    const std::array names{QBNoteUnorderedListStylerAttributeName, QBNoteCheckboxStylerAttributeName,
                           QBNoteOrderedListTextStylerAttributeName, QBNoteQuoteTextStylerAttributeName};
    return std::any_of(names.begin(), names.end(),
                       [&](const NSAttributeName &name) { return attributes.contains(name.string()); });
}

} // namespace

QString StyledNote::looks()
{
    const StyledTextDescription description(m_stack.themeManager());
    QString looks = buffer() % u'\n';
    NSMutableAttributedString text(storage().attributedString());
    text.removeAttribute(NSKernAttributeName, text.fullRange());
    for (const QJsonValue &attachment : StyledTextDescription::attachmentsOfText(text)) {
        looks += QString::fromUtf8(QJsonDocument(attachment.toObject()).toJson(QJsonDocument::Compact)) % u'\n';
    }
    for (const QJsonValue &value : description.runsOfText(text)) {
        QJsonObject run = value.toObject();
        QJsonObject attributes = run.value(u"attributes"_s).toObject();
        if (attributes.contains(QBNoteCodeTextStylerLanguageAttributeName.string())) {
            attributes.insert(QBNoteCodeTextStylerLanguageAttributeName.string(), u"block"_s);
        }
        const auto paragraphStyle = attributes.constFind(NSParagraphStyleAttributeName.string());
        if (paragraphStyle != attributes.constEnd() && paragraphStyle->isObject() && hasMarker(attributes)) {
            QJsonObject style = paragraphStyle->toObject();
            style.remove(u"firstLineHeadIndent"_s);
            style.remove(u"tabStops"_s);
            attributes.insert(NSParagraphStyleAttributeName.string(), style);
        }
        for (const auto &name : {QBNoteTagStylerAttributeName, QBNoteFullSelectionRangeAttributeName}) {
            if (const QString identity = attributes.value(name.string()).toString(); !identity.isEmpty()) {
                attributes.insert(name.string(), identity.section(u'_', 0, -2));
            }
        }
        run.insert(u"attributes"_s, attributes);
        looks += QString::fromUtf8(QJsonDocument(run).toJson(QJsonDocument::Compact)) % u'\n';
    }
    return looks;
}

QString randomMarkupPiece(std::mt19937 &generator)
{
    static const QStringList pieces{u"word"_s,
                                    u"two words"_s,
                                    u" "_s,
                                    u" "_s,
                                    u"\n"_s,
                                    u"\n"_s,
                                    u"\n\n"_s,
                                    u"\t"_s,
                                    u"*"_s,
                                    u"**"_s,
                                    u"/"_s,
                                    u"_"_s,
                                    u"__"_s,
                                    u"-"_s,
                                    u"~"_s,
                                    u"~~"_s,
                                    u"::"_s,
                                    u"`"_s,
                                    u"```"_s,
                                    u"\n```\n"_s,
                                    u"\n```cpp\n"_s,
                                    u"# "_s,
                                    u"\n## "_s,
                                    u"\n###### "_s,
                                    u"> "_s,
                                    u"\n> "_s,
                                    u"\n* "_s,
                                    u"\n- "_s,
                                    u"\n+ "_s,
                                    u"\n- [ ] "_s,
                                    u"\n- [x] "_s,
                                    u"\n12. "_s,
                                    u"\n---\n"_s,
                                    u"#tag"_s,
                                    u" #tag "_s,
                                    u"#a tag#"_s,
                                    u" #a/b "_s,
                                    u"#"_s,
                                    u"#aabbcc"_s,
                                    u" #112233 "_s,
                                    u"[[Note]]"_s,
                                    u"[["_s,
                                    u"]]"_s,
                                    u"[title](https://a.b/c)"_s,
                                    u"[x](quib://x-callback-url/open-note?id=1)"_s,
                                    u"["_s,
                                    u"]("_s,
                                    u")"_s,
                                    u"![alt](pic.png)"_s,
                                    u"[image:1/a.png]"_s,
                                    u"[file:2/b.txt]"_s,
                                    u"->"_s,
                                    u" <- "_s,
                                    u"https://example.com/a_b/c"_s,
                                    u"me@example.com"_s,
                                    u"*bold*"_s,
                                    u"/slanted/"_s,
                                    u" _under_ "_s,
                                    u" -gone- "_s,
                                    u"::mark::"_s,
                                    u"`code`"_s,
                                    u"caf\u00e9"_s,
                                    u"\u00a0"_s,
                                    u"\ufffc"_s,
                                    u"\U0001F600"_s,
                                    QString(QChar(0xD83D)),
                                    u"\u0645\u0631\u062d\u0628\u0627"_s,
                                    u"1/2"_s,
                                    u"\r\n"_s,
                                    u"\u2028"_s,
                                    QString(QChar(0))};
    return pieces.at(static_cast<qsizetype>(generator() % static_cast<unsigned>(pieces.size())));
}

QString randomMarkup(std::mt19937 &generator, int pieces)
{
    QString text;
    for (int i = 0; i < pieces; ++i) {
        text += randomMarkupPiece(generator);
    }
    return text;
}

} // namespace quib::tests
