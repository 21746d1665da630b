# Builds the consumer and runs its test:
#
#     cmake -DKIND=tree|package -DSHARED=ON|OFF -DSOURCE=... -DBUILD=... -DWORK=... -P run.cmake
#
# The package is installed from the build folder BUILD, or for a shared library from one of its own, and then
# moved: it must not remember where it was.
function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(common -G Ninja "-DCMAKE_CXX_FLAGS=${FLAGS}" -DBUILD_SHARED_LIBS=${SHARED})
if(KIND STREQUAL "tree")
    set(options "-DRUNTIME_TREE=${SOURCE}")
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
    set(options "-DCMAKE_PREFIX_PATH=${WORK}/moved")
endif()
run("${CMAKE_COMMAND}" -S "${SOURCE}/tests/consumer" -B "${WORK}/consumer" ${common} ${options})
run("${CMAKE_COMMAND}" --build "${WORK}/consumer" --target consumer)
run("${CMAKE_CTEST_COMMAND}" --test-dir "${WORK}/consumer" --output-on-failure)
