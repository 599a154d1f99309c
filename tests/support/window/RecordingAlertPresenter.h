#pragma once

#include "AlertPresenter.h"

#include <string>
#include <vector>

/// Records the alerts instead of showing them, and answers as told.
class RecordingAlertPresenter : public AlertPresenter {
public:
    struct Alert {
        Level level;
        std::string title;
        std::string text;

        bool operator==(const Alert&) const = default;
    };

    bool showAlert(Level level, const std::string& title, const std::string& text) override
    {
        alerts.push_back({level, title, text});
        return answer;
    }

    std::vector<Alert> alerts;
    bool answer = true;
};
