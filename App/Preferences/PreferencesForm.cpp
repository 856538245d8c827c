#include "PreferencesForm.h"

#include "Switch.h"

#include <Foundation/DispatchQueue.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QSignalBlocker>
#include <QSlider>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

// Units: points.
constexpr int kPageMargin = 28;
constexpr int kNarrowPageMargin = 10;
constexpr int kLeastWidthForMargins = 520;
constexpr int kWidestForm = 620;
constexpr int kRowMargin = 14;
constexpr int kSliderWidth = 150;
constexpr int kValueWidth = 74;

/// A row whose whole area presses its button.
class Row final : public QWidget
{
public:
    using QWidget::QWidget;
    QPointer<QAbstractButton> button;

protected:
    void mouseReleaseEvent(QMouseEvent *event) override
    {
        if (button && event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) {
            button->click();
        }
    }
};

QFrame *makeLine(QWidget *parent)
{
    auto *line = new QFrame(parent);
    line->setObjectName(u"preferencesLine"_s);
    line->setFixedHeight(1);
    return line;
}

} // namespace

QLabel *makeHelpLabel(const QString &text, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    label->setObjectName(u"preferencesHelp"_s);
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    return label;
}

PreferencesForm::PreferencesForm(QWidget *parent)
    : QScrollArea(parent)
{
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    auto *content = new QWidget(this);
    content->setObjectName(u"preferencesPage"_s);
    auto *columns = new QHBoxLayout(content);
    columns->setContentsMargins(kPageMargin, kPageMargin, kPageMargin, kPageMargin);
    auto *column = new QWidget(content);
    column->setMaximumWidth(kWidestForm);
    columns->addStretch(1);
    columns->addWidget(column, 1000);
    columns->addStretch(1);
    m_rows = new QVBoxLayout(column);
    m_rows->setContentsMargins(0, 0, 0, 0);
    m_rows->setSpacing(8);
    m_rows->addStretch(1);
    setWidget(content);
}

void PreferencesForm::resizeEvent(QResizeEvent *event)
{
    const int margin = width() < kLeastWidthForMargins ? kNarrowPageMargin : kPageMargin;
    widget()->layout()->setContentsMargins(margin, margin, margin, margin);
    QScrollArea::resizeEvent(event);
}

void PreferencesForm::addGroup(const QString &title)
{
    if (!title.isEmpty()) {
        auto *heading = new QLabel(title, widget());
        heading->setObjectName(u"preferencesHeading"_s);
        QFont font = heading->font();
        font.setBold(true);
        heading->setFont(font);
        heading->setContentsMargins(2, m_group != nullptr ? 14 : 0, 2, 0);
        m_rows->insertWidget(m_rows->count() - 1, heading);
    }
    auto *card = new QFrame(widget());
    card->setObjectName(u"preferencesCard"_s);
    card->setAccessibleName(title);
    m_group = new QVBoxLayout(card);
    m_group->setContentsMargins(1, 1, 1, 1);
    m_group->setSpacing(0);
    m_rows->insertWidget(m_rows->count() - 1, card);
}

void PreferencesForm::addWide(QWidget *widget)
{
    if (m_group->count() > 0) {
        m_lines.insert(widget, makeLine(this));
        m_group->addWidget(m_lines[widget]);
    }
    m_group->addWidget(widget);
}

void PreferencesForm::setRowVisible(QWidget *row, bool isVisible)
{
    row->setVisible(isVisible);
    if (QWidget *line = m_lines.value(row); line != nullptr) {
        line->setVisible(isVisible);
    }
}

QLabel *PreferencesForm::addParagraph(const QString &text)
{
    QLabel *label = makeHelpLabel(text, widget());
    label->setContentsMargins(kRowMargin, 12, kRowMargin, 12);
    addWide(label);
    return label;
}

