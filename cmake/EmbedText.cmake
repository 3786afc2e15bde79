# Writes the text of a file into a C++ header as a constant:
#   cmake -D INPUT=page.html -D NAME=pageHtml -D OUTPUT=page.html.h -P EmbedText.cmake
file(READ "${INPUT}" text)
file(WRITE "${OUTPUT}" "#pragma once\n\n#include <string_view>\n\n"
  "inline constexpr std::string_view ${NAME} = R\"text(${text})text\";\n")
