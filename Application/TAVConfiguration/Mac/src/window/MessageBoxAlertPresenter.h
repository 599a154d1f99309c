#pragma once

#include "AlertPresenter.h"

class QWidget;

/// Shows alerts in message boxes over the configuration window, or by themselves while that is not
/// on the screen yet. The window is not owned and outlives the presenter.
class MessageBoxAlertPresenter : public AlertPresenter {
public:
    explicit MessageBoxAlertPresenter(QWidget& window);
    ~MessageBoxAlertPresenter() override;

    MessageBoxAlertPresenter(const MessageBoxAlertPresenter&) = delete;
    MessageBoxAlertPresenter& operator=(const MessageBoxAlertPresenter&) = delete;

    bool showAlert(Level level, const std::string& title, const std::string& text) override;

private:
    QWidget& m_window;
};
