# "Vok Installer.app": the program, its information and the demo's Tools, in the build tree and installed.
set(bundle "${CMAKE_BINARY_DIR}/Vok Installer.app")
set(tools_dir "Contents/MacOS/Tools")
set(icons_dir "Contents/Resources/icons/hicolor/scalable/apps")

configure_file(packaging/Info.plist.in "${bundle}/Contents/Info.plist" @ONLY)
configure_file(packaging/icons/org.vok.Installer.svg "${bundle}/${icons_dir}/org.vok.Installer.svg" COPYONLY)

set_target_properties(vok-installer PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${bundle}/Contents/MacOS")
set_target_properties(demo-install-tool PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${bundle}/${tools_dir}")
file(GLOB tools CONFIGURE_DEPENDS RELATIVE "${CMAKE_SOURCE_DIR}/examples/demo/Tools" examples/demo/Tools/*)
foreach(tool IN LISTS tools)
  configure_file("examples/demo/Tools/${tool}" "${bundle}/${tools_dir}/${tool}" COPYONLY)
endforeach()

install(DIRECTORY "${bundle}" DESTINATION . USE_SOURCE_PERMISSIONS)
