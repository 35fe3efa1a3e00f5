set(macos_architecture arm64)
include("${CMAKE_CURRENT_LIST_DIR}/macos.cmake")
