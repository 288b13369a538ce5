# What every target of the project is compiled with. Warnings are errors with GCC; other compilers, which the checks
# use, have other opinions.
function(corvane_defaults target)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR})
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast -Wnon-virtual-dtor
        -Woverloaded-virtual -Wdouble-promotion -Wformat=2 -Wimplicit-fallthrough $<$<CXX_COMPILER_ID:GNU>:-Werror>)
    if(CORVANE_UNITY)
        set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
        # Sources of one unit see each other's names. GCC takes a source within a unit for a header, and warns when a
        # class there has members of a type that is the source's own.
        target_compile_options(${target} PRIVATE -Wno-shadow $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-subobject-linkage>)
    endif()
    if(CORVANE_ASSERTIONS)
        target_compile_options(${target} PRIVATE -UNDEBUG)
        target_compile_definitions(${target} PRIVATE _GLIBCXX_ASSERTIONS)
    endif()
    if(CORVANE_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=${CORVANE_SANITIZE} -fno-omit-frame-pointer
            -fno-sanitize-recover=all)
        target_link_options(${target} PUBLIC -fsanitize=${CORVANE_SANITIZE})
    endif()
endfunction()

# corvane_library(NAME SOURCES... [LINK libraries...])
function(corvane_library name)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    add_library(${name} STATIC ${ARG_UNPARSED_ARGUMENTS})
    target_link_libraries(${name} PUBLIC ${ARG_LINK})
    corvane_defaults(${name})
endfunction()
