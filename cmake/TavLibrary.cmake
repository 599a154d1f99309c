# tav_add_library(NAME SOURCES <file>... [PUBLIC <target>...] [PRIVATE <target>...]): one floor or
# room, tav::NAME. Its folder is what others include its headers from, and nothing else of the tree.
function(tav_add_library NAME)
    cmake_parse_arguments(LIBRARY "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(tav_${NAME} STATIC ${LIBRARY_SOURCES})
    add_library(tav::${NAME} ALIAS tav_${NAME})
    target_include_directories(tav_${NAME} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(tav_${NAME}
        PUBLIC tav::options ${LIBRARY_PUBLIC} PRIVATE ${LIBRARY_PRIVATE})
endfunction()
