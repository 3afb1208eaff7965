# Turns models into C++: used by the library's own build and, once installed, by anybody's.

# lumo_generate( TARGET t MODELS a.koi b.koi [IMPORT dir...] [HEADERS dir] [INCLUDE_PREFIX p] )
#
# All models of one call are one pass: a module may use any other of them, whatever their order. IMPORT
# names folders of models that may be used but are not written; those of the library are always there.
# The headers go to HEADERS/INCLUDE_PREFIX and are included as <INCLUDE_PREFIXModule.h>. HEADERS is a
# folder of the build tree unless named, INCLUDE_PREFIX is "t/" unless named (say "" for none). What the
# headers declare is compiled into t. In the caller, t_HEADERS lists the headers; the global property LUMO_KOIGEN_t holds
# koigen's arguments, for who wants to add --check.
#
# TAKE_HEADERS_AS_THEY_STAND leaves HEADERS alone: what koigen would have written there is thrown away.
function( lumo_generate )
  cmake_parse_arguments( PARSE_ARGV 0 koi
    "TAKE_HEADERS_AS_THEY_STAND" "TARGET;HEADERS;INCLUDE_PREFIX" "MODELS;IMPORT" )
  if( koi_UNPARSED_ARGUMENTS OR NOT koi_TARGET OR NOT koi_MODELS )
    message( FATAL_ERROR "lumo_generate() needs TARGET and MODELS; it does not know '${koi_UNPARSED_ARGUMENTS}'" )
  endif()
  # An empty value is not passed on, so it is told from none by the keyword.
  if( NOT koi_INCLUDE_PREFIX )
    set( koi_INCLUDE_PREFIX "" )
    if( NOT "INCLUDE_PREFIX" IN_LIST ARGV )
      set( koi_INCLUDE_PREFIX "${koi_TARGET}/" )
    endif()
  endif()
  set( work "${CMAKE_CURRENT_BINARY_DIR}/${koi_TARGET}-koi" )
  if( NOT koi_HEADERS )
    set( koi_HEADERS "${work}/include" )
  endif()
  cmake_path( ABSOLUTE_PATH koi_HEADERS NORMALIZE )

  set( models "" )
  set( sources "" )
  set( headers "" )
  set( parts "" )
  foreach( model IN LISTS koi_MODELS )
    cmake_path( GET model STEM module )
    cmake_path( ABSOLUTE_PATH model NORMALIZE )
    list( APPEND models "${model}" )
    list( APPEND sources "${work}/${module}.module.cpp" )
    # Many entities in one source would take more memory than a compiler should.
    set_property( DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${model}" )
    file( STRINGS "${model}" objects REGEX "^(entity|reactor) " )
    list( LENGTH objects count )
    math( EXPR count "( ${count} + 9 ) / 10" )
    if( count GREATER 1 )
      list( APPEND parts --parts ${module} ${count} )
      foreach( part RANGE 2 ${count} )
        list( APPEND sources "${work}/${module}.module.${part}.cpp" )
      endforeach()
    endif()
    list( APPEND headers "${koi_HEADERS}/${koi_INCLUDE_PREFIX}${module}.h" )
  endforeach()

  # An imported model that changes may change what is written, so it is a dependency too.
  set( imports "" )
  set( imported "" )
  foreach( folder IN LISTS koi_IMPORT LUMO_MODEL_DIR )
    cmake_path( ABSOLUTE_PATH folder NORMALIZE )
    list( APPEND imports --import "${folder}" )
    file( GLOB found CONFIGURE_DEPENDS "${folder}/*.koi" )
    list( APPEND imported ${found} )
  endforeach()

  set( written "${koi_HEADERS}/${koi_INCLUDE_PREFIX}" )
  set( byproducts ${headers} )
  set( pass --sources "${work}" ${parts} ${imports} ${models} )
  set_property( GLOBAL PROPERTY LUMO_KOIGEN_${koi_TARGET}
    --headers "${written}" --include-prefix "${koi_INCLUDE_PREFIX}" ${pass}
  )
  if( koi_TAKE_HEADERS_AS_THEY_STAND )
    set( written "${work}/unused" )
    set( byproducts "" )
  endif()
  file( MAKE_DIRECTORY "${work}" "${written}" )
  add_custom_command(
    OUTPUT ${sources}
    BYPRODUCTS ${byproducts}
    COMMAND Lumo::koigen --headers "${written}" --include-prefix "${koi_INCLUDE_PREFIX}" ${pass}
    DEPENDS Lumo::koigen ${models} ${imported}
    COMMENT "Models of ${koi_TARGET}"
    VERBATIM
  )
  # Whoever includes a header waits for this target, not only for the sources' own compilation.
  add_custom_target( ${koi_TARGET}-koi DEPENDS ${sources} )
  add_dependencies( ${koi_TARGET} ${koi_TARGET}-koi )
  target_sources( ${koi_TARGET} PRIVATE ${sources} )
  get_target_property( type ${koi_TARGET} TYPE )
  set( scope PUBLIC )
  if( type STREQUAL "EXECUTABLE" )
    set( scope PRIVATE )
  endif()
  target_include_directories( ${koi_TARGET} ${scope} "$<BUILD_INTERFACE:${koi_HEADERS}>" )
  set( ${koi_TARGET}_HEADERS ${headers} PARENT_SCOPE )
endfunction()
