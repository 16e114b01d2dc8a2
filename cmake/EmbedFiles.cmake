# cmake -D OUTPUT=FILE.cpp -D FILES=NAME=PATH;… -P EmbedFiles.cmake: the page's files as part of the program (see
# WebFiles.h). A name is the one that a browser asks for.
set(types html text/html css text/css js text/javascript svg image/svg+xml jpg image/jpeg)
set(arrays "")
set(rows "")
set(number 0)
foreach(entry IN LISTS FILES)
  string(REGEX MATCH "^([^=]*)=(.*)$" whole "${entry}")
  set(name "${CMAKE_MATCH_1}")
  set(path "${CMAKE_MATCH_2}")
  get_filename_component(ending "${path}" LAST_EXT)
  string(SUBSTRING "${ending}" 1 -1 ending)
  list(FIND types "${ending}" position)
  math(EXPR position "${position} + 1")
  list(GET types ${position} type)
  if(type MATCHES "^text/")
    set(type "${type}; charset=utf-8")
  endif()
  file(READ "${path}" bytes HEX)
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${bytes}")
  string(APPEND arrays "constexpr unsigned char kFile${number}[] = {${bytes}};\n")
  string(APPEND rows "    {\"${name}\", \"${type}\", textOf(kFile${number})},\n")
  math(EXPR number "${number} + 1")
endforeach()
file(WRITE "${OUTPUT}" "// Generated from Host/Page/Web.
#include \"Page/WebFiles.h\"

#include <cstddef>

namespace qvhost {
namespace {

${arrays}
template <std::size_t N>
std::string_view textOf(const unsigned char (&bytes)[N]) {
    return {reinterpret_cast<const char*>(bytes), N};
}

const WebFile kFiles[] = {
${rows}};

}  // namespace

const WebFile* webFile(std::string_view name) {
    for (const WebFile& file : kFiles) {
        if (file.name == name) return &file;
    }
    return nullptr;
}

}  // namespace qvhost
")