QWidget *PreferencesForm::addRow(const QString &text, const QString &help, QWidget *control)
{
    auto *row = new Row(widget());
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(kRowMargin, 10, kRowMargin, 10);
    layout->setSpacing(20);
    auto *texts = new QVBoxLayout;
    texts->setSpacing(2);
    auto *title = new QLabel(text, row);
    title->setWordWrap(true);
    title->setBuddy(control);
    texts->addWidget(title);
    if (!help.isEmpty()) {
        texts->addWidget(makeHelpLabel(help, row));
    }
    layout->addLayout(texts, 1);
    layout->addWidget(control, 0, Qt::AlignVCenter);
    if (control->accessibleName().isEmpty()) {
        control->setAccessibleName(text);
    }
    if (control->accessibleDescription().isEmpty()) {
        control->setAccessibleDescription(help);
    }
    if (auto *button = qobject_cast<Switch *>(control); button != nullptr) {
        row->button = button;
    }
    addWide(row);
    return row;
}

Switch *PreferencesForm::addSwitch(const QString &text, const QString &help, const QStringList &keyPaths,
                                   std::function<bool()> get, std::function<void(bool)> set)
{
    auto *control = new Switch(widget());
    addRow(text, help, control);
    follow(keyPaths, [control, get = std::move(get)] {
        const QSignalBlocker blocker(control);
        control->setChecked(get());
        control->update();
    });
    connect(control, &QAbstractButton::toggled, this, [set = std::move(set)](bool isOn) { set(isOn); });
    return control;
}

QComboBox *PreferencesForm::addChoice(const QString &text, const QString &help, const QStringList &keyPaths,
                                      const QList<std::pair<QString, QVariant>> &choices, std::function<QVariant()> get,
                                      std::function<void(const QVariant &)> set)
{
    auto *control = new QComboBox(widget());
    control->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    for (const auto &[title, value] : choices) {
        control->addItem(title, value);
    }
    addRow(text, help, control);
    follow(keyPaths, [control, get = std::move(get)] {
        const QSignalBlocker blocker(control);
        control->setCurrentIndex(control->findData(get()));
    });
    connect(control, &QComboBox::currentIndexChanged, this, [control, set = std::move(set)](int index) {
        if (index >= 0) {
            set(control->itemData(index));
        }
    });
    return control;
}

QSlider *PreferencesForm::addSlider(const QString &text, const QString &help, const QStringList &keyPaths,
                                    std::pair<int, int> bounds, std::function<int()> get, std::function<void(int)> set,
                                    std::function<QString(int)> show)
{
    auto *pair = new QWidget(widget());
    auto *layout = new QHBoxLayout(pair);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(10);
    auto *control = new QSlider(Qt::Horizontal, pair);
    control->setRange(bounds.first, bounds.second);
    control->setFixedWidth(kSliderWidth);
    control->setAccessibleName(text);
    control->setAccessibleDescription(help);
    auto *value = new QLabel(pair);
    value->setFixedWidth(kValueWidth);
    value->setAlignment(Qt::AlignVCenter | Qt::AlignTrailing);
    layout->addWidget(control);
    layout->addWidget(value);
    pair->setFocusProxy(control);
    QWidget *row = addRow(text, help, pair);
    row->findChild<QLabel *>()->setBuddy(control);
    follow(keyPaths, [control, value, get = std::move(get), show] {
        const QSignalBlocker blocker(control);
        const int step = get();
        control->setValue(step);
        value->setText(show(step));
    });
    connect(control, &QSlider::valueChanged, this, [value, show, set = std::move(set)](int step) {
        value->setText(show(step));
        set(step);
    });
    return control;
}

void PreferencesForm::follow(const QStringList &keyPaths, const std::function<void()> &update)
{
    update();
    auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
    if (preferences == nullptr) {
        return;
    }
    for (const QString &keyPath : keyPaths) {
        m_observations.push_back(
            preferences->addObserver(keyPath, [self = QPointer(this), update](const QString & /*keyPath*/) {
                // Changes are told on the thread of the writer.
                const auto tell = [self, update] {
                    if (self) {
                        update();
                    }
                };
                DispatchQueue::main()->isCurrent() ? tell() : DispatchQueue::main()->async(tell);
            }));
    }
}

} // namespace quib
