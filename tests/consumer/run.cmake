# Builds the consumer and runs its test: cmake -DKIND=tree|package -DSHARED=ON|OFF -DBUILD=... -DSOURCE=... -DWORK=...
#
# For the package the runtime is built and installed anew, into a folder that is then moved: the package must not
# remember where it was.
function(run)
    execute_process(COMMAND ${ARGV} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

file(REMOVE_RECURSE "${WORK}")
set(common -G Ninja -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS=${FLAGS}" -DBUILD_SHARED_LIBS=${SHARED})
if(KIND STREQUAL "tree")
    set(options "-DRUNTIME_TREE=${SOURCE}")
else()
    run("${CMAKE_COMMAND}" -S "${SOURCE}" -B "${WORK}/runtime" ${common} -DAPPRUNTIME_TESTS=OFF -DAPPRUNTIME_BENCHMARKS=OFF)
    run("${CMAKE_COMMAND}" --build "${WORK}/runtime")
    run("${CMAKE_COMMAND}" --install "${WORK}/runtime" --prefix "${WORK}/first")
    file(RENAME "${WORK}/first" "${WORK}/moved")
    set(options "-DCMAKE_PREFIX_PATH=${WORK}/moved")
endif()
run("${CMAKE_COMMAND}" -S "${SOURCE}/tests/consumer" -B "${WORK}/consumer" ${common} ${options})
run("${CMAKE_COMMAND}" --build "${WORK}/consumer" --target consumer)
run("${CMAKE_CTEST_COMMAND}" --test-dir "${WORK}/consumer" --output-on-failure)
