// Shows the view of a note in a window until it is ended, for a client of the accessibility bus.

#include "../EditorFixture.h"

#include <QApplication>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QApplication::setApplicationName(u"note-text-view"_s);
    const quib::tests::EditorFixture editor(0, u"# Groceries\n- milk\n+ bread\nsome *bold* words"_s);
    return QApplication::exec();
}
