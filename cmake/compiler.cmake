# What every target of the tree is compiled with.

if(CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
  set(ZIVKS_MARCH armv8-a)
else()
  set(ZIVKS_MARCH x86-64-v3)
endif()

add_library(zivks_target INTERFACE)
target_compile_options(zivks_target INTERFACE
  -march=${ZIVKS_MARCH}
  -Wall -Wextra -Wconversion -Wsign-conversion -Wshadow -Wcast-align -Wundef -Wvla
  $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual>
  $<$<BOOL:${ZIVKS_WARNINGS_AS_ERRORS}>:-Werror>
  # A product and a sum are two roundings unless a fused operation is written.
  -ffp-contract=off)
if(ZIVKS_SANITIZE)
  target_compile_options(zivks_target INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(zivks_target INTERFACE -fsanitize=address,undefined)
endif()
