#pragma once

#include <QLineEdit>
#include <QTimer>

QT_BEGIN_NAMESPACE
class QCompleter;
QT_END_NAMESPACE

namespace quib {

/// The search field over the note list: tells of each change, offers the search language's words while one is being
/// written, and goes on to the list by the arrow down. Owned by the main window; main queue.
class SearchField final : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchField(QWidget *parent = nullptr);

    /// Shows a text without telling of it.
    void showString(const QString &string);
    /// Goes on with what was typed elsewhere.
    void continueTyping(const QString &text);

    struct Operator
    {
        QString word;
        QString meaning;
    };
    /// The words of the search language that begin with "@", with what they find.
    [[nodiscard]] static QList<Operator> operators();
    /// Everything that can be searched for: words, phrases, what is left out, tags, and the operators.
    [[nodiscard]] static QList<Operator> help();
    /// Puts a word at the end, ready to be searched for or gone on with.
    void addWord(const QString &word);

Q_SIGNALS:
    void searchDidChange(const QString &string);
    void leaveToList();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;

private:
    void complete();
    void takeCompletion(const QString &word);
    /// Where the word at the cursor begins, and the word up to the cursor.
    [[nodiscard]] qsizetype wordStart() const;

    QCompleter *m_completer;
};

} // namespace quib
