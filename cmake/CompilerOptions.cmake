# tav::options carries what every target is built with: the language, the warnings, the sanitizers.
add_library(tav_options INTERFACE)
add_library(tav::options ALIAS tav_options)

set(CMAKE_COMPILE_WARNING_AS_ERROR ON)
target_compile_features(tav_options INTERFACE cxx_std_20)
target_compile_options(tav_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
    -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wformat=2 -Wnull-dereference
    -Wimplicit-fallthrough -Wundef)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(tav_options INTERFACE
        -Wduplicated-cond -Wduplicated-branches -Wlogical-op)
endif()

set(TAV_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
if(TAV_SANITIZE)
    target_compile_options(tav_options INTERFACE
        -fsanitize=${TAV_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(tav_options INTERFACE -fsanitize=${TAV_SANITIZE})
endif()

# The fuzzers are steered by the coverage of everything below them.
if(TAV_BUILD_FUZZERS)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "TAV_BUILD_FUZZERS needs clang")
    endif()
    target_compile_options(tav_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# A tool that runs as root is hardened in the build that is shipped.
if(CMAKE_BUILD_TYPE STREQUAL "RelWithDebInfo" OR CMAKE_BUILD_TYPE STREQUAL "Release")
    target_compile_options(tav_options INTERFACE
        -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -fstack-protector-strong -D_GLIBCXX_ASSERTIONS)
    target_link_options(tav_options INTERFACE -Wl,-z,relro,-z,now)
endif()
