#pragma once

#include <string>

/// Asks polkit about one action, this process being the subject.
///
/// Each operation connects for itself and blocks until polkit has answered; main thread only. A
/// service that cannot be reached is an answer, never an exception. GLib has the process ignore
/// SIGPIPE while an operation lasts, not longer: started programs would ignore it too.
class PolkitClient {
public:
    enum class Verdict {
        granted,
        refused,
        dismissed,   ///< the user closed the prompt
        nobodyToAsk, ///< a password is needed, but no agent can ask for it
        unavailable, ///< no service, or it does not know the action
    };

    struct Answer {
        Verdict verdict = Verdict::unavailable;
        /// Names the grant that polkit keeps for this process; empty when it keeps none.
        std::string grant;
        /// Why the service was unavailable.
        std::string reason;
    };

    static Answer check(const char* action, bool mayAskUser);

    /// False when polkit keeps the grant nevertheless.
    static bool revoke(const std::string& grant);
};
