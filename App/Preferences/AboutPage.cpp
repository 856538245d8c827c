#include "AboutPage.h"

#include <QApplication>
#include <QClipboard>
#include <QFontInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QSvgRenderer>
#include <QSysInfo>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

constexpr int kIcon = 84;

class Icon final : public QWidget
{
public:
    explicit Icon(QWidget *parent)
        : QWidget(parent)
        , m_drawing(u":/Preferences/net.quibworks.Quib.svg"_s)
    {
        setFixedSize(kIcon, kIcon);
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override
    {
        QPainter painter(this);
        m_drawing.render(&painter, rect());
    }

private:
    QSvgRenderer m_drawing;
};

struct Library
{
    const char *name;
    const char *licence;
};

/// What the program is linked with. Names of licences are names in every language.
constexpr Library kLibraries[] = {
    {"Qt", "LGPL 3"},       {"ICU", "Unicode License"}, {"SQLite", "Public Domain"}, {"libxml2", "MIT"},
    {"libpsl", "MIT"},      {"Hunspell", "MPL 1.1"},    {"libheif", "LGPL 3"},       {"OpenJPEG", "BSD 2-Clause"},
    {"LibTIFF", "libtiff"}, {"zlib", "zlib"},           {"libcurl", "curl"},
};

} // namespace

AboutPage::AboutPage(QWidget *parent)
    : PreferencesForm(parent)
{
    addGroup({});
    auto *head = new QWidget(widget());
    auto *row = new QHBoxLayout(head);
    row->setContentsMargins(20, 20, 20, 20);
    row->setSpacing(20);
    row->addWidget(new Icon(head));
    auto *texts = new QVBoxLayout;
    texts->setSpacing(3);
    auto *name = new QLabel(u"Quib"_s, head);
    QFont font = name->font();
    font.setPixelSize(int(QFontInfo(font).pixelSize() * 1.8));
    font.setBold(true);
    name->setFont(font);
    const QString version = tr("Version %1").arg(QStringLiteral(QUIB_VERSION));
    auto *versionLabel = new QLabel(version, head);
    versionLabel->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    versionLabel->setAccessibleName(version);
    texts->addStretch(1);
    texts->addWidget(name);
    texts->addWidget(versionLabel);
    texts->addWidget(makeHelpLabel(tr("Notes in plain text, kept on this computer."), head));
    texts->addStretch(1);
    row->addLayout(texts, 1);
    addWide(head);
    auto *copy = new QPushButton(tr("Copy"), widget());
    copy->setAutoDefault(true);
    copy->setAccessibleName(tr("Copy the versions"));
    const QString versions =
        QString(u"Quib "_s % QStringLiteral(QUIB_VERSION) % u", Qt "_s % QString::fromLatin1(qVersion()) % u", "_s %
                QSysInfo::prettyProductName() % u", "_s % QGuiApplication::platformName());
    addRow(tr("For a bug report"), versions, copy);
    connect(copy, &QPushButton::clicked, this, [versions] { QGuiApplication::clipboard()->setText(versions); });
    addGroup(tr("Libraries"));
    for (const Library &library : kLibraries) {
        auto *licence = makeHelpLabel(QString::fromLatin1(library.licence), widget());
        licence->setWordWrap(false);
        addRow(QString::fromLatin1(library.name), {}, licence);
    }
    addParagraph(tr("Their licences in full come with their packages, in %1.").arg(u"\u2066/usr/share/doc\u2069"_s));
}

} // namespace quib
