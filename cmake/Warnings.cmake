# The warnings of every target of this project. They are errors where the build is checked, not where it is used.
option(VOK_WARNINGS_AS_ERRORS "Stop at the first warning" OFF)

add_library(vok_warnings INTERFACE)
target_compile_options(vok_warnings INTERFACE
  -Wall -Wextra -Wshadow -Wconversion
  $<$<BOOL:${VOK_WARNINGS_AS_ERRORS}>:-Werror>)
