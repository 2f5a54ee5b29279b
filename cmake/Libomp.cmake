# Finds the OpenMP runtime: KVLM_LIBOMP, and KVLM_LIBOMP_FILE as it is linked. The shared object itself is looked for, by
# its soname, so that no development package is needed.

if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  # The package for i386 can't be installed beside that for amd64: tools/setup.sh unpacks it here.
  find_library(KVLM_LIBOMP libomp.so.5
    PATHS "${PROJECT_SOURCE_DIR}/build/libomp-i386/usr/lib/i386-linux-gnu" /usr/lib/i386-linux-gnu NO_DEFAULT_PATH)
else()
  file(GLOB llvmFolders /usr/lib/llvm-*/lib)
  find_library(KVLM_LIBOMP libomp.so.5 PATHS ${llvmFolders})
endif()
if(NOT KVLM_LIBOMP)
  message(FATAL_ERROR "libomp.so.5, the OpenMP runtime, was not found: install libomp5, or set KVLM_LIBOMP to its path.")
endif()

# A link in the build folder, so that the search path in what is built can be relative.
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  get_filename_component(libompFolder "${KVLM_LIBOMP}" DIRECTORY)
  file(CREATE_LINK "${libompFolder}" "${PROJECT_BINARY_DIR}/libomp" SYMBOLIC)
  set(KVLM_LIBOMP_FILE "${PROJECT_BINARY_DIR}/libomp/libomp.so.5")
else()
  set(KVLM_LIBOMP_FILE "${KVLM_LIBOMP}")
endif()
