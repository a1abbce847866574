# How every target of the player is compiled, and the one way to make its libraries.

add_library(sonnel_options INTERFACE)
target_compile_options(sonnel_options INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror)
target_include_directories(sonnel_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_definitions(sonnel_options INTERFACE
    SONNEL_VERSION_MAJOR=${PROJECT_VERSION_MAJOR}
    SONNEL_VERSION_MINOR=${PROJECT_VERSION_MINOR}
    SONNEL_VERSION_REVISION=${PROJECT_VERSION_PATCH})

if(SONNEL_SANITIZE)
    target_compile_options(sonnel_options INTERFACE
        -fsanitize=${SONNEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(sonnel_options INTERFACE -fsanitize=${SONNEL_SANITIZE})
endif()
if(SONNEL_FUZZ)
    target_compile_options(sonnel_options INTERFACE
        -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all)
    target_link_options(sonnel_options INTERFACE -fsanitize=address,undefined)
endif()

# sonnel_library(NAME LIBRARIES...): the std-only sources of the current folder. Files named frm*
# and CRebar belong to the windows and are left out; such a library links only other std-only ones
# (sonnel_platform also utf8proc).
function(sonnel_library name)
    file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
    list(FILTER sources EXCLUDE REGEX "/(frm[^/]*|CRebar)\\.(cpp|h)$")
    add_library(${name} STATIC ${sources})
    target_link_libraries(${name} PUBLIC sonnel_options ${ARGN})
endfunction()
