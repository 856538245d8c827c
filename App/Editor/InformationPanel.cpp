#include "InformationPanel.h"

#include "NoteStatistics.h"

#include <Markup/Attachments/QBHeaderTextAttachment.h>
#include <Markup/QBNotesTextStorage.h>
#include <Search/NoteTextSearch.h>
#include <Store/NSManagedObjectContext.h>

#include <QDateTime>
#include <QFormLayout>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QTimerEvent>
#include <QVBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// Units: milliseconds.
constexpr int kUpdateDelay = 400;
constexpr int kWidth = 260;
constexpr int kMargin = 14;
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
    setFixedWidth(kWidth);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    auto *form = new QFormLayout;
    form->setHorizontalSpacing(kMargin);
    m_words = addValue(*form, u"words"_s, tr("Words"));
    m_characters = addValue(*form, u"characters"_s, tr("Characters"));
    m_paragraphs = addValue(*form, u"paragraphs"_s, tr("Paragraphs"));
    m_readingTime = addValue(*form, u"readingTime"_s, tr("Reading time"));
    m_changed = addValue(*form, u"changed"_s, tr("Changed"));
    m_created = addValue(*form, u"created"_s, tr("Created"));
    layout->addLayout(form);
    m_headers = addList(u"headers"_s, tr("Contents"));
    m_links = addList(u"links"_s, tr("Notes That Link Here"));
    layout->addStretch(0);
    const auto connectList = [this](QListWidget *list, auto chosen) {
        connect(list, &QListWidget::itemClicked, this, chosen);
        connect(list, &QListWidget::itemActivated, this, chosen);
    };
    connectList(m_headers, [this](const QListWidgetItem *item) {
        Q_EMIT headerWasChosen({item->data(Qt::UserRole).toLongLong(), 0});
    });
    connectList(m_links,
                [this](const QListWidgetItem *item) { Q_EMIT noteWasChosen(item->data(Qt::UserRole).toString()); });
}

QLabel *InformationPanel::addValue(QFormLayout &form, const QString &name, const QString &label)
{
    auto *value = new QLabel(this);
    value->setObjectName(name);
    value->setAccessibleName(label);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *title = new QLabel(label, this);
    title->setForegroundRole(QPalette::PlaceholderText);
    form.addRow(title, value);
    return value;
}

QListWidget *InformationPanel::addList(const QString &name, const QString &title)
{
    auto *heading = new QLabel(title, this);
    QFont font = heading->font();
    font.setBold(true);
    heading->setFont(font);
    heading->setContentsMargins(0, kMargin, 0, 0);
    auto *list = new QListWidget(this);
    list->setObjectName(name);
    list->setAccessibleName(title);
    list->setFrameShape(QFrame::NoFrame);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->viewport()->setAutoFillBackground(false);
    layout()->addWidget(heading);
    static_cast<QVBoxLayout *>(layout())->addWidget(list, 1);
    return list;
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
    const auto statistics = NoteStatistics::ofText(m_storage.string());
    m_words->setText(locale.toString(statistics.words));
    m_characters->setText(locale.toString(statistics.characters));
    m_paragraphs->setText(locale.toString(statistics.paragraphs));
    m_readingTime->setText(tr("%1 min").arg(locale.toString(statistics.readingTime())));
    m_changed->setText(dateText(m_note->modificationDate()));
    m_created->setText(dateText(m_note->creationDate()));
    updateHeaders();
    updateLinks();
}

void InformationPanel::updateHeaders()
{
    m_headers->clear();
    m_storage.enumerateHeadersUsingBlock([this](const QBHeaderTextAttachment &attachment, NSRange range) {
        const QString title = m_storage.attributedString()
                                  .stringInRange(range)
                                  .toString()
                                  .remove(QChar::ObjectReplacementCharacter)
                                  .simplified();
        if (title.isEmpty() || m_headers->count() >= kMostHeaders) {
            return;
        }
        const int level = std::max(attachment.headerLevel(), 1);
        auto *item = new QListWidgetItem(QString(2 * (level - 1), QChar(0x2003)) % title, m_headers);
        item->setData(Qt::UserRole, QVariant::fromValue(static_cast<qlonglong>(range.location)));
        item->setToolTip(title);
    });
}

void InformationPanel::updateLinks()
{
    m_links->clear();
    for (const auto &note : notesThatLinkTo(*m_note, m_textSearch.get())) {
        auto *item = new QListWidgetItem(note->title(), m_links);
        item->setData(Qt::UserRole, note->uniqueIdentifier());
        item->setToolTip(note->title());
    }
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
