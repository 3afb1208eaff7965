# The one place where warnings are chosen: link lumoWarnings to get them.

add_library( lumoWarnings INTERFACE )
target_compile_options( lumoWarnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
  # GCC 12 sees overlapping copies in std::string's operator+ where there are none.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  # Of a class that stands in a source it says nothing, unless that source is compiled together with others.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:${CMAKE_UNITY_BUILD}>>:-Wno-subobject-linkage>
  $<$<BOOL:${LUMO_WERROR}>:-Werror>
)
