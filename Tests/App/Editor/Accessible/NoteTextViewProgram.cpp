// Shows the view of a note in a window until it is ended, for a client of the accessibility bus. An "@" that comes into
// the text opens a list of completions; any other change then chooses the next one, as the key does.

#include "../EditorFixture.h"

#include <Editor/CompletionPopup.h>

#include <QApplication>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

class Completion : public QBEditorAutoCompleteItem
{
public:
    explicit Completion(QString title)
        : m_title(std::move(title))
    {
    }
    [[nodiscard]] QString autoCompleteItemTitle() const override { return m_title; }
    [[nodiscard]] QString autoCompleteItemTextRepresentation() const override { return m_title; }

private:
    QString m_title;
};

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(u"note-text-view"_s);
    quib::tests::EditorFixture editor(0, u"# Groceries\n- milk\n+ bread\nsome *bold* words"_s);
    QBNoteTextView &view = editor.view();
    quib::CompletionPopup popup(&view);
    QObject::connect(&view, &QBNoteTextView::textChanged, &popup, [&] {
        if (popup.isOpen()) {
            popup.keyPress(Qt::Key_Down, Qt::NoModifier);
        } else if (editor.buffer().contains(u'@')) {
            popup.open({std::make_shared<Completion>(u"apple"_s), std::make_shared<Completion>(u"banana"_s)}, u"link"_s,
                       {}, view.caretRectInViewport(view.caret()).toAlignedRect());
        }
    });
    return QApplication::exec();
}
