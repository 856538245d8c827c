#include "QBNoteEditorViewController.h"

#include "EditorSymbol.h"
#include "FindBar.h"
#include "FormatBar.h"
#include "InformationPanel.h"

#include <Markup/Attachments/QBCheckBoxTextAttachment.h>
#include <Markup/Attachments/QBHeaderTextAttachment.h>
#include <Markup/Stylers/QBNoteTextStylerAttributes.h>
#include <Store/QBNotesPreferenceManager.h>

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QKeySequence>
#include <QSignalBlocker>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;
using namespace quib;

namespace {

constexpr int kLargestHeader = 6;
/// Units: sizes of the font.
constexpr double kLineWidthStep = 4;

QKeySequence keys(QKeyCombination combination)
{
    return {combination};
}

/// What a command is called, and the keys that do the same.
QString toolTipOf(const QAction &command)
{
    QString name = command.text();
    name.remove(u'…');
    const QString shortcut = command.shortcut().toString(QKeySequence::NativeText);
    return shortcut.isEmpty() ? name : QString(name % u" ("_s % shortcut % u')');
}

/// The boxes of a range with their places.
std::vector<std::pair<QBCheckBoxTextAttachment *, NSRange>> boxesInRange(const NSAttributedString &text, NSRange range)
{
    std::vector<std::pair<QBCheckBoxTextAttachment *, NSRange>> found;
    text.enumerateAttribute(NSAttachmentAttributeName, range, NSAttributedStringEnumerationOptions::Forward,
                            [&found](const AttributeValue &value, NSRange place, bool * /*stop*/) {
                                if (auto box = value.sharedAs<QBCheckBoxTextAttachment>()) {
                                    found.emplace_back(box.get(), place);
                                }
                            });
    return found;
}

} // namespace

void QBNoteEditorViewController::updateStyles()
{
    struct Style
    {
        QLatin1StringView command;
        const NSAttributeName *attribute;
        const NSAttributeName *marker; ///< that stands around a stretch, or null
    };
    static constexpr std::array kStyles{
        Style{"bold"_L1, &QBNoteBoldTextStylerAttributeName, &QBNoteBoldTextStylerMarkerAttributeName},
        Style{"italic"_L1, &QBNoteItalicTextStylerAttributeName, &QBNoteItalicTextStylerMarkerAttributeName},
        Style{"underline"_L1, &QBNoteUnderlineTextStylerAttributeName, &QBNoteUnderlineTextStylerMarkerAttributeName},
        Style{"strike"_L1, &QBNoteStrikedTextStylerAttributeName, &QBNoteStrikedTextStylerMarkerAttributeName},
        Style{"marker"_L1, &QBNoteHighlighterTextStylerAttributeName, &QBNoteHighlighterTextStylerMarkerAttributeName},
        Style{"inline-code"_L1, &QBNoteCodeInlineTextStylerAttributeName,
              &QBNoteCodeInlineTextStylerMarkerAttributeName},
        Style{"bullet-list"_L1, &QBNoteUnorderedListStylerAttributeName, nullptr},
        Style{"numbered-list"_L1, &QBNoteOrderedListTextStylerAttributeName, nullptr},
        Style{"todo"_L1, &QBNoteCheckboxStylerAttributeName, nullptr},
        Style{"quote"_L1, &QBNoteQuoteTextStylerAttributeName, nullptr},
        Style{"code-block"_L1, &QBNoteCodeTextStylerAttributeName, nullptr},
    };
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    const NSRange selection = m_view->selectedRange();
    const NSRange line = text.paragraphRangeForRange({selection.location, 0});
    // How far an attribute reaches from a place on; the place itself where it is not there.
    const auto limitOf = [&text](const NSAttributeName &name, qint64 place) {
        NSRange run;
        const bool isThere = place >= 0 && place < text.length() && text.attribute(name, place, &run, text.fullRange());
        return isThere ? run.limit() : place;
    };
    const auto has = [&](const Style &style) {
        qint64 start = selection.location;
        if (selection.length == 0) {
            // A caret at the end of a stretch is within it.
            return limitOf(*style.attribute, start) > start ||
                   (start > line.location && limitOf(*style.attribute, start - 1) >= start);
        }
        if (style.marker != nullptr) {
            start = limitOf(*style.marker, start);
        }
        qint64 limit = limitOf(*style.attribute, start);
        const bool isThere = limit > start;
        if (style.marker != nullptr) {
            limit = limitOf(*style.marker, limit);
        }
        return isThere && limit >= selection.limit();
    };
    for (const Style &style : kStyles) {
        if (QAction *command = action(style.command); command != nullptr) {
            command->setChecked(has(style));
        }
    }
    int level = 0;
    if (line.length > 0 && text.attribute(QBHeaderTextStylerAttributeName, line.location)) {
        const auto badge = text.attribute(NSAttachmentAttributeName, line.location);
        const auto *header = badge.as<QBHeaderTextAttachment>();
        level = header != nullptr ? header->headerLevel() : 0;
    }
    for (int each = 1; each <= kLargestHeader; ++each) {
        m_headerCommands[each - 1]->setChecked(each == level);
    }
}

