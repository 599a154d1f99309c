#include "ConfigurationSession.h"

#include "AccessibilityBus.h"
#include "CallMarker.h"
#include "Console.h"
#include "DesktopSession.h"
#include "Diagnostics.h"
#include "runConfigurationApplication.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <optional>

namespace {

QtMessageHandler s_formerHandler = nullptr;

/// The toolkit aborts when its start fails, which would look like a crash of the tool.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    if (type != QtFatalMsg || !QCoreApplication::startingUp()) {
        s_formerHandler(type, context, text);
        return;
    }
    Console::writeError("TavConfiguration: cannot show the window: no display can be used\n");
    Diagnostics::drain();
    std::_Exit(EXIT_FAILURE);
}

} // namespace

int ConfigurationSession::run(int& argc, char** argv)
{
    CallMarker marker("ConfigurationSession::run");
    if (DesktopSession::prepare() == DesktopSession::Bus::accessibility)
        AccessibilityBus::announce();
    // An elevated process has none; the toolkit would warn, and use one of a name that all can
    // know.
    std::optional<QTemporaryDir> runtimeFolder;
    if (!qEnvironmentVariableIsSet("XDG_RUNTIME_DIR")) {
        runtimeFolder.emplace();
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtimeFolder->path()));
    }
    s_formerHandler = qInstallMessageHandler(&endWithoutDisplay);
    return runConfigurationApplication(argc, argv);
}
