#pragma once

#include "ConfigurationPlace.h"
#include "LocalizedTexts.h"
#include "TavConfigurationController.h"
#include "Typing.h"
#include "ValueField.h"

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <stdexcept>
#include <string>

/// The configuration window of one test: real controls, controller and model over a configuration
/// file of its own, alerts recorded.
class ConfigurationWindow {
public:
    /// Opens the window on the configuration file's content and the localization file's content.
    ConfigurationWindow(const std::string& configuration, const std::string& localization)
        : m_texts(localization)
    {
        if (!configuration.empty())
            file.write(configuration);
        controller.awakeFromNib();
    }

    /// A control by its outlet's name.
    template<typename Control = QWidget>
    Control& outlet(const std::string& name) const
    {
        auto* const control = window.findChild<Control*>(QString::fromStdString(name));
        if (control == nullptr)
            throw std::runtime_error("no outlet " + name);
        return *control;
    }

    std::string value(const std::string& field) const { return outlet<ValueField>(field).value(); }
    void click(const std::string& button) const { outlet<QAbstractButton>(button).click(); }

    /// Replaces what a field holds by typing, as far as the field lets it.
    void type(const std::string& field, const char* text) const
    {
        auto& control = outlet<ValueField>(field);
        control.selectAll();
        typeText(control, QString::fromUtf8(text));
    }

    ConfigurationPlace file;

private:
    LocalizedTexts m_texts;

public:
    RecordingAlertPresenter& alertPresenter = m_texts.alertPresenter;
    QDialog window{nullptr, Qt::Window};
    TavConfigurationController controller{window, alertPresenter};
};
