# Compiler settings that every target of this project shares, as the interface target morvane_flags.

add_library(morvane_flags INTERFACE)
target_compile_features(morvane_flags INTERFACE cxx_std_17)
target_compile_options(morvane_flags INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wundef -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-align -Wformat=2
    # Arithmetic is part of the product: plain SSE2, no fused multiply-add, no reordering.
    -ffp-contract=off -fno-fast-math
    # __FILE__ names a source below src/, never a directory of the building machine. The last map that fits counts.
    "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/="
    "-fmacro-prefix-map=${PROJECT_SOURCE_DIR}/src/=")
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
    target_compile_options(morvane_flags INTERFACE -march=x86-64 -mfpmath=sse)
endif()
if(MORVANE_WERROR)
    target_compile_options(morvane_flags INTERFACE -Werror)
endif()
if(MORVANE_SANITIZE)
    target_compile_options(morvane_flags INTERFACE
        "-fsanitize=${MORVANE_SANITIZE}" -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(morvane_flags INTERFACE "-fsanitize=${MORVANE_SANITIZE}")
endif()
