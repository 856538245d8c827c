#include "NoteRowDelegate.h"

#include "NoteListModel.h"
#include "Symbols.h"
#include "ThemeColors.h"

#include <Graphics/GraphicsAttributes.h>
#include <Graphics/NSImage.h>
#include <Search/Lists/NoteTableCellIcon.h>
#include <Store/QBNote.h>
#include <Store/QBNoteFile.h>
#include <Store/QBNoteFilesDowloadedNotification.h>
#include <Store/QBThumbFileManager.h>
#include <Text/NSAttributeName.h>

#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// Units: points.
constexpr int kMargin = 18;
constexpr int kTop = 12;
constexpr int kPictureSide = 44;
constexpr int kIconSize = 13;
constexpr int kRibbonWidth = 3;
constexpr int kProgressHeight = 2;
constexpr int kGap = 10;
constexpr int kEllipsisWidth = 16;
/// Between the lines of a snippet.
constexpr int kLeading = 5;
/// Kept for rows that were seen.
constexpr qsizetype kMostPictures = 400;
/// Some for each row of a tall window, and a way of scrolling.
constexpr qsizetype kMostLaidOutTexts = 120;

QList<QTextLayout::FormatRange> formats(const NSAttributedString &text, NSRange range)
{
    QList<QTextLayout::FormatRange> ranges;
    text.enumerateAttributesInRange(range, NSAttributedStringEnumerationOptions::Forward,
                                    [&ranges, range](const AttributeSet &attributes, NSRange run, bool * /*stop*/) {
                                        QTextLayout::FormatRange format;
                                        format.start = int(run.location - range.location);
                                        format.length = int(run.length);
                                        const AttributeValue font = attributes.value(NSFontAttributeName);
                                        if (const NSFont *of = fontOfAttribute(font); of != nullptr) {
                                            format.format.setFont(of->font());
                                        }
                                        const AttributeValue color = attributes.value(NSForegroundColorAttributeName);
                                        if (const NSColor *of = colorOfAttribute(color); of != nullptr) {
                                            format.format.setForeground(qColor(*of));
                                        }
                                        const AttributeValue background =
                                            attributes.value(NSBackgroundColorAttributeName);
                                        if (const NSColor *of = colorOfAttribute(background); of != nullptr) {
                                            format.format.setBackground(qColor(*of));
                                        }
                                        ranges.append(format);
                                    });
    return ranges;
}

/// Sets up to so many lines; gives the place from which the text does not fit any more, or -1.
int setLines(QTextLayout &layout, int width, int mostLines)
{
    layout.beginLayout();
    double y = 0;
    for (int i = 0; i < mostLines; ++i) {
        QTextLine line = layout.createLine();
        if (!line.isValid()) {
            layout.endLayout();
            return -1;
        }
        line.setLineWidth(width);
        line.setPosition({0, y});
        y += std::ceil(line.height()) + (mostLines > 1 ? kLeading : 0);
    }
    const QTextLine last = layout.lineAt(layout.lineCount() - 1);
    const int end = last.textStart() + last.textLength();
    layout.endLayout();
    const bool isWhole = end >= layout.text().size() && last.naturalTextWidth() <= width;
    if (isWhole) {
        return -1;
    }
    // From where the text begins, which lies outside of the row where a long line stands at the other margin.
    const double start = last.cursorToX(last.textStart());
    const double room = std::max(0, width - kEllipsisWidth);
    const bool isRightToLeft = layout.textOption().textDirection() == Qt::RightToLeft;
    return last.xToCursor(isRightToLeft ? start - room : start + room, QTextLine::CursorOnCharacter);
}

