#include "Contract.h"

#include "KFExceptionHandler.h"

namespace {

bool check(bool holds, const char* kind, const char* condition, const char* unit, int line)
{
    if (!holds)
        KFExceptionHandler::GetInstance()->throwException(0, kind, condition, unit, line);
    return holds;
}

} // namespace

bool Contract::require(bool holds, const char* condition, const char* unit, int line)
{
    return check(holds, "REQUIRE VIOLATION", condition, unit, line);
}

bool Contract::ensure(bool holds, const char* condition, const char* unit, int line)
{
    return check(holds, "ENSURE VIOLATION", condition, unit, line);
}

bool Contract::assertThat(bool holds, const char* condition, const char* unit, int line)
{
    return check(holds, "ASSERT VIOLATION", condition, unit, line);
}
