cmake_minimum_required(VERSION 3.25)
# Puts the page together and writes it as a source of the tool: what stands before, between and behind the title and
# the scenes of a page. Run by CMake's own script mode with PAGE, STYLE, SCRIPT, LICENCES and OUTPUT.

# The hash of a text as a policy names it: SHA-256 in base64.
function(policy_hash text out)
  string(SHA256 hex "${text}")
  string(APPEND hex "0") # 64 digits are 256 bits; 43 letters hold 258
  set(letters "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/")
  set(hash "")
  foreach(at RANGE 0 60 3)
    string(SUBSTRING "${hex}" ${at} 3 digits)
    math(EXPR high "0x${digits} >> 6")
    math(EXPR low "0x${digits} & 63")
    string(SUBSTRING "${letters}" ${high} 1 first)
    string(SUBSTRING "${letters}" ${low} 1 second)
    string(APPEND hash "${first}${second}")
  endforeach()
  string(SUBSTRING "${hex}" 63 1 digit)
  math(EXPR last "0x${digit} << 2")
  string(SUBSTRING "${letters}" ${last} 1 letter)
  set(${out} "${hash}${letter}=" PARENT_SCOPE)
endfunction()

# A piece of the page as a list of bytes.
function(bytes_of text name out)
  file(WRITE "${OUTPUT}.piece" "${text}")
  file(READ "${OUTPUT}.piece" hex HEX)
  file(REMOVE "${OUTPUT}.piece")
  string(REGEX REPLACE "(..)" "0x\\1," bytes "${hex}")
  set(${out} "const unsigned char ${name}_bytes[] = {${bytes}};\n" PARENT_SCOPE)
endfunction()

file(READ "${PAGE}" page)
file(READ "${STYLE}" style)
file(READ "${SCRIPT}" script)
file(READ "${LICENCES}" licences)
string(REPLACE "&" "&amp;" licences "${licences}")
string(REPLACE "<" "&lt;" licences "${licences}")
policy_hash("${style}" style_hash)
policy_hash("${script}" script_hash)
string(REPLACE "@STYLE_HASH@" "${style_hash}" page "${page}")
string(REPLACE "@SCRIPT_HASH@" "${script_hash}" page "${page}")
string(REPLACE "@LICENCES@" "${licences}" page "${page}")
string(REPLACE "@STYLE@" "${style}" page "${page}")

foreach(mark TITLE SCENES SCRIPT)
  string(FIND "${page}" "@${mark}@" at)
  string(SUBSTRING "${page}" 0 ${at} before_${mark})
  string(LENGTH "@${mark}@" length)
  math(EXPR behind "${at} + ${length}")
  string(SUBSTRING "${page}" ${behind} -1 page)
endforeach()

bytes_of("${before_TITLE}" head head)
bytes_of("${before_SCENES}" body body)
bytes_of("${before_SCRIPT}${script}${page}" tail tail)
file(WRITE "${OUTPUT}" "#include \"viewer/page/template.h\"\n\nnamespace vor2::viewer {\nnamespace {\n${head}${body}${tail}
std::string_view text_of(const unsigned char* bytes, std::size_t size) {
    return {reinterpret_cast<const char*>(bytes), size};
}
} // namespace
const std::string_view page_head = text_of(head_bytes, sizeof head_bytes);
const std::string_view page_body = text_of(body_bytes, sizeof body_bytes);
const std::string_view page_tail = text_of(tail_bytes, sizeof tail_bytes);
} // namespace vor2::viewer\n")
