# Cross build for Windows with Debian's mingw-w64 (posix thread model); the
# toolchain file of each processor sets KIV_MINGW_TRIPLE and includes this.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${KIV_MINGW_TRIPLE}-gcc-posix)
set(CMAKE_CXX_COMPILER ${KIV_MINGW_TRIPLE}-g++-posix)
set(CMAKE_RC_COMPILER ${KIV_MINGW_TRIPLE}-windres)
set(KIV_WIDL ${KIV_MINGW_TRIPLE}-widl)
set(CMAKE_FIND_ROOT_PATH /usr/${KIV_MINGW_TRIPLE})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
