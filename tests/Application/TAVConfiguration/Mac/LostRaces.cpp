#include <cstdlib>

#include <sys/stat.h>

// The linker leads every call of mkdir() in the start-up probe here.
extern "C" {

int realMkdir(const char* path, mode_t mode) __asm__("__real_mkdir");
int mkdirCalled(const char* path, mode_t mode) __asm__("__wrap_mkdir");

int mkdirCalled(const char* path, mode_t mode)
{
    if (std::getenv("PROBE_LOST_RACES") != nullptr)
        realMkdir(path, mode);
    return realMkdir(path, mode);
}

} // extern "C"
