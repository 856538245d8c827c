#pragma once

#include <Core/Store/StoreFixture.h>

#include <URL/IACManager.h>
#include <URL/QBXurlActions.h>
#include <URL/QBXurlCoreController.h>
#include <URL/QBXurlInterface.h>
#include <URL/QBXurlTokenController.h>
#include <URL/URLParameters.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <algorithm>

namespace quib::tests {

/// One call of an action, and the log it must leave.
struct ActionCase
{
    QString name;
    QString action;
    QString query;
    QStringList log;
};

inline void PrintTo(const ActionCase &given, std::ostream *out)
{
    *out << given.action.toStdString() << '?' << given.query.toStdString();
}
inline std::string nameOfCase(const testing::TestParamInfo<ActionCase> &given)
{
    return given.param.name.toStdString();
}

/// Windows that write each step into a log, notes and tags by their titles.
class RecordingWindows final : public QBXurlInterface
{
public:
    explicit RecordingWindows(QStringList &log)
        : m_log(log)
    {
    }
    /// What the list of the main window shows.
    bool isEveryNoteVisible = false;

    /// What an editor has not written yet: it is, when asked.
    std::function<void()> typed;

    void saveNote(bool /*forceSave*/) override
    {
        if (typed) {
            typed();
        }
    }
    void detachEditorWindowForNote(QBNote &note, bool floating) override
    {
        add(QStringLiteral("detach %1%2").arg(note.title(), floating ? QStringLiteral(" floating") : QString()));
    }
    bool isNoteVisible(const QBNote & /*note*/) override { return isEveryNoteVisible; }
    void showNote(QBNote &note) override { add(u"show " + note.title()); }
    void scrollNote(QBNote & /*note*/, const QString &toHeader, const QString &orAttachment) override
    {
        add(QStringLiteral("scroll [%1][%2]").arg(toHeader, orAttachment));
    }
    void editNoteAtEnd(QBNote &note) override { add(u"edit " + note.title()); }
    void showList(QBXurlList list) override
    {
        static const QStringList names{QStringLiteral("all"),  QStringLiteral("untagged"), QStringLiteral("today"),
                                       QStringLiteral("todo"), QStringLiteral("archive"),  QStringLiteral("trash")};
        add(u"list " + names.at(static_cast<int>(list)));
    }
    void selectTag(QBNoteTag &tag) override { add(u"tag " + tag.title()); }
    void setCurrentSearch(const QString &search) override { add(u"search [" + search + u']'); }
    void focusNotesTable() override { add(QStringLiteral("focus")); }
    void loadFontThemeName(const QString &name) override { add(u"fonts " + name); }
    void showQuibProPreferences() override { add(QStringLiteral("pro")); }
    void showThemesPreferences() override { add(QStringLiteral("themes")); }
    void showMainWindow() override { add(QStringLiteral("main")); }

private:
    void add(const QString &step) { m_log.append(step); }

    QStringList &m_log;
};

/// A profile, windows that only write down what they are asked, and all actions. One log holds the window work and the
/// callbacks in the order in which they come: "success", "cancelled", "error CODE MESSAGE", and the windows' steps.
class XurlFixture : public StoreFixture
{
protected:
    XurlFixture()
        : windows(log)
        , actions(std::make_unique<QBXurlActions>(*stack, &windows))
    {
    }
    ~XurlFixture() override { actions.reset(); }

    /// Runs an action to its end and gives the log of it. "{TITLE}" in the query is the identifier of that note, and
    /// "{token}" the token.
    QStringList run(const QString &action, QString query)
    {
        for (qsizetype open = query.indexOf(u'{'); open >= 0; open = query.indexOf(u'{', open + 1)) {
            const qsizetype close = query.indexOf(u'}', open);
            const QString name = query.mid(open + 1, close - open - 1);
            query.replace(open, close - open + 1, name == u"token" ? token() : identifier(name));
        }
        run(action, parseURLParams(query));
        return log;
    }
    void run(const QString &action, const IACParameters &parameters)
    {
        log.clear();
        result.clear();
        const auto &all = actions->actions();
        const auto found =
            std::find_if(all.cbegin(), all.cend(), [&action](const auto &known) { return known.first == action; });
        ASSERT_NE(found, all.cend()) << action.toStdString();
        found->second(
            parameters,
            [this](const std::optional<IACParameters> &given, bool cancelled) {
                result = given.value_or(IACParameters());
                log.append(cancelled ? QStringLiteral("cancelled") : QStringLiteral("success"));
            },
            [this](const NSError &error) {
                log.append(QStringLiteral("error %1 %2").arg(error.code()).arg(error.domain()));
            });
        finish();
    }
    /// Lets what works on other queues come back.
    void finish() const
    {
        while (actions->controller().hasPendingActions()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    static QString token() { return QBXurlTokenController().generateToken(); }
    [[nodiscard]] Ref<QBNote> noteTitled(const QString &title) const
    {
        auto note = QBNote::noteWithTitle(title, moc());
        EXPECT_TRUE(note) << title.toStdString();
        return note;
    }
    [[nodiscard]] QString identifier(const QString &title) const { return noteTitled(title)->uniqueIdentifier(); }
    [[nodiscard]] QString textOf(const QString &title) const { return noteTitled(title)->text(); }
    /// Whether what the context holds is on the disk too.
    [[nodiscard]] bool isDurable() const { return !moc().hasChanges(); }
    /// The titles in a result of notes, in its order.
    [[nodiscard]] QStringList titlesInResult() const
    {
        QStringList titles;
        for (const QJsonValue note : QJsonDocument::fromJson(result.value(QStringLiteral("notes")).toUtf8()).array()) {
            titles.append(note.toObject().value(QLatin1StringView("title")).toString());
        }
        return titles;
    }

    QStringList log;
    IACParameters result;
    RecordingWindows windows;
    std::unique_ptr<QBXurlActions> actions;
};

} // namespace quib::tests
