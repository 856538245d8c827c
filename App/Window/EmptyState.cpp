#include "EmptyState.h"

#include "ThemeColors.h"

#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr int kPictureSide = 132;

/// The animal that lives in the notes, sitting on a sheet of paper.
class Animal final : public QWidget
{
public:
    explicit Animal(QWidget *parent)
        : QWidget(parent)
    {
        setFixedSize(kPictureSide, kPictureSide);
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(width() / 132.0, height() / 132.0);
        const QColor fur = themeColor(u"Placeholder Quib Fur Color"_s);
        const QColor line = themeColor(u"Placeholder Quib Stroke Color"_s);
        const QColor accent = themeColor(u"Placeholder Quib Accent Color"_s);
        const QPen pen(line, 2.2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
        // 1. The disc behind, and the shadow below.
        painter.setPen(Qt::NoPen);
        painter.setBrush(themeColor(u"Placeholder Quib Background Color"_s));
        painter.drawEllipse(QPointF(66, 62), 58, 58);
        painter.setBrush(themeColor(u"Placeholder Quib Shadow Color"_s));
        painter.drawEllipse(QPointF(66, 113), 38, 6);
        // 2. Ears.
        painter.setPen(pen);
        painter.setBrush(fur);
        painter.drawEllipse(QPointF(42, 38), 11, 11);
        painter.drawEllipse(QPointF(90, 38), 11, 11);
        painter.setPen(Qt::NoPen);
        painter.setBrush(fur.darker(118));
        painter.drawEllipse(QPointF(42, 38), 5, 5);
        painter.drawEllipse(QPointF(90, 38), 5, 5);
        // 3. The body, round and content.
        QPainterPath body;
        body.moveTo(66, 28);
        body.cubicTo(96, 28, 106, 54, 106, 80);
        body.cubicTo(106, 102, 90, 112, 66, 112);
        body.cubicTo(42, 112, 26, 102, 26, 80);
        body.cubicTo(26, 54, 36, 28, 66, 28);
        painter.setPen(pen);
        painter.setBrush(fur);
        painter.drawPath(body);
        // 4. The face.
        painter.setPen(Qt::NoPen);
        painter.setBrush(line);
        painter.drawEllipse(QPointF(50, 56), 3.6, 4);
        painter.drawEllipse(QPointF(82, 56), 3.6, 4);
        painter.setBrush(fur.lighter(118));
        painter.drawEllipse(QPointF(66, 69), 17, 12);
        painter.setBrush(themeColor(u"Placeholder Quib Nose Color"_s));
        painter.drawRoundedRect(QRectF(59, 60, 14, 9), 4.5, 4.5);
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        QPainterPath mouth;
        mouth.moveTo(66, 69);
        mouth.lineTo(66, 73);
        mouth.moveTo(60, 74);
        mouth.quadTo(66, 79, 72, 74);
        painter.drawPath(mouth);
        // 5. A pencil behind the ear, and the paws on the sheet.
        painter.save();
        painter.translate(97, 27);
        painter.rotate(52);
        painter.setBrush(accent);
        painter.drawRoundedRect(QRectF(-17, -3.2, 27, 6.4), 1.5, 1.5);
        QPainterPath tip;
        tip.moveTo(10, -3.2);
        tip.lineTo(17, 0);
        tip.lineTo(10, 3.2);
        tip.closeSubpath();
        painter.setBrush(themeColor(u"Placeholder Background Color"_s));
        painter.drawPath(tip);
        painter.restore();
        painter.setBrush(themeColor(u"Placeholder Background Color"_s));
        painter.drawRoundedRect(QRectF(44, 90, 44, 26), 4, 4);
        painter.setPen(QPen(themeColor(u"Placeholder Background Stroke Color"_s), 2.2, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(52, 99), QPointF(80, 99));
        painter.drawLine(QPointF(52, 106), QPointF(70, 106));
        painter.setPen(pen);
        painter.setBrush(fur);
        painter.drawEllipse(QPointF(43, 97), 8, 6.5);
        painter.drawEllipse(QPointF(89, 97), 8, 6.5);
    }
};

} // namespace

EmptyState::EmptyState(QWidget *parent)
    : QWidget(parent)
    , m_picture(new Animal(this))
    , m_title(new QLabel(this))
    , m_text(new QLabel(this))
    , m_button(new QPushButton(this))
{
    m_title->setFont(interfaceFont(19, /*isBold=*/true));
    m_title->setAlignment(Qt::AlignCenter);
    m_text->setFont(interfaceFont(13));
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setWordWrap(true);
    m_text->setMaximumWidth(380);
    m_button->setProperty("isMain", true);
    auto *layout = new QVBoxLayout(this);
    layout->addStretch(4);
    layout->addWidget(m_picture, 0, Qt::AlignHCenter);
    layout->addSpacing(18);
    layout->addWidget(m_title, 0, Qt::AlignHCenter);
    layout->addSpacing(4);
    layout->addWidget(m_text, 0, Qt::AlignHCenter);
    layout->addSpacing(16);
    layout->addWidget(m_button, 0, Qt::AlignHCenter);
    layout->addStretch(5);
    connect(m_button, &QPushButton::clicked, this, &EmptyState::buttonWasPressed);
}

void EmptyState::show(const QString &title, const QString &text, const QString &button)
{
    m_title->setText(title);
    m_text->setText(text);
    m_text->setMinimumWidth(text.isEmpty() ? 0 : 360);
    m_text->setVisible(!text.isEmpty());
    m_button->setText(button);
    m_button->setVisible(!button.isEmpty());
}

void EmptyState::paintEvent(QPaintEvent * /*event*/)
{
    QPainter(this).fillRect(rect(), themeColor(u"Placeholder Background Color"_s));
}

} // namespace quib
