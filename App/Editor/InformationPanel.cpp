#include "InformationPanel.h"

#include "NoteStatistics.h"

#include <Markup/Attachments/QBHeaderTextAttachment.h>
#include <Markup/QBNotesTextStorage.h>
#include <Search/NoteTextSearch.h>
#include <Store/NSManagedObjectContext.h>

#include <QDateTime>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPainter>
#include <QScrollArea>
#include <QTimerEvent>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Units: milliseconds.
constexpr int kUpdateDelay = 400;
constexpr int kWidth = 260;
/// Of a list that does not fit, so many rows are seen at least.
constexpr int kLeastRows = 4;
constexpr int kMargin = 14;
constexpr int kSpacing = 6;
/// How much of the text's colour the line beside the panel has.
constexpr double kLineOpacity = 0.12;
constexpr qsizetype kMostLinks = 100;
constexpr qsizetype kMostHeaders = 1000;

QString dateText(std::optional<NSDate> date)
{
    if (!date) {
        return u"–"_s;
    }
    const auto moment = QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(date->timeIntervalSince1970() * 1000));
    return QLocale().toString(moment, QLocale::ShortFormat);
}

/// Whether a text has a link to a title, or to one of the headers below it.
bool linksToTitle(const QString &text, const QString &title)
{
    const QString link = u"[["_s % title;
    for (qsizetype place = text.indexOf(link, 0, Qt::CaseInsensitive); place >= 0;
         place = text.indexOf(link, place + 1, Qt::CaseInsensitive)) {
        const QStringView rest = QStringView(text).mid(place + link.size(), 2);
        if (rest == u"]]" || rest.startsWith(u'/')) {
            return true;
        }
    }
    return false;
}

} // namespace

QList<Ref<QBNote>> notesThatLinkTo(const QBNote &note, NoteTextSearch *textSearch)
{
    const QString title = note.title();
    NSManagedObjectContext *moc = note.managedObjectContext();
    if (title.isEmpty() || moc == nullptr) {
        return {};
    }
    NSFetchRequest request{.entityName = QBNote::entityName()};
    request.predicate = NSPredicate::predicateWithFormat(u"text CONTAINS[cd] %@ AND trashed == NO"_s,
                                                         {predicateArgument(QString(u"[["_s % title))});
    const auto found =
        textSearch != nullptr ? textSearch->executeFetchRequest(request) : moc->executeFetchRequest(request);
    QList<Ref<QBNote>> linking;
    for (const auto &object : found.value_or(QList<Ref<NSManagedObject>>())) {
        const auto candidate = object.as<QBNote>();
        if (candidate && candidate.get() != &note && linksToTitle(candidate->text(), title)) {
            linking.append(candidate);
        }
    }
    std::sort(linking.begin(), linking.end(),
              [](const Ref<QBNote> &a, const Ref<QBNote> &b) { return b->modificationDate() < a->modificationDate(); });
    return linking.mid(0, kMostLinks);
}

