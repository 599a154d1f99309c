#pragma once

#include "TAV_AdminAppDelegate.h"

#include <QApplication>
#include <QTranslator>

class KFException;

/// The application around the window: its name and icon, its delegate, the toolkit's own texts in
/// the user's language, and the guard at the event loop.
///
/// No exception crosses the event loop: one of the program's own ends the process with a report
/// that tells it, any other with the report of the abort.
class TavConfigurationApplication : public QApplication {
    Q_OBJECT

public:
    /// Both arguments must outlive the application.
    TavConfigurationApplication(int& argc, char** argv);
    ~TavConfigurationApplication() override;

    TAV_AdminAppDelegate& delegate();

    bool notify(QObject* receiver, QEvent* event) noexcept override;

    /// Ends the process with a report that tells the exception.
    static void endWithReport(const KFException& exception);

private:
    TAV_AdminAppDelegate m_delegate;
    QTranslator m_toolkitTexts;
};
