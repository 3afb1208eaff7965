# The one place where warnings are chosen: link lumoWarnings to get them.

add_library( lumoWarnings INTERFACE )
target_compile_options( lumoWarnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
  # GCC 12 sees overlapping copies in std::string's operator+ where there are none.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<BOOL:${LUMO_WERROR}>:-Werror>
)
