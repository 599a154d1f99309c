#include "runConfigurationApplication.h"

#include "CallMarker.h"
#include "KFException.h"
#include "Localizer.h"
#include "MessageBoxAlertPresenter.h"
#include "TavConfigurationApplication.h"
#include "TavConfigurationController.h"

#include <QDialog>

#include <cstdlib>

int runConfigurationApplication(int& argc, char** argv)
try {
    CallMarker marker("runConfigurationApplication");
    TavConfigurationApplication application(argc, argv);
    QDialog window(nullptr, Qt::Window);
    MessageBoxAlertPresenter alertPresenter(window);
    Localizer::getInstance()->setAlertPresenter(&alertPresenter);

    TavConfigurationController controller(window, alertPresenter);
    controller.awakeFromNib();
    application.delegate().setWindow(&window);
    application.delegate().applicationDidFinishLaunching();
    const int result = TavConfigurationApplication::exec();

    Localizer::getInstance()->setAlertPresenter(nullptr);
    return result;
} catch (const KFException& exception) {
    // Of the window's set-up: the loop lets none through.
    TavConfigurationApplication::endWithReport(exception);
    return EXIT_SUCCESS;
}
