# A room of the library: an object library whose objects and public headers become part of lumo.

# lumo_room( NAME n ROOT dir [SOURCES ...] [HEADERS ...] )
#
# ROOT is the include root that the headers are named from. HEADERS is the one list that install and
# the stand-alone header check both read; a header that is not in it is private to the room.
function( lumo_room )
  cmake_parse_arguments( PARSE_ARGV 0 room "" "NAME;ROOT" "SOURCES;HEADERS" )
  if( room_UNPARSED_ARGUMENTS OR NOT room_NAME OR NOT room_ROOT )
    message( FATAL_ERROR "lumo_room() needs NAME and ROOT; it does not know '${room_UNPARSED_ARGUMENTS}'" )
  endif()
  add_library( ${room_NAME} OBJECT ${room_SOURCES} )
  target_link_libraries( ${room_NAME} PRIVATE lumoWarnings )
  target_include_directories( ${room_NAME} PRIVATE
    "${PROJECT_SOURCE_DIR}/platform"
    "${PROJECT_SOURCE_DIR}/generated-includes"
    "${PROJECT_SOURCE_DIR}/src"
  )
  target_sources( lumo PRIVATE $<TARGET_OBJECTS:${room_NAME}> )
  lumo_public_headers( ROOT "${room_ROOT}" HEADERS ${room_HEADERS} )
endfunction()

# lumo_public_headers( ROOT dir HEADERS ... ): headers that lumo installs, named relative to ROOT.
function( lumo_public_headers )
  cmake_parse_arguments( PARSE_ARGV 0 public "" "ROOT" "HEADERS" )
  set( files "" )
  foreach( header IN LISTS public_HEADERS )
    cmake_path( ABSOLUTE_PATH header NORMALIZE )
    list( APPEND files "${header}" )
  endforeach()
  target_sources( lumo PUBLIC FILE_SET HEADERS BASE_DIRS "${public_ROOT}" FILES ${files} )
endfunction()

# lumo_models( a.koi ... ): models that are installed, so that a user's own may name their types.
function( lumo_models )
  foreach( model IN LISTS ARGN )
    cmake_path( ABSOLUTE_PATH model NORMALIZE )
    set_property( GLOBAL APPEND PROPERTY LUMO_MODELS "${model}" )
  endforeach()
endfunction()

# lumo_room_models( ROOM r FOLDER F MODELS a.koi ... [USES room...] [IMPORT dir...] ): the models of a
# room, whose headers stand in generated-includes/F/ and are public. USES names rooms whose models are
# used.
function( lumo_room_models )
  cmake_parse_arguments( PARSE_ARGV 0 room "" "ROOM;FOLDER" "MODELS;USES;IMPORT" )
  if( room_UNPARSED_ARGUMENTS OR NOT room_ROOM OR NOT room_FOLDER OR NOT room_MODELS )
    message( FATAL_ERROR "lumo_room_models() needs ROOM, FOLDER and MODELS; it does not know '${room_UNPARSED_ARGUMENTS}'" )
  endif()
  set( asTheyStand "" )
  if( NOT LUMO_GENERATE )
    set( asTheyStand TAKE_HEADERS_AS_THEY_STAND )
  endif()
  set( headers "${PROJECT_SOURCE_DIR}/generated-includes" )
  lumo_generate(
    TARGET ${room_ROOM}
    MODELS ${room_MODELS}
    IMPORT ${room_IMPORT}
    HEADERS "${headers}"
    INCLUDE_PREFIX ${room_FOLDER}/
    ${asTheyStand}
  )
  foreach( used IN LISTS room_USES )
    add_dependencies( ${room_ROOM}-koi ${used}-koi )
  endforeach()
  lumo_public_headers( ROOT "${headers}" HEADERS ${${room_ROOM}_HEADERS} )
  lumo_models( ${room_MODELS} )
  set_property( GLOBAL APPEND PROPERTY LUMO_MODEL_ROOMS ${room_ROOM} )
  set_property( GLOBAL PROPERTY LUMO_MODEL_FOLDER_${room_ROOM} ${room_FOLDER} )
endfunction()