void QBNoteEditorViewController::focusNextPart(bool forward)
{
    constexpr int kParts = 3; // the text, the format bar, the information
    const QWidget *focus = QApplication::focusWidget();
    const int current = m_formatBar->isAncestorOf(focus) ? 1 : m_information->isAncestorOf(focus) ? 2 : 0;
    // A part without anything to press is passed over.
    const auto take = [this](int part) {
        switch (part) {
        case 1:
            return m_formatBar->focusFirstButton();
        case 2:
            return m_information->isVisible() && m_information->focusList();
        default:
            focusEditor();
            return true;
        }
    };
    for (int step = 1; step < kParts; ++step) {
        if (take((current + (forward ? step : kParts - step)) % kParts)) {
            return;
        }
    }
}

QAction *QBNoteEditorViewController::action(const QString &name) const
{
    return findChild<QAction *>(name, Qt::FindDirectChildrenOnly);
}

QAction *QBNoteEditorViewController::addCommand(const QString &name, const QString &text, const QKeySequence &shortcut,
                                                std::function<void()> triggered)
{
    auto *command = new QAction(text, this);
    command->setObjectName(name);
    command->setIcon(editorSymbol(name));
    command->setIconVisibleInMenu(false); // a few among many that have none
    command->setShortcut(shortcut);
    command->setToolTip(toolTipOf(*command));
    command->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(command, &QAction::triggered, this, [this, triggered = std::move(triggered)] {
        triggered();
        updateCommands();
        updateStyles();
    });
    addAction(command);
    return command;
}

QAction *QBNoteEditorViewController::addStyleCommand(const QString &name, const QString &text,
                                                     const QKeySequence &shortcut, StyleCommand apply)
{
    QAction *command = addCommand(name, text, shortcut, [this, apply] {
        const QBNoteStyleEditor &editor = m_stack.styleEditor();
        applyStyle((editor.*apply)(m_stack.noteTextStorage().attributedString(), m_view->selectedRange()));
    });
    m_editingCommands.append(command);
    m_styleCommands.append(command);
    return command;
}

void QBNoteEditorViewController::applyStyle(const QBNoteStyleEditor::Result &result)
{
    if (!result || m_view->isReadOnly()) {
        return;
    }
    m_view->breakUndoCoalescing();
    m_undoManager->beginUndoGrouping();
    m_view->replaceCharactersInrange(result->replacementRange, result->replamentAttributedString,
                                     result->proposedSelectionRange);
    m_view->didChangeText();
    m_undoManager->endUndoGrouping();
    m_view->setFocus();
}

void QBNoteEditorViewController::applyHeaderLevel(int level)
{
    applyStyle(m_stack.styleEditor().applyHeaderLevel(level, m_stack.noteTextStorage().attributedString(),
                                                      m_view->selectedRange()));
}

