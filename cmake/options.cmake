# Every build option stands here, with its default.
option(GUANCHAO_WERROR "Treat warnings as errors" OFF)
option(GUANCHAO_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
option(GUANCHAO_TESTS "Build the tests" OFF)
option(GUANCHAO_BROWSER "Build the browser control of the F10 pages (Qt WebEngine)" ON)
option(GUANCHAO_BENCH "Build the benchmarks" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(guanchao_options INTERFACE)
target_compile_options(guanchao_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    $<$<BOOL:${GUANCHAO_WERROR}>:-Werror>)
target_compile_definitions(guanchao_options INTERFACE
    QT_USE_QSTRINGBUILDER QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
if(GUANCHAO_SANITIZE)
    target_compile_options(guanchao_options INTERFACE
        -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
    target_link_options(guanchao_options INTERFACE -fsanitize=address,undefined)
endif()
