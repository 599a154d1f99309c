#include "main.h"

#include "AppData.h"
#include "AuthorizationServices.h"
#include "CallMarker.h"
#include "Console.h"
#include "Diagnostics.h"
#include "FileSystemManagement.h"
#include "IDCardReader.h"
#include "InheritedChildren.h"
#include "InheritedState.h"
#include "KFException.h"
#include "KFExceptionHandler.h"
#include "Localizer.h"
#include "Logger.h"
#include "OSManagement.h"
#include "Tracer.h"

#include <array>
#include <cstdlib>
#include <memory>

#include <sys/wait.h>

namespace {

constexpr const char* UNIT = "Application/TAVConfiguration/Mac/src/main";
constexpr const char* AdminRightsArg = "--adminRights";
constexpr const char* LOCALIZATION_FILE = "Localizer_TavConfiguration_";
/// Kept: upper case, unlike the code that a user's language yields.
constexpr const char* DEFAULT_LOCALIZATION_FILE = "Localizer_TavConfiguration_EN.cfg";
/// The log says what the user does: it is nobody else's.
constexpr unsigned int LOG_FOLDER_MODE = 0700;

KFExceptionHandler& crashHandler()
{
    CallMarker marker("crashHandler");
    KFExceptionHandler* const handler = KFExceptionHandler::GetInstance();
    InheritedChildren::leaveUnheard();
    return *handler;
}

/// Without a tracer the crash handler prints nothing, so the user is told here.
[[noreturn]] void failToStart(const char* text, int line)
{
    CallMarker marker("failToStart");
    Console::writeError(std::string(text) + "\n");
    crashHandler().throwException(0, "INTERNAL ERROR", text, UNIT, line);
    // Where the report's signal is blocked: root goes nowhere without a card or a log folder.
    std::exit(EXIT_SUCCESS);
}

std::string makeLogFolder(const AppData& logs)
{
    CallMarker marker("makeLogFolder");
    std::string folder = logs.getPathForFile("Logs");
    if (!FileSystemManagement::existFile(folder) &&
        !FileSystemManagement::makeFolder(folder, LOG_FOLDER_MODE))
        failToStart("\"cannot start TavConfiguration : unable to log\"", 69);
    return folder;
}

/// The facility is published before it reads its file, which acts on the published one, and is
/// never destroyed.
template<typename Facility>
void publish(const std::string& folder, const std::string& configurationFile)
{
    CallMarker marker("publish");
    if (Facility::GetInstance() != nullptr)
        return;
    auto* const facility = new Facility;
    Facility::SetInstance(facility);
    facility->SetFolderName(folder);
    facility->ReadConfigFile(configurationFile.c_str());
}

void logIdentity(const IDCardReader& card)
{
    CallMarker marker("logIdentity");
    const auto level = LoggerMsgType::LEVEL_0;
    TAV_LOG(
        level, "Starting TavConfiguration %s with ID card : ",
        FileSystemManagement::getCurrentExecutableName().c_str());
    TAV_LOG(level, " * Commercial version : %s ", card.getCommercialVersion().c_str());
    TAV_LOG(level, " * Product Name : %s ", card.getProductName().c_str());
    TAV_LOG(level, " * BU Name : %s", card.getBUName().c_str());
    TAV_LOG(level, " * Build Target : %s ", card.getBuildTarget().c_str());
    TAV_LOG(level, " * Reference version : %s ", card.getReferenceVersion().c_str());
    TAV_LOG(level, " * Product version : %s ", card.getProductVersion().c_str());
    TAV_LOG(level, " * Upgrade Code : %s ", card.getUpgradeCode().c_str());
}

void loadTexts()
{
    CallMarker marker("loadTexts");
    const std::string folder = FileSystemManagement::getCurrentExecutableDirectory();
    Localizer* const localizer = Localizer::getInstance();
    try {
        localizer->initialize(
            folder + LOCALIZATION_FILE + OSManagement::getUserUILanguage() + ".cfg");
    } catch (const KFException& exception) {
        TAV_LOG(
            LoggerMsgType::LEVEL_0, "Localization file not found - %s",
            exception.toString().c_str());
        TAV_LOG(
            LoggerMsgType::LEVEL_0, "Switching to default localization file - %s",
            DEFAULT_LOCALIZATION_FILE);
        localizer->initialize(folder + DEFAULT_LOCALIZATION_FILE);
    }
}

void logArguments(int argc, char** argv)
{
    CallMarker marker("logArguments");
    if (argc > 1)
        TAV_LOG(LoggerMsgType::LEVEL_0, "Process arguments:");
    for (int index = 1; index < argc; ++index)
        TAV_LOG(LoggerMsgType::LEVEL_0, "%s", argv[index]);
}

bool isElevatedInstance(int argc, char** argv)
{
    CallMarker marker("isElevatedInstance");
    return argc == 2 && std::string(argv[1]) == AdminRightsArg;
}

AuthorizationRights administratorRights()
{
    CallMarker marker("administratorRights");
    return {{ADMINISTRATOR_RIGHT, AuthorizationFlag::DEFAULTS}};
}

int runElevated(
    int argc, char** argv, AuthorizationServices& services, ApplicationMain runApplication)
{
    CallMarker marker("runElevated");
    TAV_LOG(LoggerMsgType::LEVEL_0, "Process was launched with %s argument", AdminRightsArg);
    const AuthorizationRights rights = administratorRights();
    const auto status = services.AuthorizationCreate(&rights, AuthorizationFlag::DEFAULTS, nullptr);
    if (status != AuthorizationStatus::success) {
        TAV_LOG(
            LoggerMsgType::LEVEL_0,
            "Process DOES NOT have kAuthorizationRightExecute right, exiting...");
        return 0;
    }
    TAV_LOG(LoggerMsgType::LEVEL_0, "Process has kAuthorizationRightExecute right");
    return runApplication(argc, argv);
}

/// The messages of the two functions below are those of the main call, and are traced wherever that
/// one is.
void relaunch(
    const CallMarker& mainCall, const char* program, AuthorizationServices& services,
    Authorization& authorization)
{
    CallMarker marker("relaunch");
    TAV_TRACE(mainCall, TraceMsgType::D, "Execute process %s %s", program, AdminRightsArg);
    // Started by root, both instances write to the same files: the first one's lines come first.
    Diagnostics::drain();
    const std::array<const char*, 2> arguments{AdminRightsArg, nullptr};
    std::FILE* pipe = nullptr;
    services.AuthorizationExecuteWithPrivileges(
        authorization, program, AuthorizationFlag::DEFAULTS, arguments.data(), &pipe);
    if (pipe != nullptr)
        std::fclose(pipe);
}

void askAndRelaunch(
    const CallMarker& mainCall, const char* program, AuthorizationServices& services)
{
    CallMarker marker("askAndRelaunch");
    TAV_LOG(
        LoggerMsgType::LEVEL_0,
        "Process was launched without %s argument, launch it with admin privileges...",
        AdminRightsArg);
    std::unique_ptr<Authorization> authorization;
    auto status =
        services.AuthorizationCreate(nullptr, AuthorizationFlag::DEFAULTS, &authorization);
    if (status != AuthorizationStatus::success) {
        TAV_TRACE(
            mainCall, TraceMsgType::D, "AuthorizationCreate failed with code %d",
            static_cast<int>(status));
        return;
    }
    constexpr std::uint32_t ASK_AND_KEEP = AuthorizationFlag::INTERACTION_ALLOWED |
                                           AuthorizationFlag::EXTEND_RIGHTS |
                                           AuthorizationFlag::PREAUTHORIZE;
    status = services.AuthorizationCopyRights(*authorization, administratorRights(), ASK_AND_KEEP);
    if (status == AuthorizationStatus::success)
        relaunch(mainCall, program, services, *authorization);
    else
        TAV_TRACE(
            mainCall, TraceMsgType::D, "AuthorizationCopyRights failed with code %d",
            static_cast<int>(status));
    services.AuthorizationFree(std::move(authorization), AuthorizationFlag::DEFAULTS);
}

} // namespace