void QBNoteEditorViewController::edit(const std::function<void()> &change)
{
    if (m_view->isReadOnly()) {
        return;
    }
    m_view->breakUndoCoalescing();
    m_undoManager->beginUndoGrouping();
    if (editsText(change)) {
        m_view->didChangeText();
    }
    m_undoManager->endUndoGrouping();
}

bool QBNoteEditorViewController::editsText(const std::function<void()> &change)
{
    bool isEdited = false;
    const ObservationToken observation = m_stack.noteTextStorage().observeEdits(
        [&isEdited](quint32 /*editedMask*/, NSRange /*editedRange*/, qint64 /*changeInLength*/) { isEdited = true; });
    change();
    return isEdited;
}

void QBNoteEditorViewController::insertLink()
{
    edit([this] {
        const NSRange selection = m_view->selectedRange();
        const QString title = m_stack.noteTextStorage().stringWithExpandedTextAttachmentsWithRange(selection);
        m_view->insertText(u"["_s % title % u"]()"_s, selection);
        // What is missing is written next.
        const qint64 place = title.isEmpty() ? 1 : 1 + title.size() + 2;
        m_view->setSelectedRange({selection.location + place, 0});
    });
    m_view->setFocus();
}

void QBNoteEditorViewController::toggleTodosInSelection()
{
    const NSAttributedString &text = m_stack.noteTextStorage().attributedString();
    const NSRange lines = text.paragraphRangeForRange(m_view->selectedRange());
    const auto boxes = boxesInRange(text, lines);
    const bool hasOpen =
        std::any_of(boxes.cbegin(), boxes.cend(), [](const auto &box) { return !box.first->isChecked(); });
    if (boxes.empty() || m_view->isReadOnly()) {
        return;
    }
    m_view->breakUndoCoalescing();
    m_core.setCheckboxAttachmentsState(hasOpen, lines, *m_view);
    didEditNote();
}

void QBNoteEditorViewController::foldCompletedTodo()
{
    edit([this] {
        m_core.foldTextWithAttributeName(QBNoteCheckboxStylerCheckedAttributeName,
                                         m_stack.noteTextStorage().fullRange(), m_view);
    });
}

void QBNoteEditorViewController::unfoldCompletedTodo()
{
    edit([this] {
        m_core.unfoldTextWithFoldIdentifier(QBNoteCheckboxStylerCheckedAttributeName.string(),
                                            m_stack.noteTextStorage().fullRange(), m_view);
    });
}

void QBNoteEditorViewController::linkToNote()
{
    if (const NSRange selection = m_view->selectedRange(); selection.length > 0) {
        edit([&] {
            const QString title = m_stack.noteTextStorage().stringWithExpandedTextAttachmentsWithRange(selection);
            m_view->insertText(u"[["_s % title % u"]]"_s, selection);
            m_view->setSelectedRange({selection.location + 2 + title.size(), 0});
        });
        return;
    }
    // The rest comes from the list of notes.
    edit([this] { m_view->insertText(u"[["_s, m_view->selectedRange()); });
    m_view->setFocus();
    completeAtCaret();
}

void QBNoteEditorViewController::chooseAttachments()
{
    auto *dialog = new QFileDialog(this, tr("Attach Files"));
    dialog->setFileMode(QFileDialog::ExistingFiles);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QFileDialog::filesSelected, this, [this](const QStringList &paths) {
        QList<QUrl> urls;
        for (const QString &path : paths) {
            urls.append(QUrl::fromLocalFile(path));
        }
        attachFiles(urls);
    });
    dialog->open();
}

