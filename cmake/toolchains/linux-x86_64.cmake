# Linux programs that need nothing beside them, not even the loader: fully static and at a fixed address, so that
# there is nothing to relocate when one starts.
set(CMAKE_SYSTEM_NAME Linux) # said aloud, it makes this a cross build: Qt's own tools come from the system
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER gcc)
set(CMAKE_CXX_COMPILER g++)

set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -no-pie")
