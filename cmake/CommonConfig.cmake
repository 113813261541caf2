# Strictness and Qt hygiene in one place: every target links kx_common.
add_library(kx_common INTERFACE)
target_compile_features(kx_common INTERFACE cxx_std_20)
target_compile_options(kx_common INTERFACE
    -Wall -Wextra -Wpedantic -Wold-style-cast -Wnon-virtual-dtor -Wshadow=local)
target_compile_definitions(kx_common INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_USE_QSTRINGBUILDER
    QT_NO_CONTEXTLESS_CONNECT
    QT_NO_FOREACH
    QT_DISABLE_DEPRECATED_UP_TO=0x060400)
target_include_directories(kx_common INTERFACE ${PROJECT_SOURCE_DIR}/src)

option(KX_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(KX_SANITIZE)
    target_compile_options(kx_common INTERFACE -fsanitize=address,undefined -fno-omit-frame-pointer)
    target_link_options(kx_common INTERFACE -fsanitize=address,undefined)
endif()

option(KX_WERROR "Treat warnings as errors" OFF)
if(KX_WERROR)
    target_compile_options(kx_common INTERFACE -Werror)
endif()

# A library made of every source in its folder, so adding a file needs no CMake edit.
function(kx_add_library NAME DIR)
    file(GLOB _srcs CONFIGURE_DEPENDS ${DIR}/*.cpp ${DIR}/*.h)
    if(NOT _srcs)
        # An empty folder still yields a linkable library until its first source lands.
        set(_stub ${CMAKE_CURRENT_BINARY_DIR}/${NAME}_empty.cpp)
        file(WRITE ${_stub} "namespace { [[maybe_unused]] int emptyLibrary; }\n")
        set(_srcs ${_stub})
    endif()
    add_library(${NAME} STATIC ${_srcs})
    target_link_libraries(${NAME} PUBLIC kx_common ${ARGN})
endfunction()
