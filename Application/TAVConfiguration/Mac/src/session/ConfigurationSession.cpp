#include "ConfigurationSession.h"

#include "AccessibilityBus.h"
#include "CallMarker.h"
#include "Console.h"
#include "DesktopSession.h"
#include "DetachedStandardError.h"
#include "Diagnostics.h"
#include "runConfigurationApplication.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>
#include <optional>

#include <sys/stat.h>

namespace {

QtMessageHandler s_formerHandler = nullptr;
/// Until the application has started.
std::optional<DetachedStandardError> s_standardError;
/// Removed when the process ends, also by a report that never returns here.
std::optional<QTemporaryDir> s_runtimeFolder;

void forgetStandardError()
{
    CallMarker marker("forgetStandardError");
    s_standardError.reset();
}

/// The toolkit aborts when its start fails, which would look like a crash of the tool.
void endWithoutDisplay(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    CallMarker marker("endWithoutDisplay");
    if (type != QtFatalMsg || !QCoreApplication::startingUp()) {
        s_formerHandler(type, context, text);
        return;
    }
    if (s_standardError)
        s_standardError->putBack();
    Console::writeError("TavConfiguration: cannot show the window: no display can be used\n");
    s_runtimeFolder.reset();
    Diagnostics::drain();
    std::_Exit(EXIT_FAILURE);
}

/// An elevated process has no runtime folder; the toolkit would warn, and use one of a name that
/// all can know.
void provideRuntimeFolder()
{
    CallMarker marker("provideRuntimeFolder");
    if (!qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        return;
    s_runtimeFolder.emplace();
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(s_runtimeFolder->path()));
}

} // namespace

int ConfigurationSession::run(int& argc, char** argv)
{
    CallMarker marker("ConfigurationSession::run");
    // The mask is the caller's, or open since folders were made: the toolkit and what it loads keep
    // files of their own, as root in places that all share.
    umask(S_IWGRP | S_IWOTH);
    s_standardError.emplace();
    qAddPreRoutine(&forgetStandardError);
    if (DesktopSession::prepare() == DesktopSession::Bus::accessibility)
        AccessibilityBus::announce();
    provideRuntimeFolder();
    s_formerHandler = qInstallMessageHandler(&endWithoutDisplay);
    return runConfigurationApplication(argc, argv);
}
