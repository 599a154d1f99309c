#include "runConfigurationApplication.h"

#include "CallMarker.h"
#include "Localizer.h"
#include "MessageBoxAlertPresenter.h"
#include "TAV_AdminAppDelegate.h"
#include "TavConfigurationApplication.h"
#include "TavConfigurationController.h"

#include <QDialog>

int runConfigurationApplication(int& argc, char** argv)
{
    const CallMarker marker("runConfigurationApplication");
    TavConfigurationApplication application(argc, argv);
    QDialog window(nullptr, Qt::Window);
    MessageBoxAlertPresenter alertPresenter(window);
    Localizer::getInstance()->setAlertPresenter(&alertPresenter);

    TavConfigurationController controller(window, alertPresenter);
    controller.awakeFromNib();
    TAV_AdminAppDelegate delegate;
    delegate.setWindow(&window);
    delegate.applicationDidFinishLaunching();
    const int result = TavConfigurationApplication::exec();

    Localizer::getInstance()->setAlertPresenter(nullptr);
    return result;
}
