# The compile rules of the whole project, in one interface target, and the few functions that apply it.

add_library(project_options INTERFACE)
target_compile_features(project_options INTERFACE cxx_std_20)
target_compile_definitions(project_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
target_compile_options(project_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${MOLVARK_WERROR}>:-Werror>)
target_include_directories(project_options INTERFACE "${CMAKE_SOURCE_DIR}/src")

if(MOLVARK_SANITIZE)
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    # Not in the tests themselves (MOLVARK_IS_TEST), where they would find nothing and take long to compile.
    target_compile_options(project_options INTERFACE "$<$<NOT:$<BOOL:$<TARGET_PROPERTY:MOLVARK_IS_TEST>>>:${sanitizers}>")
    target_link_options(project_options INTERFACE ${sanitizers})
endif()
if(MOLVARK_FUZZ)
    target_compile_options(project_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# molvark_library(NAME SOURCES file... LINK target...): one static library, one room's share.
function(molvark_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC project_options ${arg_LINK})
    set_property(GLOBAL APPEND PROPERTY molvark_libraries ${name})
endfunction()
