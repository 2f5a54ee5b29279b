# Compile and link options: kvlm_warnings for all code of ours, kvlm_numeric for code whose results must match to the
# bit in every build, kvlm_library for the shared libraries.

set(onX86_32 FALSE)
if(CMAKE_SIZEOF_VOID_P EQUAL 4)
  set(onX86_32 TRUE)
endif()

# Nothing that is built may tell where it was built.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)

if(KVLM_SANITIZE)
  add_compile_options(-fsanitize=${KVLM_SANITIZE} -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${KVLM_SANITIZE})
endif()

# clang would also tell of loops whose hint to be unrolled serves only where their bounds are known.
add_library(kvlm_warnings INTERFACE)
target_compile_options(kvlm_warnings INTERFACE
  -Wall -Wextra -Wmissing-declarations -Werror $<$<CXX_COMPILER_ID:Clang>:-Wno-pass-failed>)

# One rounding per operation, in the type of the element: no x87, no fusing, never fast-math. The caller's rounding mode
# is honoured and NaNs keep their signs: what clang makes equal otherwise, gcc never does.
add_library(kvlm_numeric INTERFACE)
target_compile_options(kvlm_numeric INTERFACE -msse2 -mfpmath=sse -ffp-contract=off -fno-math-errno
  $<$<CXX_COMPILER_ID:Clang>:-frounding-math;-ffp-exception-behavior=strict>)

# Registers are filled by the kernels themselves; what gcc vectorises beyond that are the tails of their loops.
# What templates have in common is one function wherever it is used: gcc's clones of it would be one in each source.
# -mstackrealign: callers on i386 may keep the old stack alignment of 4 bytes, packed spills need 16.
add_library(kvlm_library INTERFACE)
target_link_libraries(kvlm_library INTERFACE kvlm_warnings kvlm_numeric)
target_compile_options(kvlm_library INTERFACE
  "$<$<NOT:$<CONFIG:Debug>>:-O3;-fno-tree-vectorize>" -fno-exceptions -fno-rtti -fvisibility=hidden -fno-semantic-interposition
  $<$<CXX_COMPILER_ID:GNU>:-fno-ipa-sra;-fno-ipa-cp>
  $<$<BOOL:${onX86_32}>:-mstackrealign>)
if(NOT KVLM_SANITIZE MATCHES "fuzzer") # clang's sanitizers are in the program alone
  target_link_options(kvlm_library INTERFACE -Wl,-z,defs)
endif()
target_link_options(kvlm_library INTERFACE
  -Wl,--as-needed -static-libgcc -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack -Wl,-Bsymbolic-functions -Wl,--hash-style=gnu)
