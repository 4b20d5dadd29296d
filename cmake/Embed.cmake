# brimwave_embed(<target> <namespace> <file>...): compiles each file's bytes into the target.
#
# Makes a header <namespace>_embedded.h that declares, for each file, a
# `extern const std::string_view` named after the file (dots become underscores).
function(brimwave_embed target namespace)
    set(out_dir ${CMAKE_CURRENT_BINARY_DIR}/embedded)
    set(header ${out_dir}/${namespace}_embedded.h)
    set(source ${out_dir}/${namespace}_embedded.cpp)
    set(inputs)
    foreach(file IN LISTS ARGN)
        get_filename_component(path ${file} ABSOLUTE)
        list(APPEND inputs ${path})
    endforeach()
    string(REPLACE ";" "," joined "${inputs}")
    add_custom_command(
        OUTPUT ${header} ${source}
        COMMAND ${CMAKE_COMMAND} -DHEADER=${header} -DSOURCE=${source} -DNAMESPACE=${namespace}
                "-DINPUTS=${joined}" -P ${PROJECT_SOURCE_DIR}/cmake/EmbedFiles.cmake
        DEPENDS ${inputs} ${PROJECT_SOURCE_DIR}/cmake/EmbedFiles.cmake
        COMMENT "Embedding ${namespace}"
        VERBATIM)
    target_sources(${target} PRIVATE ${source} ${header})
    target_include_directories(${target} PRIVATE ${out_dir})
endfunction()