void QBNoteEditorViewController::makeActions()
{
    using Editor = QBNoteStyleEditor;
    // Inside lines
    addStyleCommand(u"bold"_s, tr("Bold"), QKeySequence::Bold, &Editor::applyBoldStyleInAttributedString);
    addStyleCommand(u"italic"_s, tr("Italic"), QKeySequence::Italic, &Editor::applyItalicStyleInAttributedString);
    addStyleCommand(u"underline"_s, tr("Underline"), QKeySequence::Underline,
                    &Editor::applyUnderlineStyleInAttributedString);
    addStyleCommand(u"strike"_s, tr("Strikethrough"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_X),
                    &Editor::applyStrikedStyleInAttributedString);
    addStyleCommand(u"marker"_s, tr("Highlight"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_H),
                    &Editor::applyMarkerStyleInAttributedString);
    addStyleCommand(u"inline-code"_s, tr("Code"), keys(Qt::CTRL | Qt::Key_E),
                    &Editor::applyInlineCodeStyleInAttributedString);
    // Whole lines
    addStyleCommand(u"bullet-list"_s, tr("Bulleted List"), keys(Qt::CTRL | Qt::Key_L),
                    &Editor::applyUnorderedListInAttributedString);
    addStyleCommand(u"numbered-list"_s, tr("Numbered List"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_L),
                    &Editor::applyOrderedListInAttributedString);
    addStyleCommand(u"todo"_s, tr("To-do"), keys(Qt::CTRL | Qt::Key_T), &Editor::applyCheckboxInAttributedString);
    addStyleCommand(u"quote"_s, tr("Quote"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_B),
                    &Editor::applyQuoteInAttributedString);
    addStyleCommand(u"code-block"_s, tr("Code Block"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_E),
                    &Editor::applyMultilineCodeStyleInAttributedString);
    addStyleCommand(u"separator"_s, tr("Line Separator"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_Minus),
                    &Editor::applyLineSeparatorInAttributedString);
    for (int level = 1; level <= kLargestHeader; ++level) {
        m_headerCommands.append(addCommand(u"heading-%1"_s.arg(level), tr("Heading %1").arg(level),
                                           keys(Qt::CTRL | Qt::SHIFT | static_cast<Qt::Key>(Qt::Key_0 + level)),
                                           [this, level] { applyHeaderLevel(level); }));
    }
    m_headerCommands.append(addCommand(u"no-heading"_s, tr("No Heading"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_0),
                                       [this] { applyHeaderLevel(-1); }));
    m_editingCommands.append(m_headerCommands);
    m_styleCommands.append(m_headerCommands);
    for (QAction *command : std::as_const(m_styleCommands)) {
        command->setCheckable(command->objectName() != u"separator" && command->objectName() != u"no-heading");
    }
    // Lines and boxes
    const auto addEditing = [this](const QString &name, const QString &text, const QKeySequence &shortcut,
                                   std::function<void()> triggered) {
        m_editingCommands.append(addCommand(name, text, shortcut, std::move(triggered)));
    };
    addEditing(u"toggle-todo"_s, tr("Complete To-do"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_T),
               [this] { toggleTodosInSelection(); });
    addEditing(u"indent"_s, tr("Indent"), keys(Qt::CTRL | Qt::Key_BracketRight),
               [this] { edit([this] { m_core.shiftSelectionRight(/*right=*/true, *m_view); }); });
    addEditing(u"outdent"_s, tr("Outdent"), keys(Qt::CTRL | Qt::Key_BracketLeft),
               [this] { edit([this] { m_core.shiftSelectionRight(/*right=*/false, *m_view); }); });
    addEditing(u"move-up"_s, tr("Move Line Up"), keys(Qt::ALT | Qt::Key_Up),
               [this] { edit([this] { m_core.moveParagraphUp(/*up=*/true, *m_view); }); });
    addEditing(u"move-down"_s, tr("Move Line Down"), keys(Qt::ALT | Qt::Key_Down),
               [this] { edit([this] { m_core.moveParagraphUp(/*up=*/false, *m_view); }); });
    addEditing(u"fold-completed"_s, tr("Fold Completed To-dos"), keys(Qt::CTRL | Qt::ALT | Qt::Key_F),
               [this] { foldCompletedTodo(); });
    addEditing(u"unfold-completed"_s, tr("Unfold Completed To-dos"), keys(Qt::CTRL | Qt::ALT | Qt::Key_U),
               [this] { unfoldCompletedTodo(); });
    // What is put in
    addEditing(u"link"_s, tr("Link"), keys(Qt::CTRL | Qt::Key_K), [this] { insertLink(); });
    addEditing(u"note-link"_s, tr("Link to Note"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_K), [this] { linkToNote(); });
    addEditing(u"attach"_s, tr("Attach Files…"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_A),
               [this] { chooseAttachments(); });
    addEditing(u"paste-plain"_s, tr("Paste as Plain Text"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_V),
               [this] { m_view->pasteAsPlainText(); });
    addEditing(u"paste-code"_s, tr("Paste as Code Block"), keys(Qt::CTRL | Qt::ALT | Qt::Key_V),
               [this] { pasteAsCode(); });
    addEditing(u"complete"_s, tr("Complete Tag or Link"), keys(Qt::CTRL | Qt::Key_Space),
               [this] { completeAtCaret(); });
    // What leaves the note
    addCommand(u"copy-as-text"_s, tr("Copy as Text"), keys(Qt::CTRL | Qt::ALT | Qt::Key_C),
               [this] { copyAsText(/*andTags=*/true); });
    addCommand(u"copy-as-text-without-tags"_s, tr("Copy as Text Without Tags"),
               keys(Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::Key_C), [this] { copyAsText(/*andTags=*/false); });
    addCommand(u"note-from-selection"_s, tr("Note From Selection"), keys(Qt::CTRL | Qt::ALT | Qt::Key_S),
               [this] { makeNoteFromSelection(); });
    addCommand(u"open-link"_s, tr("Open Link"), keys(Qt::CTRL | Qt::ALT | Qt::Key_O), [this] { openLinkAtCaret(); });
    // Looking
    addCommand(u"find"_s, tr("Find in Note…"), QKeySequence::Find,
               [this] { m_findBar->open(/*withReplacing=*/false); });
    addCommand(u"find-replace"_s, tr("Find and Replace…"), keys(Qt::CTRL | Qt::Key_H),
               [this] { m_findBar->open(/*withReplacing=*/true); });
    addCommand(u"find-next"_s, tr("Find Next"), QKeySequence::FindNext, [this] { findNext(/*forward=*/true); });
    addCommand(u"find-previous"_s, tr("Find Previous"), QKeySequence::FindPrevious,
               [this] { findNext(/*forward=*/false); });
    addCommand(u"zoom-in"_s, tr("Zoom In"), QKeySequence::ZoomIn, [this] {
        zoomIn();
    })->setShortcuts({keys(Qt::CTRL | Qt::Key_Plus), keys(Qt::CTRL | Qt::Key_Equal)});
    addCommand(u"zoom-out"_s, tr("Zoom Out"), keys(Qt::CTRL | Qt::Key_Minus), [this] { zoomOut(); });
    addCommand(u"zoom-reset"_s, tr("Actual Size"), keys(Qt::CTRL | Qt::Key_0), [this] { resetZoom(); });
    // The text is as large as one wants to read it, wherever the keyboard is.
    for (const auto &name : {u"zoom-in"_s, u"zoom-out"_s, u"zoom-reset"_s}) {
        action(name)->setShortcutContext(Qt::WindowShortcut);
    }
    addCommand(u"wider-lines"_s, tr("Wider Lines"), keys(Qt::CTRL | Qt::ALT | Qt::Key_Plus),
               [this] { changeLineWidth(kLineWidthStep); });
    addCommand(u"narrower-lines"_s, tr("Narrower Lines"), keys(Qt::CTRL | Qt::ALT | Qt::Key_Minus),
               [this] { changeLineWidth(-kLineWidthStep); });
    addCommand(u"next-part"_s, tr("Keyboard to Next Part"), keys(Qt::Key_F6),
               [this] { focusNextPart(/*forward=*/true); });
    addCommand(u"previous-part"_s, tr("Keyboard to Previous Part"), keys(Qt::SHIFT | Qt::Key_F6),
               [this] { focusNextPart(/*forward=*/false); });
    makeOptions();
    fillFormatBar();
    updateCommands();
}

