#include "PolkitClient.h"

#include "CallMarker.h"
#include "KeptSignalAction.h"

#include <memory>

#include <polkit/polkit.h>
#include <unistd.h>

namespace {

template<typename T>
using Reference = std::unique_ptr<T, decltype(&g_object_unref)>;

/// Takes the error over.
PolkitClient::Answer unavailable(GError* error)
{
    CallMarker marker("unavailable");
    const std::unique_ptr<GError, decltype(&g_error_free)> owner(error, &g_error_free);
    return {
        PolkitClient::Verdict::unavailable,
        {},
        error != nullptr ? error->message : "no reason given"};
}

PolkitClient::Answer answerOf(PolkitAuthorizationResult* result)
{
    using Verdict = PolkitClient::Verdict;
    if (polkit_authorization_result_get_is_authorized(result) != FALSE) {
        const char* grant = polkit_authorization_result_get_temporary_authorization_id(result);
        return {Verdict::granted, grant != nullptr ? grant : "", {}};
    }
    if (polkit_authorization_result_get_dismissed(result) != FALSE)
        return {Verdict::dismissed, {}, {}};
    if (polkit_authorization_result_get_is_challenge(result) != FALSE)
        return {Verdict::nobodyToAsk, {}, {}};
    return {Verdict::refused, {}, {}};
}

} // namespace

PolkitClient::Answer PolkitClient::check(const char* action, bool mayAskUser)
{
    CallMarker marker("PolkitClient::check");
    const KeptSignalAction onBrokenPipe(SIGPIPE);
    GError* error = nullptr;
    const Reference<PolkitAuthority> authority(
        polkit_authority_get_sync(nullptr, &error), &g_object_unref);
    if (authority == nullptr)
        return unavailable(error);

    // Start time 0 makes polkit look it up: a later process with the same id is another subject.
    const Reference<PolkitSubject> subject(
        polkit_unix_process_new_for_owner(getpid(), 0, static_cast<int>(getuid())),
        &g_object_unref);
    const Reference<PolkitAuthorizationResult> result(
        polkit_authority_check_authorization_sync(
            authority.get(), subject.get(), action, nullptr,
            mayAskUser ? POLKIT_CHECK_AUTHORIZATION_FLAGS_ALLOW_USER_INTERACTION
                       : POLKIT_CHECK_AUTHORIZATION_FLAGS_NONE,
            nullptr, &error),
        &g_object_unref);
    return result != nullptr ? answerOf(result.get()) : unavailable(error);
}

bool PolkitClient::revoke(const std::string& grant)
{
    CallMarker marker("PolkitClient::revoke");
    const KeptSignalAction onBrokenPipe(SIGPIPE);
    const Reference<PolkitAuthority> authority(
        polkit_authority_get_sync(nullptr, nullptr), &g_object_unref);
    return authority != nullptr && polkit_authority_revoke_temporary_authorization_by_id_sync(
                                       authority.get(), grant.c_str(), nullptr, nullptr) != FALSE;
}
