#pragma once

#include <QObject>

/// The service that tells a toolkit where the accessibility bus is, for a process whose session bus
/// is that bus itself: no desktop's own service is on it.
///
/// Owned by the application object; main thread.
class AccessibilityBus : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.a11y.Bus")

public:
    explicit AccessibilityBus(QObject* owner);
    ~AccessibilityBus() override;

    AccessibilityBus(const AccessibilityBus&) = delete;
    AccessibilityBus& operator=(const AccessibilityBus&) = delete;

    /// Registers the service as soon as the application object exists, before the toolkit looks for
    /// it. To be called once, before that.
    static void announce();

public slots:
    /// The address of the process's session bus.
    QString GetAddress() const;
};
