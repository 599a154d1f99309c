#pragma once

#include "AuthorizationServices.h"

#include <functional>

/// Answers each operation as told and records what it was called with, a line each. Its
/// constructor and destructor are marked, as those of every such class are.
class RecordingAuthorizationServices : public AuthorizationServices {
public:
    using Recorder = std::function<void(const std::string& line)>;

    explicit RecordingAuthorizationServices(Recorder recorder);
    ~RecordingAuthorizationServices() override;

    RecordingAuthorizationServices(const RecordingAuthorizationServices&) = delete;
    RecordingAuthorizationServices& operator=(const RecordingAuthorizationServices&) = delete;

    AuthorizationStatus createStatus = AuthorizationStatus::success;
    AuthorizationStatus copyRightsStatus = AuthorizationStatus::success;
    AuthorizationStatus executeStatus = AuthorizationStatus::success;

    AuthorizationStatus AuthorizationCreate(
        const AuthorizationRights* rights, std::uint32_t flags,
        std::unique_ptr<Authorization>* authorization) override;
    AuthorizationStatus AuthorizationCopyRights(
        Authorization& authorization, const AuthorizationRights& rights,
        std::uint32_t flags) override;
    /// Hands a pipe out on success, null otherwise.
    AuthorizationStatus AuthorizationExecuteWithPrivileges(
        Authorization& authorization, const char* toolPath, std::uint32_t flags,
        const char* const* arguments, std::FILE** communicationsPipe) override;
    /// Records too what became of the pipe.
    AuthorizationStatus AuthorizationFree(
        std::unique_ptr<Authorization> authorization, std::uint32_t flags) override;

private:
    /// "the reference" when it is the one that was handed out.
    std::string nameOf(const Authorization* authorization) const;

    Recorder m_record;
    const Authorization* m_handedOut = nullptr;
    int m_pipe = -1;
};
