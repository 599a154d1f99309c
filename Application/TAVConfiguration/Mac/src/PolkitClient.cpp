#include "PolkitClient.h"

#include "CallMarker.h"

#include <memory>

#include <polkit/polkit.h>
#include <unistd.h>

namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
template<typename T>
using Reference = std::unique_ptr<T, Unref>;

/// Owns the error that a GLib function fills in.
class Failure {
public:
    Failure() = default;
    ~Failure() { g_clear_error(&m_error); }

    Failure(const Failure&) = delete;
    Failure& operator=(const Failure&) = delete;

    GError** out() { return &m_error; }
    std::string text() const { return m_error != nullptr ? m_error->message : "no reason given"; }

private:
    GError* m_error = nullptr;
};

PolkitClient::Answer unavailable(const Failure& failure)
{
    return {PolkitClient::Verdict::unavailable, {}, failure.text()};
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
    Failure failure;
    const Reference<PolkitAuthority> authority(polkit_authority_get_sync(nullptr, failure.out()));
    if (authority == nullptr)
        return unavailable(failure);

    // Start time 0 makes polkit look it up: a later process with the same id is another subject.
    const Reference<PolkitSubject> subject(
        polkit_unix_process_new_for_owner(getpid(), 0, static_cast<int>(getuid())));
    const Reference<PolkitAuthorizationResult> result(polkit_authority_check_authorization_sync(
        authority.get(), subject.get(), action, nullptr,
        mayAskUser ? POLKIT_CHECK_AUTHORIZATION_FLAGS_ALLOW_USER_INTERACTION
                   : POLKIT_CHECK_AUTHORIZATION_FLAGS_NONE,
        nullptr, failure.out()));
    return result != nullptr ? answerOf(result.get()) : unavailable(failure);
}

bool PolkitClient::revoke(const std::string& grant)
{
    CallMarker marker("PolkitClient::revoke");
    Failure ignored;
    const Reference<PolkitAuthority> authority(polkit_authority_get_sync(nullptr, ignored.out()));
    return authority != nullptr && polkit_authority_revoke_temporary_authorization_by_id_sync(
                                       authority.get(), grant.c_str(), nullptr, nullptr) != FALSE;
}
