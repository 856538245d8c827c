#include "EditorPaneFixture.h"

#include <QCoreApplication>
#include <QTest>

namespace quib::tests {

EditorPaneFixture::EditorPaneFixture()
{
    pane = std::make_unique<QBNoteEditorViewController>();
    pane->resize(800, 600);
    pane->show();
    pane->activateWindow();
    pane->focusEditor();
    (void)QTest::qWaitForWindowActive(pane.get());
}

EditorPaneFixture::~EditorPaneFixture()
{
    pane.reset();
}

Ref<QBNote> EditorPaneFixture::show(const QString &text)
{
    auto note = makeNote(text);
    save();
    pane->setNote(note);
    pane->moveToEnd();
    return note;
}

void EditorPaneFixture::type(const QString &text)
{
    QTest::keyClicks(&view(), text);
}

void EditorPaneFixture::press(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(&view(), static_cast<Qt::Key>(key), modifiers);
}

QString EditorPaneFixture::marked()
{
    const auto &storage = view().textStorage();
    const auto expanded = [&storage](qint64 location) {
        return storage.stringWithExpandedTextAttachmentsWithRange({0, location}).size();
    };
    const NSRange selection = view().selectedRange();
    QString text = shown();
    if (selection.length == 0) {
        return text.insert(expanded(selection.location), u'|');
    }
    text.insert(expanded(selection.limit()), u']');
    return text.insert(expanded(selection.location), u'[');
}

QString EditorPaneFixture::stored(const Ref<QBNote> &note) const
{
    const auto reader = NSManagedObjectContext::contextWithCoordinator(NSManagedObjectContextConcurrencyType::MainQueue,
                                                                       moc().persistentStoreCoordinator());
    const auto found = QBNote::noteWithUniqueIdentifier(note->uniqueIdentifier(), *reader);
    return found ? found->text() : QString();
}

QStringList EditorPaneFixture::texts() const
{
    QStringList found;
    for (const auto &note : QBNote::allNotesInManagedObjectContext(moc())) {
        found.append(note->text());
    }
    found.sort();
    return found;
}

void EditorPaneFixture::changeElsewhere(const Ref<QBNote> &note, const QString &text) const
{
    note->updateNoteWithText(text, 0);
    save();
    processEvents();
}

void EditorPaneFixture::processEvents()
{
    QCoreApplication::processEvents();
}

} // namespace quib::tests
