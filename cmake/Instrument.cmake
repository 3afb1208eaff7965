# What is switched on for the whole build: the compiler cache and the sanitizers.

if( NOT CMAKE_CXX_COMPILER_LAUNCHER )
  find_program( LUMO_CCACHE ccache )
  if( LUMO_CCACHE )
    set( CMAKE_CXX_COMPILER_LAUNCHER "${LUMO_CCACHE}" )
  endif()
endif()

if( LUMO_SANITIZE )
  add_compile_options( -fsanitize=${LUMO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer )
  add_link_options( -fsanitize=${LUMO_SANITIZE} )
endif()
if( LUMO_FUZZ )
  add_compile_options( -fsanitize=fuzzer-no-link )
endif()
