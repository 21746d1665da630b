# What only those who work on this project build: tests, fuzz targets, benchmarks and examples.
option(APPRUNTIME_TESTS "Build the tests" ON)
option(APPRUNTIME_BOTH_LETTERS "Test the rules of Windows beside this system's own" ON)
option(APPRUNTIME_FUZZ_ENGINE "Build the fuzz targets with the engine of clang instead of as tests" OFF)
option(APPRUNTIME_BENCHMARKS "Build the benchmarks where Google Benchmark is installed" ON)
option(APPRUNTIME_EXAMPLES "Build the examples" ON)

if(APPRUNTIME_TESTS)
    include(CTest)
    # The rules of Windows are tested here too, with a library and a launcher of their own.
    if(APPRUNTIME_BOTH_LETTERS AND NOT APPRUNTIME_LETTER STREQUAL "W")
        appruntime_add_library(runtime_w W)
        appruntime_add_launcher(launcher_w runtime_w)
        set_target_properties(
            launcher_w PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/launcher"
        )
    endif()
    add_subdirectory(tests)
endif()

if(APPRUNTIME_TESTS OR APPRUNTIME_FUZZ_ENGINE)
    add_subdirectory(fuzz)
endif()

if(APPRUNTIME_BENCHMARKS)
    find_package(benchmark QUIET)
    if(benchmark_FOUND)
        add_subdirectory(benchmarks)
    endif()
endif()

if(APPRUNTIME_EXAMPLES)
    add_subdirectory(examples)
endif()
