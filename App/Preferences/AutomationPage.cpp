#include "AutomationPage.h"

#include "InlineQuestion.h"
#include "PreferencesForm.h"

#include <Process/DesktopOpener.h>
#include <URL/QBXurlTokenController.h>

#include <QClipboard>
#include <QFile>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTextBrowser>
#include <QTimer>
#include <QVBoxLayout>

#include <chrono>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// How long a word of what was done stays.
constexpr std::chrono::milliseconds kSaid{4000};
constexpr int kTokenWidth = 230;

} // namespace

AutomationPage::AutomationPage(QWidget *parent)
    : QStackedWidget(parent)
    , m_form(new PreferencesForm(this))
{
    addWidget(m_form);
    m_form->addGroup(tr("Actions"));
    m_form->addParagraph(
        tr("Scripts, launchers and other programs drive Quib by addresses. They can make notes, add to "
           "them, open them and search:"));
    auto *example = new QLabel(u"xdg-open 'quib://x-callback-url/create?title=Hello'"_s, m_form);
    example->setObjectName(u"preferencesCode"_s);
    example->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    example->setAccessibleName(tr("Example of an address"));
    example->setLayoutDirection(Qt::LeftToRight);
    example->setWordWrap(true);
    example->setContentsMargins(14, 12, 14, 12);
    m_form->addWide(example);
    auto *description = new QPushButton(tr("Read More"), m_form);
    description->setAutoDefault(true);
    m_form->addRow(tr("All actions with examples"), {}, description);
    addToken();
    connect(description, &QPushButton::clicked, this, [this] {
        if (count() == 1) {
            addWidget(makeDescription());
        }
        setCurrentIndex(1);
        currentWidget()->setFocus();
    });
    m_forget = new QTimer(this);
    m_forget->setSingleShot(true);
    connect(m_forget, &QTimer::timeout, this, [this] { m_form->setRowVisible(m_said, false); });
}

void AutomationPage::addToken()
{
    m_form->addGroup(tr("Token"));
    m_form->addParagraph(
        tr("An action that lists your notes or tags answers only to who names this token. It lies in a "
           "file that you alone can read, and never leaves this computer. Give it to scripts that you "
           "trust."));
    // 1. With a token.
    auto *pair = new QWidget(m_form);
    auto *row = new QHBoxLayout(pair);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    m_token = new QLineEdit(pair);
    m_token->setReadOnly(true);
    m_token->setFixedWidth(kTokenWidth);
    m_token->setLayoutDirection(Qt::LeftToRight);
    m_token->setAccessibleName(tr("Token"));
    m_show = new QPushButton(tr("Show"), pair);
    m_show->setAccessibleName(tr("Show the token"));
    m_show->setCheckable(true);
    m_copy = new QPushButton(tr("Copy"), pair);
    m_copy->setAccessibleName(tr("Copy the token"));
    row->addWidget(m_token);
    row->addWidget(m_show);
    row->addWidget(m_copy);
    pair->setFocusProxy(m_token);
    m_tokenRow = m_form->addRow(tr("Token"), {}, pair);
    m_tokenRow->findChild<QLabel *>()->setBuddy(m_token);
    auto *renew = new InlineQuestion(tr("Renew…"), m_form);
    renew->setQuestion(tr("Renew the token?"), tr("Renew"), [this] {
        static_cast<void>(QBXurlTokenController().renewToken());
        refresh();
        say(tr("This is the new token."));
    });
    m_renewRow = m_form->addRow(tr("Renew the token"), tr("Scripts that know the old one are shut out."), renew);
    // 2. Without one.
    m_make = new QPushButton(tr("Make a Token"), m_form);
    m_make->setAutoDefault(true);
    m_form->addRow(tr("There is no token yet"), tr("Until there is one, no script reads a list of notes."), m_make);
    // 3. What was done.
    m_said = makeHelpLabel({}, m_form);
    m_said->setObjectName(u"preferencesSaid"_s);
    m_said->setContentsMargins(14, 10, 14, 10);
    m_said->setAccessibleName(tr("Message"));
    m_form->addWide(m_said);
    m_form->setRowVisible(m_said, false);
    for (QPushButton *button : {m_show, m_copy}) {
        button->setAutoDefault(true);
    }
    connect(m_show, &QPushButton::toggled, this, &AutomationPage::showToken);
    connect(m_copy, &QPushButton::clicked, this, [this] {
        if (const auto token = QBXurlTokenController().token()) {
            QGuiApplication::clipboard()->setText(*token);
            say(tr("The token is on the clipboard."));
        }
    });
    connect(m_make, &QPushButton::clicked, this, [this] {
        static_cast<void>(QBXurlTokenController().generateToken());
        refresh();
        m_copy->setFocus();
    });
    showToken(/*isShown=*/false);
    refresh();
}

QWidget *AutomationPage::makeDescription()
{
    auto *page = new QWidget(this);
    page->setObjectName(u"preferencesPage"_s);
    auto *rows = new QVBoxLayout(page);
    rows->setContentsMargins(16, 14, 16, 0);
    auto *back = new QPushButton(tr("Back"), page);
    back->setAutoDefault(true);
    rows->addWidget(back, 0, Qt::AlignLeading);
    auto *text = new QTextBrowser(page);
    text->setObjectName(u"preferencesText"_s);
    text->setAccessibleName(tr("All actions with examples"));
    text->setFrameShape(QFrame::NoFrame);
    text->setOpenLinks(false);
    text->setLayoutDirection(Qt::LeftToRight); // the description is in English
    text->document()->setDocumentMargin(14);
    QFile file(u":/Preferences/automation.md"_s);
    if (file.open(QIODevice::ReadOnly)) {
        text->setMarkdown(QString::fromUtf8(file.readAll()));
    }
    rows->addWidget(text, 1);
    page->setFocusProxy(text);
    connect(text, &QTextBrowser::anchorClicked, this, [text](const QUrl &url) {
        if (url.scheme().isEmpty()) {
            text->scrollToAnchor(url.fragment());
        } else {
            static_cast<void>(openWithDesktop(url));
        }
    });
    connect(back, &QPushButton::clicked, this, [this] { setCurrentIndex(0); });
    return page;
}

void AutomationPage::showEvent(QShowEvent *event)
{
    refresh();
    QStackedWidget::showEvent(event);
}

void AutomationPage::refresh()
{
    const auto token = QBXurlTokenController().token();
    m_token->setText(token.value_or(QString()));
    m_token->setCursorPosition(0);
    m_form->setRowVisible(m_tokenRow, token.has_value());
    m_form->setRowVisible(m_renewRow, token.has_value());
    m_form->setRowVisible(m_make->parentWidget(), !token);
}

void AutomationPage::showToken(bool isShown)
{
    m_token->setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password);
    m_show->setText(isShown ? tr("Hide") : tr("Show"));
    m_show->setAccessibleName(isShown ? tr("Hide the token") : tr("Show the token"));
}

void AutomationPage::say(const QString &text)
{
    m_said->setText(text);
    m_form->setRowVisible(m_said, true);
    m_said->setAccessibleDescription(text);
    m_forget->start(kSaid);
}

} // namespace quib
