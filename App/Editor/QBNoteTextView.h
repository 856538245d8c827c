#pragma once

#include "QBNoteTextViewDelegate.h"

#include <Markup/Editing/NoteTextView.h>
#include <Markup/QBNoteTextKitStack.h>
#include <Markup/QBNotesLayoutManager.h>
#include <Themes/QBThemeManager.h>

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <QElapsedTimer>
#include <QList>

#include <memory>
#include <optional>
#include <span>
#include <vector>

QT_BEGIN_NAMESPACE
class QMimeData;
class QVariantAnimation;
QT_END_NAMESPACE

/// The view of one note's text: it shows the visible part, takes keys, the mouse, input methods and drops, and keeps
/// the selection. What an edit means for the markup is its delegate's. Owned by its window; the text stack must
/// outlive it. Main queue.
/// Units: points of the viewport in events, of the page (its top left scrolled away) in the layout.
class QBNoteTextView : public QAbstractScrollArea, public quib::NoteTextView, private quib::StylableObject
{
    Q_OBJECT

public:
    explicit QBNoteTextView(QBNoteTextKitStack &textKitStack, QWidget *parent = nullptr);
    ~QBNoteTextView() override;

    [[nodiscard]] QBNoteTextKitStack &textKitStack() { return m_stack; }
    [[nodiscard]] QBNotesLayoutManager &layoutManager() { return m_layout; }
    /// Not owned; null for none.
    void setDelegate(QBNoteTextViewDelegate *delegate);
    /// Whose steps Undo takes back; each note may have its own. Null for the view's own.
    void setUndoManager(NSUndoManager *undoManager);
    /// Another text is shown: the caret goes to the start, the steps are forgotten, and the top is seen.
    void loadString(const QString &string);
    void setReadOnly(bool isReadOnly);
    [[nodiscard]] bool isReadOnly() const { return m_isReadOnly; }

    // quib::NoteTextView

    [[nodiscard]] NSRange selectedRange() const override;
    void setSelectedRange(NSRange range) override;
    [[nodiscard]] QBNotesTextStorage &textStorage() override { return m_stack.noteTextStorage(); }
    [[nodiscard]] NSUndoManager &undoManager() override { return *m_undoManager; }
    void setNeedsDisplay() override;
    void didUndoOrRedo() override;

    // Selection and what is seen

    /// The end of the selection that moves.
    [[nodiscard]] qint64 caret() const { return m_caret; }
    void setSelection(qint64 anchor, qint64 caret);
    void scrollRangeToVisible(NSRange range);
    /// Where a caret before a place stands, in the viewport.
    [[nodiscard]] QRectF caretRectInViewport(qint64 location);
    /// The place of the text nearest to a point of the viewport.
    [[nodiscard]] qint64 locationAtViewportPoint(QPointF point);
    /// The first place that is seen and how far its line is scrolled; to be given back to scrollTo.
    struct ScrollPosition
    {
        qint64 location = 0;
        double offset = 0;
    };
    [[nodiscard]] ScrollPosition scrollPosition() const { return m_scroll; }
    void scrollTo(ScrollPosition position);
    /// Places that a search has found; the current one stands out.
    void setSearchHighlights(QList<NSRange> ranges, qsizetype current = -1);
    [[nodiscard]] const QList<NSRange> &searchHighlights() const { return m_highlights; }
    /// Words with a wavy line below. They move with the text, and edits take from them what they take from the text;
    /// the word that is being typed shows its line when the caret leaves it. Shape: in any order; what does not lie in
    /// the text is left out. The second form replaces those that reach into a range.
    void setSpellingMarks(std::vector<NSRange> marks);
    void setSpellingMarks(std::vector<NSRange> marks, NSRange inRange);
    /// By place.
    [[nodiscard]] const std::vector<NSRange> &spellingMarks() const { return m_spellingMarks; }
    /// The marked word that a place is in or at.
    [[nodiscard]] std::optional<NSRange> spellingMarkAtLocation(qint64 location) const;
    /// Keeps the line of the caret in the middle of the view.
    void setTypewriterScrolling(bool isOn);
    /// Draws all paragraphs but the caret's paler.
    void setFocusMode(bool isOn);

    // Editing, as the user does it: each calls the delegate and can be undone

    void typeText(const QString &text);
    void replaceText(NSRange range, const QString &text);
    void deleteBackward();
    void deleteForward();
    void undo();
    void redo();
    void cut();
    void copy();
    void paste();
    void pasteAsPlainText();
    void selectAll();
    /// What is typed next is undone by itself.
    void breakUndoCoalescing();
    /// After something changed the text through quib::NoteTextView: tells the delegate and shows the caret.
    void didChangeText();

