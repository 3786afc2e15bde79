# Installation script for Linux: completes the installed bundle with the libraries that are missing from some desktops
# or change their names between releases, so that one build runs on all of them. Expects `contents`, the directory
# Contents of the installed bundle, and `scratch`, a directory to work in.
#
#   Contents/Frameworks               the libraries; each finds the others beside it
#   Contents/Resources/licenses       the copyright file of each library's package, and the licences these refer to
#   Contents/Resources/dependencies   the Debian packages that program and libraries need of the system

set(bundled "^lib(Poco|jsoncpp|plist|gtkmm|giomm|glibmm|pangomm|cairomm|sigc|pcre\\.)")

foreach(tool IN ITEMS patchelf dpkg-query dpkg-shlibdeps)
  find_program(${tool} ${tool} REQUIRED)
endforeach()

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY "${scratch}"
    OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGV0} failed: ${errors}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

get_filename_component(contents "${contents}" ABSOLUTE)
set(frameworks "${contents}/Frameworks")
set(licenses "${contents}/Resources/licenses")
file(REMOVE_RECURSE "${frameworks}" "${licenses}" "${scratch}")
file(MAKE_DIRECTORY "${frameworks}" "${licenses}" "${scratch}/debian")

file(GLOB programs "${contents}/MacOS/vok-installer" "${contents}/MacOS/Tools/demo-install-tool")
file(GET_RUNTIME_DEPENDENCIES EXECUTABLES ${programs} RESOLVED_DEPENDENCIES_VAR libraries
  PRE_INCLUDE_REGEXES "${bundled}" PRE_EXCLUDE_REGEXES ".")

# For dpkg-shlibdeps, whose shlibs.local says which libraries need no package.
file(WRITE "${scratch}/debian/control" "Source: product\n\nPackage: product\nArchitecture: any\n")

foreach(library IN LISTS libraries)
  get_filename_component(name "${library}" NAME)
  file(COPY_FILE "${library}" "${frameworks}/${name}")
  string(REPLACE ".so." " " soname "${name}")
  file(APPEND "${scratch}/debian/shlibs.local" "${soname}\n")
  run("${patchelf}" --set-rpath "\$ORIGIN" "${frameworks}/${name}")

  run("${dpkg-query}" --search "*/${name}")
  string(REGEX MATCH "^[^:,]+" package "${output}")
  file(COPY_FILE "/usr/share/doc/${package}/copyright" "${licenses}/${package}")
  file(STRINGS "${licenses}/${package}" lines REGEX "/usr/share/common-licenses/")
  string(REGEX MATCHALL "/usr/share/common-licenses/[A-Za-z]+(-[0-9.]*[0-9])?" texts "${lines}")
  foreach(text IN LISTS texts)
    get_filename_component(license "${text}" NAME)
    file(COPY_FILE "${text}" "${licenses}/${license}")
  endforeach()
endforeach()

file(GLOB libraries "${frameworks}/*")
run("${dpkg-shlibdeps}" "-l${frameworks}" -O "${contents}/MacOS/vok-installer" ${libraries})
string(REPLACE "shlibs:Depends=" "" output "${output}")
string(STRIP "${output}" output)
# Debian 12's dpkg-shlibdeps does not know that packed relocations need glibc 2.36.
file(WRITE "${contents}/Resources/dependencies" "${output}, libc6 (>= 2.36)\n")
