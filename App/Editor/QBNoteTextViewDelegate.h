#pragma once

#include <Foundation/NSRange.h>

#include <QPointF>
#include <QString>
#include <QUrl>

#include <memory>

class NSTextAttachment;
class QBNoteTextView;

QT_BEGIN_NAMESPACE
class QMenu;
class QMimeData;
QT_END_NAMESPACE

/// What a text view tells the editor it stands in, and asks of it. Outlives the view, or is taken from it before. Main
/// queue.
class QBNoteTextViewDelegate
{
public:
    QBNoteTextViewDelegate() = default;
    QBNoteTextViewDelegate(const QBNoteTextViewDelegate &) = delete;
    QBNoteTextViewDelegate &operator=(const QBNoteTextViewDelegate &) = delete;
    virtual ~QBNoteTextViewDelegate();

    /// False when the delegate has dealt with the key.
    virtual bool qbNoteTextViewShouldInsertNewLine(QBNoteTextView &view, bool isShiftDown);
    virtual bool qbNoteTextViewShouldInsertTab(QBNoteTextView &view, bool backwards);
    /// The text was changed by the user, or undone or done again: the time to style it.
    virtual void qbNoteTextViewDidChangeText(QBNoteTextView &view);
    virtual void qbNoteTextViewDidChangeSelection(QBNoteTextView &view);

    /// A checkbox was clicked, or toggled by the keyboard or an assistive program.
    virtual void qbNoteTextViewDidClickAttachment(QBNoteTextView &view,
                                                  const std::shared_ptr<NSTextAttachment> &attachment, qint64 location);
    virtual void qbNoteTextViewDidOpenAttachment(QBNoteTextView &view,
                                                 const std::shared_ptr<NSTextAttachment> &attachment, qint64 location);
    /// A link was followed; those to tags and notes are the program's own URLs.
    virtual void qbNoteTextViewDidOpenURL(QBNoteTextView &view, const QUrl &url);

    /// The text that is put in the place of a range for what is pasted or dropped there; nothing where the delegate
    /// has no use for it, and the view takes plain text itself.
    [[nodiscard]] virtual std::optional<QString> textForMimeData(QBNoteTextView &view, const QMimeData &mimeData,
                                                                 NSRange replacedRange);
    /// Adds what the clipboard gets beside the plain text of a range.
    virtual void fillMimeData(QBNoteTextView &view, QMimeData &mimeData, NSRange range);
    /// Whether a dropped or pasted thing would be taken.
    [[nodiscard]] virtual bool acceptsMimeData(const QMimeData &mimeData) const;
    /// Adds entries to the context menu of a place.
    virtual void fillContextMenu(QBNoteTextView &view, QMenu &menu, qint64 location);
};
