#include "KFExceptionHandler.h"

#include <cstdio>
#include <cstdlib>

KFExceptionHandler* KFExceptionHandler::GetInstance()
{
    static KFExceptionHandler handler;
    return &handler;
}

// The report on the standard error stands in until the signal filter and the tracer write it.
void KFExceptionHandler::throwException(
    int /*code*/, const char* name, const char* description, const char* fileName, int line)
{
    std::fprintf(
        stderr, "%s : %s - In File : %s - At Line : %d\n", name, description, fileName, line);
    std::exit(0);
}
