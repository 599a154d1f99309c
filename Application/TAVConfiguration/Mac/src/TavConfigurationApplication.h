#pragma once

#include <QApplication>
#include <QTranslator>

/// The application around the window: its name and icon, the toolkit's own texts in the user's
/// language, and the guard at the event loop.
///
/// No exception crosses the event loop: one of the program's own ends the process with a report
/// that tells it, any other with the report of the abort.
class TavConfigurationApplication : public QApplication {
    Q_OBJECT

public:
    /// Both arguments must outlive the application.
    TavConfigurationApplication(int& argc, char** argv);
    ~TavConfigurationApplication() override;

    bool notify(QObject* receiver, QEvent* event) noexcept override;

private:
    QTranslator m_toolkitTexts;
};
