#include "TavConfigurationApplication.h"

#include "CallMarker.h"
#include "KFException.h"
#include "KFExceptionHandler.h"
#include "OSManagement.h"

#include <QIcon>
#include <QLibraryInfo>

namespace {

QIcon applicationIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 64, 128, 256})
        icon.addFile(QStringLiteral(":/icons/TavConfiguration-%1.png").arg(size));
    return icon;
}

} // namespace

TavConfigurationApplication::TavConfigurationApplication(int& argc, char** argv)
    : QApplication(argc, argv)
{
    CallMarker marker(
        "TavConfigurationApplication", "TavConfigurationApplication::constructor", true, this);
    Q_INIT_RESOURCE(TavConfiguration);
    setApplicationName(QStringLiteral("TavConfiguration"));
    setDesktopFileName(QStringLiteral("TavConfiguration"));
    setWindowIcon(applicationIcon());
    const QString texts = QString::fromStdString("qtbase_" + OSManagement::getUserUILanguage());
    if (m_toolkitTexts.load(texts, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(&m_toolkitTexts);
}

TavConfigurationApplication::~TavConfigurationApplication()
{
    CallMarker marker(
        "TavConfigurationApplication", "TavConfigurationApplication::destructor", false, this);
}

TAV_AdminAppDelegate& TavConfigurationApplication::delegate()
{
    CallMarker marker("TavConfigurationApplication::delegate", this);
    return m_delegate;
}

// No call marker: every event of the program comes by here, and would fill the trace.
bool TavConfigurationApplication::notify(QObject* receiver, QEvent* event) noexcept
try {
    return QApplication::notify(receiver, event);
} catch (const KFException& exception) {
    endWithReport(exception);
    return false;
}

void TavConfigurationApplication::endWithReport(const KFException& exception)
{
    CallMarker marker("TavConfigurationApplication::endWithReport");
    KFExceptionHandler::GetInstance()->throwException(
        0, "INTERNAL ERROR", exception.toString().c_str(), exception.getFileName().c_str(),
        exception.getLine());
}
