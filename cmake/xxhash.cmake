# Lets a target of tests or benchmarks include <xxhash.h>. The header holds all of that library, and a copy of it
# serves compilers for other processors as well.
function(zivks_use_xxhash target)
  find_file(ZIVKS_XXHASH_HEADER xxhash.h REQUIRED NO_CMAKE_FIND_ROOT_PATH)
  set(folder ${PROJECT_BINARY_DIR}/xxhash)
  file(COPY ${ZIVKS_XXHASH_HEADER} DESTINATION ${folder})
  target_include_directories(${target} SYSTEM PRIVATE ${folder})
  target_compile_definitions(${target} PRIVATE XXH_INLINE_ALL)
endfunction()
