#include "ThemePreview.h"

#include <Graphics/NSImage.h>
#include <Markup/NotePageRenderer.h>
#include <Markup/QBNoteTextAttachmentConfigurator.h>
#include <Markup/QBNoteTextKitStack.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesThemesManager.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// How wide a page of a note is before it is made smaller. Units: points.
constexpr double kPageInWindow = 330;
constexpr double kPageAlone = 1000;

struct Samples
{
    Q_DECLARE_TR_FUNCTIONS(quib::ThemePreview)
};

/// A short note that has a little of everything, in the syntax of the notes.
QString sampleNote(int syntax)
{
    const bool isMarkdown = syntax == 1;
    const QString bold = isMarkdown ? u"**"_s : u"*"_s;
    const QString italic = isMarkdown ? u"*"_s : u"/"_s;
    const QString open = isMarkdown ? u"- [ ] "_s : u"- "_s;
    const QString done = isMarkdown ? u"- [x] "_s : u"+ "_s;
    const QString first = Samples::tr("%1Low tide%2 is at nine. Take the %3slow path%4 along the harbour.")
                              .arg(bold, bold, italic, italic);
    QString note = u"# "_s % Samples::tr("A day by the sea") % u'\n' % first % u"\n\n"_s;
    note += QString(done % Samples::tr("Pack the ::blue:: bag") % u'\n');
    note += QString(open % Samples::tr("Buy bread and [[Cheese]]") % u'\n');
    note += QString(u"\n> "_s % Samples::tr("The sea is never late.") % u"\n\n"_s);
    note += QString(u"#"_s % Samples::tr("travel/coast") % u' ' % u'`' % u"52.37 N"_s % u"`\n"_s);
    return note;
}

/// A page of the sample, at the size that it is laid out in.
NSImage page(const std::shared_ptr<QBTheme> &theme, int syntax, double width, double scale,
             const QBNotesPreferenceManager *sizes = nullptr)
{
    QBNoteTextKitStack stack(QSizeF(width, 0));
    QBNotesTextThemeManager &manager = *stack.themeManager();
    manager.loadTheme(theme);
    if (sizes != nullptr) {
        if (const auto size = sizes->editorFontSize()) {
            manager.setBaseFontSize(*size);
        }
        if (const auto multiplier = sizes->editorLineHeightMultiplier()) {
            manager.setLineHeightMultiplier(*multiplier);
        }
        if (const auto multiplier = sizes->editorLineWidthMultiplier()) {
            manager.setLineWidthMultiplier(*multiplier);
        }
        if (const auto multiplier = sizes->editorParagraphSpacingMultiplier()) {
            manager.setParagraphSpacingMultiplier(*multiplier);
        }
        manager.setZoomedBaseFontSize(0); // which restyles
    }
    QBNoteTextAttachmentConfigurator configurator;
    configurator.setScale(scale);
    configurator.setConfigureAttachmentSynchronously(true);
    stack.stylerManager()->setSyntax(syntax);
    stack.stylerManager()->setTextAttachmentConfigurator(&configurator);
    stack.noteTextStorage().loadString(sampleNote(syntax));
    NSImage image = NotePageRenderer(stack.noteTextStorage(), stack.themeManager(), width).image(scale);
    stack.stylerManager()->setTextAttachmentConfigurator(nullptr);
    return image;
}

QColor colorOf(const QBTheme &theme, const QString &key, const QColor &otherwise)
{
    const auto color = theme.colorForKey(key);
    return color ? QColor::fromRgbF(float(color->redComponent()), float(color->greenComponent()),
                                    float(color->blueComponent()), float(color->alphaComponent()))
                 : otherwise;
}

/// Bars that stand for lines of text too small to read.
void drawBar(QPainter &painter, QRectF rect, QColor color, double opacity)
{
    color.setAlphaF(float(color.alphaF() * opacity));
    painter.setBrush(color);
    painter.drawRoundedRect(rect, rect.height() / 2, rect.height() / 2);
}

