#include "EmptyState.h"

#include "ThemeColors.h"

#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr int kPictureSide = 132;
constexpr int kTextWidth = 370;
constexpr int kMargin = 20;
constexpr int kPictureGap = 30;
constexpr int kTextGap = 16;
constexpr int kButtonGap = 28;
/// Between picture, title, text and button, and around them.
constexpr int kSpaces = 100;

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
        // 2. The tail, which is as large as the rest, and tufted ears.
        QPainterPath tail;
        tail.moveTo(92, 106);
        tail.cubicTo(128, 104, 130, 66, 112, 56);
        tail.cubicTo(104, 51, 98, 60, 104, 66);
        tail.cubicTo(110, 76, 102, 90, 88, 92);
        tail.closeSubpath();
        painter.setPen(pen);
        painter.setBrush(fur.darker(112));
        painter.drawPath(tail);
        for (const bool isLeft : {true, false}) {
            QPainterPath ear;
            const double side = isLeft ? 1 : -1;
            ear.moveTo(66 - side * 30, 46);
            ear.quadTo(66 - side * 32, 24, 66 - side * 26, 14);
            ear.quadTo(66 - side * 14, 22, 66 - side * 10, 34);
            ear.closeSubpath();
            painter.setBrush(fur);
            painter.drawPath(ear);
        }
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
        painter.drawEllipse(QPointF(52, 54), 4, 4.6);
        painter.drawEllipse(QPointF(80, 54), 4, 4.6);
        painter.setBrush(Qt::white);
        painter.drawEllipse(QPointF(53.4, 52.4), 1.3, 1.3);
        painter.drawEllipse(QPointF(81.4, 52.4), 1.3, 1.3);
        painter.setBrush(fur.lighter(122));
        painter.drawEllipse(QPointF(57, 71), 11, 9);
        painter.drawEllipse(QPointF(75, 71), 11, 9);
        painter.setBrush(themeColor(u"Placeholder Quib Nose Color"_s));
        painter.drawEllipse(QPointF(66, 65), 4.5, 3.4);
        painter.setPen(QPen(line, 1.4, Qt::SolidLine, Qt::RoundCap));
        for (const double y : {-2.0, 3.0}) {
            painter.drawLine(QPointF(48, 71 + y / 2), QPointF(36, 70 + y * 1.6));
            painter.drawLine(QPointF(84, 71 + y / 2), QPointF(96, 70 + y * 1.6));
        }
        painter.setPen(pen);
        painter.setBrush(Qt::NoBrush);
        QPainterPath mouth;
        mouth.moveTo(66, 68);
        mouth.lineTo(66, 72);
        mouth.moveTo(59, 73);
        mouth.quadTo(62.5, 77, 66, 72);
        mouth.quadTo(69.5, 77, 73, 73);
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
    , m_pictureGap(new QSpacerItem(0, kPictureGap))
    , m_buttonGap(new QSpacerItem(0, kButtonGap))
    , m_button(new QPushButton(this))
{
    m_title->setFont(interfaceFont(19, /*isBold=*/true));
    m_title->setAlignment(Qt::AlignCenter);
    m_text->setFont(interfaceFont(13));
    m_text->setAlignment(Qt::AlignCenter);
    m_text->setWordWrap(true);
    m_button->setProperty("isMain", true);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(0);
    layout->addStretch(4);
    layout->addWidget(m_picture, 0, Qt::AlignHCenter);
    layout->addItem(m_pictureGap);
    layout->addWidget(m_title, 0, Qt::AlignHCenter);
    layout->addSpacing(kTextGap);
    layout->addWidget(m_text, 0, Qt::AlignHCenter);
    layout->addItem(m_buttonGap);
    layout->addWidget(m_button, 0, Qt::AlignHCenter);
    layout->addStretch(5);
    connect(m_button, &QPushButton::clicked, this, &EmptyState::buttonWasPressed);
}

void EmptyState::show(const QString &title, const QString &text, const QString &button)
{
    m_title->setText(title);
    m_text->setText(text);
    m_text->setVisible(!text.isEmpty());
    m_button->setText(button);
    m_button->setVisible(!button.isEmpty());
    placeText();
}

void EmptyState::placeText()
{
    // A label that is centred gets the size of its hint, which is too narrow and too low for long texts.
    const int textWidth = std::min(kTextWidth, width() - 2 * kMargin);
    m_text->setMinimumSize(0, 0); // the hint is never less
    m_text->setFixedSize(m_text->isHidden() ? QSize(0, 0) : QSize(textWidth, m_text->heightForWidth(textWidth)));
    // Where the window is low, the words stay.
    const int words =
        m_title->sizeHint().height() + m_text->height() + (m_button->isHidden() ? 0 : m_button->sizeHint().height());
    const bool isHigh = height() >= words + kPictureSide + kSpaces;
    m_picture->setVisible(isHigh);
    m_pictureGap->changeSize(0, isHigh ? kPictureGap : 0);
    m_buttonGap->changeSize(0, isHigh ? kButtonGap : kTextGap);
    layout()->invalidate();
}

void EmptyState::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    placeText();
}

void EmptyState::paintEvent(QPaintEvent * /*event*/)
{
    QPainter(this).fillRect(rect(), themeColor(u"Placeholder Background Color"_s));
}

} // namespace quib
