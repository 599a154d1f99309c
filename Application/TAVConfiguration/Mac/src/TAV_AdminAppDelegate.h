#pragma once

class QWidget;

/// The application's delegate: knows the one window of the application, and is told when the
/// application has started. Owns nothing.
class TAV_AdminAppDelegate {
public:
    QWidget* window() const;
    void setWindow(QWidget* window);

    /// Nothing is left to be done then.
    void applicationDidFinishLaunching();

private:
    QWidget* m_window = nullptr;
};
