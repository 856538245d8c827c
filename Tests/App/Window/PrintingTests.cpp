// The dialog that prints a note proposes a file that is named as the note is.

#include "WindowFixture.h"

#include <Support/QtPrinters.h>

#include <QCoreApplication>
#include <QEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>

using namespace Qt::StringLiterals;

namespace quib::tests {

namespace {

class Printing : public WindowFixture
{
};

TEST_F(Printing, TheFileIsNamedAsTheNoteIs)
{
    struct Case
    {
        QString text;
        QString file;
        QString document;
    };
    const Case cases[] = {
        {u"# Five days in Lisbon\nbody"_s, u"Five days in Lisbon.pdf"_s, u"Five days in Lisbon"_s},
        {u"# Release 0.9 checklist"_s, u"Release 0.9 checklist.pdf"_s, u"Release 0.9 checklist"_s},
        {u"# in/out: a\\b"_s, u"inout ab.pdf"_s, u"in/out: a\\b"_s},
        {u"# ../up"_s, u"..up.pdf"_s, u"../up"_s},
        {u"# Überblick 日本"_s, u"Überblick 日本.pdf"_s, u"Überblick 日本"_s},
        {u"# .."_s, u"Quib.pdf"_s, u".."_s},
    };
    QStringList texts;
    for (const Case &testCase : cases) {
        texts.append(testCase.text);
    }
    launch(texts);
    for (const Case &testCase : cases) {
        SCOPED_TRACE(testCase.text.toStdString());
        selectRow(testCase.document);
        trigger(u"print"_s);
        settle();
        auto *dialog = window().findChild<QPrintDialog *>();
        ASSERT_NE(dialog, nullptr);
        const auto *field = dialog->findChild<QLineEdit *>(u"filename"_s);
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(QFileInfo(field->text()).fileName(), testCase.file);
        EXPECT_EQ(dialog->printer()->docName(), testCase.document);
        dialog->reject();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        ASSERT_EQ(window().findChild<QPrintDialog *>(), nullptr);
    }
}

} // namespace

} // namespace quib::tests
