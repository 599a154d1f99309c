#pragma once

#include <string>

/// Shows modal alerts: a title, a text, one OK button. The window's front end implements it; the
/// model and the localizer know nothing else of the screen.
///
/// Called on the main thread only.
class AlertPresenter {
public:
    /// How grave the alert is: it decides the icon.
    enum class Level {
        stop = 0, ///< something is wrong with the installation
        note = 1, ///< the user's entries need a change
    };

    virtual ~AlertPresenter() = default;

    /// Returns when the user has dismissed the alert: true when it was answered with its button.
    /// Title and text are UTF-8 and shown to the letter.
    virtual bool showAlert(Level level, const std::string& title, const std::string& text) = 0;
};
