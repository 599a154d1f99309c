#include "Localizer.h"

#include "CallMarker.h"
#include "Contract.h"
#include "KFLocalizerAlreadyInitializedException.h"
#include "KFLocalizerFileNotCorrectlyFormattedException.h"
#include "KFLocalizerFileNotFoundException.h"
#include "KFLocalizerNotInitializedException.h"
#include "SafeFile.h"
#include "Utf8Text.h"

#include <optional>
#include <utility>

namespace {

constexpr const char* UNIT = "Application/Common/Localizer/src/Mac/Localizer";

} // namespace

// Not destroyed at the process's end, which may come from any thread while texts are in use.
Localizer* Localizer::m_theUniqueInstance = nullptr;

Localizer* Localizer::getInstance()
{
    CallMarker marker("Localizer::getInstance");
    if (m_theUniqueInstance == nullptr)
        m_theUniqueInstance = new Localizer;
    return m_theUniqueInstance;
}

void Localizer::destroyInstance()
{
    CallMarker marker("Localizer::destroyInstance");
    delete std::exchange(m_theUniqueInstance, nullptr);
}

Localizer::Localizer()
{
    CallMarker marker("Localizer", "Localizer::constructor", true, this);
}

Localizer::~Localizer()
{
    CallMarker marker("Localizer", "Localizer::destructor", false, this);
}

void Localizer::initialize(std::string fileName)
{
    CallMarker marker("void Localizer::initialize(std::string)", this);
    if (!m_fileName.empty())
        throw KFLocalizerAlreadyInitializedException(UNIT, 175);

    const std::optional<std::string> content = SafeFile::read(fileName, SafeFile::Links::follow);
    if (!content)
        throw KFLocalizerFileNotFoundException(UNIT, 170);

    std::optional<LocalizationFile::Entries> entries = LocalizationFile::parse(*content);
    if (!entries)
        throw KFLocalizerFileNotCorrectlyFormattedException(UNIT, 165);

    m_strings = std::move(*entries);
    m_fileName = std::move(fileName);
}

std::string Localizer::getLocalizedString(const char* key)
{
    CallMarker marker("NSString* Localizer::getLocalizedString(NSString*)", this);
    if (!Contract::require(key != nullptr, "key != NULL", UNIT, 184))
        return {};
    if (m_fileName.empty())
        throw KFLocalizerNotInitializedException(UNIT, 188);

    // NOLINTNEXTLINE(clang-analyzer-cplusplus.StringChecker): the check tells whether it is null
    const auto entry = m_strings.find(key);
    if (entry != m_strings.end())
        return entry->second;

    const std::string text = std::string("The key '") + key + "' is absent from the '" +
                             m_fileName + "' localization file.";
    MessageBox("Localized string not found", text.c_str());
    return key;
}

const std::string& Localizer::getLocalizedString(const char* key, const Parameters& parameters)
{
    CallMarker marker("Localizer::getLocalizedString", this);
    static const std::string noText;
    std::string text = getLocalizedString(key);
    if (key == nullptr)
        return noText;
    for (const auto& [name, value] : parameters)
        text = Utf8Text::replaceAll(text, name, value);
    return m_formatted[key] = std::move(text);
}

bool Localizer::MessageBox(const char* title, const char* text)
{
    CallMarker marker("Localizer::MessageBox", this);
    return m_alertPresenter != nullptr &&
           m_alertPresenter->showAlert(AlertPresenter::Level::stop, title, text);
}

void Localizer::setAlertPresenter(AlertPresenter* presenter)
{
    CallMarker marker("Localizer::setAlertPresenter", this);
    m_alertPresenter = presenter;
}
