# brimwave_options: what every target of ours is compiled with. Warnings are errors.
add_library(brimwave_options INTERFACE)
target_compile_features(brimwave_options INTERFACE cxx_std_20)
target_include_directories(brimwave_options INTERFACE ${PROJECT_SOURCE_DIR})

if(MSVC)
    target_compile_options(brimwave_options INTERFACE
        /W4 /WX /permissive- /utf-8 /Zc:__cplusplus /Zc:preprocessor /external:W0)
else()
    target_compile_options(brimwave_options INTERFACE
        -Wall -Wextra -Wpedantic -Werror -Wnon-virtual-dtor -Woverloaded-virtual
        -Wconversion -Wno-sign-conversion -Wsuggest-override)
    # Where sources are compiled several at a time, a local name may hide another file's, and an
    # unnamed namespace may stand in what the compiler takes for a header.
    set(unity $<BOOL:$<TARGET_PROPERTY:UNITY_BUILD>>)
    target_compile_options(brimwave_options INTERFACE
        "$<IF:${unity},$<$<CXX_COMPILER_ID:GNU>:-Wshadow=local;-Wno-subobject-linkage>,-Wshadow>")
    # GCC 12 sees an overlap in its own std::string where "a" + std::string() is inlined.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(brimwave_options INTERFACE -Wno-restrict)
    endif()
endif()

if(WIN32)
    target_compile_definitions(brimwave_options INTERFACE
        UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00 WINVER=0x0A00)
endif()
if(MINGW)
    # One self-contained file for each program: nothing to copy beside it.
    target_link_options(brimwave_options INTERFACE -static)
endif()

if(BRIMWAVE_SANITIZE)
    set(sanitize -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    if(BRIMWAVE_FUZZ)
        list(APPEND sanitize -fsanitize=fuzzer-no-link) # the fuzzers see which code they reach
    endif()
    # Line tables are all that a report needs; whole debug information costs a third of the build.
    add_compile_options(${sanitize} -O1 -g1)
    add_link_options(${sanitize})
endif()
