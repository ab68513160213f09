# The settings that every target of the project shares, and one function for each kind of target.

add_library(qmrules_settings INTERFACE)
target_include_directories(qmrules_settings INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(qmrules_settings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)
if(QMRULES_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  # GCC cannot tell what is initialised in code that the sanitizers have grown, and warns of its own library.
  target_compile_options(qmrules_settings INTERFACE ${sanitizers} $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(qmrules_settings INTERFACE ${sanitizers})
endif()
if(QMRULES_FUZZ)
  target_compile_options(qmrules_settings INTERFACE -fsanitize=fuzzer-no-link,address,undefined
                                                    -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(qmrules_settings INTERFACE -fsanitize=address,undefined)
endif()

# qmrules_library(NAME SOURCES file... [LINK target...] [PRIVATE target...])
# One static library `qmrules_NAME` for one folder (or one ground module) of src/.
function(qmrules_library NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK;PRIVATE" ${ARGN})
  add_library(qmrules_${NAME} STATIC ${ARG_SOURCES})
  target_link_libraries(qmrules_${NAME} PUBLIC qmrules_settings ${ARG_LINK} PRIVATE ${ARG_PRIVATE})
endfunction()

# Leaves the sources of a test unoptimised when there are sanitizers: it makes them compile sooner by more than the test
# takes longer.
function(qmrules_compile_quickly TARGET)
  if(QMRULES_SANITIZE)
    target_compile_options(${TARGET} PRIVATE -O0)
  endif()
endfunction()

# The environment of tests in a build with sanitizers. LEAKS is a file of leaks that are not ours, or empty.
function(qmrules_test_environment RESULT LEAKS)
  set(options LSAN_OPTIONS=exitcode=23)
  if(LEAKS)
    string(APPEND options ":print_suppressions=0:suppressions=${LEAKS}")
  endif()
  set(${RESULT} ${options} PARENT_SCOPE)
endfunction()

# qmrules_test(NAME SOURCES file... LINK target... [LEAKS file] [OPTIMISED])
# One GoogleTest program `NAME_test`, its cases known to CTest one by one. OPTIMISED is for a test that works long itself.
function(qmrules_test NAME)
  cmake_parse_arguments(ARG "OPTIMISED" "LEAKS" "SOURCES;LINK" ${ARGN})
  qmrules_test_environment(environment "${ARG_LEAKS}")
  add_executable(${NAME}_test ${ARG_SOURCES})
  if(NOT ARG_OPTIMISED)
    qmrules_compile_quickly(${NAME}_test)
  endif()
  target_include_directories(${NAME}_test PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${NAME}_test PRIVATE qmrules_settings ${ARG_LINK} GTest::gmock GTest::gtest_main)
  gtest_discover_tests(${NAME}_test TEST_PREFIX "${NAME}." DISCOVERY_MODE PRE_TEST
                       PROPERTIES ENVIRONMENT "${environment}")
endfunction()

# qmrules_desktop_library(NAME SOURCES file... [LINK target...] [PRIVATE target...])
# The same for a folder below src/desktop, with Qt's classes and its resources (.qrc) among the sources.
function(qmrules_desktop_library NAME)
  qmrules_library(${NAME} ${ARGN})
  set_target_properties(qmrules_${NAME} PROPERTIES AUTOMOC ON AUTORCC ON)
  target_link_libraries(qmrules_${NAME} PUBLIC Qt6::Widgets)
endfunction()

# qmrules_desktop_test(NAME SOURCES file... LINK target...)
# A test program over Qt's offscreen platform, which its own main starts.
function(qmrules_desktop_test NAME)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${NAME}_test ${ARG_SOURCES} ${CMAKE_SOURCE_DIR}/tests/desktop/desktoptestmain.cpp)
  set_target_properties(${NAME}_test PROPERTIES AUTOMOC ON)
  qmrules_compile_quickly(${NAME}_test)
  target_include_directories(${NAME}_test PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${NAME}_test PRIVATE qmrules_settings ${ARG_LINK} Qt6::Widgets Qt6::Test GTest::gmock)
  qmrules_test_environment(environment ${CMAKE_SOURCE_DIR}/tests/desktop/leaks.supp)
  gtest_discover_tests(${NAME}_test TEST_PREFIX "${NAME}." DISCOVERY_MODE PRE_TEST
                       PROPERTIES ENVIRONMENT "${environment}")
endfunction()

# qmrules_embed(TARGET FILE VARIABLE)
# Compiles the text file into TARGET as `extern const std::string_view qmrules::embedded::VARIABLE`.
function(qmrules_embed TARGET FILE VARIABLE)
  set(source ${CMAKE_CURRENT_SOURCE_DIR}/${FILE})
  set(generated ${CMAKE_CURRENT_BINARY_DIR}/${VARIABLE}.cpp)
  add_custom_command(
    OUTPUT ${generated}
    COMMAND ${CMAKE_COMMAND} -DINPUT=${source} -DOUTPUT=${generated} -DVARIABLE=${VARIABLE}
            -P ${CMAKE_SOURCE_DIR}/cmake/EmbedText.cmake
    DEPENDS ${source} ${CMAKE_SOURCE_DIR}/cmake/EmbedText.cmake
    COMMENT "Embedding ${FILE}")
  target_sources(${TARGET} PRIVATE ${generated})
endfunction()
