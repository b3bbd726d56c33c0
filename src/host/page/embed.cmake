# Writes the page's parts as C++: cmake -DSTYLE=... -DSCRIPT=... -DOUTPUT=... -P embed.cmake
set(base64 "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")

# Base64 of bytes in hexadecimal digits.
function(encode_base64 hex result)
  set(text "")
  while(NOT hex STREQUAL "")
    string(SUBSTRING "${hex}" 0 6 group)
    string(LENGTH "${group}" digits)
    string(SUBSTRING "${hex}" ${digits} -1 hex)
    string(SUBSTRING "${group}0000" 0 6 padded)
    math(EXPR bits "0x${padded}")
    math(EXPR characters "${digits} / 2 + 1")
    foreach(shift 18 12 6 0)
      if(characters GREATER 0)
        math(EXPR at "(${bits} >> ${shift}) & 63")
        string(SUBSTRING "${base64}" ${at} 1 character)
        string(APPEND text "${character}")
      else()
        string(APPEND text "=")
      endif()
      math(EXPR characters "${characters} - 1")
    endforeach()
  endwhile()
  set(${result} "${text}" PARENT_SCOPE)
endfunction()

function(append_part name file)
  file(READ "${file}" bytes HEX)
  file(SHA256 "${file}" digest)
  encode_base64("${digest}" hash)
  string(REGEX REPLACE "(................................)" "\\1\n" bytes "${bytes}")
  string(REGEX REPLACE "([0-9a-f][0-9a-f])" "'\\\\x\\1'," bytes "${bytes}")
  set(source "${source}
constexpr char ${name}Bytes[] = {
${bytes}};
const SPagePart ${name} = {{${name}Bytes, sizeof ${name}Bytes}, \"${hash}\"};
" PARENT_SCOPE)
endfunction()

set(source "#include \"host/page_parts.h\"\n")
append_part(kPageStyle "${STYLE}")
append_part(kPageScript "${SCRIPT}")
file(WRITE "${OUTPUT}" "${source}")
