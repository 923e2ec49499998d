# nettlecap_layer(name SOURCES a.h a.cpp … [DEPENDS layer …] [LIBRARIES lib …] [FOLDER path] [SMALL])
#
# Makes the static library nettlecap_<name> from src/<name> (or src/<FOLDER>).
# Its headers are seen through ${build}/layers/nettlecap_<name>/<folder>/, which
# holds a link to each header listed and to nothing else: a layer can include
# only what it depends on. LIBRARIES stay private to the layer's sources. SMALL is for
# code that never has much to do: it is in memory all day, so that it had better be little.
function(nettlecap_layer name)
  cmake_parse_arguments(PARSE_ARGV 1 layer "SMALL" "FOLDER" "SOURCES;DEPENDS;LIBRARIES")
  if(NOT layer_FOLDER)
    set(layer_FOLDER ${name})
  endif()
  set(target nettlecap_${name})
  set(root ${PROJECT_BINARY_DIR}/layers/${target})
  file(REMOVE_RECURSE ${root})
  add_library(${target} STATIC)
  foreach(source IN LISTS layer_SOURCES)
    set(real ${PROJECT_SOURCE_DIR}/src/${layer_FOLDER}/${source})
    target_sources(${target} PRIVATE ${real})
    if(source MATCHES "\\.h$")
      get_filename_component(folder ${root}/${layer_FOLDER}/${source} DIRECTORY)
      file(MAKE_DIRECTORY ${folder})
      file(CREATE_LINK ${real} ${root}/${layer_FOLDER}/${source} SYMBOLIC)
    endif()
  endforeach()
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE CXX)
  list(TRANSFORM layer_DEPENDS PREPEND nettlecap_)
  target_include_directories(${target} PUBLIC ${root})
  target_link_libraries(${target} PUBLIC ${layer_DEPENDS} PRIVATE ${layer_LIBRARIES} nettlecap_warnings)
  if(layer_SMALL)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:-Os>)
  endif()
endfunction()

# nettlecap_test(name SOURCES a.cpp … LINKS target … [DESKTOP] [TIMEOUT seconds])
#
# One GoogleTest program of the sources beside the caller, and one CTest test.
# DESKTOP runs it inside a virtual X server of its own, with a window manager.
function(nettlecap_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "DESKTOP" "TIMEOUT" "SOURCES;LINKS")
  add_executable(${name} ${test_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${test_LINKS} GTest::gmock_main nettlecap_warnings)
  if(NETTLECAP_PRECOMPILE)
    target_compile_options(${name} PRIVATE -fPIC)
    target_precompile_headers(${name} REUSE_FROM nettlecap_test_headers)
  endif()
  if(test_DESKTOP)
    add_test(NAME ${name} COMMAND ${PROJECT_SOURCE_DIR}/tests/desktop/with-desktop $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES LABELS desktop)
  else()
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
  endif()
  if(NOT test_TIMEOUT)
    set(test_TIMEOUT 120)
  endif()
  set_tests_properties(${name} PROPERTIES TIMEOUT ${test_TIMEOUT})
endfunction()

# nettlecap_forbids(layer header): a test that the layer cannot include the header.
function(nettlecap_forbids layer header)
  string(MAKE_C_IDENTIFIER "${layer}_${header}" id)
  file(WRITE ${PROJECT_BINARY_DIR}/forbidden/${id}.cpp "#include \"${header}\"\n")
  add_library(forbidden_${id} OBJECT EXCLUDE_FROM_ALL ${PROJECT_BINARY_DIR}/forbidden/${id}.cpp)
  target_link_libraries(forbidden_${id} PRIVATE nettlecap_${layer})
  add_test(NAME ${layer}_cannot_include_${header}
           COMMAND ${CMAKE_COMMAND} --build ${PROJECT_BINARY_DIR} --target forbidden_${id})
  set_tests_properties(${layer}_cannot_include_${header} PROPERTIES
    PASS_REGULAR_EXPRESSION "${header}: No such file|'${header}' file not found"
    RESOURCE_LOCK build)
endfunction()