void drawSidebar(QPainter &painter, const QRectF &column, const QBTheme &theme)
{
    painter.setBrush(colorOf(theme, u"Sidebar Background Color"_s, Qt::gray));
    painter.drawRect(column);
    const QColor text = colorOf(theme, u"Sidebar Cell Text Color"_s, Qt::white);
    const QColor selected = colorOf(theme, u"Sidebar Cell Selected Text Color"_s, Qt::white);
    const double lengths[] = {0.5, 0.66, 0.4, 0.58, 0.46, 0.62};
    double top = column.top() + 12;
    for (size_t i = 0; i < std::size(lengths); ++i, top += 13) {
        const bool isSelected = i == 1;
        if (isSelected) {
            painter.setBrush(colorOf(theme, u"Sidebar Cell Selected Background Color"_s, Qt::darkGray));
            painter.drawRoundedRect(QRectF(column.left() + 4, top - 4.5, column.width() - 8, 12), 3, 3);
        }
        drawBar(painter, QRectF(column.left() + 8, top, (column.width() - 14) * lengths[i], 3),
                isSelected ? selected : text, isSelected ? 1 : 0.75);
    }
}

void drawList(QPainter &painter, const QRectF &column, const QBTheme &theme)
{
    painter.setBrush(colorOf(theme, u"Note Table View Background Color"_s, Qt::white));
    painter.drawRect(column);
    const QColor title = colorOf(theme, u"Note Table Cell Title Color"_s, Qt::black);
    const QColor subtitle = colorOf(theme, u"Note Table Cell Subtitle Color"_s, Qt::gray);
    double top = column.top() + 6;
    for (int row = 0; top < column.bottom(); ++row, top += 30) {
        if (row == 0) {
            const QRectF cell(column.left(), top, column.width(), 28);
            painter.setBrush(colorOf(theme, u"Note Table Cell Selected Background Color"_s, Qt::lightGray));
            painter.drawRect(cell);
            painter.setBrush(colorOf(theme, u"Note Table Cell Selected Ribbon Color"_s, Qt::red));
            painter.drawRect(QRectF(cell.left(), cell.top(), 2, cell.height()));
        }
        const double width = column.width() - 14;
        drawBar(painter, QRectF(column.left() + 8, top + 6, width * (row % 2 == 0 ? 0.62 : 0.78), 3.2), title, 1);
        drawBar(painter, QRectF(column.left() + 8, top + 13, width, 2.4), subtitle, 0.75);
        drawBar(painter, QRectF(column.left() + 8, top + 18.5, width * 0.8, 2.4), subtitle, 0.75);
    }
}

} // namespace

QImage pictureOfTheme(const ThemeSample &sample, QSizeF size, double scale)
{
    const auto appTheme = QBNotesThemesManager::appThemeForThemeName(sample.themeName);
    const auto textTheme = QBNotesThemesManager::textThemeForThemeName(sample.themeName, sample.fontThemeName);
    QImage picture((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(colorOf(*textTheme, u"Background Text Color"_s, Qt::white));
    // 1. The note, at the far side of the window: on the left where text runs to the left.
    const double sidebar = std::round(size.width() * 0.2);
    const double list = std::round(size.width() * 0.26);
    const double editor = size.width() - sidebar - list;
    const double factor = editor / kPageInWindow;
    QImage note = page(textTheme, sample.syntax, kPageInWindow, factor * scale).image();
    note.setDevicePixelRatio(scale);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    const bool isMirrored = QGuiApplication::isRightToLeft();
    painter.drawImage(QPointF(isMirrored ? 0 : sidebar + list, 0), note);
    // 2. The columns beside it.
    if (isMirrored) {
        painter.translate(size.width(), 0);
        painter.scale(-1, 1);
    }
    painter.setPen(Qt::NoPen);
    painter.setRenderHint(QPainter::Antialiasing, /*on=*/true);
    drawSidebar(painter, QRectF(0, 0, sidebar, size.height()), *appTheme);
    drawList(painter, QRectF(sidebar, 0, list, size.height()), *appTheme);
    painter.setBrush(colorOf(*appTheme, u"Split View Note Table Separator Color"_s, Qt::gray));
    painter.setOpacity(0.4);
    painter.drawRect(QRectF(sidebar + list - 0.5, 0, 0.5, size.height()));
    return picture;
}

QImage pictureOfPreferences(const QBNotesPreferenceManager &preferences, QSizeF size, double scale)
{
    const auto theme =
        QBNotesThemesManager::textThemeForThemeName(preferences.currentAppThemeName(), preferences.fontThemeName());
    QImage picture((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(scale);
    picture.fill(colorOf(*theme, u"Background Text Color"_s, Qt::white));
    const double factor = size.width() / kPageAlone;
    QImage note = page(theme, preferences.currentSyntax(), kPageAlone, factor * scale, &preferences).image();
    note.setDevicePixelRatio(scale);
    QPainter(&picture).drawImage(QPointF(), note);
    return picture;
}

} // namespace quib
