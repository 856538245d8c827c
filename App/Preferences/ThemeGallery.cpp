#include "ThemeGallery.h"

#include <Editor/EditorSymbol.h>
#include <Store/CurrentSyntax.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesThemesManager.h>

#include <QPainter>
#include <QPainterPath>
#include <QStyledItemDelegate>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// Units: points.
constexpr int kGap = 8;
constexpr int kTextHeight = 26;
constexpr double kRadius = 8;
constexpr int kBadge = 16;

/// A picture in a frame, its name below, and signs for where it is in use.
class ThemeDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem & /*option*/, const QModelIndex & /*index*/) const override
    {
        return ThemeGalleryModel::kPictureSize + QSize(2 * kGap, 2 * kGap + kTextHeight);
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus);
        const QColor accent = option.palette.color(QPalette::Highlight);
        const QColor text = option.palette.color(QPalette::WindowText);
        const int side = (option.rect.width() - ThemeGalleryModel::kPictureSize.width()) / 2;
        const QRectF frame(QPointF(option.rect.left() + side, option.rect.top() + kGap),
                           QSizeF(ThemeGalleryModel::kPictureSize));
        // 1. The picture.
        QPainterPath shape;
        shape.addRoundedRect(frame, kRadius, kRadius);
        const auto picture = index.data(ThemeGalleryModel::PictureRole).value<QPixmap>();
        painter->save();
        painter->setClipPath(shape);
        if (picture.isNull()) {
            painter->fillRect(frame, option.palette.color(QPalette::Base));
        } else {
            painter->drawPixmap(frame.topLeft(), picture);
        }
        painter->restore();
        QColor line = text;
        line.setAlphaF(option.state.testFlag(QStyle::State_MouseOver) ? 0.4F : 0.18F);
        painter->setBrush(Qt::NoBrush);
        painter->setPen(QPen(line, 1));
        painter->drawRoundedRect(frame.adjusted(0.5, 0.5, -0.5, -0.5), kRadius, kRadius);
        if (isSelected) {
            painter->setPen(QPen(accent, hasFocus ? 3 : 2));
            painter->drawRoundedRect(frame.adjusted(-2.5, -2.5, 2.5, 2.5), kRadius + 2.5, kRadius + 2.5);
        }
        // 2. The name, with signs behind it.
        QFont font = option.font;
        font.setBold(isSelected);
        painter->setFont(font);
        painter->setPen(text);
        const QString name = index.data(Qt::DisplayRole).toString();
        QList<QString> badges;
        if (index.data(ThemeGalleryModel::IsForLightRole).toBool()) {
            badges.append(u"appearance-light"_s);
        }
        if (index.data(ThemeGalleryModel::IsForDarkRole).toBool()) {
            badges.append(u"appearance-dark"_s);
        }
        const int nameWidth = QFontMetrics(font).horizontalAdvance(name);
        const int whole = nameWidth + int(badges.size()) * (kBadge + 5);
        const bool isMirrored = option.direction == Qt::RightToLeft;
        double x = frame.center().x() - whole / 2.0;
        const double top = frame.bottom() + 6;
        const auto drawName = [&] {
            painter->drawText(QRectF(x, top, nameWidth + 2, 18), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextDontClip,
                              name);
            x += nameWidth + 5;
        };
        if (!isMirrored) {
            drawName();
        }
        for (const QString &badge : badges) {
            editorSymbol(badge).paint(painter, QRect(int(x), int(top) + 1, kBadge, kBadge));
            x += kBadge + 5;
        }
        if (isMirrored) {
            drawName();
        }
        painter->restore();
    }
};

} // namespace

ThemeGalleryModel::ThemeGalleryModel(QObject *parent)
    : QAbstractListModel(parent)
    , m_names(QBNotesThemesManager::availableThemesNames())
    , m_timer(new QTimer(this))
{
    // One picture a turn of the event loop: the window stays awake.
    m_timer->setInterval(0);
    connect(m_timer, &QTimer::timeout, this, &ThemeGalleryModel::drawNext);
}

int ThemeGalleryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_names.size());
}

QVariant ThemeGalleryModel::data(const QModelIndex &index, int role) const
{
    const QString name = m_names.value(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return name;
    case Qt::AccessibleTextRole:
        if (name == m_forLight && name == m_forDark) {
            return tr("%1, in use", "theme").arg(name);
        }
        if (name == m_forLight) {
            return tr("%1, in use when the desktop is light", "theme").arg(name);
        }
        return name == m_forDark ? tr("%1, in use when the desktop is dark", "theme").arg(name) : name;
    case IsForLightRole:
        return name == m_forLight;
    case IsForDarkRole:
        return name == m_forDark;
    case PictureRole: {
        const auto found = m_pictures.constFind(index.row());
        if (found != m_pictures.cend()) {
            return *found;
        }
        if (!m_wanted.contains(index.row())) {
            m_wanted.append(index.row());
            m_timer->start();
        }
        return {};
    }
    default:
        return {};
    }
}

void ThemeGalleryModel::drawNext()
{
    if (m_wanted.isEmpty()) {
        m_timer->stop();
        return;
    }
    const int row = m_wanted.takeFirst();
    const auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    const ThemeSample sample{.themeName = m_names[row],
                             .fontThemeName = preferences != nullptr ? preferences->fontThemeName() : QString(),
                             .syntax = currentSyntax()};
    m_pictures.insert(row, QPixmap::fromImage(pictureOfTheme(sample, kPictureSize, m_scale)));
    const QModelIndex changed = index(row);
    Q_EMIT dataChanged(changed, changed, {PictureRole});
}

void ThemeGalleryModel::setChosen(const QString &forLight, const QString &forDark)
{
    m_forLight = forLight;
    m_forDark = forDark;
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {IsForLightRole, IsForDarkRole, Qt::AccessibleTextRole});
}

void ThemeGalleryModel::forgetPictures()
{
    m_pictures.clear();
    Q_EMIT dataChanged(index(0), index(rowCount() - 1), {PictureRole});
}

void ThemeGalleryModel::setScale(double scale)
{
    if (m_scale != scale) {
        m_scale = scale;
        forgetPictures();
    }
}

ThemeGallery::ThemeGallery(QWidget *parent)
    : QListView(parent)
    , m_model(new ThemeGalleryModel(this))
{
    setObjectName(u"preferencesGallery"_s);
    setModel(m_model);
    setItemDelegate(new ThemeDelegate(this));
    setViewMode(QListView::IconMode);
    setResizeMode(QListView::Adjust);
    setMovement(QListView::Static);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // the columns share a width that holds
    setUniformItemSizes(true);
    setMouseTracking(true);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Themes"));
}

void ThemeGallery::showChosen(const QString &name)
{
    m_isTelling = false;
    setCurrentIndex(m_model->index(std::max(0, m_model->rowOfName(name))));
    m_isTelling = true;
}

void ThemeGallery::showEvent(QShowEvent *event)
{
    m_model->setScale(devicePixelRatioF());
    QListView::showEvent(event);
    scrollTo(currentIndex());
}

void ThemeGallery::resizeEvent(QResizeEvent *event)
{
    // As many columns as fit, with the room that is left shared between them.
    const QSize least = ThemeGalleryModel::kPictureSize + QSize(2 * kGap, 2 * kGap + kTextHeight);
    const int room = viewport()->width() - 1;
    const int columns = std::max(1, room / least.width());
    setGridSize({room / columns, least.height()});
    QListView::resizeEvent(event);
}

void ThemeGallery::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QListView::currentChanged(current, previous);
    if (m_isTelling && current.isValid()) {
        Q_EMIT themeWasChosen(m_model->nameOfRow(current.row()));
    }
}

} // namespace quib
