#pragma once

#include <Foundation/NotificationCenter.h>
#include <Text/NSAttributedString.h>

#include <QCache>
#include <QHash>
#include <QPixmap>
#include <QStyledItemDelegate>
#include <QTextLayout>
#include <QUrl>

#include <memory>

class QBNote;

namespace quib {

class NoteListModel;

/// Draws a row of the note list: title, age and marks, snippet, the first picture, and how far its to-dos are. Rows are
/// of one height, so that a list of any length is laid out at once; a picture stands beside the snippet. Small copies
/// of pictures are made in the background and kept. Owned by the list's view; main queue.
class NoteRowDelegate final : public QStyledItemDelegate
{
    Q_OBJECT

public:
    NoteRowDelegate(NoteListModel &model, QObject *parent);

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

    /// Units: points.
    static constexpr int kRowHeight = 80;

Q_SIGNALS:
    /// A picture that a row waits for is there, or one that a row shows is to be asked for again.
    void pictureArrived();

private:
    /// The files of these attachments changed, or came.
    void forgetPictures(const QStringList &identifiers);
    [[nodiscard]] QPixmap picture(const QBNote &note, QSize size, double scale) const;
    /// Draws lines of a text with its attributes, cut with an ellipsis. Gives the height used.
    int drawText(QPainter &painter, const NSAttributedString &text, NSRange range, const QRect &place, int mostLines,
                 Qt::LayoutDirection direction) const;
    /// Lines of a text as they were laid out: a list paints the same rows over and over, and to lay them out is most of
    /// the work.
    struct LaidOutText
    {
        QList<QTextLayout::FormatRange> formats;
        int width = 0;
        int mostLines = 0;
        Qt::LayoutDirection direction = Qt::LeftToRight;
        QTextLayout layout;
    };

    NoteListModel &m_model;
    mutable QCache<QString, LaidOutText> m_laidOutTexts; ///< by the whole text
    struct Picture
    {
        QString identifier; ///< of the attachment
        QPixmap pixmap;     ///< null while it is on its way
    };
    mutable QHash<QString, Picture> m_pictures; ///< by file and size
    quint64 m_generation = 0;                   ///< pictures that were asked for in an earlier one are thrown away
    ObservationToken m_fileObservation;
    std::shared_ptr<char> m_life = std::make_shared<char>();
};

} // namespace quib
