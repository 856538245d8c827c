#pragma once

#include "FrontEnd.h"
#include "InstanceService.h"

#include <Delegate/QBAppDelegate.h>
#include <Store/QBCoreDataStack.h>
#include <Store/QBNotesPreferenceManager.h>
#include <Themes/QBNotesAppThemeManager.h>
#include <Themes/QBNotesTextThemeManager.h>
#include <Themes/ThemeLoader.h>
#include <URL/IACManager.h>

#include <memory>
#include <vector>

namespace quib {

/// The application on one profile: makes and installs the shared services, launches the delegate with them, serves
/// requests, and ends in order. The profile is held by the caller, who also keeps the application object. Main queue.
class QuibProcess final : public InstanceServant
{
public:
    /// Shape:   opener is what opens URLs for callbacks.
    QuibProcess(std::unique_ptr<QBApplicationInterface> interface, IACManager::Opener opener);
    ~QuibProcess() override;
    QuibProcess(const QuibProcess &) = delete;
    QuibProcess &operator=(const QuibProcess &) = delete;

    /// Brings everything up; returns while a migration may still run.
    void launch();
    /// Tidies and saves. Errors: false, with the reason, when the last save failed.
    [[nodiscard]] bool terminate(NSError *error);

    void serve(const InstanceRequest &request, Done done) override;
    [[nodiscard]] QString currentNoteTitle() const override;
    bool continueActivity(const QVariantMap &userInfo) override;

    [[nodiscard]] QBAppDelegate &delegate() const { return *m_delegate; }
    [[nodiscard]] QBCoreDataStack &stack() { return m_stack; }
    [[nodiscard]] QBApplicationInterface &interface() const { return *m_interface; }

    static constexpr QLatin1StringView kErrorDomain{"QuibProcess"};

private:
    /// Tells all who wait that there will be no store.
    void refuseParked();
    [[nodiscard]] static NSError noStoreError();
    void serveOpen(const QStringList &uris);
    [[nodiscard]] bool serveAction(const QString &action, const QString &argument, NSError *error);
    [[nodiscard]] bool serveSend(const InstanceRequest &request, NSError *error);

    std::unique_ptr<QBApplicationInterface> m_interface;
    QBNotesPreferenceManager m_preferences;
    QBCoreDataStack m_stack;
    QBNotesTextThemeManager m_textThemeManager;
    QBNotesAppThemeManager m_appThemeManager;
    ThemeLoader m_themes;
    std::shared_ptr<IACManager> m_callbacks;
    std::shared_ptr<QBAppDelegate> m_delegate;
    /// Who waits for a request that is parked; emptied by whoever answers first.
    std::vector<std::shared_ptr<Done>> m_parked;
};

} // namespace quib
