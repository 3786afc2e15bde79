# Cross-compiles for macOS on Debian: clang and ld64.lld, GNUstep's Objective-C headers, LLVM's C++ library, musl's C
# headers, and the declarations beside this file. MACOS_ARCHITECTURE and CMAKE_OSX_SYSROOT come from the command line.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR "${MACOS_ARCHITECTURE}")
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MACOS_ARCHITECTURE)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(CMAKE_CXX_COMPILER clang++-14)
set(CMAKE_CXX_COMPILER_TARGET "${MACOS_ARCHITECTURE}-apple-macosx11.0")
set(CMAKE_AR llvm-ar-14 CACHE FILEPATH "")
set(CMAKE_RANLIB llvm-ranlib-14 CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-14 CACHE FILEPATH "")

# The host's own headers stay out of sight, so Poco and JsonCpp are shown by themselves: see packages/.
set(CMAKE_PREFIX_PATH "${CMAKE_CURRENT_LIST_DIR}/packages")
set(ENV{PKG_CONFIG_LIBDIR} "${CMAKE_CURRENT_LIST_DIR}/packages")

execute_process(COMMAND clang++-14 -print-resource-dir OUTPUT_VARIABLE clang_headers OUTPUT_STRIP_TRAILING_WHITESPACE)
file(GLOB objc_headers /usr/lib/gcc/x86_64-linux-gnu/*/include)
list(TRANSFORM objc_headers PREPEND "-idirafter ")
set(flags -nostdinc -nostdinc++ -D_GNU_SOURCE -fblocks
  "-isystem ${CMAKE_CURRENT_LIST_DIR}/c-library"
  "-isystem /usr/lib/llvm-14/include/c++/v1"
  "-isystem ${CMAKE_CURRENT_LIST_DIR}/declarations"
  "-isystem /usr/include/GNUstep"
  "-isystem ${clang_headers}/include"
  "-isystem /usr/include/x86_64-linux-musl"
  ${objc_headers}
  -DGNUSTEP -DGNUSTEP_BASE_LIBRARY=1 -DGNU_GUI_LIBRARY=1 -DGNU_RUNTIME=1
  # The backend's delegate methods name their parameters as Apple's reference does, used or not; GNUstep's headers
  # have enumerations without a fixed type.
  -Wno-elaborated-enum-base
  -Wundeclared-selector -Wprotocol -Wobjc-method-access -Wenum-conversion -Wshorten-64-to-32
  -Wsuper-class-method-mismatch -Wselector)
list(JOIN flags " " CMAKE_CXX_FLAGS_INIT)

# Every object is linked, used or not, so that a name defined twice is found.
set(CMAKE_EXE_LINKER_FLAGS_INIT
  "--ld-path=/usr/bin/ld64.lld-14 -mlinker-version=609 -stdlib=libc++ -Wl,-all_load -Wno-unused-command-line-argument")
