#include "AccessibilityBus.h"

#include "CallMarker.h"

#include <QCoreApplication>
#include <QDBusConnection>

namespace {

void registerService()
{
    CallMarker marker("registerService");
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.registerObject(
        QStringLiteral("/org/a11y/bus"), new AccessibilityBus(QCoreApplication::instance()),
        QDBusConnection::ExportAllSlots);
    bus.registerService(QStringLiteral("org.a11y.Bus"));
}

} // namespace

AccessibilityBus::AccessibilityBus(QObject* owner) : QObject(owner)
{
    CallMarker marker("AccessibilityBus", "AccessibilityBus::constructor", true, this);
}

AccessibilityBus::~AccessibilityBus()
{
    CallMarker marker("AccessibilityBus", "AccessibilityBus::destructor", false, this);
}

void AccessibilityBus::announce()
{
    CallMarker marker("AccessibilityBus::announce");
    // Accessibility is on for this process, whatever the desktop has set: it is not asked.
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
    qAddPreRoutine(&registerService);
}

QString AccessibilityBus::GetAddress() const
{
    CallMarker marker("AccessibilityBus::GetAddress", this);
    return qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
}
