# Strictness and Qt hygiene in one place: every target links kx_common.
add_library(kx_common INTERFACE)
target_compile_features(kx_common INTERFACE cxx_std_20)
target_compile_options(kx_common INTERFACE
    -Wall -Wextra -Wpedantic -Wold-style-cast -Wnon-virtual-dtor $<$<CXX_COMPILER_ID:GNU>:-Wshadow=local>)
target_compile_definitions(kx_common INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_USE_QSTRINGBUILDER
    QT_NO_CONTEXTLESS_CONNECT
    QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_UP_TO=0x060400)
target_include_directories(kx_common INTERFACE ${PROJECT_SOURCE_DIR}/src)

# Debug information is most of the compile time; a build that is only tested (CI) can leave it
# out ("none") or keep just line tables for the sanitizers' reports ("lines").
set(KX_DEBUG_INFO "default" CACHE STRING "Debug information: default (the build type's), lines or none")
set_property(CACHE KX_DEBUG_INFO PROPERTY STRINGS default lines none)
if(KX_DEBUG_INFO STREQUAL "lines")
    target_compile_options(kx_common INTERFACE -g1)
elseif(KX_DEBUG_INFO STREQUAL "none")
    target_compile_options(kx_common INTERFACE -g0)
elseif(NOT KX_DEBUG_INFO STREQUAL "default")
    message(FATAL_ERROR "KX_DEBUG_INFO must be default, lines or none, not ${KX_DEBUG_INFO}")
endif()

# Undefined behaviour ends the program like a memory error does, so a test that meets it fails.
option(KX_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(KX_SANITIZE)
    target_compile_options(kx_common INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                               -fno-omit-frame-pointer)
    target_link_options(kx_common INTERFACE -fsanitize=address,undefined)
endif()

# Fuzz targets (fuzz/) need clang's libFuzzer. Everything they link is built with the fuzzer's
# coverage instrumentation and both sanitizers; the targets themselves link the fuzzer's main().
option(KX_FUZZ "Build the fuzz targets (needs clang)" OFF)
if(KX_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "KX_FUZZ needs clang: configure with -DCMAKE_CXX_COMPILER=clang++")
    endif()
    target_compile_options(kx_common INTERFACE -fsanitize=fuzzer-no-link,address,undefined
                                               -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(kx_common INTERFACE -fsanitize=address,undefined)
endif()

option(KX_WERROR "Treat warnings as errors" OFF)
if(KX_WERROR)
    target_compile_options(kx_common INTERFACE -Werror)
endif()

# A library made of every source in its folder, so adding a file needs no CMake edit.
function(kx_add_library NAME DIR)
    file(GLOB_RECURSE _srcs CONFIGURE_DEPENDS ${DIR}/*.cpp ${DIR}/*.h)
    if(NOT _srcs)
        # An empty folder still yields a linkable library until its first source lands.
        set(_stub ${CMAKE_CURRENT_BINARY_DIR}/${NAME}_empty.cpp)
        file(WRITE ${_stub} "namespace { [[maybe_unused]] int emptyLibrary; }\n")
        set(_srcs ${_stub})
    endif()
    add_library(${NAME} STATIC ${_srcs})
    target_link_libraries(${NAME} PUBLIC kx_common ${ARGN})
endfunction()
