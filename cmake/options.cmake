# The value of platformChar: 'W' is Windows, every other letter is Unix-like. W on a Unix-like system compiles the rules
# of Windows there, for testing.
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

# A widgets application object aborts on a Unix-like system without a display, and takes three times as long to start.
# So it is used on Windows only, where Qt has widgets.
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

# Without machine code in it, only the compiler that made an installed static library could link it.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    set(CMAKE_CXX_COMPILE_OPTIONS_IPO -flto=auto -ffat-lto-objects)
endif()
