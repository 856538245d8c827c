#include "XurlFixture.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace quib::tests {
namespace {

class XurlCreate : public XurlFixture
{
protected:
    /// The text of the note that a URL makes; null where it makes none.
    QString made(const QString &query)
    {
        run(u"create"_s, query);
        const auto note = QBNote::noteWithUniqueIdentifier(result.value(u"identifier"_s), moc());
        EXPECT_TRUE(isDurable());
        return note ? note->text() : QString();
    }
    [[nodiscard]] qsizetype noteCount() const { return QBNote::allNotesInManagedObjectContext(moc()).size(); }
};

struct TextCase
{
    QString query;
    QString text;
};

TEST_F(XurlCreate, PutsTheTextTogetherFromItsParts)
{
    const TextCase cases[] = {
        {u"title=Plan"_s, u"# Plan\n"_s},
        {u"text=one%0Atwo"_s, u"one\ntwo"_s},
        {u"title=Plan&text=one"_s, u"# Plan\none"_s},
        {u"tags=home"_s, u"#home"_s},
        {u"tags=home,%20two%20words%20,,"_s, u"#home #two words#"_s},
        {u"title=Plan&text=one&tags=home"_s, u"# Plan\none\n\n#home"_s},
        // HTML is only what says where it comes from.
        {u"text=%3Cb%3Ebold%3C/b%3E&type=html"_s, u"<b>bold</b>"_s},
        {u"text=one&type=html&url="_s, u"one"_s},
        {u"text=one&url=https://example.org"_s, u"one"_s},
        // A file needs its name, a name its file.
        {u"text=one&file=SGVsbG8%3D"_s, u"one"_s},
        {u"text=one&filename=a.txt"_s, u"one"_s},
        {u"text=nul%00 bom%EF%BB%BF object%EF%BF%BC"_s, u"nul\0 bom\ufeff object\ufffc"_s},
    };
    for (const TextCase &given : cases) {
        EXPECT_EQ(made(given.query), given.text) << given.query.toStdString();
    }
}

TEST_F(XurlCreate, TellsIdentifierAndTitleOnceTheNoteIsDurable)
{
    EXPECT_EQ(run(u"create"_s, u"title=Plan&text=one"_s),
              QStringList({u"search []"_s, u"show Plan"_s, u"main"_s, u"success"_s}));
    EXPECT_EQ(result, IACParameters({{u"identifier"_s, identifier(u"Plan"_s)}, {u"title"_s, u"Plan"_s}}));
    const QString text = textOf(u"Plan"_s);
    actions.reset();
    close();
    open();
    EXPECT_EQ(textOf(u"Plan"_s), text);
}

TEST_F(XurlCreate, WindowsShowTheNoteAsTheParametersSay)
{
    EXPECT_EQ(run(u"create"_s, u"title=A&open_note=no"_s), QStringList({u"main"_s, u"success"_s}));
    EXPECT_EQ(run(u"create"_s, u"title=B&open_note=no&show_window=no"_s), QStringList{u"success"_s});
    EXPECT_EQ(run(u"create"_s, u"title=C&new_window=yes&float=yes&edit=yes&show_window=no"_s),
              QStringList({u"detach C floating"_s, u"edit C"_s, u"success"_s}));
}

TEST_F(XurlCreate, PinsWhenAsked)
{
    made(u"title=A&pin=yes"_s);
    made(u"title=B&pin=no"_s);
    EXPECT_TRUE(noteTitled(u"A"_s)->isPinned());
    EXPECT_FALSE(noteTitled(u"B"_s)->isPinned());
}

TEST_F(XurlCreate, AFileStandsBehindTheText)
{
    const QString text = made(u"text=one&file=SGVsbG8%3D&filename=hello.txt&tags=home"_s);
    EXPECT_TRUE(text.startsWith(u"one\n\n[file:"));
    EXPECT_TRUE(text.endsWith(u"/hello.txt]\n\n#home"));
    const auto files = QBNoteFile::filesInManagedObjectContext(moc(), nullptr);
    ASSERT_EQ(files.size(), 1);
    ASSERT_TRUE(files.constFirst()->note());
    EXPECT_EQ(files.constFirst()->note()->text(), text);
    QFile stored(files.constFirst()->fileURL()->toLocalFile());
    ASSERT_TRUE(stored.open(QIODevice::ReadOnly));
    EXPECT_EQ(stored.readAll(), "Hello");
}

TEST_F(XurlCreate, FailuresLeaveNothing)
{
    const std::pair<QString, QString> cases[] = {
        {{}, u"error 4 The resulting note is empty"_s},
        {u"title=&text=&tags="_s, u"error 4 The resulting note is empty"_s},
        {u"tags=,"_s, u"error 4 The resulting note is empty"_s},
        {u"text=one&file=abc&filename=a"_s, u"error 1 File not in a valid base64 form"_s},
        {u"text=one&file=SGVsbG8%3D&filename=%2F"_s, u"error 4 Internal error while saving"_s},
        {u"text=%3Cb%3E&type=html&url=https://example.org"_s, u"error 4 Text of the type html is not supported"_s},
    };
    for (const auto &[query, message] : cases) {
        EXPECT_EQ(run(u"create"_s, query), QStringList{message}) << query.toStdString();
        EXPECT_EQ(noteCount(), 0);
        EXPECT_TRUE(isDurable());
    }
}

TEST_F(XurlCreate, SeveralAtOnceAllComeBack)
{
    QStringList titles;
    for (int i = 0; i < 20; ++i) {
        actions->controller().handleCreate({{u"title"_s, u"Note %1"_s.arg(i)}},
                                           [&titles](const std::optional<IACParameters> &given, bool /*cancelled*/) {
                                               titles.append(given->value(u"title"_s));
                                           },
                                           {}, {});
    }
    EXPECT_TRUE(titles.isEmpty());
    finish();
    EXPECT_EQ(titles.size(), 20);
    EXPECT_EQ(noteCount(), 20);
}

TEST_F(XurlCreate, WhoGoesAwayMeanwhileIsNotCalledBack)
{
    actions->controller().handleCreate({{u"title"_s, u"Plan"_s}}, {}, {},
                                       [](const QString & /*identifier*/) { ADD_FAILURE() << "called back"; });
    actions.reset();
    for (int i = 0; i < 1'000 && noteCount() == 0; ++i) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
    EXPECT_EQ(noteCount(), 1);
}

/// A profile whose store is no database: nothing can be read or saved.
class XurlBrokenStore : public testing::Test
{
protected:
    XurlBrokenStore()
    {
        Profile::setRoot(folder.path());
        QBNotesPreferenceManager::setSharedPreferenceManager(&preferences);
        QFile file(stack.persistentStoreURL());
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(8'192, 'x'));
        file.close();
        QBCoreDataStack::setSharedStack(&stack);
        stack.setupStackWithDelegate({});
        EXPECT_TRUE(stack.openError().isSet());
    }
    ~XurlBrokenStore() override
    {
        QBCoreDataStack::setSharedStack(nullptr);
        QBNotesPreferenceManager::setSharedPreferenceManager(nullptr);
        Profile::setRoot({});
    }
    TemporaryFolder folder;
    QBNotesPreferenceManager preferences;
    QBCoreDataStack stack;
};

TEST_F(XurlBrokenStore, NothingIsToldAsDone)
{
    QStringList log;
    const auto failure = [&log](const NSError &error) { log.append(u"%1 %2"_s.arg(error.code()).arg(error.domain())); };
    const auto success = [&log](const std::optional<IACParameters> & /*given*/, bool /*cancelled*/) {
        log.append(u"success"_s);
    };
    QBXurlCoreController controller(stack);
    const IACParameters read{{u"token"_s, QBXurlTokenController().generateToken()}};
    controller.handleUntagged(read, success, failure, {});
    controller.handleSearch(read, success, failure, {});
    controller.handleAddText({{u"title"_s, u"x"_s}, {u"text"_s, u"y"_s}}, success, failure, {});
    controller.handleAddFile({{u"filename"_s, u"x"_s}, {u"file"_s, u"SGVsbG8="_s}}, success, failure, {});
    controller.handleCreate({{u"title"_s, u"x"_s}}, success, failure, {});
    while (controller.hasPendingActions()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    const QString unread = u"4 Error fetching the results"_s;
    const QString unsaved = u"4 Internal error while saving"_s;
    EXPECT_EQ(log, QStringList({unread, unread, unsaved, unsaved, unsaved}));
}

} // namespace
} // namespace quib::tests
