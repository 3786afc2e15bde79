# "Vok Installer.app": the program, its information and the demo's Tools, in the build tree and installed.
set(bundle "${CMAKE_BINARY_DIR}/Vok Installer.app")
set(tools_dir "Contents/MacOS/Tools")
set(icons_dir "Contents/Resources/icons/hicolor/128x128/apps")

if(APPLE)
  if(VOK_DEMO)
    file(READ packaging/macos/local-networking.plist VOK_TRANSPORT_SECURITY)
  endif()
  configure_file(packaging/macos/Info.plist.in "${bundle}/Contents/Info.plist" @ONLY)
  configure_file(packaging/macos/org.vok.Installer.icns "${bundle}/Contents/Resources/org.vok.Installer.icns" COPYONLY)
else()
  configure_file(packaging/Info.plist.in "${bundle}/Contents/Info.plist" @ONLY)
  # For an SVG the program would load librsvg, which takes 6 MB.
  configure_file(packaging/icons/org.vok.Installer.png "${bundle}/${icons_dir}/org.vok.Installer.png" COPYONLY)
endif()

set_target_properties(vok-installer PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${bundle}/Contents/MacOS")
if(VOK_DEMO)
  set_target_properties(demo-install-tool PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${bundle}/${tools_dir}")
  file(GLOB tools CONFIGURE_DEPENDS RELATIVE "${CMAKE_SOURCE_DIR}/examples/demo/Tools" examples/demo/Tools/*)
  foreach(tool IN LISTS tools)
    configure_file("examples/demo/Tools/${tool}" "${bundle}/${tools_dir}/${tool}" COPYONLY)
  endforeach()
  # For scripts/package, which makes the demo's package as scripts/brand makes every other product's.
  configure_file(examples/demo/product.conf.in "${CMAKE_BINARY_DIR}/examples/demo/product.conf" @ONLY)
endif()

install(DIRECTORY "${bundle}" DESTINATION . USE_SOURCE_PERMISSIONS)
if(NOT APPLE)
  # The build tree has no Frameworks: there the programs find the system's libraries.
  set_target_properties(vok-installer PROPERTIES BUILD_RPATH "\$ORIGIN/../Frameworks")
  set_target_properties(demo-install-tool PROPERTIES BUILD_RPATH "\$ORIGIN/../../Frameworks")
  install(CODE "
    set(contents \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Vok Installer.app/Contents\")
    set(scratch \"${CMAKE_BINARY_DIR}/dependencies\")")
  install(SCRIPT cmake/BundleLibraries.cmake)
endif()

if(APPLE)
  set(CPACK_GENERATOR DragNDrop)
  set(CPACK_PACKAGE_NAME "Vok Installer")
  set(CPACK_PACKAGE_FILE_NAME "Vok-Installer-${PROJECT_VERSION}")
  set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_SOURCE_DIR}/packaging/macos/SignBundle.cmake")
  include(CPack)
endif()