InformationPanel::InformationPanel(const QBNotesTextStorage &storage, QWidget *parent)
    : QWidget(parent)
    , m_storage(storage)
{
    setObjectName(u"informationPanel"_s);
    setAccessibleName(tr("Note Information"));
    setStyleSheet(u"QListWidget { background: transparent; } "
                  "QListWidget::item { padding: 4px 6px; border-radius: 5px; } "
                  "QListWidget::item:hover { background: palette(midlight); } "
                  "QListWidget::item:selected { background: transparent; color: palette(text); } "
                  "QListWidget::item:selected:active:focus, QListWidget::item:focus { background: palette(highlight); "
                  "color: palette(highlighted-text); }"_s);
    // Where there is little room, all of it scrolls.
    auto *scrolling = new QScrollArea(this);
    scrolling->setFrameShape(QFrame::NoFrame);
    scrolling->setFocusPolicy(Qt::NoFocus);
    scrolling->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrolling->setWidgetResizable(true);
    auto *whole = new QVBoxLayout(this);
    whole->setContentsMargins(1, 1, 1, 0); // the line at the edge
    whole->addWidget(scrolling);
    m_content = new QWidget;
    auto *layout = new QVBoxLayout(m_content);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kSpacing);
    auto *form = new QFormLayout;
    form->setHorizontalSpacing(kMargin);
    form->setVerticalSpacing(kSpacing);
    m_words = addValue(*form, u"words"_s, tr("Words"));
    m_characters = addValue(*form, u"characters"_s, tr("Characters"));
    m_paragraphs = addValue(*form, u"paragraphs"_s, tr("Paragraphs"));
    m_readingTime = addValue(*form, u"readingTime"_s, tr("Reading time"));
    m_created = addValue(*form, u"created"_s, tr("Created"));
    m_changed = addValue(*form, u"changed"_s, tr("Changed"));
    layout->addLayout(form);
    m_headers = addList(u"headers"_s, tr("Contents"), tr("Headings of the note stand here."));
    m_links = addList(u"links"_s, tr("Notes That Link Here"), tr("No note links here yet."));
    layout->addStretch(1);
    scrolling->setWidget(m_content);
    scrolling->viewport()->setAutoFillBackground(false);
    m_content->setAutoFillBackground(false);
    // A click or Return; a double click opens nothing twice.
    const auto connectList = [this](QListWidget *list, auto chosen) {
        connect(list, &QListWidget::itemClicked, this, chosen);
        connect(list, &QListWidget::itemActivated, this, chosen);
    };
    connectList(m_headers, [this](const QListWidgetItem *item) {
        Q_EMIT headerWasChosen({item->data(Qt::UserRole).toLongLong(), 0});
    });
    setPlace(Place::BesideText, 0);
    connectList(m_links,
                [this](const QListWidgetItem *item) { Q_EMIT noteWasChosen(item->data(Qt::UserRole).toString()); });
}

QLabel *InformationPanel::addValue(QFormLayout &form, const QString &name, const QString &label)
{
    auto *value = new QLabel(m_content);
    value->setObjectName(name);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *title = new QLabel(label, m_content);
    title->setForegroundRole(QPalette::PlaceholderText);
    title->setBuddy(value);
    form.addRow(title, value);
    return value;
}

void InformationPanel::showValue(QLabel &value, const QString &text)
{
    value.setText(text);
    // Read out by itself, a number must say what it counts.
    for (const auto *title : findChildren<QLabel *>()) {
        if (title->buddy() == &value) {
            value.setAccessibleName(title->text() % u": "_s % text);
        }
    }
}

QListWidget *InformationPanel::addList(const QString &name, const QString &title, const QString &whenEmpty)
{
    auto *heading = new QLabel(title, m_content);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    heading->setContentsMargins(0, kMargin, 0, 0);
    auto *empty = new QLabel(whenEmpty, m_content);
    empty->setObjectName(name % u"Empty"_s);
    empty->setForegroundRole(QPalette::PlaceholderText);
    empty->setWordWrap(true);
    auto *list = new QListWidget(m_content);
    list->setObjectName(name);
    list->setAccessibleName(title);
    list->setFrameShape(QFrame::NoFrame);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setTextElideMode(Qt::ElideRight);
    list->viewport()->setAutoFillBackground(false);
    // As high as what it holds, and no higher than there is room.
    list->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    auto *layout = static_cast<QVBoxLayout *>(m_content->layout());
    layout->addWidget(heading);
    layout->addWidget(empty);
    layout->addWidget(list, 100);
    return list;
}

void InformationPanel::didFillList(QListWidget &list)
{
    list.setVisible(list.count() > 0);
    findChild<QLabel *>(list.objectName() % u"Empty"_s)->setVisible(list.count() == 0);
    list.setMinimumHeight(list.sizeHintForRow(0) * std::min(list.count(), kLeastRows));
    list.updateGeometry();
}

void InformationPanel::setPlace(Place place, int height)
{
    m_place = place;
    m_height = height;
    const bool isBeside = place == Place::BesideText;
    // Never higher than wished for, and less high where the window is: it must not keep the window from shrinking.
    setMinimumWidth(isBeside ? kWidth : 0);
    setMaximumSize(isBeside ? kWidth : QWIDGETSIZE_MAX, isBeside ? QWIDGETSIZE_MAX : height);
    updateGeometry();
    QWidget::update();
}

