#pragma once

#include "AlertPresenter.h"
#include "LocalizationFile.h"

#include <map>
#include <string>

/// The process-wide table of user interface texts, loaded once from the localization file of the
/// user's language.
///
/// A key that the file lacks is reported in an alert and shown itself, so that a missing
/// translation never stops the tool. Keys, texts and parameters are UTF-8. Main thread only. What
/// goes wrong is thrown as one of the KFLocalizerException family.
class Localizer {
public:
    using Parameters = std::map<std::string, std::string>;

    /// The one instance, created at the first call.
    static Localizer* getInstance();
    /// Destroys the instance, if any; the next getInstance() makes a new one without texts.
    static void destroyInstance();

    virtual ~Localizer();

    Localizer(const Localizer&) = delete;
    Localizer& operator=(const Localizer&) = delete;

    /// Loads the texts. A failure leaves the localizer without texts, and another file can be
    /// tried; after a success every further call fails. What is not a regular file counts as not
    /// found.
    void initialize(std::string fileName);

    /// The text for the key, which must not be null: where the signal of that violation is blocked
    /// the text is empty. An absent key is reported at every call.
    std::string getLocalizedString(const char* key);

    /// The same with each parameter's name, wherever it stands in the text, replaced by its value,
    /// name by name in byte order. The result stays valid until the key is formatted again.
    const std::string& getLocalizedString(const char* key, const Parameters& parameters);

    /// Shows a modal alert; true when it was answered with its button, false also while there is no
    /// presenter to show it.
    bool MessageBox(const char* title, const char* text);

    /// Who shows the alerts from now on, null for nobody; not owned.
    void setAlertPresenter(AlertPresenter* presenter);

private:
    Localizer();

    static Localizer* m_theUniqueInstance;

    LocalizationFile::Entries m_strings;
    std::map<std::string, std::string> m_formatted;
    std::string m_fileName;
    AlertPresenter* m_alertPresenter = nullptr;
};
