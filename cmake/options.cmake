# The letter that every platform test of the runtime compares with: 'W' is Windows, every other
# letter Unix-like. Another letter than the system's own compiles that system's rules for testing.
set(APPRUNTIME_PLATFORM_CHAR "" CACHE STRING "Platform letter of the runtime; empty for this system's own")
if(APPRUNTIME_PLATFORM_CHAR STREQUAL "")
    if(WIN32)
        set(APPRUNTIME_LETTER W)
    else()
        set(APPRUNTIME_LETTER U)
    endif()
else()
    set(APPRUNTIME_LETTER "${APPRUNTIME_PLATFORM_CHAR}")
endif()
if(NOT APPRUNTIME_LETTER MATCHES "^[A-Z]$")
    message(FATAL_ERROR "APPRUNTIME_PLATFORM_CHAR is one capital letter, not \"${APPRUNTIME_LETTER}\"")
endif()

# A widgets application object aborts on a Unix-like system without its display and costs three times
# the start-up, so it is taken on Windows only, and there only when Qt has widgets.
set(LAUNCHER_APPLICATION "" CACHE STRING "Application object of the launcher: core, widgets, or empty to choose")
set_property(CACHE LAUNCHER_APPLICATION PROPERTY STRINGS "" core widgets)
if(NOT LAUNCHER_APPLICATION MATCHES "^(core|widgets)?$")
    message(FATAL_ERROR "LAUNCHER_APPLICATION is core or widgets, not \"${LAUNCHER_APPLICATION}\"")
endif()

option(BUILD_SHARED_LIBS "Build the runtime as a shared library" OFF)
option(APPRUNTIME_INSTALL "Make install rules" ${PROJECT_IS_TOP_LEVEL})

if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

# Of intermediate code alone, an installed static library could be linked by none but the very compiler that made it.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(CMAKE_CXX_COMPILE_OPTIONS_IPO -flto=auto -ffat-lto-objects)
endif()
