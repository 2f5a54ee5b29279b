# Toolchain for 32-bit x86 with SSE2, by the multilib compiler of x86_64.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR i686)
set(CMAKE_C_FLAGS_INIT "-m32 -msse2 -mfpmath=sse")
set(CMAKE_CXX_FLAGS_INIT "-m32 -msse2 -mfpmath=sse")

# Some machines refuse to run 32-bit programs: the loader is one that is there in any case.
execute_process(COMMAND /lib/ld-linux.so.2 --version RESULT_VARIABLE loaderResult OUTPUT_QUIET ERROR_QUIET)
if(NOT loaderResult EQUAL 0)
  set(CMAKE_CROSSCOMPILING_EMULATOR qemu-i386)
endif()
