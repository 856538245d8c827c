// What each construct looks like, in both syntaxes: Tests/Data/Styling/NAME.txt goes in, NAME.native and NAME.markdown
// tell in words what comes out. QUIB_ACCEPT=1 writes them anew; read the difference before it is committed.

#include "StyledNote.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>

using namespace Qt::StringLiterals;
using quib::tests::StyledNote;

namespace {

const QString kFolder = QStringLiteral(QUIB_TEST_DATA "/Styling/");

/// A name without what all names have in common.
QString shortName(QString name)
{
    for (const QString &part : {u"QBNote"_s, u"QB"_s, u"TextStyler"_s, u"Styler"_s, u"AttributeName"_s}) {
        name.remove(part);
    }
    return name;
}

QString inWords(const QString &name, const QJsonValue &value)
{
    if (name == u"NSFont"_s || name == u"NSColor"_s) {
        return value.toString();
    }
    if (name == u"NSParagraphStyle"_s) {
        // The measures follow the fonts; which of them are set is what counts.
        return QString(u"paragraph("_s % QStringList(value.toObject().keys()).join(u' ') % u')');
    }
    if (name == u"QBNoteCodeTextStylerLanguageAttributeName"_s) {
        return u"language"_s;
    }
    if (value.isDouble() && value.toDouble() == 1) {
        return shortName(name);
    }
    if (name == u"NSKern"_s || name == u"NSBaselineOffset"_s) {
        return QString(name % (value.toDouble() < 0 ? u"<0"_s : u">0"_s));
    }
    return QString(shortName(name) % u'=' % (value.isString() ? value.toString() : QString::number(value.toDouble())));
}

QString visible(QStringView text)
{
    QString visible;
    for (const QChar unit : text) {
        visible += unit == u'\n' ? u"\\n"_s : unit == u'\t' ? u"\\t"_s : QString(unit);
    }
    return visible;
}

/// One line a run: where, the text, and what differs from plain text.
QString described(StyledNote &note)
{
    const auto &text = note.storage().attributedString();
    const QJsonArray runs = quib::StyledTextDescription(note.stack().themeManager()).runsOfText(text);
    QString words;
    for (const QJsonValue &value : runs) {
        const QJsonObject run = value.toObject();
        const NSRange range{run.value(u"location"_s).toInteger(), run.value(u"length"_s).toInteger()};
        const QJsonObject attributes = run.value(u"attributes"_s).toObject();
        QStringList names;
        for (auto attribute = attributes.begin(); attribute != attributes.end(); ++attribute) {
            const bool isPlain = attribute.value() == u"Paragraph Font"_s ||
                                 attribute.value() == u"Base Text Color"_s || attribute.value() == u"default"_s;
            if (!isPlain) {
                names.append(inWords(attribute.key(), attribute.value()));
            }
        }
        words += u"%1+%2 \u201c%3\u201d %4"_s.arg(range.location)
                     .arg(range.length)
                     .arg(visible(text.string().sliced(range.location, range.length)), names.join(u", "_s))
                     .trimmed() %
                 u'\n';
    }
    for (const QJsonValue &value : quib::StyledTextDescription::attachmentsOfText(text)) {
        const QJsonObject attachment = value.toObject();
        words += u"%1 %2 stands for \u201c%3\u201d\n"_s.arg(attachment.value(u"location"_s).toInteger())
                     .arg(attachment.value(u"class"_s).toString(),
                          visible(attachment.value(u"representedText"_s).toString()));
    }
    return words;
}

class Golden : public testing::TestWithParam<QString>
{
};

TEST_P(Golden, Styling)
{
    QFile input(QString(kFolder % GetParam() % u".txt"));
    ASSERT_TRUE(input.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(input.readAll());
    for (const int syntax : {0, 1}) {
        StyledNote note(syntax, text);
        EXPECT_EQ(note.text(), text);
        const QString words = described(note);
        QFile golden(QString(kFolder % GetParam() % (syntax == 0 ? u".native"_s : u".markdown"_s)));
        if (qEnvironmentVariableIsSet("QUIB_ACCEPT")) {
            ASSERT_TRUE(golden.open(QIODevice::WriteOnly));
            golden.write(words.toUtf8());
            continue;
        }
        ASSERT_TRUE(golden.open(QIODevice::ReadOnly)) << golden.fileName().toStdString();
        EXPECT_EQ(words.toStdString(), golden.readAll().toStdString()) << golden.fileName().toStdString();
    }
}

std::vector<QString> names()
{
    std::vector<QString> names;
    for (const QString &file : QDir(kFolder).entryList({u"*.txt"_s}, QDir::Files, QDir::Name)) {
        names.push_back(QString(file).chopped(4));
    }
    return names;
}

INSTANTIATE_TEST_SUITE_P(Constructs, Golden, testing::ValuesIn(names()), [](const auto &test) {
    QString name = test.param;
    return name.remove(u'-').toStdString();
});

} // namespace
