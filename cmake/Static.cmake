# The static libraries: of the same objects as the shared ones, so they cost an archive each. The OpenMP runtime exists as
# a shared library alone; programs name it as their linker finds it, not by its place here.
foreach(library kvlcore kvlm)
  add_library(${library}_static STATIC $<TARGET_OBJECTS:${library}>)
  add_library(kvlm::${library}_static ALIAS ${library}_static)
  target_include_directories(${library}_static INTERFACE
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/${library}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  # C is the language of programs too: nothing asks for the C++ runtime.
  set_target_properties(${library}_static PROPERTIES LINKER_LANGUAGE C)
endforeach()
set_target_properties(kvlcore_static PROPERTIES OUTPUT_NAME kvlcore)
set_target_properties(kvlm_static PROPERTIES OUTPUT_NAME kvlmw7)
target_link_libraries(kvlm_static INTERFACE kvlcore_static
  $<BUILD_INTERFACE:${KVLM_LIBOMP_FILE}> $<INSTALL_INTERFACE:-l:libomp.so.5> m dl)
