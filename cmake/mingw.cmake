# Cross build for 64-bit Windows with mingw-w64, posix threads.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(_triplet x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${_triplet}-gcc-posix)
set(CMAKE_CXX_COMPILER ${_triplet}-g++-posix)
set(CMAKE_RC_COMPILER ${_triplet}-windres)
set(CMAKE_AR ${_triplet}-gcc-ar-posix CACHE FILEPATH "")
set(CMAKE_RANLIB ${_triplet}-gcc-ranlib-posix CACHE FILEPATH "")

set(CMAKE_FIND_ROOT_PATH /usr/${_triplet})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Nothing but system libraries is imported; address space randomisation and
# no-execute are asked for by name, and no time stamp makes two builds differ.
set(_hardening
    "-static -Wl,--dynamicbase,--nxcompat,--high-entropy-va,--no-insert-timestamp")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${_hardening}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${_hardening}")
set(CMAKE_MODULE_LINKER_FLAGS_INIT "${_hardening}")
set(CMAKE_EXE_LINKER_FLAGS_RELEASE_INIT "-s")
set(CMAKE_SHARED_LINKER_FLAGS_RELEASE_INIT "-s")
set(CMAKE_MODULE_LINKER_FLAGS_RELEASE_INIT "-s")

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../tools/wine)
