#include "Symbols.h"

#include "ThemeColors.h"

#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

QString pathOf(const QString &name)
{
    return u":/Interface/"_s % name % u".svg"_s;
}

/// Draws a symbol in the theme's colours of the moment.
class SymbolIconEngine final : public QIconEngine
{
public:
    SymbolIconEngine(QString name, QString colorKey, QString activeColorKey)
        : m_name(std::move(name))
        , m_colorKey(std::move(colorKey))
        , m_activeColorKey(std::move(activeColorKey))
    {
    }
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const int size = std::min(rect.width(), rect.height());
        const QPixmap picture = symbol(m_name, color(mode, state), size, painter->device()->devicePixelRatio());
        painter->drawPixmap(rect.left() + (rect.width() - size) / 2, rect.top() + (rect.height() - size) / 2, picture);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return symbol(m_name, color(mode, state), std::min(size.width(), size.height()), 1);
    }
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override
    {
        const int side = int(std::lround(std::min(size.width(), size.height()) / scale));
        return symbol(m_name, color(mode, state), side, scale);
    }
    [[nodiscard]] QIconEngine *clone() const override { return new SymbolIconEngine(*this); }

private:
    [[nodiscard]] QColor color(QIcon::Mode mode, QIcon::State state) const
    {
        const bool isActive = mode == QIcon::Active || mode == QIcon::Selected || state == QIcon::On;
        QColor color = themeColor(isActive ? m_activeColorKey : m_colorKey);
        if (mode == QIcon::Disabled) {
            color.setAlphaF(color.alphaF() * 0.4F);
        }
        return color;
    }

    QString m_name;
    QString m_colorKey;
    QString m_activeColorKey;
};

} // namespace

bool hasSymbol(const QString &name)
{
    return QFile::exists(pathOf(name));
}

QPixmap symbol(const QString &name, const QColor &color, int size, double scale)
{
    const QString key = u"symbol:"_s % name % u':' % color.name(QColor::HexArgb) % u':' % QString::number(size) % u':' %
                        QString::number(scale);
    QPixmap picture;
    if (size <= 0 || QPixmapCache::find(key, &picture)) {
        return picture;
    }
    QFile file(pathOf(name));
    if (!file.open(QIODevice::ReadOnly)) {
        return {};
    }
    QByteArray drawing = file.readAll();
    drawing.replace("currentColor", color.name(QColor::HexRgb).toLatin1());
    QSvgRenderer renderer(drawing);
    const int pixels = std::max(1, int(std::lround(size * scale)));
    picture = QPixmap(pixels, pixels);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setOpacity(color.alphaF());
    renderer.render(&painter);
    painter.end();
    picture.setDevicePixelRatio(scale);
    QPixmapCache::insert(key, picture);
    return picture;
}

QIcon symbolIcon(const QString &name, const QString &colorKey, const QString &activeColorKey)
{
    return QIcon(new SymbolIconEngine(name, colorKey, activeColorKey));
}

} // namespace quib
