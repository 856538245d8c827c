// What notes look like on a page, in four themes: Tests/Data/Rendering/NAME.SYNTAX.txt goes in, and what is drawn is
// held against NAME-THEME.png. QUIB_ACCEPT=1 writes the pictures anew; look at each before it is committed. Where a
// picture differs, what was drawn instead is left in the working directory.

#include "PictureComparison.h"
#include "StyledNote.h"

#include <Graphics/GraphicsContext.h>
#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Attachments/QBImageTextAttachment.h>
#include <Markup/NotePageRenderer.h>
#include <Markup/Stylers/QBNoteTextAttachmentConfiguring.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Themes/QBNotesThemesManager.h>

#include <QDir>
#include <QFile>

#include <array>

using namespace Qt::StringLiterals;
using quib::NotePageRenderer;
using quib::tests::differenceOfPictures;

namespace {

const QString kFolder = QStringLiteral(QUIB_TEST_DATA "/Rendering/");
/// Units: points, at one pixel to a point.
constexpr double kPageWidth = 400;

/// Knows the files of the notes: all but those whose identifier begins with C.
class KnownFiles : public QBNoteTextAttachmentConfiguring
{
public:
    void configureTextAttachment(QBNotesTextAttachment &attachment, QBNoteTextStyler & /*forTextStyler*/) override
    {
        auto *file = dynamic_cast<QBGenericFileTextAttachment *>(&attachment);
        if (file == nullptr || attachment.representedText().contains(u":C")) {
            return;
        }
        file->setFilename(attachment.representedText().section(u'/', 1).chopped(1));
        if (auto *picture = dynamic_cast<QBImageTextAttachment *>(file)) {
            quib::GraphicsContext canvas({120, 60}, 1, NSColor::colorWithRed(0.2, 0.5, 0.8));
            canvas.fillOval({30, 10, 40, 40}, NSColor::colorWithRed(1, 0.8, 0.2));
            picture->setOriginalImageSize({120, 60});
            picture->setAttachmentImageSize({120, 60});
            picture->setAttachmentImage(canvas.image());
        }
    }
};

/// A note on a page, in a theme.
class Page
{
public:
    Page(const QString &text, int syntax, const QString &theme)
        : m_stack(QSizeF(kPageWidth, 0))
    {
        m_stack.themeManager()->loadTheme(
            QBNotesThemesManager::textThemeForThemeName(theme, QBNotesThemesManager::defaultFontThemeName()));
        m_stack.stylerManager()->setSyntax(syntax);
        m_stack.stylerManager()->setTextAttachmentConfigurator(&m_files);
        m_stack.noteTextStorage().loadString(text);
    }
    [[nodiscard]] QBNotesTextStorage &storage() { return m_stack.noteTextStorage(); }
    [[nodiscard]] const std::shared_ptr<QBNotesTextThemeManager> &theme() { return m_stack.themeManager(); }
    [[nodiscard]] NSImage image() const
    {
        return NotePageRenderer(m_stack.noteTextStorage(), m_stack.themeManager(), kPageWidth).image(/*scale=*/1);
    }

private:
    KnownFiles m_files;
    QBNoteTextKitStack m_stack;
};

std::array<QString, 4> themes()
{
    return {u"Red Graphite"_s, u"Dark Graphite"_s, u"Solarized Light"_s, u"Dracula"_s};
}

QString textOf(const QString &fileName)
{
    QFile file(QString(kFolder % fileName));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << file.fileName().toStdString();
    return QString::fromUtf8(file.readAll());
}

class Rendering : public testing::TestWithParam<QString>
{
};

TEST_P(Rendering, LooksAsItsPicture)
{
    const QString text = textOf(GetParam());
    const QString name = GetParam().section(u'.', 0, 0);
    const int syntax = GetParam().endsWith(u".markdown.txt"_s) ? 1 : 0;
    for (const QString &theme : themes()) {
        const NSImage drawn = Page(text, syntax, theme).image();
        const QSize size = drawn.pixelSize();
        EXPECT_EQ(drawn.colorAt(size.width() - 1, size.height() - 1), drawn.colorAt(0, 0)) << "paper to the edges";
        const QString fileName = QString(name % u'-' % QString(theme).replace(u' ', u'-').toLower() % u".png");
        NSError error;
        if (qEnvironmentVariableIsSet("QUIB_ACCEPT")) {
            ASSERT_TRUE(drawn.writePNGToFile(QString(kFolder % fileName), &error));
            continue;
        }
        const auto golden = NSImage::imageWithContentsOfFile(QString(kFolder % fileName), &error);
        ASSERT_TRUE(golden) << error.localizedDescription().toStdString();
        const auto difference = differenceOfPictures(drawn, *golden);
        EXPECT_TRUE(difference.isTolerable()) << fileName.toStdString() << ": " << difference.inWords();
        if (!difference.isTolerable()) {
            EXPECT_TRUE(drawn.writePNGToFile(QDir::current().filePath(fileName), &error));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Notes, Rendering,
                         testing::ValuesIn(QDir(kFolder).entryList({u"*.txt"_s}, QDir::Files, QDir::Name)),
                         [](const auto &test) {
                             QString name = test.param.section(u'.', 0, 0);
                             return name.remove(u'-').toStdString();
                         });

constexpr auto kMostText = "# Header\n- a task\n> a quote\n#tag here\n* bullet\n---\n`code` ::mark::\n";

/// What a page loses when its text does not have something.
struct Loss
{
    const char *name;
    void (*take)(Page &page);
};

void takeAttribute(Page &page, const NSAttributeName &name)
{
    page.storage().removeAttribute(name, page.storage().fullRange());
}

class LostFrom : public testing::TestWithParam<Loss>
{
};

TEST_P(LostFrom, ThePageIsSeen)
{
    const QString text = QString::fromUtf8(kMostText);
    for (const QString &theme : themes()) {
        const NSImage whole = Page(text, 0, theme).image();
        Page page(text, 0, theme);
        GetParam().take(page);
        const auto difference = differenceOfPictures(page.image(), whole);
        EXPECT_FALSE(difference.isTolerable()) << theme.toStdString() << ": " << difference.inWords();
    }
}

/// A box of which only the room is left.
class UnseenCheckBox : public QBCheckBoxTextAttachment
{
public:
    using QBCheckBoxTextAttachment::QBCheckBoxTextAttachment;
    void drawAttachmentForAttachmentRect(quib::GraphicsContext & /*context*/, const QRectF & /*rect*/) const override {}
};

qint64 placeOfBox(Page &page)
{
    return page.storage().string().indexOf(u"\ufffc a task");
}

void hideBox(Page &page)
{
    page.storage().addAttribute(NSAttachmentAttributeName, std::make_shared<UnseenCheckBox>(u"-"_s, page.theme()),
                                {placeOfBox(page), 1});
}

void checkBox(Page &page)
{
    const auto box = page.storage().attributedString().attribute(NSAttachmentAttributeName, placeOfBox(page));
    box.as<QBCheckBoxTextAttachment>()->check();
}

const Loss kLosses[] = {
    {"Checkbox", hideBox},
    {"Check", checkBox},
    {"QuoteBar", [](Page &page) { takeAttribute(page, QBNoteQuoteTextStylerAttributeName); }},
    {"Pill", [](Page &page) { takeAttribute(page, QBNoteTagStylerAttributeName); }},
    {"CodeBackground", [](Page &page) { takeAttribute(page, QBNoteCodeInlineTextStylerBackgroundAttributeName); }},
    {"Highlight", [](Page &page) { takeAttribute(page, QBNoteHighlighterTextStylerBackgroundAttributeName); }},
    {"Colours", [](Page &page) { takeAttribute(page, NSForegroundColorAttributeName); }},
    {"Fonts", [](Page &page) { takeAttribute(page, NSFontAttributeName); }},
};

INSTANTIATE_TEST_SUITE_P(Pictures, LostFrom, testing::ValuesIn(kLosses),
                         [](const auto &test) { return std::string(test.param.name); });

TEST(PictureComparison, DoesNotSeeHowOutlinesFallOnPixels)
{
    const QString text = QString::fromUtf8(kMostText);
    for (const QString &theme : themes()) {
        const NSImage still = Page(text, 0, theme).image();
        const auto size = still.size();
        const auto blended = [&](QPointF by, double alpha) {
            quib::GraphicsContext canvas(size, 1, still.colorAt(0, 0));
            canvas.drawImage(still, QRectF(QPointF(0, 0), size));
            canvas.drawImage(still, QRectF(by, size), alpha);
            return canvas.image();
        };
        // A quarter of the next pixel is what a move by a quarter of a pixel makes of an outline.
        for (const QPointF by : {QPointF(1, 0), QPointF(0, 1)}) {
            const auto difference = differenceOfPictures(blended(by, 0.25), still);
            EXPECT_TRUE(difference.isTolerable()) << theme.toStdString() << ": " << difference.inWords();
        }
        EXPECT_FALSE(differenceOfPictures(blended({6, 0}, 1), still).isTolerable()) << "a wrong indent";
    }
    EXPECT_FALSE(
        differenceOfPictures(Page(u"a"_s, 0, themes()[0]).image(), Page(u"a"_s, 0, themes()[1]).image()).isTolerable());
    EXPECT_TRUE(differenceOfPictures(Page(u"a"_s, 0, themes()[0]).image(), Page(u"a\nb"_s, 0, themes()[0]).image())
                    .isOtherSize);
}

} // namespace
