#pragma once

class QWidget;

/// The application's delegate: knows the one window of the application, and is told when the
/// application has started. Owns nothing.
class TAV_AdminAppDelegate {
public:
    TAV_AdminAppDelegate();
    ~TAV_AdminAppDelegate();

    TAV_AdminAppDelegate(const TAV_AdminAppDelegate&) = delete;
    TAV_AdminAppDelegate& operator=(const TAV_AdminAppDelegate&) = delete;

    QWidget* window() const;
    void setWindow(QWidget* window);

    /// Nothing is left to be done then.
    void applicationDidFinishLaunching();

private:
    QWidget* m_window = nullptr;
};
