#pragma once

#include <QCoreApplication>

#include <functional>

/// Has the action done by the event loop that runs next, that of a modal window included.
inline void later(const std::function<void()>& action)
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), action, Qt::QueuedConnection);
}