void QBNoteEditorViewController::makeOptions()
{
    const auto addOption = [this](const QString &name, const QString &text, const QKeySequence &shortcut,
                                  const QString &key, bool isOnAtFirst, std::function<void(bool)> apply,
                                  const QString &accessor = {}) {
        auto *preferences = QBNotesPreferenceManager::sharedPreferenceManager();
        const PropertyValue stored = preferences != nullptr ? preferences->preferenceValueForKey(key) : PropertyValue();
        QAction *option = addCommand(name, text, shortcut, [] {});
        option->setCheckable(true);
        connect(option, &QAction::toggled, this, [key, apply](bool isOn) {
            apply(isOn);
            if (auto *manager = QBNotesPreferenceManager::sharedPreferenceManager(); manager != nullptr) {
                manager->savePreferenceValue(PropertyValue(isOn), key);
            }
        });
        const bool isOn = stored.isNull() ? isOnAtFirst : stored.toBool();
        const QSignalBlocker blocker(option);
        option->setChecked(isOn);
        apply(isOn);
        if (preferences != nullptr && !accessor.isEmpty()) {
            m_preferenceObservations.push_back(preferences->addObserver(
                accessor, [option, preferences, key, isOnAtFirst](const QString & /*keyPath*/) {
                    const PropertyValue changed = preferences->preferenceValueForKey(key);
                    option->setChecked(changed.isNull() ? isOnAtFirst : changed.toBool());
                }));
        }
    };
    addOption(
        u"typewriter"_s, tr("Typewriter Scrolling"), keys(Qt::CTRL | Qt::ALT | Qt::Key_Y),
        u"QBEditorTypewriterScrolling"_s, false, [this](bool isOn) { m_view->setTypewriterScrolling(isOn); },
        u"editorTypewriterScrolling"_s);
    addOption(
        u"focus-mode"_s, tr("Focus on Paragraph"), keys(Qt::CTRL | Qt::ALT | Qt::Key_G), u"QBEditorFocusMode"_s, false,
        [this](bool isOn) { m_view->setFocusMode(isOn); }, u"editorFocusMode"_s);
    addOption(
        u"format-bar"_s, tr("Format Bar"), keys(Qt::CTRL | Qt::ALT | Qt::Key_B), u"QBEditorFormatBar"_s, true,
        [this](bool isOn) { m_formatBar->setVisible(isOn); }, u"editorFormatBar"_s);
    addOption(u"info"_s, tr("Note Information"), keys(Qt::CTRL | Qt::SHIFT | Qt::Key_I), u"QBEditorInformationPanel"_s,
              false, [this](bool isOn) { m_information->setVisible(isOn && m_note); });
}

