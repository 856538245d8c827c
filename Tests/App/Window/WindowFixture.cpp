#include "WindowFixture.h"

#include <Files/Profile.h>
#include <Store/NSManagedObjectContext.h>
#include <Support/QtPrinters.h>
#include <Window/EditorPane.h>
#include <Window/SidebarView.h>

#include <QAction>
#include <QApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace quib::tests {

WindowFixture::WindowFixture()
{
    // A child that is to be killed works on the profile of its parent.
    const QString given = qEnvironmentVariable(kProfileVariable);
    Profile::setRoot(given.isEmpty() ? folder.path(u"profile"_s) : given);
}

WindowFixture::~WindowFixture()
{
    quit();
    Profile::setRoot({});
}

void WindowFixture::launch(const QStringList &texts)
{
    auto made = std::make_unique<WindowInterface>();
    m_interface = made.get();
    m_process = std::make_unique<QuibProcess>(std::move(made), [](const QUrl &) { return true; });
    m_process->stack().setPersistentStoreOptions(storeOptions);
    m_process->launch();
    NSDate date = NSDate::now().dateByAddingTimeInterval(-3600.0 * double(texts.size()));
    for (const QString &text : texts) {
        const auto note = QBNote::noteWithText(text, /*syntax=*/0, moc());
        note->setModificationDate(date);
        date = date.dateByAddingTimeInterval(3600);
    }
    ASSERT_TRUE(moc().save());
    window().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
    settle();
}

void WindowFixture::quit()
{
    if (!m_process) {
        return;
    }
    NSError error;
    EXPECT_TRUE(m_process->terminate(&error)) << (error.localizedDescription()).toStdString();
    window().forgetStore();
    m_process.reset();
    m_interface = nullptr;
    settle();
}

void WindowFixture::settle()
{
    for (int i = 0; i < 4; ++i) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
    }
}

void WindowFixture::waitForCounts() const
{
    ASSERT_TRUE(QTest::qWaitFor([this] { return !window().sidebar().sidebarModel().isCounting(); }, 60'000));
}

QStringList WindowFixture::rows() const
{
    QStringList titles;
    NoteListModel &model = window().noteList().noteListModel();
    for (int row = 0; row < model.rowCount(); ++row) {
        titles.append(model.index(row).data().toString());
    }
    return titles;
}

QStringList WindowFixture::selectedRows() const
{
    QStringList titles;
    for (const qint64 row : window().noteList().selectedRows()) {
        titles.append(rows().value(row));
    }
    return titles;
}

QStringList WindowFixture::entries() const
{
    QStringList titles;
    const SidebarModel &model = window().sidebar().sidebarModel();
    const auto visit = [&titles, &model](const auto &self, const QModelIndex &father) -> void {
        for (int row = 0; row < model.rowCount(father); ++row) {
            const QModelIndex index = model.index(row, 0, father);
            if (!index.data(SidebarModel::IsSeparatorRole).toBool()) {
                titles.append(index.data().toString());
            }
            self(self, index);
        }
    };
    visit(visit, {});
    return titles;
}

void WindowFixture::press(int key, Qt::KeyboardModifiers modifiers) const
{
    QWidget *focus = QApplication::focusWidget();
    QTest::keyClick(focus != nullptr ? focus : &window(), static_cast<Qt::Key>(key), modifiers);
    settle();
}

void WindowFixture::type(const QString &text) const
{
    for (const QChar c : text) {
        // Where the keyboard is may change from one key to the next.
        if (c == u'\n') {
            press(Qt::Key_Return);
        } else {
            QTest::keyClicks(QApplication::focusWidget(), QString(c));
        }
    }
    settle();
}

void WindowFixture::selectRow(const QString &title) const
{
    const qsizetype row = rows().indexOf(title);
    ASSERT_GE(row, 0) << (title).toStdString();
    window().noteList().selectRows({row});
    settle();
}

void WindowFixture::trigger(const QString &action) const
{
    ASSERT_NE(window().action(action), nullptr) << (action).toStdString();
    window().action(action)->trigger();
    settle();
}

void WindowFixture::openList(const QString &identifier) const
{
    ASSERT_TRUE(window().sidebar().selectIdentifier(identifier)) << (identifier).toStdString();
    settle();
}

} // namespace quib::tests
