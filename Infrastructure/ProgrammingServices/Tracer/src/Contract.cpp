#include "Contract.h"

#include "KFExceptionHandler.h"

namespace {

void check(bool holds, const char* kind, const char* condition, const char* unit, int line)
{
    if (!holds)
        KFExceptionHandler::GetInstance()->throwException(0, kind, condition, unit, line);
}

} // namespace

void Contract::require(bool holds, const char* condition, const char* unit, int line)
{
    check(holds, "REQUIRE VIOLATION", condition, unit, line);
}

void Contract::ensure(bool holds, const char* condition, const char* unit, int line)
{
    check(holds, "ENSURE VIOLATION", condition, unit, line);
}

void Contract::assertThat(bool holds, const char* condition, const char* unit, int line)
{
    check(holds, "ASSERT VIOLATION", condition, unit, line);
}
