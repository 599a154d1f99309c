#pragma once

/// Contract checks, kept in every build. A check that does not hold installs the crash handler and
/// raises a violation through it: the process reports and ends, nothing is thrown.
///
/// Each check tells whether its condition holds. Where the signal of violations is blocked a failed
/// one returns, so a caller that could not go on without harm leaves:
///
///     if (!Contract::require(name != nullptr, "name != NULL", UNIT))
///         return;
///
/// `condition` is the text of what must hold, `unit` names the file in the report. The line is that
/// of the check, but where readers of the reports know another number.
namespace Contract {

/// Pre-condition: reported as "REQUIRE VIOLATION".
bool require(bool holds, const char* condition, const char* unit, int line = __builtin_LINE());

/// Post-condition: reported as "ENSURE VIOLATION".
bool ensure(bool holds, const char* condition, const char* unit, int line = __builtin_LINE());

/// Internal assertion: reported as "ASSERT VIOLATION".
bool assertThat(bool holds, const char* condition, const char* unit, int line = __builtin_LINE());

} // namespace Contract