/// A text runs in its own direction. Where the window runs from right to left, so do its margins: all texts begin
/// there.
QTextOption textOption(const QString &text, bool isOneLine, Qt::LayoutDirection direction)
{
    QTextOption option;
    option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
    if (direction == Qt::RightToLeft) {
        option.setAlignment(Qt::AlignRight | Qt::AlignAbsolute);
    }
    option.setWrapMode(isOneLine ? QTextOption::NoWrap : QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

} // namespace

NoteRowDelegate::NoteRowDelegate(NoteListModel &model, QObject *parent)
    : QStyledItemDelegate(parent)
    , m_model(model)
    , m_laidOutTexts(kMostLaidOutTexts)
{
    m_fileObservation =
        QBNoteFilesDowloadedNotification().add([this](const QStringList &identifiers) { forgetPictures(identifiers); });
}

void NoteRowDelegate::forgetPictures(const QStringList &identifiers)
{
    // What is on its way may show what a file no longer is: it is asked for again.
    ++m_generation;
    m_pictures.removeIf([&identifiers](const auto &entry) {
        return entry.value().pixmap.isNull() || identifiers.contains(entry.value().identifier);
    });
    Q_EMIT pictureArrived();
}

QSize NoteRowDelegate::sizeHint(const QStyleOptionViewItem & /*option*/, const QModelIndex & /*index*/) const
{
    return {200, kRowHeight};
}

int NoteRowDelegate::drawText(QPainter &painter, const NSAttributedString &text, NSRange range, const QRect &place,
                              int mostLines, Qt::LayoutDirection direction) const
{
    const QString whole = text.stringInRange(range).toString();
    const QList<QTextLayout::FormatRange> wholeFormats = formats(text, range);
    LaidOutText *laidOut = m_laidOutTexts.object(whole);
    if (laidOut == nullptr || laidOut->width != place.width() || laidOut->mostLines != mostLines ||
        laidOut->direction != direction || laidOut->formats != wholeFormats) {
        laidOut = new LaidOutText{wholeFormats, place.width(), mostLines, direction, QTextLayout(whole)};
        QTextLayout &layout = laidOut->layout;
        layout.setCacheEnabled(true);
        layout.setTextOption(textOption(whole, mostLines == 1, direction));
        layout.setFormats(wholeFormats);
        if (const int cut = setLines(layout, place.width(), mostLines); cut >= 0) {
            // The ellipsis takes over the looks of what stands before it.
            qsizetype kept = std::min<qsizetype>(cut, whole.size());
            while (kept > 0 && (whole[kept - 1].isSpace() || whole[kept - 1].isHighSurrogate())) {
                --kept;
            }
            const QString string = whole.first(kept) % u'…';
            QList<QTextLayout::FormatRange> cutFormats;
            for (QTextLayout::FormatRange format : wholeFormats) {
                if (format.start < string.size()) {
                    format.length = std::min(format.length, int(string.size()) - format.start);
                    if (format.start + format.length == kept) {
                        ++format.length;
                    }
                    cutFormats.append(format);
                }
            }
            layout.setText(string);
            layout.setFormats(cutFormats);
            setLines(layout, place.width(), mostLines);
        }
        m_laidOutTexts.insert(whole, laidOut); // in place of what it was before
    }
    laidOut->layout.draw(&painter, place.topLeft());
    return int(std::ceil(laidOut->layout.boundingRect().height()));
}

void NoteRowDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    const Ref<QBNote> note = m_model.note(index);
    if (!note) {
        return;
    }
    QBNotesTableViewController &controller = *m_model.controller();
    const QRect row = option.rect;
    const auto placed = [&option, &row](const QRect &rect) { return QStyle::visualRect(option.direction, row, rect); };
    const double scale = painter->device()->devicePixelRatio();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    // 1. The ground.
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const bool isActive =
        option.state.testFlag(QStyle::State_HasFocus) || (option.widget != nullptr && option.widget->hasFocus());
    if (isSelected) {
        painter->fillRect(row, themeColor(isActive ? u"Note Table Cell Selected Background Color"_s
                                                   : u"Note Table Cell Selected Background Inactive Color"_s));
        painter->fillRect(placed({row.left(), row.top(), kRibbonWidth, row.height()}),
                          themeColor(isActive ? u"Note Table Cell Selected Ribbon Color"_s
                                              : u"Note Table Cell Selected Ribbon Inactive Color"_s));
    }
    // 2. Age and marks, at the far end of the first line.
    const NSAttributedString info = controller.infoAttributedStringForRow(index.row());
    QRect first(row.left() + kMargin, row.top() + kTop, row.width() - 2 * kMargin, 20);
    const QFont ageFont = interfaceFont(11);
    const QString age = NoteListModel::ageInRow(info);
    const int ageWidth = QFontMetrics(ageFont).horizontalAdvance(age) + 2;
    painter->setFont(ageFont);
    painter->setPen(themeColor(u"Note Table Cell Subtitle Color"_s));
    painter->drawText(placed({first.right() - ageWidth, first.top() - 2, ageWidth, 18}),
                      int(Qt::AlignVCenter) | int(Qt::AlignRight) | int(Qt::TextDontClip), age);
    first.setRight(first.right() - ageWidth - kGap);
    const auto mark = [&](const QString &name) {
        painter->drawPixmap(placed({first.right() - kIconSize + 4, first.top() + 1, kIconSize, kIconSize}),
                            symbol(name, themeColor(u"Note Table Cell Pin Icon Color"_s), kIconSize, scale));
        first.setRight(first.right() - kIconSize - 2);
    };
    info.enumerateAttribute(NSAttachmentAttributeName, info.fullRange(), NSAttributedStringEnumerationOptions::Reverse,
                            [&mark](const AttributeValue &value, NSRange /*range*/, bool * /*stop*/) {
                                if (const auto *icon = value.as<NoteTableCellIcon>(); icon != nullptr) {
                                    mark(icon->picture() == NoteTableCellIcon::Picture::Pin ? u"pin"_s : u"conflict"_s);
                                }
                            });
    // 3. Title and snippet. A conflict group's head says first what it is.
    const NSAttributedString text = controller.attributedStringForRow(index.row());
    const QBNotesTableViewController::RowKind kind = controller.kindOfRow(index.row());
    QRect body = first;
    body.setRight(row.right() - kMargin);
    body.setBottom(row.bottom() - 8);
    NSRange rest = text.fullRange();
    const auto takeLine = [&text, &rest] {
        const qsizetype lineEnd = text.stringInRange(rest).indexOf(u'\n');
        const NSRange line{rest.location, lineEnd < 0 ? rest.length : lineEnd};
        const qint64 taken = lineEnd < 0 ? rest.length : lineEnd + 1;
        rest = {rest.location + taken, rest.length - taken};
        return line;
    };
    int snippetLines = 2;
    if (kind == QBNotesTableViewController::RowKind::ConflictRoot) {
        body.setTop(body.top() + drawText(*painter, text, takeLine(), placed(first), 1, option.direction));
        first.moveTop(body.top());
        snippetLines = 1;
    }
    if (text.length() > 0) {
        body.setTop(body.top() + drawText(*painter, text, takeLine(), placed(first), 1, option.direction) + 4);
    }
    // 4. The first picture, beside the snippet.
    if (kind == QBNotesTableViewController::RowKind::Image) {
        const QRect frame(body.right() - kPictureSide + 1, row.bottom() - kPictureSide - 8, kPictureSide, kPictureSide);
        const QPixmap shown = picture(*note, frame.size(), scale);
        QPainterPath clip;
        clip.addRoundedRect(placed(frame), 6, 6);
        painter->fillPath(clip, quietLineColor(u"Note Table Separator Color"_s));
        if (!shown.isNull()) {
            painter->save();
            painter->setClipPath(clip);
            painter->drawPixmap(placed(frame), shown);
            painter->restore();
        }
        body.setRight(frame.left() - kGap);
    }
    if (rest.length > 0) {
        drawText(*painter, text, rest, placed(body), snippetLines, option.direction);
    }
    // 5. The line below, which fills as to-dos get done.
    const int done = note->todoCompleted();
    const int all = done + note->todoIncompleted();
    const QRect line(row.left() + kMargin, row.bottom(), row.width() - 2 * kMargin, 1);
    painter->fillRect(placed(line), quietLineColor(u"Note Table Separator Color"_s));
    if (all > 0) {
        const bool isComplete = done == all;
        QRect progress(line.left(), row.bottom() - kProgressHeight + 1, row.width() - 2 * kMargin, kProgressHeight);
        QColor ground = themeColor(u"Note Table Cell Todo Percentage Color"_s);
        QColor track = ground;
        track.setAlphaF(track.alphaF() * 0.25F);
        painter->fillRect(placed(progress), track);
        progress.setWidth(progress.width() * done / all);
        painter->fillRect(placed(progress),
                          isComplete ? themeColor(u"Note Table Cell Todo Percentage Complete Color"_s) : ground);
    }
    painter->restore();
}

