# Writes OUTPUT, a C++ source that holds the text of INPUT as qmrules::embedded::VARIABLE. The text goes in as byte
# values, since a string literal may not be longer than 65,536 characters.
file(READ ${INPUT} hex HEX)
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${hex}")
string(REGEX REPLACE "(('[^']*',){24})" "\\1\n" bytes "${bytes}")
file(
  WRITE ${OUTPUT}
  "#include <string_view>\n\nnamespace qmrules::embedded {\n\nnamespace {\nconstexpr char ${VARIABLE}Bytes[] = {\n${bytes}'\\0'};\n}\n\n"
  "extern const std::string_view ${VARIABLE};\nconst std::string_view ${VARIABLE}(${VARIABLE}Bytes, sizeof ${VARIABLE}Bytes - 1);\n\n}\n")
