# Cross build for i686 Windows.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(KIV_MINGW_TRIPLE i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-w64.cmake)
