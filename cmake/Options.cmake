# Compiler options that every target of this project shares.
add_library(norvane-options INTERFACE)
target_compile_options(norvane-options INTERFACE
    -Wall -Wextra -Wshadow -Wold-style-cast -Woverloaded-virtual -Wnon-virtual-dtor
    -Wimplicit-fallthrough -Wno-multichar
    $<$<BOOL:${NORVANE_WERROR}>:-Werror>
    # gcc 12 sees overlaps in std::string that are not there.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<CXX_COMPILER_ID:Clang>:-Wthread-safety>)
if(NORVANE_GUARDS)
    target_compile_definitions(norvane-options INTERFACE KITS_GUARDS=1)
endif()
if(NORVANE_SANITIZE)
    target_compile_options(norvane-options INTERFACE
        -fsanitize=${NORVANE_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(norvane-options INTERFACE -fsanitize=${NORVANE_SANITIZE})
    # Whoever holds a pointer to a looper that is gone may ask for its lock, and is refused: the call
    # reads nothing of it, while this check before the call would read its type.
    if(NORVANE_SANITIZE MATCHES "undefined")
        target_compile_options(norvane-options INTERFACE -fno-sanitize=vptr)
    endif()
endif()
target_link_libraries(norvane-options INTERFACE Threads::Threads)
