# Windows, 32 bits: linked and looked at, but not run. The registers of SSE2 round each operation to its type as those of 64 bits do.
set(triplet i686-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_FLAGS_INIT "-msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
include(${CMAKE_CURRENT_LIST_DIR}/mingw.cmake)
