set(macos_architecture x86_64)
include("${CMAKE_CURRENT_LIST_DIR}/macos.cmake")
