#include "TAV_AdminAppDelegate.h"

#include "CallMarker.h"

TAV_AdminAppDelegate::TAV_AdminAppDelegate()
{
    CallMarker marker("TAV_AdminAppDelegate", "TAV_AdminAppDelegate::constructor", true, this);
}

TAV_AdminAppDelegate::~TAV_AdminAppDelegate()
{
    CallMarker marker("TAV_AdminAppDelegate", "TAV_AdminAppDelegate::destructor", false, this);
}

QWidget* TAV_AdminAppDelegate::window() const
{
    CallMarker marker("TAV_AdminAppDelegate::window", this);
    return m_window;
}

void TAV_AdminAppDelegate::setWindow(QWidget* window)
{
    CallMarker marker("TAV_AdminAppDelegate::setWindow", this);
    m_window = window;
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): a notification has a receiver
void TAV_AdminAppDelegate::applicationDidFinishLaunching()
{
    CallMarker marker("TAV_AdminAppDelegate::applicationDidFinishLaunching", this);
}
