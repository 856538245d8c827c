#include "QBNoteTextViewDelegate.h"

#include <QMimeData>

QBNoteTextViewDelegate::~QBNoteTextViewDelegate() = default;

bool QBNoteTextViewDelegate::qbNoteTextViewShouldInsertNewLine(QBNoteTextView & /*view*/, bool /*isShiftDown*/)
{
    return true;
}

bool QBNoteTextViewDelegate::qbNoteTextViewShouldInsertTab(QBNoteTextView & /*view*/, bool /*backwards*/)
{
    return true;
}

void QBNoteTextViewDelegate::qbNoteTextViewDidChangeText(QBNoteTextView & /*view*/) {}

void QBNoteTextViewDelegate::qbNoteTextViewDidChangeSelection(QBNoteTextView & /*view*/) {}

void QBNoteTextViewDelegate::qbNoteTextViewDidClickAttachment(QBNoteTextView & /*view*/,
                                                              const std::shared_ptr<NSTextAttachment> & /*attachment*/,
                                                              qint64 /*location*/)
{
}

void QBNoteTextViewDelegate::qbNoteTextViewDidOpenAttachment(QBNoteTextView & /*view*/,
                                                             const std::shared_ptr<NSTextAttachment> & /*attachment*/,
                                                             qint64 /*location*/)
{
}

void QBNoteTextViewDelegate::qbNoteTextViewDidOpenURL(QBNoteTextView & /*view*/, const QUrl & /*url*/) {}

std::optional<QString> QBNoteTextViewDelegate::textForMimeData(QBNoteTextView & /*view*/,
                                                               const QMimeData & /*mimeData*/,
                                                               NSRange /*replacedRange*/)
{
    return std::nullopt;
}

void QBNoteTextViewDelegate::fillMimeData(QBNoteTextView & /*view*/, QMimeData & /*mimeData*/, NSRange /*range*/) {}

bool QBNoteTextViewDelegate::acceptsMimeData(const QMimeData &mimeData) const
{
    return mimeData.hasText();
}

void QBNoteTextViewDelegate::fillContextMenu(QBNoteTextView & /*view*/, QMenu & /*menu*/, qint64 /*location*/) {}
