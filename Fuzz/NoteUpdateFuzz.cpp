// Updates one note, in memory, with any UTF-16 text, adds the text to it and back out of it; whatever the text, its
// derived fields are those of a fresh note, and no text is lost. The first byte chooses syntax and operation.

#include <Store/ManagedObjectFactories.h>
#include <Store/NSManagedObjectContext.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNote.h>

#include <cstdint>
#include <cstdlib>

namespace {

void require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

QStringList sorted(QStringList strings)
{
    strings.sort();
    return strings;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, size_t size)
{
    static QBCoreDataStack stack;
    stack.initializeInMemoryContext();
    if (size < 1) {
        return 0;
    }
    const int syntax = data[0] & 1;
    const int operation = (data[0] >> 1) & 3;
    // One byte a unit keeps the markup frequent; the upper half stands for wider units, surrogates among them.
    QString text(QLatin1StringView(""));
    for (size_t i = 1; i < size; ++i) {
        text.append(QChar(static_cast<char16_t>(data[i] < 0x80 ? data[i] : 0xD700 + data[i] * 5)));
    }
    NSManagedObjectContext &moc = *stack.inMemoryManagedObjectContext();
    const auto note = QBNote::noteWithText(QStringLiteral("# Head\n#tag"), syntax, moc);
    note->updateNoteWithText(text, syntax);
    require(note->text() == text);
    const auto fresh = QBNote::noteWithText(text, syntax, moc);
    require(note->title() == fresh->title() && note->subtitle() == fresh->subtitle());
    require(sorted(note->tagsStrings()) == sorted(fresh->tagsStrings()));
    require(note->repairDerivedFieldsWithSyntax(syntax).isEmpty());
    const QString added = QStringLiteral("ADDED");
    switch (operation) {
    case 0:
        note->appendNoteWithText(added, syntax);
        break;
    case 1:
        note->prependNoteWithText(added, syntax);
        break;
    case 2:
        if (const auto sections = note->noteSections(); !sections.isEmpty()) {
            note->appendSection(sections.constLast(), added, syntax);
        }
        break;
    default:
        require(QBNote::mergeNotes({note, fresh}, syntax)->text().contains(text));
    }
    require(note->text().size() >= text.size());
    moc.rollback();
    return 0;
}
