# What only a Mac runs: platform/macos. On Linux the tests compile it too, against the project's own declarations of
# Apple's interfaces (macos-sdk/declarations), and run it over fakes of Apple's frameworks (tests/platform/macos/fakes).
if(APPLE)
    set(CORVANE_MAC_SOURCES ON)
elseif(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND CORVANE_TESTS)
    set(CORVANE_MAC_SOURCES ON)
    if(NOT CMAKE_OBJCXX_COMPILER)
        # A full path: a first run of CMake does not find a name that is set here.
        find_program(CORVANE_OBJCXX clang++-14 REQUIRED)
        set(CMAKE_OBJCXX_COMPILER ${CORVANE_OBJCXX})
    endif()
else()
    set(CORVANE_MAC_SOURCES OFF)
endif()

if(CORVANE_MAC_SOURCES)
    enable_language(OBJCXX)
    set(CMAKE_OBJCXX_STANDARD 20)
    set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
    set(CMAKE_OBJCXX_EXTENSIONS OFF)
endif()

# Compiles a target's sources, .cpp and .mm, against Apple's frameworks, or against what stands for them elsewhere.
# Objective-C++ counts its references by itself, and its warnings are errors; not so those of Apple's own compiler and
# headers, which nobody has seen yet.
function(corvane_mac_sources target)
    set(objective -fobjc-arc -fblocks -Wundeclared-selector)
    if(NOT APPLE OR CMAKE_CROSSCOMPILING)
        list(APPEND objective -Werror)
    endif()
    if(NOT APPLE)
        target_include_directories(${target} SYSTEM PRIVATE ${PROJECT_SOURCE_DIR}/macos-sdk/declarations)
        # Messages are sent by looking their methods up, which takes no assembler.
        list(APPEND objective -fobjc-runtime=gnustep-2.0 -fobjc-legacy-dispatch)
    endif()
    target_compile_options(${target} PRIVATE "$<$<COMPILE_LANGUAGE:OBJCXX>:${objective}>")
endfunction()

# corvane_mac_library(NAME SOURCES... [FRAMEWORKS frameworks...] [LINK libraries...])
function(corvane_mac_library name)
    cmake_parse_arguments(ARG "" "" "FRAMEWORKS;LINK" ${ARGN})
    corvane_library(${name} ${ARG_UNPARSED_ARGUMENTS} LINK ${ARG_LINK})
    corvane_mac_sources(${name})
    if(APPLE)
        target_link_libraries(${name} PUBLIC -lobjc)
        foreach(framework IN LISTS ARG_FRAMEWORKS)
            target_link_libraries(${name} PUBLIC "-framework ${framework}")
        endforeach()
    else()
        target_link_libraries(${name} PUBLIC corvane-fake-macos)
    endif()
endfunction()
