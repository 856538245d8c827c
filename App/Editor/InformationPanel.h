#pragma once

#include <Foundation/NSRange.h>
#include <Store/QBNote.h>

#include <QBasicTimer>
#include <QList>
#include <QString>
#include <QWidget>

#include <memory>

class QBNotesTextStorage;

QT_BEGIN_NAMESPACE
class QFormLayout;
class QLabel;
class QListWidget;
QT_END_NAMESPACE

namespace quib {

class NoteTextSearch;

/// The notes that link to a note by its title, the ones changed last first; never itself, nor one in the trash.
/// Shape:   at most a hundred. The search, where there is one, must be of the note's context.
[[nodiscard]] QList<Ref<QBNote>> notesThatLinkTo(const QBNote &note, NoteTextSearch *textSearch);

/// The column beside a note, or the stretch below it, that tells of it: when it was made, how long it is, its headers,
/// and the notes that link here. It looks at the text when typing rests, and only while it is seen. Owned by the
/// editor's pane; main queue.
class InformationPanel final : public QWidget
{
    Q_OBJECT

public:
    explicit InformationPanel(const QBNotesTextStorage &storage, QWidget *parent = nullptr);

    /// Null for none.
    void setNote(const Ref<QBNote> &note);
    /// What finds links fast; without one the store is asked.
    void setTextSearch(std::shared_ptr<NoteTextSearch> textSearch);
    /// The note's text, or its dates, are other ones: the panel follows soon.
    void noteDidChange();
    /// Follows at once.
    void update();
    enum class Place
    {
        BesideText,
        BelowText,
    };
    /// Below the text it is so high, and as wide as the text; beside it, it has its own width.
    void setPlace(Place place, int height);
    [[nodiscard]] QSize sizeHint() const override;
    /// Gives the keyboard to the first list that has something in it. False where none has.
    bool focusList();

Q_SIGNALS:
    void headerWasChosen(NSRange range);
    void noteWasChosen(const QString &identifier);
    void didLeave();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    QLabel *addValue(QFormLayout &form, const QString &name, const QString &label);
    QListWidget *addList(const QString &name, const QString &title, const QString &whenEmpty);
    void showValue(QLabel &value, const QString &text);
    void didFillList(QListWidget &list);
    void updateHeaders();
    void updateLinks();

    const QBNotesTextStorage &m_storage;
    Ref<QBNote> m_note;
    std::shared_ptr<NoteTextSearch> m_textSearch;
    Place m_place = Place::BesideText;
    int m_height = 0; ///< below the text
    QWidget *m_content = nullptr;
    QLabel *m_created = nullptr;
    QLabel *m_changed = nullptr;
    QLabel *m_words = nullptr;
    QLabel *m_characters = nullptr;
    QLabel *m_paragraphs = nullptr;
    QLabel *m_readingTime = nullptr;
    QListWidget *m_headers = nullptr;
    QListWidget *m_links = nullptr;
    QBasicTimer m_updating;
};

} // namespace quib
