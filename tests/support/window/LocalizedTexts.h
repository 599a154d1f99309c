#pragma once

#include "Localizer.h"
#include "RecordingAlertPresenter.h"
#include "TemporaryFolder.h"

#include <string>

/// The process's localizer for one test: loaded with a text, its alerts recorded.
class LocalizedTexts {
public:
    explicit LocalizedTexts(const std::string& content)
    {
        Localizer::destroyInstance();
        Localizer::getInstance()->setAlertPresenter(&alertPresenter);
        Localizer::getInstance()->initialize(m_folder.write("texts.cfg", content));
    }
    ~LocalizedTexts() { Localizer::destroyInstance(); }

    LocalizedTexts(const LocalizedTexts&) = delete;
    LocalizedTexts& operator=(const LocalizedTexts&) = delete;

    RecordingAlertPresenter alertPresenter;

private:
    TemporaryFolder m_folder;
};
