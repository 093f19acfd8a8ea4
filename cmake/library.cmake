# How the two libraries are built: shared, or static where BUILD_SHARED_LIBS is off. Either way a program sees
# the functions of the interface and no other symbol, and nothing is taken from the C++ runtime.

if(DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)
  set(zivks_library_type STATIC)
else()
  set(zivks_library_type SHARED)
endif()

# The optimisation stands behind the flags of the build type, so it prevails over them.
function(zivks_compile_library target)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:zivks_target>)
  target_compile_options(${target} PRIVATE
    ${ZIVKS_OPTIMIZATION}
    -fno-math-errno -fno-trapping-math -fno-semantic-interposition
    $<$<COMPILE_LANGUAGE:CXX>:-fno-exceptions -fno-rtti -fno-threadsafe-statics>
    # Profilers, debuggers and exceptions of the program find their way through the library's frames.
    -fasynchronous-unwind-tables)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
  set_target_properties(${target} PROPERTIES
    C_VISIBILITY_PRESET hidden
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
endfunction()

# The library is linked by the C driver. It has no constructors, so it needs no start files either, and without
# them no writable data.
function(zivks_shared_library target version_script)  # source...
  add_library(${target} SHARED ${ARGN})
  zivks_compile_library(${target})
  set_target_properties(${target} PROPERTIES
    LINKER_LANGUAGE C
    VERSION ${PROJECT_VERSION}
    SOVERSION ${PROJECT_VERSION_MAJOR}
    LINK_DEPENDS ${version_script})
  target_link_options(${target} PRIVATE
    -Wl,--version-script=${version_script} -Wl,-Bsymbolic-functions -Wl,-z,relro -Wl,-z,now -Wl,--as-needed
    $<$<NOT:$<BOOL:${ZIVKS_SANITIZE}>>:-nostartfiles>)
endfunction()

# An archive of one object, in which hidden symbols have become local: in an archive of many they would clash
# with those of the program that are called alike. Code for link-time optimisation could not be treated so. A
# program that is linked with --gc-sections takes only the functions that it calls.
function(zivks_static_library target)  # source...
  add_library(${target}_objects OBJECT ${ARGN})
  zivks_compile_library(${target}_objects)
  target_compile_options(${target}_objects PRIVATE -fno-lto -ffunction-sections -fdata-sections)
  set(object ${CMAKE_CURRENT_BINARY_DIR}/${target}.o)
  set(compiler ${CMAKE_C_COMPILER})
  if(CMAKE_C_COMPILER_TARGET)
    list(APPEND compiler ${CMAKE_C_COMPILE_OPTIONS_TARGET}${CMAKE_C_COMPILER_TARGET})
  endif()
  add_custom_command(
    OUTPUT ${object}
    COMMAND ${compiler} -fuse-ld=bfd -r -nostdlib -Wl,--force-group-allocation
      $<TARGET_OBJECTS:${target}_objects> -o ${object}
    COMMAND ${CMAKE_OBJCOPY} --localize-hidden ${object}
    DEPENDS $<TARGET_OBJECTS:${target}_objects>
    COMMAND_EXPAND_LISTS VERBATIM)
  set_source_files_properties(${object} PROPERTIES EXTERNAL_OBJECT ON GENERATED ON)
  add_library(${target} STATIC ${object})
  set_target_properties(${target} PROPERTIES LINKER_LANGUAGE C)
endfunction()

function(zivks_add_library target version_script)  # source...
  if(zivks_library_type STREQUAL SHARED)
    zivks_shared_library(${target} ${version_script} ${ARGN})
  else()
    zivks_static_library(${target} ${ARGN})
  endif()
  target_include_directories(${target}
    PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endfunction()
