# Linux programs that need nothing beside them, not even the loader. They are position-independent all the same, and
# Qt is compiled with the same protection as the launcher.
set(CMAKE_SYSTEM_NAME Linux) # said aloud, it makes this a cross build: Qt's own tools come from the system
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)

set(protection "-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2")
set(CMAKE_C_FLAGS_INIT "${protection}")
set(CMAKE_CXX_FLAGS_INIT "${protection}")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static-pie -Wl,-z,relro,-z,now")