QPixmap NoteRowDelegate::picture(const QBNote &note, QSize size, double scale) const
{
    const QList<Ref<QBNoteFile>> images = note.orderedImages();
    const auto url = images.isEmpty() ? std::nullopt : images.constFirst()->fileURL();
    QBThumbFileManager *manager = QBThumbFileManager::thumbFileManagerForPathComponent(QBThumbFileManager::kNoteImages);
    if (!url || manager == nullptr) {
        return {};
    }
    const QSize pixels(int(std::lround(size.width() * scale)), int(std::lround(size.height() * scale)));
    const QString key = url->toString() % u'@' % QString::number(pixels.width());
    const auto known = m_pictures.constFind(key);
    if (known != m_pictures.cend()) {
        return known->pixmap;
    }
    if (m_pictures.size() >= kMostPictures) {
        m_pictures.clear();
    }
    const QString identifier = images.constFirst()->uniqueIdentifier();
    m_pictures.insert(key, {identifier, QPixmap()});
    QBThumbFileManager::Options options = QBThumbFileManager::defaultThumbOptions();
    options.insert(QString(kQBThumbCover), true);
    options.insert(QString(kQBThumbAntialias), true);
    auto *self = const_cast<NoteRowDelegate *>(this);
    manager->thumbForImageURL(*url, pixels, /*preload=*/true, options,
                              [self, key, identifier, scale, generation = m_generation,
                               life = std::weak_ptr<char>(m_life)](const QUrl &, const NSImage &thumb) {
                                  if (life.expired() || generation != self->m_generation || thumb.isEmpty()) {
                                      return;
                                  }
                                  QPixmap arrived = QPixmap::fromImage(thumb.image());
                                  arrived.setDevicePixelRatio(scale);
                                  self->m_pictures.insert(key, {identifier, arrived});
                                  Q_EMIT self->pictureArrived();
                              });
    return {};
}

} // namespace quib
