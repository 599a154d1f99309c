# tav_add_library(NAME SOURCES <file>... [PUBLIC <target>...] [PRIVATE <target>...]): one floor or
# room, tav::NAME. Its folder is what others include its headers from, and nothing else of the tree.
function(tav_add_library NAME)
    cmake_parse_arguments(LIBRARY "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(tav_${NAME} STATIC ${LIBRARY_SOURCES})
    add_library(tav::${NAME} ALIAS tav_${NAME})
    target_include_directories(tav_${NAME} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(tav_${NAME}
        PUBLIC tav::options ${LIBRARY_PUBLIC} PRIVATE ${LIBRARY_PRIVATE})
    tav_draw_floor(${NAME} ${LIBRARY_PUBLIC} ${LIBRARY_PRIVATE})
endfunction()

# tav_draw_floor(NAME <target>...): the floor of this folder in the drawing, and what it stands on.
function(tav_draw_floor NAME)
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    set(lines "    ${NAME} [label=\"${NAME}\\n${folder}\"]\n")
    list(FILTER ARGN INCLUDE REGEX "^tav::")
    foreach(floor IN LISTS ARGN)
        string(REPLACE "tav::" "" floor ${floor})
        string(APPEND lines "    ${NAME} -> ${floor}\n")
    endforeach()
    set_property(GLOBAL APPEND_STRING PROPERTY TAV_FLOORS "${lines}")
endfunction()

# The drawing of all floors, for docs/pictures.
function(tav_write_floors)
    get_property(lines GLOBAL PROPERTY TAV_FLOORS)
    file(WRITE ${PROJECT_BINARY_DIR}/floors.dot
        "digraph floors {\n"
        "    graph [bgcolor=white, ranksep=0.35, nodesep=0.25]\n"
        "    node [shape=box, style=\"rounded,filled\", fillcolor=\"#eef3fa\", fontname=\"DejaVu Sans\", fontsize=10]\n"
        "${lines}}\n")
endfunction()
