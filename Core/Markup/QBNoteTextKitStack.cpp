#include "QBNoteTextKitStack.h"

QBNoteTextKitStack::QBNoteTextKitStack()
    : m_themeManager(std::make_shared<QBNotesTextThemeManager>())
    , m_stylerManager(std::make_shared<QBNoteStylersManager>())
{
    m_stylerManager->setThemeManager(m_themeManager);
    m_noteTextStorage.setNoteStylersManager(m_stylerManager);
    m_styleEditor.setNoteStylerManager(m_stylerManager);
    m_themeManager->registerStylableObject(*this);
}

QBNoteTextKitStack::QBNoteTextKitStack(QSizeF withTextContainerSize)
    : QBNoteTextKitStack()
{
    m_textContainer.emplace(withTextContainerSize, m_themeManager);
}

QBNoteTextKitStack::~QBNoteTextKitStack()
{
    m_themeManager->unregisterStylableObject(*this);
}

void QBNoteTextKitStack::cleanStylerCache()
{
    m_stylerManager->cleanStylerCache();
}

void QBNoteTextKitStack::themeManagerWillChangeStyles(QBThemeManager & /*manager*/)
{
    cleanStylerCache();
}

void QBNoteTextKitStack::styleObjectWithThemeManager(QBThemeManager & /*manager*/)
{
    // Attachments follow the theme by themselves.
    m_noteTextStorage.applyStylingInRange(m_noteTextStorage.fullRange());
}
