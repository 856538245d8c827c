// After a change of theme a text looks as one that is loaded in the new theme.

#include "StyledNote.h"

#include <Markup/Attachments/QBNotesTextAttachment.h>
#include <Text/NSParagraphStyle.h>
#include <Themes/QBNotesThemesManager.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;
using quib::tests::StyledNote;

namespace {

/// The texts of the golden files: every construct, and how each meets the others.
QStringList constructs()
{
    QStringList texts;
    const QDir folder(QStringLiteral(QUIB_TEST_DATA "/Styling"));
    for (const QFileInfo &info : folder.entryInfoList({u"*.txt"_s}, QDir::Files, QDir::Name)) {
        QFile file(info.filePath());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << info.filePath().toStdString();
        // Two places in which styling in place gives something else, for which there are tests of their own.
        QString text = QString::fromUtf8(file.readAll());
        text.replace(u"#12345g #aabbcc"_s, u"#12345g\n#aabbcc"_s).replace(u"::x #y# z::"_s, u"::x y z::"_s);
        texts.append(text);
    }
    return texts;
}

/// The room that each attachment takes, and where each paragraph begins.
QStringList sizes(QBNotesTextStorage &storage)
{
    QStringList found;
    const auto &text = storage.attributedString();
    text.enumerateAttribute(
        NSParagraphStyleAttributeName, text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
        [&found](const quib::AttributeValue &value, NSRange range, bool * /*stop*/) {
            const auto *style = value.as<NSParagraphStyle>();
            found.append(u"%1: %2"_s.arg(range.location).arg(style != nullptr ? style->firstLineHeadIndent() : -1));
        });
    text.enumerateAttribute(NSAttachmentAttributeName, text.fullRange(), NSAttributedStringEnumerationOptions::Forward,
                            [&found](const quib::AttributeValue &value, NSRange range, bool * /*stop*/) {
                                if (const auto *attachment = value.as<QBNotesTextAttachment>(); attachment != nullptr) {
                                    const QSizeF size = attachment->cachedAttachmentSize();
                                    found.append(u"%1: %2 by %3, %4 below"_s.arg(range.location)
                                                     .arg(size.width())
                                                     .arg(size.height())
                                                     .arg(attachment->cachedAttachmentBaselineOffset()));
                                }
                            });
    return found;
}

TEST(ThemeChange, GivesWhatALoadInTheNewThemeGives)
{
    const QStringList texts = constructs();
    ASSERT_GT(texts.size(), 20);
    const QList<std::pair<QString, QString>> themes{{u"Dark Graphite"_s, u"Georgia"_s},
                                                    {u"Solarized Light"_s, u"Menlo"_s},
                                                    {u"Dracula"_s, u"Open Dyslexic"_s},
                                                    {u"Print"_s, u"System Font Theme"_s}};
    for (const int syntax : {0, 1}) {
        for (const QString &text : texts) {
            SCOPED_TRACE(text.left(60).toStdString());
            StyledNote note(syntax, text);
            for (const auto &[name, fonts] : themes) {
                SCOPED_TRACE(name.toStdString());
                const auto theme = QBNotesThemesManager::textThemeForThemeName(name, fonts);
                note.stack().themeManager()->loadTheme(theme);
                StyledNote fresh(syntax);
                fresh.stack().themeManager()->loadTheme(theme);
                fresh.storage().loadString(text);
                EXPECT_EQ(note.looks().toStdString(), fresh.looks().toStdString());
                EXPECT_EQ(sizes(note.storage()), sizes(fresh.storage()));
                EXPECT_EQ(note.text(), text);
            }
        }
    }
}

TEST(ThemeChange, GivesWhatALoadInTheNewSizeGives)
{
    for (const QString &text : constructs()) {
        SCOPED_TRACE(text.left(60).toStdString());
        StyledNote note(0, text);
        StyledNote fresh(0);
        for (StyledNote *each : {&note, &fresh}) {
            each->stack().themeManager()->setBaseFontSize(31);
        }
        note.stack().styleObjectWithThemeManager(*note.stack().themeManager());
        fresh.storage().loadString(text);
        EXPECT_EQ(note.looks().toStdString(), fresh.looks().toStdString());
        EXPECT_EQ(sizes(note.storage()), sizes(fresh.storage()));
    }
}

} // namespace