    [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

Q_SIGNALS:
    void selectionChanged();
    void textChanged();
    void undoAvailabilityChanged();

protected:
    bool event(QEvent *event) override;
    bool viewportEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    enum class Granularity
    {
        Character,
        Word,
        Paragraph,
    };

    // QBNoteTextView.cpp
    void styleObjectWithThemeManager(QBThemeManager &manager) override;
    void textDidEdit(NSRange editedRange, qint64 changeInLength);
    [[nodiscard]] double scrollY() const;
    void updateScrollBar();
    void setScrollY(double y);
    void scrollSmoothlyTo(double y);
    void ensureCaretVisible();
    void showChange();
    void restartBlinking();
    void updateCaret();
    void moveSelection(qint64 anchor, qint64 caret, bool upstream);

    // QBNoteTextView+Drawing.cpp
    void drawSelection(quib::GraphicsContext &context, const std::vector<quib::PlacedParagraph> &paragraphs);
    void drawRanges(quib::GraphicsContext &context, const std::vector<quib::PlacedParagraph> &paragraphs,
                    const QList<NSRange> &ranges, const NSColor &color, qsizetype current) const;
    /// Has the boxes of ranges painted again, where they are seen. Requires: sorted by place.
    void updateRanges(std::span<const NSRange> ranges);
    void drawCaret(quib::GraphicsContext &context, qint64 location, bool upstream);
    void drawPreedit(QPainter &painter);
    void drawVeil(quib::GraphicsContext &context, const std::vector<quib::PlacedParagraph> &paragraphs,
                  const NSColor &paper);

    // QBNoteTextView+Spelling.cpp
    void moveSpellingMarks(NSRange editedRange, qint64 changeInLength);
    void drawSpellingMarks(quib::GraphicsContext &context, const std::vector<quib::PlacedParagraph> &paragraphs) const;
    [[nodiscard]] bool isWordBeingWritten(NSRange mark) const;

    // QBNoteTextView+Keyboard.cpp
    bool moveByKey(QKeyEvent *event);
    bool editByKey(QKeyEvent *event);
    void moveCaret(qint64 location, bool isSelecting, bool upstream = false);
    void moveVertically(bool up, bool isSelecting, double distance = 0);
    void insertNewLine(bool isShiftDown);
    void insertTab(bool backwards);
    void deleteRange(NSRange range);
    void beginTyping();
    /// A step over one character, to the right of the screen or of the text; what stands for nothing is passed along.
    [[nodiscard]] qint64 steppedOver(qint64 location, bool isVisual, bool right);
    [[nodiscard]] qint64 stepped(qint64 location, bool forward);
    [[nodiscard]] qint64 wordBoundary(qint64 location, bool forward);
    [[nodiscard]] NSRange wordRange(qint64 location);
    [[nodiscard]] NSRange paragraphRange(NSRange range);
    [[nodiscard]] NSRange rangeAround(qint64 location, Granularity granularity);

    // QBNoteTextView+Mouse.cpp
    void extendSelectionTo(QPointF point);
    void updatePointer(QPointF point, Qt::KeyboardModifiers modifiers);
    bool activateLink(QPointF point);
    [[nodiscard]] bool isLink(qint64 location) const;
    void startDrag();
    void showDropCaret(qint64 location);

    // QBNoteTextView+Pasteboard.cpp
    [[nodiscard]] std::unique_ptr<QMimeData> mimeDataForRange(NSRange range);
    void insertMimeData(const QMimeData &mimeData, NSRange range, bool isPlain);

    QBNoteTextKitStack &m_stack;
    QBNotesLayoutManager m_layout;
    QBNoteTextViewDelegate *m_delegate = nullptr;
    NSUndoManager m_ownUndoManager;
    NSUndoManager *m_undoManager = &m_ownUndoManager;
    bool m_isReadOnly = false;

    qint64 m_anchor = 0;
    qint64 m_caret = 0;
    bool m_isUpstream = false;
    /// Where the caret wants to be while it goes up and down; negative where it has no wish.
    double m_goalX = -1;
    ScrollPosition m_scroll;
    bool m_isSettingScrollBar = false;
    QVariantAnimation *m_scrolling = nullptr;

    QBasicTimer m_blinking;
    bool m_isCaretOn = true;
    QBasicTimer m_autoscroll;
    QPointF m_mousePoint;
    QPointF m_pressPoint;
    QElapsedTimer m_lastDoubleClick;
    Granularity m_granularity = Granularity::Character;
    NSRange m_granularAnchor;
    bool m_isSelecting = false;
    bool m_mayDrag = false;
    qint64 m_dropLocation = -1;

    bool m_isTyping = false;
    qint64 m_typedLocation = -1;
    int m_typedCount = 0;
    QString m_preedit;
    int m_preeditCaret = 0;

    QList<NSRange> m_highlights;
    qsizetype m_currentHighlight = -1;
    std::vector<NSRange> m_spellingMarks;
    bool m_isTypewriter = false;
    bool m_isFocusMode = false;
};