QSize InformationPanel::sizeHint() const
{
    return m_place == Place::BesideText ? QWidget::sizeHint() : QSize(QWidget::sizeHint().width(), m_height);
}

bool InformationPanel::focusList()
{
    for (QListWidget *list : {m_headers, m_links}) {
        if (list->count() > 0) {
            list->setCurrentRow(std::max(list->currentRow(), 0));
            list->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    return false;
}

void InformationPanel::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        Q_EMIT didLeave();
    } else {
        QWidget::keyPressEvent(event);
    }
}

void InformationPanel::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(static_cast<float>(kLineOpacity));
    if (m_place == Place::BelowText) {
        painter.fillRect(0, 0, width(), 1, line);
    } else {
        painter.fillRect(isRightToLeft() ? width() - 1 : 0, 0, 1, height(), line);
    }
}

void InformationPanel::setNote(const Ref<QBNote> &note)
{
    m_note = note;
    m_updating.stop();
    if (isVisible()) {
        update();
    }
}

void InformationPanel::setTextSearch(std::shared_ptr<NoteTextSearch> textSearch)
{
    m_textSearch = std::move(textSearch);
}

void InformationPanel::noteDidChange()
{
    if (isVisible()) {
        m_updating.start(kUpdateDelay, this);
    }
}

void InformationPanel::update()
{
    m_updating.stop();
    if (!m_note || m_note->managedObjectContext() == nullptr) {
        return;
    }
    const QLocale locale;
    const auto statistics = NoteStatistics::ofText(m_storage.stringWithExpandedTextAttachments());
    showValue(*m_words, locale.toString(statistics.words));
    showValue(*m_characters, locale.toString(statistics.characters));
    showValue(*m_paragraphs, locale.toString(statistics.paragraphs));
    showValue(*m_readingTime, tr("%1 min").arg(locale.toString(statistics.readingTime())));
    showValue(*m_created, dateText(m_note->creationDate()));
    showValue(*m_changed, dateText(m_note->modificationDate()));
    updateHeaders();
    updateLinks();
}

void InformationPanel::updateHeaders()
{
    struct Header
    {
        QString title;
        int level = 1;
        qint64 location = 0;
    };
    QList<Header> headers;
    m_storage.enumerateHeadersUsingBlock([&](const QBHeaderTextAttachment &attachment, NSRange range) {
        const QString title = m_storage.attributedString()
                                  .stringInRange(range)
                                  .toString()
                                  .remove(QChar::ObjectReplacementCharacter)
                                  .simplified();
        if (!title.isEmpty() && headers.size() < kMostHeaders) {
            headers.append({title, std::max(attachment.headerLevel(), 1), range.location});
        }
    });
    // The one chosen stays so while one types.
    const int row = m_headers->currentRow();
    m_headers->clear();
    const auto highest = std::ranges::min_element(headers, {}, &Header::level);
    for (const Header &header : std::as_const(headers)) {
        auto *item =
            new QListWidgetItem(QString(header.level - highest->level, QChar(0x2003)) % header.title, m_headers);
        item->setData(Qt::UserRole, QVariant::fromValue(static_cast<qlonglong>(header.location)));
        item->setData(Qt::AccessibleTextRole, tr("%1, heading %2").arg(header.title).arg(header.level));
        item->setToolTip(header.title);
    }
    m_headers->setCurrentRow(row < m_headers->count() ? row : -1);
    didFillList(*m_headers);
}

void InformationPanel::updateLinks()
{
    const int row = m_links->currentRow();
    m_links->clear();
    for (const auto &note : notesThatLinkTo(*m_note, m_textSearch.get())) {
        auto *item = new QListWidgetItem(note->title(), m_links);
        item->setData(Qt::UserRole, note->uniqueIdentifier());
        item->setToolTip(note->title());
    }
    m_links->setCurrentRow(row < m_links->count() ? row : -1);
    didFillList(*m_links);
}

void InformationPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    update();
}

void InformationPanel::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_updating.timerId()) {
        update();
    } else {
        QWidget::timerEvent(event);
    }
}

} // namespace quib
