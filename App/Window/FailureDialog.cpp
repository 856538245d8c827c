#include "FailureDialog.h"

#include <QLabel>
#include <QPushButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quib {

namespace {

/// A path as text that stays in one piece: no line ends at its slashes, and it reads from left to right everywhere.
QString unbrokenPath(QString path)
{
    const QString wordJoiner(QChar(0x2060));
    path.replace(u"/"_s, QString(wordJoiner % u'/' % wordJoiner));
    return QChar(0x2066) % path % QChar(0x2069);
}

} // namespace

FailureDialog::FailureDialog(const QString &headline, const QString &advice, const QString &path,
                             const QStringList &buttons)
{
    setIcon(QMessageBox::Warning);
    setWindowTitle(tr("Quib"));
    setTextFormat(Qt::PlainText);
    setText(headline);
    setInformativeText(path.isEmpty() ? advice : QString(advice % u"\n\n" % unbrokenPath(path)));
    if (auto *label = findChild<QLabel *>(u"qt_msgbox_label"_s); label != nullptr) {
        QFont bold = label->font();
        bold.setBold(true);
        label->setFont(bold);
    }
    for (const QString &text : buttons) {
        m_buttons.append(addButton(text, m_buttons.isEmpty() ? QMessageBox::RejectRole : QMessageBox::ActionRole));
    }
    if (!m_buttons.isEmpty()) {
        setDefaultButton(static_cast<QPushButton *>(m_buttons.constFirst()));
        setEscapeButton(m_buttons.constFirst());
    }
}

int FailureDialog::pressedButton() const
{
    return std::max(0, int(m_buttons.indexOf(clickedButton())));
}

} // namespace quib
