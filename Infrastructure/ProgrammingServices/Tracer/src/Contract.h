#pragma once

/// Contract checks, kept in every build. A check that does not hold installs the crash handler and
/// raises a violation through it: the process reports and ends, nothing is thrown.
///
/// `condition` is the text of what must hold, `unit` and `line` name the check in the report; they
/// are written out at each check, so that a report does not change with the layout of a file.
namespace Contract {

/// Pre-condition: reported as "REQUIRE VIOLATION".
void require(bool holds, const char* condition, const char* unit, int line);

/// Post-condition: reported as "ENSURE VIOLATION".
void ensure(bool holds, const char* condition, const char* unit, int line);

/// Internal assertion: reported as "ASSERT VIOLATION".
void assertThat(bool holds, const char* condition, const char* unit, int line);

} // namespace Contract