void QBNoteEditorViewController::fillFormatBar()
{
    m_formatBar->addMenuButton(u"heading"_s, u"heading"_s, tr("Heading"), m_headerCommands);
    for (const auto &name : {u"bold"_s, u"italic"_s, u"underline"_s, u"strike"_s, u"marker"_s, u"inline-code"_s}) {
        m_formatBar->addButton(action(name));
    }
    m_formatBar->addSeparator();
    for (const auto &name :
         {u"todo"_s, u"bullet-list"_s, u"numbered-list"_s, u"quote"_s, u"code-block"_s, u"separator"_s}) {
        m_formatBar->addButton(action(name));
    }
    m_formatBar->addSeparator();
    for (const auto &name : {u"link"_s, u"note-link"_s, u"attach"_s}) {
        m_formatBar->addButton(action(name));
    }
    m_formatBar->addStretch();
    m_formatBar->addButton(action(u"info"_s));
}

void QBNoteEditorViewController::updateCommands()
{
    const bool isEditable = m_note && !m_view->isReadOnly();
    for (QAction *command : std::as_const(m_editingCommands)) {
        command->setEnabled(isEditable);
    }
    for (const auto &name : {u"find"_s, u"find-replace"_s, u"find-next"_s, u"find-previous"_s, u"info"_s,
                             u"copy-as-text"_s, u"copy-as-text-without-tags"_s, u"note-from-selection"_s}) {
        action(name)->setEnabled(static_cast<bool>(m_note));
    }
}
