# The compile rules of the whole project, in one interface target, and the few functions that apply it.

add_library(project_options INTERFACE)
target_compile_features(project_options INTERFACE cxx_std_20)
target_compile_definitions(project_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
target_compile_options(project_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion $<$<BOOL:${MOLVARK_WERROR}>:-Werror>)
target_include_directories(project_options INTERFACE "${CMAKE_SOURCE_DIR}/src")

if(MOLVARK_SANITIZE)
    set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_compile_options(project_options INTERFACE ${sanitizers})
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
endfunction()

# molvark_test(NAME LINK target...): the test program tst_NAME from tst_NAME.cpp, run by ctest without a display.
function(molvark_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LINK")
    add_executable(tst_${name} tst_${name}.cpp)
    target_link_libraries(tst_${name} PRIVATE project_options Qt6::Test ${arg_LINK})
    if("molvark_test_support" IN_LIST arg_LINK)
        target_precompile_headers(tst_${name} REUSE_FROM molvark_test_headers)
        # An empty file, as tests include what moc makes of them: loading the headers takes longer than compiling it.
        set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/tst_${name}_autogen/mocs_compilation.cpp"
                                    PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
        if(WIN32)
            qt_import_plugins(tst_${name} INCLUDE Qt6::QOffscreenIntegrationPlugin)
        endif()
    endif()
    set(limit 120) # seconds
    if(WIN32)
        set(limit 300) # a name that does not exist is looked for longer there
    endif()
    add_test(NAME ${name} COMMAND tst_${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8" TIMEOUT ${limit})
endfunction()
