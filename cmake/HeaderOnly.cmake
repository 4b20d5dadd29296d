# brimwave_header_only(<target> <folder of /usr/include>): a header-only library of the build
# machine for any build. A cross build must not see the rest of /usr/include, so the one folder
# is linked into an include directory of its own.
function(brimwave_header_only target folder)
    set(dir ${CMAKE_BINARY_DIR}/headers/${folder})
    file(MAKE_DIRECTORY ${dir})
    if(NOT EXISTS ${dir}/${folder})
        file(CREATE_LINK /usr/include/${folder} ${dir}/${folder} SYMBOLIC)
    endif()
    target_include_directories(${target} SYSTEM PUBLIC ${dir})
endfunction()