int tavConfigurationMain(
    int argc, char** argv, AuthorizationServicesMaker makeServices, ApplicationMain runApplication)
{
    // Also where the toolkit ends the process itself, as it does when the display goes away.
    Diagnostics::drainAtExit();
    InheritedState::takeBack();
    initTracesAndLogs("");
    Tracer* const tracer = Tracer::GetInstance();
    if (tracer != nullptr && tracer->isActive())
        tracer->BeginningOfThread("Main");
    CallMarker marker("TavConfiguration::Main");
    crashHandler();
    loadTexts();
    logArguments(argc, argv);
    const std::unique_ptr<AuthorizationServices> services = makeServices();
    if (isElevatedInstance(argc, argv))
        return runElevated(argc, argv, *services, runApplication);
    askAndRelaunch(marker, argv[0], *services);
    return 0;
}

void initTracesAndLogs(const std::string& suffix)
{
    CallMarker marker("initTracesAndLogs");
    const std::string directory = FileSystemManagement::getCurrentExecutableDirectory();
    IDCardReader card(directory);
    // A folder that is not known would be the current one, which is the caller's choice.
    if (directory.empty() || !card.readIDCard())
        failToStart("\"cannot start TavConfiguration : no ID card\"", 58);
    AppData::setGlobalScope(card.getUpgradeCode());
    const AppData logs("Logs");
    const std::string folder = makeLogFolder(logs);
    publish<Tracer>(folder, directory + "tracer" + suffix + ".cfg");
    publish<Logger>(folder, directory + "logger" + suffix + ".cfg");
    logIdentity(card);
}

int WaitForChildProcess(std::FILE* pipe, const std::string& processName)
{
    CallMarker marker("WaitForChildProcess");
    TAV_TRACE(marker, TraceMsgType::D, "Wait for process '%s'", processName.c_str());
    std::array<char, 1024> buffer{};
    while (std::fgets(buffer.data(), buffer.size(), pipe) != nullptr)
        TAV_TRACE(marker, TraceMsgType::D, "%s >> %s", processName.c_str(), buffer.data());
    const int pid = wait(nullptr);
    TAV_TRACE(
        marker, TraceMsgType::D, "Process '%s' finished (pid = %d).", processName.c_str(), pid);
    return pid;
}
