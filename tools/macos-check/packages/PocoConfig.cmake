# Poco as the cross build sees it: Debian's headers, and a stub library in the sysroot.
include_guard(GLOBAL)
file(MAKE_DIRECTORY "${CMAKE_BINARY_DIR}/packages")
file(CREATE_LINK /usr/include/Poco "${CMAKE_BINARY_DIR}/packages/Poco" SYMBOLIC)
foreach(component IN ITEMS Foundation Net)
  add_library(Poco::${component} INTERFACE IMPORTED)
  target_include_directories(Poco::${component} INTERFACE "${CMAKE_BINARY_DIR}/packages")
  target_link_libraries(Poco::${component} INTERFACE Poco${component})
endforeach()
