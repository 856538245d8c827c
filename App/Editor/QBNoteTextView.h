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
#include <QRegion>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

QT_BEGIN_NAMESPACE
class QMimeData;
class QPainter;
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
    /// Where a note is written on at its start: behind the marker of its heading.
    [[nodiscard]] qint64 startOfText();
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
    /// As a drag of a range to a place does. False where nothing moves: the place lies in what would be moved.
    bool moveText(NSRange range, qint64 location);
    /// The place of the box in the paragraph of a place; nothing where there is none.
    [[nodiscard]] std::optional<qint64> checkBoxInParagraph(qint64 location) const;
    /// As a double click on the attachment at a place does.
    void openAttachment(qint64 location);
    /// Opens what is folded in a range, as a double click does. False where nothing was to be opened.
    bool openFolds(NSRange range);
    /// As a click on the box at a place does.
    void toggleCheckBox(qint64 location);
    /// What is typed next is undone by itself.
    void breakUndoCoalescing();
    /// After something changed the text through quib::NoteTextView: tells the delegate and shows the caret.
    void didChangeText();
    /// Whether the change that the delegate is being told of is one of typing: a key that writes, what an input method
    /// has composed, or Backspace.
    [[nodiscard]] bool isTypedChange() const { return m_isTypedChange; }

    [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

Q_SIGNALS:
    void selectionChanged();
    void textChanged();
    void undoAvailabilityChanged();
    /// Something that is drawn changed without the text: a box was ticked, a picture has come.
    void attachmentsMayLookDifferent();
    /// The wheel was turned with Ctrl held: up, to larger letters, where positive. Units: steps of the wheel.
    void zoomWasAsked(int steps);
    /// The text has another width to be laid out in.
    void columnWidthDidChange();

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

    /// A paragraph as it is on the screen. Units: points of the viewport; the selection counts from the paragraph's
    /// start and goes beyond its end where the next one is selected too.
    struct ShownParagraph
    {
        quint64 number = 0;
        double top = 0;
        double height = 0;
        NSRange selected;
        /// Of its attachments, which may change without being laid out anew.
        size_t looks = 0;
        bool isVeiled = false;
        friend bool operator==(const ShownParagraph &a, const ShownParagraph &b) = default;
    };
    /// What is on the screen, or will be when the areas are painted that were asked for.
    struct ShownPicture
    {
        /// False where all must be painted.
        bool isWhole = false;
        std::vector<ShownParagraph> paragraphs;
        QRectF caret;
        qint64 dropLocation = -1;
        std::optional<NSRange> unmarkedWord;
    };

    // QBNoteTextView.cpp
    void styleObjectWithThemeManager(QBThemeManager &manager) override;
    void textDidEdit(NSRange editedRange, qint64 changeInLength);
    /// Something that is shown may have changed: what has is painted again, once all that is being done is done.
    void setNeedsUpdate();
    /// Does something after which everything must be laid out again, and keeps the line at the top of the view.
    void layOutAnew(const std::function<void()> &change);
    void showChange();
    /// An empty text goes the way of the keyboard. To be asked when the view has the keyboard: on a display without
    /// any the toolkit does not survive the question.
    void followKeyboard();
    void restartBlinking();
    void autoscroll();
    void moveSelection(qint64 anchor, qint64 caret, bool upstream);
    /// Nothing is selected, or written, between the two units of one character: half of it would be left.
    [[nodiscard]] qint64 outsideOfCharacter(qint64 location) const;

    // QBNoteTextView+Scrolling.cpp
    /// The page's top where the first paragraph is the anchor.
    [[nodiscard]] double topOfAnchor();
    [[nodiscard]] double scrollY() const;
    [[nodiscard]] double roomBelow() const;
    void updateScrollBar();
    /// Makes the anchor the paragraph that the top edge of the view is in.
    void anchorAtParagraph();
    /// Makes the anchor the line at the top edge, which is found again when it lies elsewhere.
    void anchorAtLine();
    /// Scrolls back where the text ends too soon, or begins below the top. Gives how far.
    double fillLastPage();
    [[nodiscard]] static bool isSameButMoved(const ShownPicture &before, const ShownPicture &now, double moved);
    /// So many points are a whole number of the screen's pixels, so that what is painted can be moved by them.
    [[nodiscard]] double scrollStep() const;
    /// By whole steps: what is seen already moves, and only what comes into view is painted.
    void scrollBy(double distance);
    void setScrollY(double y);
    void scrollSmoothlyBy(double distance);
    void ensureCaretVisible();

    // QBNoteTextView+Drawing.cpp
    [[nodiscard]] ShownPicture picture();
    /// All is painted again.
    void updateAll();
    /// Compares what is shown with what should be, and has the difference painted again.
    void updateChanged();
    [[nodiscard]] QRegion areaOfChange(const ShownPicture &before, const ShownPicture &now);
    [[nodiscard]] static QRect areaOfCaret(const QRectF &caret);
    /// How far around a paragraph something of it may be drawn.
    [[nodiscard]] double overhang() const;
    /// Adds the lines where a paragraph's selection is another one than before.
    void addChangedLines(const ShownParagraph &paragraph, NSRange before, QRegion *area);
    [[nodiscard]] static bool isVeiled(const quib::PlacedParagraph &paragraph, NSRange current);
    void paintArea(QPainter &painter, const QRectF &area);
    void drawSelection(quib::GraphicsContext &context, const std::vector<quib::PlacedParagraph> &paragraphs);
    /// The boxes of ranges, a little larger than their text. Requires: sorted by place.
    [[nodiscard]] static std::vector<QRectF> rectsOfRanges(const std::vector<quib::PlacedParagraph> &paragraphs,
                                                           const QList<NSRange> &ranges);
    /// Has the boxes of ranges painted again, where they are seen. Requires: sorted by place.
    void updateRanges(std::span<const NSRange> ranges);
    void drawCaret(quib::GraphicsContext &context, qint64 location, bool upstream);
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
    void typeText(const QString &text, NSRange replacedRange);
    /// What a copy, a cut, a deletion, a drag and whatever is written over a range take, all of them the same: no text
    /// that stands outside of it, but what belongs to a link, a colour or a picture in it, and the blank behind a
    /// line's marker.
    [[nodiscard]] NSRange rangeTaken(NSRange range);
    void deleteRange(NSRange range);
    /// Takes away a range as it is.
    void removeText(NSRange range);
    /// What a key takes that was pressed beside it. What stands for nothing at its edges takes nothing else along. A
    /// fold in it is opened, and nothing goes: nobody has seen what the key would take.
    void deleteBesideCaret(NSRange range);
    /// Takes away what is selected, or what lies between the caret and a place, as a step of its own.
    void deleteTo(qint64 location);
    /// What keys do one after the other, and what is undone in one step.
    enum class Typing
    {
        None,
        Writing,
        DeletingBackward,
        DeletingForward,
    };
    void beginTyping(Typing typing);
    /// Where a heading is typed, or pasted, right behind the marker of one, it takes the place of that marker: a new
    /// note begins as a heading, and who writes the marker all the same means one.
    struct Heading
    {
        NSRange replaced;
        QString text;
    };
    [[nodiscard]] std::optional<Heading> headingForText(QStringView text, NSRange replacedRange);
    /// Where Home leads to: behind the marker of the line, and from there to the line's very start.
    [[nodiscard]] qint64 startOfLine();
    /// Behind the marker of a place between it and its blank; the place itself otherwise.
    [[nodiscard]] qint64 outsideOfMarker(qint64 location) const;
    /// A step over one character, to the right of the screen or of the text; what stands for nothing is passed along,
    /// and a line's marker is passed with its blank.
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
    void compose(const quib::ParagraphLayout::Preedit &preedit);
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
    /// How far it has come on its way. Units: points.
    double m_scrolledWay = 0;
    /// What a fine wheel has turned of a step. Units: points.
    double m_unscrolled = 0;

    ShownPicture m_shown;
    /// The picture may be another one by now; the event is on its way that finds out.
    bool m_isStale = false;
    /// The text was edited since: the anchor may have got into a paragraph.
    bool m_hasMoved = false;

    QBasicTimer m_blinking;
    bool m_isCaretOn = true;
    QBasicTimer m_autoscroll;
    QPointF m_mousePoint;
    QPointF m_pressPoint;
    QElapsedTimer m_lastDoubleClick;
    Granularity m_granularity = Granularity::Character;
    int m_zoomAngle = 0;
    NSRange m_granularAnchor;
    bool m_isSelecting = false;
    bool m_mayDrag = false;
    qint64 m_dropLocation = -1;

    Typing m_typing = Typing::None;
    qint64 m_typedLocation = -1;
    int m_typedCount = 0;
    bool m_isTypedChange = false;
    quib::ParagraphLayout::Preedit m_preedit;

    QList<NSRange> m_highlights;
    qsizetype m_currentHighlight = -1;
    std::vector<NSRange> m_spellingMarks;
    bool m_isTypewriter = false;
    bool m_isFocusMode = false;
};
