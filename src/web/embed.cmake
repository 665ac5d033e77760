# cmake -DOUT=file.cpp -DROOTS="folder;folder" -DFILES="a;b" -P embed.cmake
# Writes a source file that holds the bytes of FILES; see ClientFiles.h. Their names are their
# paths below one of ROOTS. A file NAME.gz is served as NAME, compressed.
set(arrays)
set(entries)
set(sums)
set(number 0)
foreach(file IN LISTS FILES)
  foreach(root IN LISTS ROOTS)
    cmake_path(IS_PREFIX root ${file} is_below)
    if(is_below)
      cmake_path(RELATIVE_PATH file BASE_DIRECTORY ${root} OUTPUT_VARIABLE name)
    endif()
  endforeach()
  file(READ ${file} hex HEX)
  file(MD5 ${file} sum)
  string(APPEND sums ${name} ${sum})
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${hex}")
  string(APPEND arrays "constexpr char file${number}[] = {${bytes}'\\0'};\n")
  set(is_compressed false)
  if(name MATCHES "\\.gz$")
    set(is_compressed true)
    string(REGEX REPLACE "\\.gz$" "" name ${name})
  endif()
  string(APPEND entries "    {\"${name}\", {file${number}, sizeof file${number} - 1}, ${is_compressed}},\n")
  math(EXPR number "${number} + 1")
endforeach()
string(MD5 version "${sums}")
string(SUBSTRING ${version} 0 12 version)

file(WRITE ${OUT} "#include \"web/show/ClientFiles.h\"

namespace web {
namespace {

${arrays}
constexpr ClientFile files[] = {
${entries}};

}  // namespace

const ClientFile* clientFile(std::string_view name) {
  for (const ClientFile& file : files) {
    if (file.name == name) return &file;
  }
  return nullptr;
}

std::string_view clientVersion() { return \"${version}\"; }

}  // namespace web
")
