#include "TAV_AdminAppDelegate.h"

#include "CallMarker.h"

QWidget* TAV_AdminAppDelegate::window() const
{
    const CallMarker marker("TAV_AdminAppDelegate::window", this);
    return m_window;
}

void TAV_AdminAppDelegate::setWindow(QWidget* window)
{
    const CallMarker marker("TAV_AdminAppDelegate::setWindow", this);
    m_window = window;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): a notification has a receiver
void TAV_AdminAppDelegate::applicationDidFinishLaunching()
{
    const CallMarker marker("TAV_AdminAppDelegate::applicationDidFinishLaunching", this);
}
