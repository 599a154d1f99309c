#pragma once

#include <functional>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

/// Runs a piece of a test in a child process, where it may give up rights and set limits.
class ForkedChild {
public:
    /// What `act` returned; false also when the child ended in any other way.
    static bool run(const std::function<bool()>& act)
    {
        const pid_t child = fork();
        if (child == 0)
            _exit(act() ? 0 : 1);
        int status = 0;
        return child > 0 && waitpid(child, &status, 0) == child && status == 0;
    }

    /// The same without the rights of root, whoever runs the test.
    static bool runAsOrdinaryUser(const std::function<bool()>& act)
    {
        return run([&] { return becomeOrdinaryUser() && act(); });
    }

private:
    static bool becomeOrdinaryUser()
    {
        constexpr uid_t nobody = 65534;
        return geteuid() != 0 ||
               (setgroups(0, nullptr) == 0 && setgid(nobody) == 0 && setuid(nobody) == 0);
    }
};
