#pragma once

#include <Delegate/QBApplicationInterface.h>
#include <Foundation/NSError.h>

#include <memory>

QT_BEGIN_NAMESPACE
class QCoreApplication;
QT_END_NAMESPACE

namespace quib {

class QuibProcess;

/// What the process looks like to the user: with windows, or without. Chosen by the program's main function.
class FrontEnd
{
public:
    virtual ~FrontEnd() = default;
    /// The application object, made once the process knows that it is the one of its profile.
    [[nodiscard]] virtual std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) = 0;
    /// The windows, made next; they die before the application object.
    [[nodiscard]] virtual std::unique_ptr<QBApplicationInterface> makeInterface() = 0;
    /// False where commands that need a window cannot be served.
    [[nodiscard]] virtual bool hasWindows() const = 0;
    /// The notes in a folder cannot be had, and the process ends; standard error tells it too. Waits until it was read.
    virtual void profileCannotBeHad(const NSError & /*error*/, const QString & /*folder*/) {}
    /// The process serves from now on: the time to tell its delegate what the desktop tells the windows.
    virtual void processDidLaunch(QuibProcess & /*process*/) {}
    /// All is saved, and the store goes next.
    virtual void processWillEnd(QuibProcess & /*process*/) {}
};

/// A process without windows: it serves what comes over the bus, and writes to standard error what it has to say.
class WindowlessFrontEnd final : public FrontEnd
{
public:
    [[nodiscard]] std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv) override;
    [[nodiscard]] std::unique_ptr<QBApplicationInterface> makeInterface() override;
    [[nodiscard]] bool hasWindows() const override { return false; }
};

} // namespace quib
