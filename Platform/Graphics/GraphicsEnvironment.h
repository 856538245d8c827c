#pragma once

#include <QtGlobal>

#include <memory>

QT_BEGIN_NAMESPACE
class QCoreApplication;
QT_END_NAMESPACE

namespace quib {

/// What fonts and drawn text need of a process: an application object that knows the fonts of the machine. No display
/// is needed for it. Colours, pictures and drawing without text need nothing of the sort.
class GraphicsEnvironment
{
public:
    /// Makes the application object of a program without windows. It never looks for a display, unless QT_QPA_PLATFORM
    /// names one. Must be called at the start of main, in place of making a QCoreApplication; argc and argv must
    /// outlive the object.
    [[nodiscard]] static std::unique_ptr<QCoreApplication> makeApplication(int &argc, char **argv);

    /// True when fonts can be asked for. Makes the application object, which then stays, where the process has none at
    /// all; a plain QCoreApplication cannot be replaced, so the answer is no. Queue: any once it has answered yes.
    [[nodiscard]] static bool ensure();
};

} // namespace quib
