# Builds the consumer and runs its test:
#
#     cmake -DKIND=tree|fetch|package -DSHARED=ON|OFF -DSOURCE=... -DBUILD=... -DWORK=... -P run.cmake
#
# The package is installed from the build folder BUILD, or for a shared library from one of its own, and then
# moved: it must not remember where it was.
function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# In few large units, as some programs are built: it takes a fifth of the time.
set(common -G Ninja "-DCMAKE_CXX_FLAGS=${FLAGS}" -DBUILD_SHARED_LIBS=${SHARED} -DCMAKE_UNITY_BUILD=ON
    -DCMAKE_UNITY_BUILD_BATCH_SIZE=16
)
if(KIND STREQUAL "tree")
    set(options -DRUNTIME_FETCH=OFF "-DRUNTIME_TREE=${SOURCE}")
elseif(KIND STREQUAL "fetch")
    # The consumer does what README shows.
    foreach(page IN ITEMS README.md README.ja.md tests/consumer/CMakeLists.txt)
        file(STRINGS "${SOURCE}/${page}" lines REGEX "^ *FetchContent_")
        string(REGEX REPLACE "(^|;) +" "\\1" lines "${lines}")
        list(APPEND shown "${lines}")
    endforeach()
    list(REMOVE_DUPLICATES shown)
    list(LENGTH shown count)
    if(NOT count EQUAL 2)
        message(FATAL_ERROR "README and the consumer fetch the sources in two ways: ${shown}")
    endif()
    set(options -DRUNTIME_FETCH=ON "-DFETCHCONTENT_SOURCE_DIR_APPRUNTIME=${SOURCE}")
else()
    if(SHARED)
        set(BUILD "${WORK}/runtime")
        run(
            "${CMAKE_COMMAND}" -S "${SOURCE}" -B "${BUILD}" ${common} -DCMAKE_BUILD_TYPE=Debug
            -DAPPRUNTIME_TESTS=OFF -DAPPRUNTIME_BENCHMARKS=OFF -DAPPRUNTIME_EXAMPLES=OFF
        )
        run("${CMAKE_COMMAND}" --build "${BUILD}")
    endif()
    file(REMOVE_RECURSE "${WORK}/first" "${WORK}/moved")
    run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${WORK}/first")
    file(RENAME "${WORK}/first" "${WORK}/moved")
    run("${WORK}/moved/bin/launcher" "${CMAKE_COMMAND}" --version)
    if(SHARED)
        file(GLOB_RECURSE library "${WORK}/moved/*/libappruntime.so.8.0.4")
        run("${SOURCE}/tests/support/symbols.sh" shared "${library}")
    endif()
    set(options "-DCMAKE_PREFIX_PATH=${WORK}/moved")
endif()

if(KIND STREQUAL "package" AND PKG_CONFIG)
    file(GLOB_RECURSE module "${WORK}/moved/*/appruntime.pc")
    get_filename_component(module_folder "${module}" DIRECTORY)
    get_filename_component(library_folder "${module_folder}" DIRECTORY)
    set(ENV{PKG_CONFIG_PATH} "${module_folder}:${QT_MODULES}:$ENV{PKG_CONFIG_PATH}")
    execute_process(
        COMMAND "${PKG_CONFIG}" --cflags --libs "appruntime >= 8.0.4"
        OUTPUT_VARIABLE flags
        COMMAND_ERROR_IS_FATAL ANY
    )
    separate_arguments(flags UNIX_COMMAND "${FLAGS} ${flags}")
    run(
        "${COMPILER}" -std=c++20 -fPIC "${SOURCE}/tests/consumer/main.cpp" -o "${WORK}/without_cmake" ${flags}
        "-Wl,-rpath,${library_folder}"
    )
    execute_process(
        COMMAND "${WORK}/without_cmake" one two
        OUTPUT_VARIABLE printed
        COMMAND_ERROR_IS_FATAL ANY
    )
    if(NOT printed STREQUAL "CONSUMER 37/8.0.4 2 \"one\" not in('two')\n")
        message(FATAL_ERROR "The consumer built by pkg-config's flags printed: ${printed}")
    endif()
endif()
run("${CMAKE_COMMAND}" -S "${SOURCE}/tests/consumer" -B "${WORK}/consumer" ${common} ${options})
run("${CMAKE_COMMAND}" --build "${WORK}/consumer" --target consumer --target names)
run("${CMAKE_CTEST_COMMAND}" --test-dir "${WORK}/consumer" --output-on-failure)
