#include "MessageBoxAlertPresenter.h"

#include "CallMarker.h"

#include <QMessageBox>

MessageBoxAlertPresenter::MessageBoxAlertPresenter(QWidget& window) : m_window(window)
{
    CallMarker marker(
        "MessageBoxAlertPresenter", "MessageBoxAlertPresenter::constructor", true, this);
}

MessageBoxAlertPresenter::~MessageBoxAlertPresenter()
{
    CallMarker marker(
        "MessageBoxAlertPresenter", "MessageBoxAlertPresenter::destructor", false, this);
}

bool MessageBoxAlertPresenter::showAlert(
    Level level, const std::string& title, const std::string& text)
{
    CallMarker marker("MessageBoxAlertPresenter::showAlert", this);
    QMessageBox box(m_window.isVisible() ? &m_window : nullptr);
    box.setIcon(level == Level::stop ? QMessageBox::Critical : QMessageBox::Information);
    // In a window's title "[*]" stands for an asterisk of unsaved changes, unless it is doubled.
    box.setWindowTitle(QString::fromStdString(title).replace("[*]", "[*][*]"));
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromStdString(text));
    return box.exec() == QMessageBox::Ok;
}
