# Compiler settings. `zivks_target` carries what every target of the tree shares; zivks_library_options()
# adds what only the library is built with.

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

# The library is linked by the C driver: it takes nothing from the C++ runtime. It has no constructors, so it
# needs no start files either, and without them no writable data.
function(zivks_library_options target)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:zivks_target>)
  target_compile_options(${target} PRIVATE
    -fno-math-errno -fno-trapping-math -fno-semantic-interposition
    $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti -fno-threadsafe-statics>
    -fno-asynchronous-unwind-tables)
  set(version_script ${PROJECT_SOURCE_DIR}/cmake/${target}.map)
  set_target_properties(${target} PROPERTIES
    C_VISIBILITY_PRESET hidden
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    LINKER_LANGUAGE C
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    LINK_DEPENDS ${version_script})
  target_link_options(${target} PRIVATE
    -Wl,--version-script=${version_script} -Wl,-Bsymbolic-functions -Wl,-z,relro -Wl,-z,now -Wl,--as-needed
    $<$<NOT:$<BOOL:${ZIVKS_SANITIZE}>>:-nostartfiles>)
endfunction()
