#include "KeptSignalAction.h"

#include "CallMarker.h"

KeptSignalAction::KeptSignalAction(int signal) : m_signal(signal)
{
    CallMarker marker("KeptSignalAction", "KeptSignalAction::constructor", true, this);
    sigaction(m_signal, nullptr, &m_action);
}

KeptSignalAction::~KeptSignalAction()
{
    CallMarker marker("KeptSignalAction", "KeptSignalAction::destructor", false, this);
    sigaction(m_signal, &m_action, nullptr);
}
