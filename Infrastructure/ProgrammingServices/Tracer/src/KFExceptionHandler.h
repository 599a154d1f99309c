#pragma once

/// Turns a crash or a contract violation into a last report, then ends the process with status 0.
class KFExceptionHandler {
public:
    /// The one handler, created at the first call and never destroyed.
    static KFExceptionHandler* GetInstance();

    /// Records a violation and raises it as a signal.
    void throwException(
        int code, const char* name, const char* description, const char* fileName, int line);

private:
    KFExceptionHandler() = default;
};
