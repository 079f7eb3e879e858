# Builds for Windows with the mingw-w64 compilers of Debian. Included by the toolchain file of an architecture, which sets `triplet`.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${triplet}-windres)

# Libraries of the compiler go into what is built: a host's folder has none of them. No time in the file: the same sources give the
# same bytes.
set(linker_flags "-static -Wl,--no-insert-timestamp")
set(CMAKE_EXE_LINKER_FLAGS_INIT ${linker_flags})
set(CMAKE_SHARED_LINKER_FLAGS_INIT ${linker_flags})
set(CMAKE_MODULE_LINKER_FLAGS_INIT ${linker_flags})

# Programs are those of this machine, everything else is the target's; CMake packages that are headers only may be this machine's.
set(CMAKE_FIND_ROOT_PATH /usr/${triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
