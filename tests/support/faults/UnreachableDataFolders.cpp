#include <cstdlib>
#include <initializer_list>

// A test program that links to it has no data folders of the machine: before the first test, they
// are set to where nothing can be made, not even by root. A test that needs some makes its own.
namespace {

const bool set = [] {
    for (const char* variable : {"HOME", "XDG_DATA_HOME", "TAV_COMMON_DATA_DIR"})
        setenv(variable, "/dev/null/none", 1);
    return true;
}();

} // namespace
