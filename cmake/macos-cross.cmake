# Toolchain for macOS on Apple silicon, on Debian: LLVM 14's compiler and linker, LLVM 16's libc++ headers (14's lack the
# algorithms of std::ranges, and the two cannot be installed together), and macos-sdk in place of Apple's SDK.
#
# What it makes has been seen by a compiler and a linker alone: it is a check, and nothing to ship.

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)

get_filename_component(corvane_sdk ${CMAKE_CURRENT_LIST_DIR}/../macos-sdk ABSOLUTE)
set(CORVANE_LIBCXX /usr/lib/llvm-16/include/c++/v1)
if(NOT EXISTS ${CORVANE_LIBCXX}/__config)
    message(FATAL_ERROR "There is no libc++ in ${CORVANE_LIBCXX}: install the packages with scripts/lib/install-packages cross")
endif()

# Where programs look for the system's headers and libraries. The libraries are stubs that the build makes.
if(NOT CMAKE_OSX_SYSROOT)
    set(CMAKE_OSX_SYSROOT ${CMAKE_BINARY_DIR}/sysroot)
endif()
file(MAKE_DIRECTORY ${CMAKE_OSX_SYSROOT}/usr/local/include)
file(CREATE_LINK ${corvane_sdk}/libc ${CMAKE_OSX_SYSROOT}/usr/include SYMBOLIC)

set(CMAKE_C_COMPILER /usr/bin/clang-14)
set(CMAKE_CXX_COMPILER /usr/bin/clang++-14)
set(CMAKE_OBJCXX_COMPILER /usr/bin/clang++-14)
set(CMAKE_AR /usr/bin/llvm-ar-14)
set(CMAKE_RANLIB /usr/bin/llvm-ranlib-14)
set(CMAKE_NM /usr/bin/llvm-nm-14)
set(CMAKE_INSTALL_NAME_TOOL /usr/bin/llvm-install-name-tool-14)
foreach(language C CXX OBJCXX)
    set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macos13)
    set(CMAKE_${language}_FLAGS_INIT -Wundeclared-selector)
endforeach()
foreach(language CXX OBJCXX)
    string(APPEND CMAKE_${language}_FLAGS_INIT
        " -nostdinc++ -isystem ${corvane_sdk}/libcxx -isystem ${CORVANE_LIBCXX} -isystem ${corvane_sdk}/declarations")
endforeach()
# Otherwise the compiler would prepare for GCC's C++ library.
string(APPEND CMAKE_OBJCXX_FLAGS_INIT " -stdlib=libc++")
foreach(kind EXE MODULE SHARED)
    set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -stdlib=libc++ -Wl,-dead_strip -Wl,-fatal_warnings -Wno-unused-command-line-argument")
endforeach()

# What is tried while configuring is compiled only: there are no libraries yet.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

# Packages: {fmt}'s headers without what else is beside them, and this machine's Qt, whose headers and tools serve for any
# system.
list(PREPEND CMAKE_MODULE_PATH ${corvane_sdk}/packages)
set(CORVANE_FMT_HEADERS ${CMAKE_OSX_SYSROOT}/usr/local/include CACHE PATH "Where the headers of {fmt} are")
file(CREATE_LINK /usr/include/fmt ${CORVANE_FMT_HEADERS}/fmt SYMBOLIC)
set(CMAKE_DISABLE_FIND_PACKAGE_WrapVulkanHeaders ON)
set(QT_HOST_PATH /usr)
set(Qt6_DIR /usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake/Qt6)
