# Script half of brimwave_embed: writes HEADER and SOURCE from INPUTS (comma separated).
string(REPLACE "," ";" inputs "${INPUTS}")
set(declarations "")
set(definitions "")
foreach(path IN LISTS inputs)
    get_filename_component(name ${path} NAME)
    string(MAKE_C_IDENTIFIER ${name} id)
    file(READ ${path} hex HEX)
    string(LENGTH "${hex}" digits)
    math(EXPR size "${digits} / 2")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
    string(REGEX REPLACE "(0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,)" "\\1\n"
           bytes "${bytes}")
    string(APPEND declarations "extern const std::string_view ${id};\n")
    string(APPEND definitions
        "static constexpr unsigned char ${id}_bytes[] = {\n${bytes}0x00};\n"
        "const std::string_view ${id}{reinterpret_cast<const char*>(${id}_bytes), ${size}};\n")
endforeach()
set(open "namespace ${NAMESPACE}_embedded {\n")
file(WRITE ${HEADER} "#pragma once\n#include <string_view>\n${open}${declarations}}\n")
get_filename_component(header_name ${HEADER} NAME)
file(WRITE ${SOURCE} "#include \"${header_name}\"\n${open}${definitions}}\n")
